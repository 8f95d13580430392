#pragma once

#include "zlmim/component/abi.h"

/// The four functions that the module exports. It exports nothing else.

#ifdef _WIN32
// The system's headers declare these two.
#include <combaseapi.h>
#define ZLMIM_EXPORTED
#else
#define ZLMIM_EXPORTED __attribute__((visibility("default")))
extern "C" ZLMIM_EXPORTED HRESULT DllCanUnloadNow();
extern "C" ZLMIM_EXPORTED HRESULT DllGetClassObject(REFCLSID classId, REFIID iid, void** object);
#endif

extern "C" ZLMIM_EXPORTED HRESULT STDAPICALLTYPE DllRegisterServer();
extern "C" ZLMIM_EXPORTED HRESULT STDAPICALLTYPE DllUnregisterServer();

#pragma once

/// \file
/// The types and functions of the component interface: on Windows the system's, elsewhere the same names and
/// layouts from `zlmim/component/abi_posix.h`.
/// \ingroup hosts

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#else

#include "zlmim/component/abi_posix.h"

#endif

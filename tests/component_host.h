#pragma once

#include "zlmim/component/host.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#ifndef _WIN32
#include <dlfcn.h>
#endif

namespace ZLMIM::Host
{

/// A function of the module, which stays loaded.
template <class Function>
[[nodiscard]] Function Exported(const char* name)
{
#ifdef _WIN32
    static const HMODULE kModule = ::LoadLibraryA(ZLMIM_MODULE);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(kModule, name)));
#else
    static void* const kModule = ::dlopen(ZLMIM_MODULE, RTLD_NOW | RTLD_LOCAL);
    return kModule ? reinterpret_cast<Function>(::dlsym(kModule, name)) : nullptr;
#endif
}

[[nodiscard]] inline GetClassObject ClassObjects() { return Exported<GetClassObject>("DllGetClassObject"); }

/// Whether the module can be unloaded: hosts have released all its objects.
[[nodiscard]] inline bool IsIdle()
{
    return Exported<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")() == S_OK;
}

template <class I>
[[nodiscard]] Pointer<I> New()
{
    Pointer<I> object;
    EXPECT_EQ(Create(ClassObjects(), object), S_OK);
    return object;
}

/// The result of a property or a method without arguments.
template <class T, class I>
[[nodiscard]] T Read(const Pointer<I>& object, HRESULT (STDMETHODCALLTYPE I::*get)(T*))
{
    T value{};
    EXPECT_EQ((object.Get()->*get)(&value), S_OK);
    return value;
}

template <class T, class I>
[[nodiscard]] Pointer<T> ReadObject(const Pointer<I>& object, HRESULT (STDMETHODCALLTYPE I::*get)(T**))
{
    return Pointer<T>(Read<T*>(object, get));
}

template <class I>
[[nodiscard]] std::u16string ReadText(const Pointer<I>& object, HRESULT (STDMETHODCALLTYPE I::*get)(BSTR*))
{
    return Text::Adopt(Read<BSTR>(object, get)).Copy();
}

/// Entry `number` of a list of objects.
template <class I>
[[nodiscard]] Pointer<I> Entry(const Pointer<_Collection>& list, LONG number)
{
    Variant index(number);
    Variant entry;
    EXPECT_EQ(list->Item(&index, entry.Out()), S_OK);
    EXPECT_EQ(entry.vt, VT_DISPATCH);
    Pointer<I> object;
    EXPECT_EQ(entry.pdispVal->QueryInterface(kInterfaceId<I>, object.OutAny()), S_OK);
    return object;
}

/// Adds an entry at the end of a list.
[[nodiscard]] inline HRESULT Add(const Pointer<_Collection>& list, VARIANT& entry)
{
    Variant omitted;
    return list->Add(&entry, &omitted, &omitted, &omitted);
}

[[nodiscard]] inline DISPID IdOf(IDispatch* object, std::u16string_view name)
{
    const Text text(name);
    LPOLESTR names[] = {text.Get()};
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(object->GetIDsOfNames(Component::kNoInterface, names, 1, 0, &id), S_OK);
    return id;
}

/// Script error `number` as a status.
[[nodiscard]] constexpr HRESULT ScriptError(int number) { return static_cast<HRESULT>(0x800A0000) + number; }

/// Calls a member by name. If the member itself failed, returns its failure.
inline HRESULT Call(IDispatch* object, std::u16string_view name, WORD flags,
                    std::initializer_list<VARIANT*> arguments, VARIANT* result = nullptr)
{
    std::vector<VARIANT> given;
    for (const VARIANT* const argument : arguments)
        given.insert(given.begin(), *argument);
    DISPID put = DISPID_PROPERTYPUT;
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parameters{given.data(), isPut ? &put : nullptr, static_cast<UINT>(given.size()),
                          isPut ? 1U : 0U};
    EXCEPINFO exception{};
    const HRESULT status = object->Invoke(IdOf(object, name), Component::kNoInterface, 0, flags, &parameters,
                                          result, &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    return status == DISP_E_EXCEPTION ? exception.scode : status;
}

/// A variant that refers to another, as scripts pass their variables.
[[nodiscard]] inline VARIANT ReferenceTo(VARIANT& variable)
{
    VARIANT reference{};
    reference.vt = VT_VARIANT | VT_BYREF;
    reference.pvarVal = &variable;
    return reference;
}

} // namespace ZLMIM::Host

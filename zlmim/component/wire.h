#pragma once

#include "zlmim/component/holders.h"
#include "zlmim/component/object_reference.h"
#include "zlmim/component/types.h"
#include "zlmim/model/collection.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace ZLMIM::Component
{

/// Name of class `T` in the type library, such as "Mesh".
template <class T>
inline constexpr const char* kClassName = nullptr;

/// How a value of the model's type `T` crosses the boundary: `Type` is its form outside, `In` and `Out`
/// convert. The host owns what `Out` returns. `kVarType` and `Of` say where a variant holds it; `kIdl` is the
/// type's name in the type library.
template <class T>
struct Wire;

template <>
struct Wire<std::int32_t>
{
    using Type = LONG;
    static constexpr VARTYPE kVarType = VT_I4;
    static constexpr const char* kIdl = "long";
    [[nodiscard]] static std::int32_t In(Type value) noexcept { return static_cast<std::int32_t>(value); }
    [[nodiscard]] static Type Out(std::int32_t value) noexcept { return value; }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept { return variant.lVal; }
};

/// By reference: 32-bit x86 returns floats in the x87 unit, which changes a signalling NaN.
template <>
struct Wire<float>
{
    using Type = float;
    static constexpr VARTYPE kVarType = VT_R4;
    static constexpr const char* kIdl = "float";
    [[nodiscard]] static const float& In(const Type& value) noexcept { return value; }
    [[nodiscard]] static const Type& Out(const float& value) noexcept { return value; }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept { return variant.fltVal; }
};

/// Results only.
template <>
struct Wire<bool>
{
    using Type = VARIANT_BOOL;
    static constexpr VARTYPE kVarType = VT_BOOL;
    static constexpr const char* kIdl = "VARIANT_BOOL";
    [[nodiscard]] static Type Out(bool value) noexcept { return value ? VARIANT_TRUE : VARIANT_FALSE; }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept { return variant.boolVal; }
};

template <class T>
requires std::is_enum_v<T>
struct Wire<T>
{
    using Type = LONG;
    static constexpr VARTYPE kVarType = VT_I4;
    static constexpr const char* kIdl = kEnumerationType<T>.name;
    [[nodiscard]] static T In(Type value) noexcept { return static_cast<T>(value); }
    [[nodiscard]] static Type Out(T value) noexcept { return static_cast<Type>(value); }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept { return variant.lVal; }
};

template <>
struct Wire<std::u16string>
{
    using Type = BSTR;
    static constexpr VARTYPE kVarType = VT_BSTR;
    static constexpr const char* kIdl = "BSTR";
    [[nodiscard]] static std::u16string In(Type value) { return Text::Copy(value); }
    [[nodiscard]] static Type Out(const std::u16string& value) { return Text::Allocate(value); }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept { return variant.bstrVal; }
};

/// True for records, which are passed by reference, and of which a variant holds a pointer.
template <class T>
inline constexpr bool kIsRecordType = kRecordType<T>.name != nullptr;

template <class T>
requires kIsRecordType<T>
struct Wire<T>
{
    using Type = T;
    static constexpr VARTYPE kVarType = VT_RECORD;
    static constexpr const char* kIdl = kRecordType<T>.name;
    [[nodiscard]] static T In(const Type& value) noexcept { return value; }
    [[nodiscard]] static Type Out(const T& value) noexcept { return value; }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept { return *static_cast<T*>(variant.pvRecord); }
};

/// Objects and lists. A host's `IDispatch*` is the address of the object's header.
template <class T>
struct Wire<std::shared_ptr<T>>
{
    using Type = ComHeader*;
    static constexpr VARTYPE kVarType = VT_DISPATCH;
    static constexpr const char* kIdl = kClassName<T>;
    [[nodiscard]] static std::shared_ptr<T> In(Type value) { return Unwrap<T>(value); }
    [[nodiscard]] static Type Out(std::shared_ptr<T> value) noexcept { return Expose(std::move(value)); }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept
    {
        return reinterpret_cast<Type&>(variant.pdispVal);
    }
};

template <class T>
inline constexpr const char* kClassName<Collection<T>> = "Collection";

/// A variant is passed unchanged.
template <>
struct Wire<VARIANT>
{
    using Type = VARIANT;
    static constexpr VARTYPE kVarType = VT_VARIANT;
    static constexpr const char* kIdl = "VARIANT";
    [[nodiscard]] static const VARIANT& In(const Type& value) noexcept { return value; }
    [[nodiscard]] static Type Out(const VARIANT& value) noexcept { return value; }
};

/// An interface of an object that isn't the model's. The host gets the reference.
template <>
struct Wire<IUnknown*>
{
    using Type = IUnknown*;
    static constexpr VARTYPE kVarType = VT_UNKNOWN;
    static constexpr const char* kIdl = "IUnknown";
    [[nodiscard]] static Type Out(IUnknown* value) noexcept { return value; }
    [[nodiscard]] static Type& Of(VARIANT& variant) noexcept { return variant.punkVal; }
};

} // namespace ZLMIM::Component

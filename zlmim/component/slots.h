#ifndef ZLMIM_COMPONENT_SLOTS_H
#define ZLMIM_COMPONENT_SLOTS_H

#include "zlmim/component/arguments.h"
#include "zlmim/component/class_info.h"

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace ZLMIM::Component
{

/// What a slot keeps of an argument or result of the model's type `T`.
template <class T>
struct StoredAs
{
    using Type = std::remove_cvref_t<T>;
};
template <>
struct StoredAs<std::u16string_view>
{
    using Type = std::u16string;
};
template <class T>
using Stored = typename StoredAs<T>::Type;

template <class... T>
struct Types
{
};

/// Class, result and arguments of a member function, or of a function whose first argument is the object.
template <class F>
struct Signature;
template <class C, class R, class... A>
struct Signature<R (C::*)(A...)>
{
    using Class = C;
    using Result = Stored<R>;
    using Arguments = Types<Stored<A>...>;
};
template <class C, class R, class... A>
struct Signature<R (C::*)(A...) const> : Signature<R (C::*)(A...)>
{
};
template <class C, class R, class... A>
struct Signature<R (C::*)(A...) const noexcept> : Signature<R (C::*)(A...)>
{
};
template <class C, class R, class... A>
struct Signature<R (*)(C&, A...)>
{
    using Class = C;
    using Result = Stored<R>;
    using Arguments = Types<Stored<A>...>;
};
/// A field reads as its own type, and takes it.
template <class C, class T>
requires(!std::is_function_v<T>) struct Signature<T C::*>
{
    using Class = C;
    using Result = T;
    using Arguments = Types<T>;
};

template <class T>
inline constexpr bool kIsObject = false;
template <class T>
inline constexpr bool kIsObject<std::shared_ptr<T>> = true;

template <class T>
[[nodiscard]] constexpr Parameter DescribeParameter(const char* name, How how)
{
    return {name, Wire<T>::kIdl, kIsObject<T>, how};
}

/// Calls a slot by name: converts the arguments, then the result.
template <class Slot, class R, class... A, std::size_t... I>
[[nodiscard]] Invoked InvokeSlot(ComHeader* object, [[maybe_unused]] std::span<VARIANT* const> given,
                                 VARIANT& result, std::index_sequence<I...>)
{
    Invoked invoked;
    std::tuple<Converted<A>...> arguments(Given{given[I], static_cast<UINT>(sizeof...(A) - 1 - I)}...);
    if constexpr (std::is_void_v<R>)
        invoked.raised = Slot::Call(object, std::get<I>(arguments).Get()...);
    else
    {
        typename Wire<R>::Type value{};
        invoked.raised = Slot::Call(object, std::get<I>(arguments).Get()..., &value);
        if (SUCCEEDED(invoked.raised))
            invoked.status = StoreResult<R>(result, value);
    }
    return invoked;
}

template <class Slot, class R, class... A>
[[nodiscard]] Invoked Invoke(ComHeader* object, std::span<VARIANT* const> given, VARIANT& result)
{
    return InvokeSlot<Slot, R, A...>(object, given, result, std::index_sequence_for<A...>());
}

/// Leaves in `place` what `make` gives; nothing where that fails. Only then or at the end: the place may be
/// that of an argument as well.
template <class T, class Make>
[[nodiscard]] HRESULT Give(T* place, const Make& make) noexcept
{
    if (!place)
        return E_POINTER;
    const HRESULT status = Guarded([&] { *place = make(); });
    if (FAILED(status))
        *place = {};
    return status;
}

/// Reads a property.
template <auto kGet>
struct GetSlot
{
    using Class = typename Signature<decltype(kGet)>::Class;
    using T = typename Signature<decltype(kGet)>::Result;

    static HRESULT STDMETHODCALLTYPE Call(ComHeader* object, typename Wire<T>::Type* result) noexcept
    {
        return Give(result, [&] { return Wire<T>::Out(std::invoke(kGet, ObjectOf<Class>(object))); });
    }

    [[nodiscard]] static constexpr Member Describe(const char* name, const char* help)
    {
        Member member{name, help, DISPATCH_PROPERTYGET};
        member.result = DescribeParameter<T>("value", How::InOut);
        member.invoke = &Invoke<GetSlot, T>;
        return member;
    }
};

template <class A>
struct FirstOf;
template <class T>
struct FirstOf<Types<T>>
{
    using Type = T;
};

/// Writes a property: records and objects by reference.
template <auto kPut>
struct PutSlot
{
    using Class = typename Signature<decltype(kPut)>::Class;
    using T = typename FirstOf<typename Signature<decltype(kPut)>::Arguments>::Type;
    static constexpr How kTravels = kIsRecordType<T> ? How::Ref : How::In;
    using Value = Argument<kTravels, T>;

    static HRESULT STDMETHODCALLTYPE Call(ComHeader* object, typename Value::Type given) noexcept
    {
        return Guarded(
            [&]
            {
                Value value(given);
                if constexpr (std::is_member_object_pointer_v<decltype(kPut)>)
                    ObjectOf<Class>(object).*kPut = std::move(value.Get());
                else
                    std::invoke(kPut, ObjectOf<Class>(object), std::move(value.Get()));
            });
    }

    [[nodiscard]] static constexpr Member Describe(const char* name, const char* help)
    {
        Member member{name, help, kIsObject<T> ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT};
        member.count = 1;
        member.parameters[0] = DescribeParameter<T>("value", kTravels);
        member.invoke = &Invoke<PutSlot, void, Value>;
        return member;
    }
};

/// Calls `function` with the arguments, then gives back what it may have changed, also where it has raised.
template <auto kFunction, class C, class... A>
decltype(auto) CallWith(C& object, A... arguments)
{
    const auto giveBack = [&] { (arguments.GiveBack(), ...); };
    try
    {
        if constexpr (std::is_void_v<decltype(std::invoke(kFunction, object, arguments.Get()...))>)
        {
            std::invoke(kFunction, object, arguments.Get()...);
            giveBack();
        }
        else
        {
            auto result = std::invoke(kFunction, object, arguments.Get()...);
            giveBack();
            return result;
        }
    }
    catch (...)
    {
        giveBack();
        throw;
    }
}

template <auto kFunction, class C, class R, class... A>
struct TypedMethodSlot
{
    static HRESULT STDMETHODCALLTYPE Call(ComHeader* object, typename A::Type... given,
                                          typename Wire<R>::Type* result) noexcept
    {
        return Give(result,
                    [&] { return Wire<R>::Out(CallWith<kFunction>(ObjectOf<C>(object), A(given)...)); });
    }
};

template <auto kFunction, class C, class... A>
struct TypedMethodSlot<kFunction, C, void, A...>
{
    static HRESULT STDMETHODCALLTYPE Call(ComHeader* object, typename A::Type... given) noexcept
    {
        return Guarded([&] { CallWith<kFunction>(ObjectOf<C>(object), A(given)...); });
    }
};

template <auto kFunction, class Arguments, How... kHow>
struct DescribedMethodSlot;
template <auto kFunction, class... T, How... kHow>
struct DescribedMethodSlot<kFunction, Types<T...>, kHow...>
    : TypedMethodSlot<kFunction, typename Signature<decltype(kFunction)>::Class,
                      typename Signature<decltype(kFunction)>::Result, Argument<kHow, T>...>
{
    using R = typename Signature<decltype(kFunction)>::Result;

    [[nodiscard]] static constexpr Member
    Describe(const char* name, const std::array<const char*, sizeof...(T)>& names, const char* help)
    {
        Member member{name, help, DISPATCH_METHOD};
        ((member.parameters[member.count] = DescribeParameter<T>(names[member.count], kHow), ++member.count),
         ...);
        if constexpr (!std::is_void_v<R>)
            member.result = DescribeParameter<R>("result", How::InOut);
        member.invoke = &Invoke<DescribedMethodSlot, R, Argument<kHow, T>...>;
        return member;
    }
};

/// Calls a method.
template <auto kFunction, How... kHow>
using MethodSlot =
    DescribedMethodSlot<kFunction, typename Signature<decltype(kFunction)>::Arguments, kHow...>;

} // namespace ZLMIM::Component

#endif

#pragma once

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

/// A slot is a type with two static functions: `Call`, which hosts call through the function table, and
/// `Describe`, which makes the slot's `Member`. Calls by name go through `Call` too, so both kinds behave
/// alike.
///
/// A slot is built from three layers, each in a header of its own, since each varies independently of the
/// others: `Wire` (wire.h) converts one value by its type, such as `std::u16string` to `BSTR`. `Argument`
/// (arguments.h) adds how the value is passed, which C++ signatures don't say: the interfaces pass some texts
/// by value and some by reference. The slots below add what is done with the values: read or write a
/// property, or call a function. A method's slot consists of three templates again, because each can only
/// deduce one more pack: `MethodSlot` has the function and the passings, `DescribedMethodSlot` the argument
/// types as well, and `TypedMethodSlot` is specialised for functions without a result, whose `Call` has one
/// parameter less.

/// What a slot stores for an argument or result of type `T`.
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
struct Signature<R (*)(C&, A...)> : Signature<R (C::*)(A...)>
{
};
/// A field is both: read, it is the result; written, the argument.
template <class C, class T>
requires(!std::is_function_v<T>) struct Signature<T C::*>
{
    using Class = C;
    using Result = T;
    using Arguments = Types<T>;
};

/// The tables of the interface of class `T`: `kRows`, and `kInfo`, its `ClassInfo`.
template <class T>
struct Interface;

template <class T>
inline constexpr bool kIsObject = false;
template <class T>
inline constexpr bool kIsObject<std::shared_ptr<T>> = true;

template <class T>
[[nodiscard]] constexpr Parameter DescribeParameter(const char* name, Passing passing)
{
    return {name, Wire<T>::kIdl, kIsObject<T>, passing};
}

/// Calls a slot with variants: converts the arguments, then the result.
template <class Slot, class R, class... A, std::size_t... I>
[[nodiscard]] CallOutcome ConvertAndCall(ComHeader* object, [[maybe_unused]] std::span<VARIANT* const> given,
                                         VARIANT& result, std::index_sequence<I...>)
{
    CallOutcome outcome;
    std::tuple<Converted<A>...> arguments(Given{*given[I], I}...);
    if constexpr (std::is_void_v<R>)
        outcome.thrown = Slot::Call(object, std::get<I>(arguments).Get()...);
    else
    {
        typename Wire<R>::Type value{};
        outcome.thrown = Slot::Call(object, std::get<I>(arguments).Get()..., &value);
        if (SUCCEEDED(outcome.thrown))
            outcome.status = StoreResult<R>(result, value);
    }
    return outcome;
}

/// What `Member::callByName` points at.
template <class Slot, class R, class... A>
[[nodiscard]] CallOutcome CallSlot(ComHeader* object, std::span<VARIANT* const> given, VARIANT& result)
{
    return ConvertAndCall<Slot, R, A...>(object, given, result, std::index_sequence_for<A...>());
}

/// Runs `action` for an object of class `C`; an exception becomes a status and the thread's error.
template <class C, class Action>
[[nodiscard]] HRESULT GuardedFor(const Action& action) noexcept
{
    return Guarded(action, &Interface<C>::kInfo);
}

/// Stores in `*place` what `make` returns, or nothing if it throws. Written last: `place` may alias an
/// argument.
template <class C, class T, class Make>
[[nodiscard]] HRESULT StoreFor(T* place, const Make& make) noexcept
{
    const HRESULT status = GuardedFor<C>(
        [&]
        {
            if (!place)
                throw Failure{E_POINTER, "a null pointer where the result belongs"};
            *place = make();
        });
    if (FAILED(status) && place)
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
        return StoreFor<Class>(result,
                               [&]() -> decltype(auto)
                               { return Wire<T>::Out(std::invoke(kGet, ObjectOf<Class>(object))); });
    }

    [[nodiscard]] static constexpr Member Describe(const char* name, const char* help)
    {
        Member member{name, help, DISPATCH_PROPERTYGET};
        member.result = DescribeParameter<T>("value", Passing::InOut);
        member.callByName = &CallSlot<GetSlot, T>;
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

/// Writes a property: a record or an object by reference.
template <auto kPut>
struct PutSlot
{
    using Class = typename Signature<decltype(kPut)>::Class;
    using T = typename FirstOf<typename Signature<decltype(kPut)>::Arguments>::Type;
    static constexpr Passing kPassing = kIsRecordType<T> ? Passing::Ref : Passing::In;
    using Value = Argument<kPassing, T>;

    static HRESULT STDMETHODCALLTYPE Call(ComHeader* object, typename Value::Type given) noexcept
    {
        return GuardedFor<Class>(
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
        member.parameters[0] = DescribeParameter<T>("value", kPassing);
        member.callByName = &CallSlot<PutSlot, void, Value>;
        return member;
    }
};

/// Calls `function`, then writes back the arguments that it may have changed, even if it throws.
template <auto kFunction, class C, class... A>
decltype(auto) CallWith(C& object, A... arguments)
{
    const auto writeBack = [&] { (arguments.WriteBack(), ...); };
    try
    {
        if constexpr (std::is_void_v<decltype(std::invoke(kFunction, object, arguments.Get()...))>)
        {
            std::invoke(kFunction, object, arguments.Get()...);
            writeBack();
        }
        else
        {
            auto result = std::invoke(kFunction, object, arguments.Get()...);
            writeBack();
            return result;
        }
    }
    catch (...)
    {
        writeBack();
        throw;
    }
}

template <auto kFunction, class C, class R, class... A>
struct TypedMethodSlot
{
    static HRESULT STDMETHODCALLTYPE Call(ComHeader* object, typename A::Type... given,
                                          typename Wire<R>::Type* result) noexcept
    {
        return StoreFor<C>(result, [&]
                           { return Wire<R>::Out(CallWith<kFunction>(ObjectOf<C>(object), A(given)...)); });
    }
};

template <auto kFunction, class C, class... A>
struct TypedMethodSlot<kFunction, C, void, A...>
{
    static HRESULT STDMETHODCALLTYPE Call(ComHeader* object, typename A::Type... given) noexcept
    {
        return GuardedFor<C>([&] { CallWith<kFunction>(ObjectOf<C>(object), A(given)...); });
    }
};

template <auto kFunction, class Arguments, Passing... kPassing>
struct DescribedMethodSlot;
template <auto kFunction, class... T, Passing... kPassing>
struct DescribedMethodSlot<kFunction, Types<T...>, kPassing...>
    : TypedMethodSlot<kFunction, typename Signature<decltype(kFunction)>::Class,
                      typename Signature<decltype(kFunction)>::Result, Argument<kPassing, T>...>
{
    using R = typename Signature<decltype(kFunction)>::Result;

    [[nodiscard]] static constexpr Member
    Describe(const char* name, const std::array<const char*, sizeof...(T)>& names, const char* help)
    {
        Member member{name, help, DISPATCH_METHOD};
        ((member.parameters[member.count] = DescribeParameter<T>(names[member.count], kPassing),
          ++member.count),
         ...);
        if constexpr (!std::is_void_v<R>)
            member.result = DescribeParameter<R>("result", Passing::InOut);
        member.callByName = &CallSlot<DescribedMethodSlot, R, Argument<kPassing, T>...>;
        return member;
    }
};

/// Calls a method.
template <auto kFunction, Passing... kPassing>
using MethodSlot =
    DescribedMethodSlot<kFunction, typename Signature<decltype(kFunction)>::Arguments, kPassing...>;

} // namespace ZLMIM::Component

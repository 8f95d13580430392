#pragma once

#include "zlmim/component/class_info.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/status.h"
#include "zlmim/component/variants.h"
#include "zlmim/component/wire.h"

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>

namespace ZLMIM::Component
{

/// An argument of type `T`, passed from a slot to the model and, if it may change, back.
template <Passing kHow, class T>
class Argument
{
public:
    using Value = T;
    using Place = typename Wire<T>::Type*;
    using Type = std::conditional_t<kHow == Passing::In, typename Wire<T>::Type, Place>;
    static constexpr Passing kPassing = kHow;

    /// @throws Failure `E_POINTER` for a null reference
    explicit Argument(Type given) : mGiven(given), mValue(Convert(given)) {}

    [[nodiscard]] T& Get() noexcept { return mValue; }

    /// Copies what the model has changed to the host's variable.
    /// @throws std::bad_alloc
    void WriteBack()
    {
        if constexpr (kHow == Passing::InOut)
        {
            auto changed = Wire<T>::Out(mValue);
            std::swap(*mGiven, changed);
            if constexpr (std::is_same_v<T, std::u16string>)
                SysFreeString(changed);
        }
    }

private:
    [[nodiscard]] static decltype(auto) Convert(const Type& given)
    {
        if constexpr (kHow == Passing::In)
            return Wire<T>::In(given);
        else
        {
            if (!given)
                throw Failure{E_POINTER, "a null pointer where an argument is needed"};
            return Wire<T>::In(*given);
        }
    }

    Type mGiven;
    T mValue;
};

/// An argument of a call by name. `position` counts the parameters from 0.
struct Given
{
    VARIANT& variant;
    std::size_t position;
};

/// Converts a variant to what a slot takes. What the slot may change is the host's own variable if the
/// variant refers to one of the right type, otherwise a copy.
template <class A>
class Converted
{
    using T = typename A::Value;
    using Place = typename A::Place;
    static constexpr bool kIsInterface = Wire<T>::kVarType == VT_DISPATCH;

public:
    /// @throws BadArgument if it can't be converted
    explicit Converted(const Given& given) : mPlace(Find(given.variant, given.position)) {}
    Converted(const Converted&) = delete;
    Converted& operator=(const Converted&) = delete;
    ~Converted() = default;

    [[nodiscard]] const typename A::Type& Get() noexcept
    {
        if constexpr (A::kPassing == Passing::In)
            return *mPlace;
        else
            return mPlace;
    }

private:
    [[nodiscard]] Place Find(VARIANT& given, std::size_t position)
    {
        VARIANT& source = Dereferenced(given);
        const bool isVariable = &source != &given || (source.vt & VT_BYREF) != 0;
        if constexpr (std::is_same_v<T, VARIANT>)
            return &source;
        else if constexpr (kIsRecordType<T>)
        {
            if (!HoldsRecord(source, kRecordType<T>))
                throw BadArgument{DISP_E_TYPEMISMATCH, position};
            auto* const record = static_cast<Place>(source.pvRecord);
            if (A::kPassing != Passing::InOut || isVariable)
                return record;
            return &(mCopy = *record);
        }
        else
        {
            if ((source.vt & VT_BYREF) != 0 && !source.byref)
                throw BadArgument{DISP_E_TYPEMISMATCH, position};
            if (source.vt == (Wire<T>::kVarType | VT_BYREF))
                return static_cast<Place>(source.byref);
            // Some script languages can't pass a null object in any other way.
            if (kIsInterface && (source.vt == VT_EMPTY || source.vt == VT_NULL))
                return &Wire<T>::Of(mOwn);
            const bool isHeld = source.vt == Wire<T>::kVarType || (kIsInterface && source.vt == VT_UNKNOWN);
            if (isHeld && (A::kPassing != Passing::InOut || isVariable))
                return &Wire<T>::Of(source);
            if (const HRESULT status = Coerce(mOwn, source, Wire<T>::kVarType); FAILED(status))
                throw BadArgument{status, position};
            return &Wire<T>::Of(mOwn);
        }
    }

    struct Empty
    {
    };

    Variant mOwn;
    [[no_unique_address]] std::conditional_t<kIsRecordType<T>, T, Empty> mCopy;
    Place mPlace;
};

/// Puts a result into an empty variant, which then owns it.
template <class T>
[[nodiscard]] HRESULT StoreResult(VARIANT& variant, typename Wire<T>::Type& value) noexcept
{
    if constexpr (std::is_same_v<T, VARIANT>)
        variant = value;
    else if constexpr (kIsRecordType<T>)
        return StoreRecord(variant, kRecordType<T>, &value);
    else
    {
        variant.vt = Wire<T>::kVarType;
        Wire<T>::Of(variant) = value;
    }
    return S_OK;
}

} // namespace ZLMIM::Component

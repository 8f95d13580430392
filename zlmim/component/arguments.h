#ifndef ZLMIM_COMPONENT_ARGUMENTS_H
#define ZLMIM_COMPONENT_ARGUMENTS_H

#include "zlmim/component/platform.h"
#include "zlmim/component/status.h"
#include "zlmim/component/variants.h"
#include "zlmim/component/wire.h"

#include <string>
#include <type_traits>
#include <utility>

namespace ZLMIM::Component
{

/// How an argument travels: by value; by reference, unchanged; by reference, perhaps changed. An interface
/// decides it for each argument.
enum class How
{
    In,
    Ref,
    InOut,
};

/// An argument of type `T` on its way from a slot to the model and, where it may change, back.
template <How kHow, class T>
class Argument
{
public:
    using Value = T;
    using Place = typename Wire<T>::Type*;
    using Type = std::conditional_t<kHow == How::In, typename Wire<T>::Type, Place>;
    static constexpr How kTravels = kHow;

    explicit Argument(Type given) : mGiven(given), mValue(Take(given)) {}

    [[nodiscard]] T& Get() noexcept { return mValue; }

    /// Lets the host see what the model has changed.
    /// @throws std::bad_alloc
    void GiveBack()
    {
        if constexpr (kHow == How::InOut)
        {
            auto changed = Wire<T>::Out(mValue);
            std::swap(*mGiven, changed);
            if constexpr (std::is_same_v<T, std::u16string>)
                SysFreeString(changed);
        }
    }

private:
    [[nodiscard]] static T Take(Type given)
    {
        if constexpr (kHow == How::In)
            return Wire<T>::In(given);
        else
        {
            if (!given)
                throw Failure{E_POINTER};
            return Wire<T>::In(*given);
        }
    }

    Type mGiven;
    T mValue;
};

/// An argument that doesn't fit, by its place in the array of arguments.
struct BadArgument : Failure
{
    UINT index;
};

/// One argument of a call by name.
struct Given
{
    VARIANT* variant;
    UINT index;
};

/// Makes an argument of a call by name into what the slot takes. What the slot may change is the host's own
/// variable, if the host has given a reference to one of the right type, else a copy.
template <class A>
class Converted
{
    using T = typename A::Value;
    using Place = typename A::Place;

public:
    explicit Converted(const Given& given) : mPlace(Find(given)) {}
    Converted(const Converted&) = delete;
    Converted& operator=(const Converted&) = delete;
    ~Converted() = default;

    [[nodiscard]] typename A::Type Get() noexcept
    {
        if constexpr (A::kTravels == How::In)
            return *mPlace;
        else
            return mPlace;
    }

private:
    [[nodiscard]] Place Find(const Given& given)
    {
        VARIANT& source = Dereferenced(*given.variant);
        const bool isVariable = &source != given.variant || (source.vt & VT_BYREF) != 0;
        if constexpr (std::is_same_v<T, VARIANT>)
            return &source;
        else if constexpr (kIsRecordType<T>)
        {
            if (!HoldsRecord(source, kRecordType<T>))
                throw BadArgument{{DISP_E_TYPEMISMATCH}, given.index};
            auto* const record = static_cast<Place>(source.pvRecord);
            if (A::kTravels != How::InOut || isVariable)
                return record;
            return &(mCopy = *record);
        }
        else
        {
            if (source.vt == (Wire<T>::kVarType | VT_BYREF))
                return source.byref ? static_cast<Place>(source.byref)
                                    : throw BadArgument{{DISP_E_TYPEMISMATCH}, given.index};
            const bool isHeld = source.vt == Wire<T>::kVarType ||
                                (Wire<T>::kVarType == VT_DISPATCH && source.vt == VT_UNKNOWN);
            if (isHeld && (A::kTravels != How::InOut || isVariable))
                return &Wire<T>::Of(source);
            if (const HRESULT status = Coerce(mOwn, source, Wire<T>::kVarType); FAILED(status))
                throw BadArgument{{status}, given.index};
            return &Wire<T>::Of(mOwn);
        }
    }

    struct Nothing
    {
    };

    Variant mOwn;
    [[no_unique_address]] std::conditional_t<kIsRecordType<T>, T, Nothing> mCopy;
    Place mPlace;
};

/// Puts a result into a variant, which owns it from then on, also where that fails.
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

#endif

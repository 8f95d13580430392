#ifndef ZLMIM_COMPONENT_HOLDERS_H
#define ZLMIM_COMPONENT_HOLDERS_H

#include "zlmim/component/abi.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace ZLMIM::Component
{

/// \addtogroup hosts
/// @{

/// Owns a text of the component interface; null, which is the empty text, to begin with.
class Text
{
public:
    Text() = default;
    /// A copy.
    /// @throws std::bad_alloc
    explicit Text(std::u16string_view text) : mText(Allocate(text)) {}
    /// Takes over the text of `other`.
    Text(Text&& other) noexcept : mText(std::exchange(other.mText, nullptr)) {}
    /// Takes over the text of `other`, which gets this one.
    Text& operator=(Text&& other) noexcept
    {
        std::swap(mText, other.mText);
        return *this;
    }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(mText); }

    /// Owns a text that a call has given.
    [[nodiscard]] static Text Adopt(BSTR given) noexcept
    {
        Text text;
        text.mText = given;
        return text;
    }

    /// A text that the caller must free.
    /// @throws std::bad_alloc
    [[nodiscard]] static BSTR Allocate(std::u16string_view text)
    {
        if (text.size() > std::numeric_limits<UINT>::max() / 4)
            throw std::bad_alloc();
        // The characters of some systems are a type of their own, with 16 bits as well.
        auto* const allocated = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
        if (!allocated)
            throw std::bad_alloc();
        std::copy(text.begin(), text.end(), allocated);
        return allocated;
    }

    /// The characters of a text that may be null.
    [[nodiscard]] static std::u16string Copy(BSTR text)
    {
        return text ? std::u16string(text, text + SysStringLen(text)) : std::u16string();
    }

    /// Its characters.
    [[nodiscard]] std::u16string Copy() const { return Copy(mText); }
    /// For a call that reads it; stays owned here.
    [[nodiscard]] BSTR Get() const noexcept { return mText; }
    /// Gives the text away.
    [[nodiscard]] BSTR Detach() noexcept { return std::exchange(mText, nullptr); }
    /// Where a call leaves its result; what was held before is freed.
    [[nodiscard]] BSTR* Out() noexcept
    {
        SysFreeString(std::exchange(mText, nullptr));
        return &mText;
    }
    /// Where a call finds a text and may leave another.
    [[nodiscard]] BSTR* InOut() noexcept { return &mText; }

private:
    BSTR mText = nullptr;
};

/// Owns a counted reference to an interface; null to begin with.
template <class T>
class Pointer
{
public:
    Pointer() = default;
    /// Takes over a reference that has been counted already.
    explicit Pointer(T* counted) noexcept : mPointer(counted) {}
    /// Counts a reference of its own.
    Pointer(const Pointer& other) noexcept : mPointer(other.mPointer)
    {
        if (mPointer)
            mPointer->AddRef();
    }
    /// Takes over the reference of `other`.
    Pointer(Pointer&& other) noexcept : mPointer(std::exchange(other.mPointer, nullptr)) {}
    /// Takes over the reference of `other`, and releases the former one.
    Pointer& operator=(Pointer other) noexcept
    {
        std::swap(mPointer, other.mPointer);
        return *this;
    }
    ~Pointer() { Reset(); }

    /// Releases the reference.
    void Reset() noexcept
    {
        if (T* const pointer = std::exchange(mPointer, nullptr))
            pointer->Release();
    }
    /// Stays owned here.
    [[nodiscard]] T* Get() const noexcept { return mPointer; }
    /// Calls a member; the pointer must not be null.
    [[nodiscard]] T* operator->() const noexcept { return mPointer; }
    /// Whether it isn't null.
    [[nodiscard]] explicit operator bool() const noexcept { return mPointer != nullptr; }
    /// Gives the reference away.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(mPointer, nullptr); }
    /// Where a call leaves its result; what was held before is released.
    [[nodiscard]] T** Out() noexcept
    {
        Reset();
        return &mPointer;
    }
    /// The same for calls that don't tell the interface's type.
    [[nodiscard]] void** OutAny() noexcept { return reinterpret_cast<void**>(Out()); }

private:
    T* mPointer = nullptr;
};

/// A variant that owns what it holds; empty to begin with.
class Variant : public VARIANT
{
public:
    Variant() noexcept : VARIANT() { VariantInit(this); }
    /// A whole number, such as that of an entry of a list.
    explicit Variant(LONG number) noexcept : Variant()
    {
        vt = VT_I4;
        lVal = number;
    }
    /// A float.
    explicit Variant(float number) noexcept : Variant()
    {
        vt = VT_R4;
        fltVal = number;
    }
    /// A copy of a text.
    /// @throws std::bad_alloc
    explicit Variant(std::u16string_view text) : Variant()
    {
        bstrVal = Text::Allocate(text);
        vt = VT_BSTR;
    }
    /// An object, of which it counts a reference of its own.
    explicit Variant(IDispatch* object) noexcept : Variant()
    {
        vt = VT_DISPATCH;
        pdispVal = object;
        if (object)
            object->AddRef();
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }

    /// Where a call leaves its result; what was held before is freed.
    [[nodiscard]] VARIANT* Out() noexcept
    {
        VariantClear(this);
        return this;
    }
};

/// @}

} // namespace ZLMIM::Component

#endif

#pragma once

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

/// Owns a text. Initially null, which is the empty text.
class Text
{
public:
    Text() = default;
    /// A copy of `text`.
    /// @throws std::bad_alloc
    explicit Text(std::u16string_view text) : mText(Allocate(text)) {}
    /// Takes over the text of `other`.
    Text(Text&& other) noexcept : mText(std::exchange(other.mText, nullptr)) {}
    /// Exchanges the texts.
    Text& operator=(Text&& other) noexcept
    {
        std::swap(mText, other.mText);
        return *this;
    }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(mText); }

    /// Owns a text that a call returned.
    [[nodiscard]] static Text Adopt(BSTR given) noexcept
    {
        Text text;
        text.mText = given;
        return text;
    }

    /// Returns a copy that the caller must free.
    /// @throws std::bad_alloc
    [[nodiscard]] static BSTR Allocate(std::u16string_view text)
    {
        if (text.size() > std::numeric_limits<UINT>::max() / 4)
            throw std::bad_alloc();
        // On some systems OLECHAR is another type of 16 bits.
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

    /// The characters.
    [[nodiscard]] std::u16string Copy() const { return Copy(mText); }
    /// For a call that reads the text, which stays owned here.
    [[nodiscard]] BSTR Get() const noexcept { return mText; }
    /// Releases ownership to the caller.
    [[nodiscard]] BSTR Detach() noexcept { return std::exchange(mText, nullptr); }
    /// For a call that returns a text. Frees the present one.
    [[nodiscard]] BSTR* Out() noexcept
    {
        SysFreeString(std::exchange(mText, nullptr));
        return &mText;
    }
    /// For a call that reads the text and may replace it.
    [[nodiscard]] BSTR* InOut() noexcept { return &mText; }

private:
    BSTR mText = nullptr;
};

/// Owns a counted reference to an interface. Initially null.
template <class T>
class Pointer
{
public:
    Pointer() = default;
    /// Takes over a reference that the caller owns.
    explicit Pointer(T* owned) noexcept : mPointer(owned) {}
    /// Adds a reference.
    Pointer(const Pointer& other) noexcept : mPointer(other.mPointer)
    {
        if (mPointer)
            mPointer->AddRef();
    }
    /// Takes over the reference of `other`.
    Pointer(Pointer&& other) noexcept : mPointer(std::exchange(other.mPointer, nullptr)) {}
    /// Takes over the reference of `other` and releases the present one.
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
    /// The pointer, still owned here.
    [[nodiscard]] T* Get() const noexcept { return mPointer; }
    /// Calls a member. The pointer must not be null.
    [[nodiscard]] T* operator->() const noexcept { return mPointer; }
    /// Whether it isn't null.
    [[nodiscard]] explicit operator bool() const noexcept { return mPointer != nullptr; }
    /// Releases ownership to the caller.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(mPointer, nullptr); }
    /// For a call that returns an interface. Releases the present one.
    [[nodiscard]] T** Out() noexcept
    {
        Reset();
        return &mPointer;
    }
    /// The same for calls that return any interface.
    [[nodiscard]] void** OutAny() noexcept { return reinterpret_cast<void**>(Out()); }

private:
    T* mPointer = nullptr;
};

/// A variant that owns what it holds. Initially empty.
class Variant : public VARIANT
{
public:
    Variant() noexcept : VARIANT() { VariantInit(this); }
    /// An integer, such as the index of an entry.
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
    /// An object, to which it adds a reference.
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

    /// For a call that returns a variant. Frees the present value.
    [[nodiscard]] VARIANT* Out() noexcept
    {
        VariantClear(this);
        return this;
    }
};

/// @}

} // namespace ZLMIM::Component

#pragma once

#include "zlmim/model/records.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ZLMIM::Testing
{

/// Writes the bytes of mesh and animation files, field by field, as their formats are documented. It computes
/// correct sizes, and writes wrong ones on request.
class Bytes
{
public:
    Bytes& Long(std::int32_t value) { return Record(value); }
    Bytes& Short(std::int32_t value) { return Record(static_cast<std::int16_t>(value)); }
    Bytes& Single(float value) { return Record(value); }
    /// Characters without a length: a tag, or a part of a string.
    Bytes& Text(std::string_view text)
    {
        mBytes += text;
        return *this;
    }
    /// A string: its length and its characters, without a 0 after them.
    Bytes& String(std::string_view text) { return Long(static_cast<std::int32_t>(text.size())).Text(text); }
    /// A record, or a list of numbers, in order.
    template <class T>
    Bytes& Record(const T& record)
    {
        static_assert(kIsRecord<T>);
        const auto bytes = std::bit_cast<std::array<char, sizeof(T)>>(record);
        return Text({bytes.data(), bytes.size()});
    }
    Bytes& Zeros(std::size_t count)
    {
        mBytes.append(count, '\0');
        return *this;
    }
    Bytes& Append(const Bytes& more) { return Text(more.mBytes); }

    /// A block: tag, size, payload. `sizeError` is added to the size field.
    Bytes& Block(std::string_view tag, const Bytes& payload, std::int32_t sizeError = 0)
    {
        return Text(tag).Long(static_cast<std::int32_t>(payload.Size()) + sizeError).Append(payload);
    }

    [[nodiscard]] std::size_t Size() const { return mBytes.size(); }
    [[nodiscard]] const std::string& Str() const { return mBytes; }
    [[nodiscard]] std::span<const std::byte> Span() const { return std::as_bytes(std::span(mBytes)); }

private:
    std::string mBytes;
};

/// The beginning of a mesh file: signature, kind, and an info block with `extra` bytes after its fields.
inline Bytes MeshHeader(std::int32_t chunkCount, std::int32_t version = 104, std::size_t extra = 0)
{
    const auto info = Bytes().Long(version).Zeros(28).Long(chunkCount).Zeros(extra);
    return Bytes()
        .Text("JIRF")
        .Long(0)
        .Block("IDXM", Bytes())
        .Long(static_cast<std::int32_t>(info.Size()))
        .Append(info);
}

/// The beginning of an animation file: signature, kind, and an info block with `extra` bytes after its
/// fields.
inline Bytes AnimHeader(std::string_view name, std::int32_t frameCount, std::int32_t fps = 30,
                        float metScale = 1, std::int32_t version = 100, std::size_t extra = 0)
{
    const auto info =
        Bytes().Long(version).String(name).Long(frameCount).Long(fps).Single(metScale).Zeros(extra);
    return Bytes()
        .Text("JIRF")
        .Long(0)
        .Block("ANIM", Bytes())
        .Long(static_cast<std::int32_t>(info.Size()))
        .Append(info);
}

} // namespace ZLMIM::Testing

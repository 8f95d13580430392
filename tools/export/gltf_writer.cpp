#include "gltf_writer.h"

#include "gltf_json.h"

#include "tools/common/paths.h"
#include "tools/common/save_file.h"

#include "zlmim/model/text.h"

#include <bit>
#include <functional>
#include <initializer_list>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string_view>

namespace ZLMIM::Export
{
namespace
{

using Write = std::function<void(const void* bytes, std::size_t size)>;

void WritePadded(const void* bytes, std::size_t size, const Write& write)
{
    write(bytes, size);
    if (Aligned(size) > size)
        write("\0\0\0", Aligned(size) - size);
}

void WriteViews(const Document& document, const Write& write)
{
    for (const BufferView& view : document.Views)
        WritePadded(view.Bytes.data(), view.Bytes.size(), write);
}

/// A document as one file, written piece by piece.
class Glb
{
public:
    /// @throws std::length_error past the 4 GiB that one file can have.
    explicit Glb(const Document& document) : mDocument(document), mJson(JsonOf(document, nullptr))
    {
        mJson.resize(Aligned(mJson.size()), ' ');
        for (const BufferView& view : document.Views)
            mBinary += Aligned(view.Bytes.size());
        for (const Image& image : document.Images)
            mBinary += Aligned(image.Bytes.size());
        if (Size() > std::numeric_limits<std::uint32_t>::max())
            throw std::length_error("it is too large for one file; write a .gltf");
    }

    [[nodiscard]] std::size_t Size() const
    {
        constexpr std::size_t kHead = 12;
        constexpr std::size_t kChunkHead = 8;
        return kHead + kChunkHead + mJson.size() + (mBinary > 0 ? kChunkHead + mBinary : 0);
    }

    void WriteTo(const Write& write) const;

private:
    const Document& mDocument;
    std::string mJson;
    std::size_t mBinary = 0;
};

void Glb::WriteTo(const Write& write) const
{
    static_assert(std::endian::native == std::endian::little);
    const auto writeNumbers = [&](std::initializer_list<std::uint32_t> numbers)
    { write(std::data(numbers), numbers.size() * sizeof(std::uint32_t)); };
    constexpr std::uint32_t kMagic = 0x46546C67;  // "glTF"
    constexpr std::uint32_t kJson = 0x4E4F534A;   // "JSON"
    constexpr std::uint32_t kBinary = 0x004E4942; // "BIN"
    writeNumbers(
        {kMagic, 2, static_cast<std::uint32_t>(Size()), static_cast<std::uint32_t>(mJson.size()), kJson});
    write(mJson.data(), mJson.size());
    if (mBinary == 0)
        return;
    writeNumbers({static_cast<std::uint32_t>(mBinary), kBinary});
    WriteViews(mDocument, write);
    for (const Image& image : mDocument.Images)
        WritePadded(image.Bytes.data(), image.Bytes.size(), write);
}

/// Escapes what may not be part of a URI.
std::string Uri(const std::string& name)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    constexpr std::string_view kPlain = "-._~";
    std::string uri;
    for (const char c : name)
    {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                             kPlain.find(c) != std::string_view::npos;
        const auto byte = static_cast<unsigned char>(c);
        if (isPlain)
            uri += c;
        else
            uri.append(1, '%').append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
    }
    return uri;
}

Write Into(std::ostream& out)
{
    return [&out](const void* bytes, std::size_t size)
    { out.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(size)); };
}

void SaveFiles(const Document& document, const std::filesystem::path& file)
{
    const auto beside = [&file](const std::string& ending)
    {
        std::filesystem::path path = file;
        path.replace_extension();
        return path += ending;
    };
    const auto nameOf = [](const std::filesystem::path& path)
    { return Uri(Tools::ToUtf8Path(path.filename())); };
    Links links = {nameOf(beside(".bin")), {}};
    for (const Image& image : document.Images)
    {
        const std::filesystem::path path =
            beside("-" + std::to_string(links.Images.size() + 1) + (image.IsJpeg ? ".jpg" : ".png"));
        Tools::SaveFile(path, [&](std::ostream& out) { Into(out)(image.Bytes.data(), image.Bytes.size()); });
        links.Images.push_back(nameOf(path));
    }
    if (!document.Views.empty())
        Tools::SaveFile(beside(".bin"), [&](std::ostream& out) { WriteViews(document, Into(out)); });
    Tools::SaveFile(file, JsonOf(document, &links));
}

} // namespace

std::string ToGlb(const Document& document)
{
    const Glb glb(document);
    std::string bytes;
    bytes.reserve(glb.Size());
    glb.WriteTo([&bytes](const void* piece, std::size_t size)
                { bytes.append(static_cast<const char*>(piece), size); });
    return bytes;
}

void Save(const Document& document, const std::filesystem::path& file)
{
    if (LowerCase(Tools::ToName(file.extension())) == u".gltf")
    {
        SaveFiles(document, file);
        return;
    }
    const Glb glb(document);
    Tools::SaveFile(file, [&glb](std::ostream& out) { glb.WriteTo(Into(out)); });
}

} // namespace ZLMIM::Export

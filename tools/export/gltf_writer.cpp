#include "gltf_writer.h"

#include "gltf_json.h"

#include "zlmim/model/text.h"

#include <bit>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <limits>
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

/// Passes a document of one file to `write`, piece by piece, after its size to `reserve`.
void MakeGlb(const Document& document, const std::function<void(std::size_t)>& reserve, const Write& write)
{
    std::string json = JsonOf(document, nullptr);
    json.resize(Aligned(json.size()), ' ');
    std::size_t binary = 0;
    for (const BufferView& view : document.Views)
        binary += Aligned(view.Bytes.size());
    for (const Image& image : document.Images)
        binary += Aligned(image.Bytes.size());
    constexpr std::size_t kHead = 12;
    constexpr std::size_t kChunkHead = 8;
    const std::size_t size = kHead + kChunkHead + json.size() + (binary > 0 ? kChunkHead + binary : 0);
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("it is too large for one file; write a .gltf");
    reserve(size);
    static_assert(std::endian::native == std::endian::little);
    const auto writeNumbers = [&](std::initializer_list<std::uint32_t> numbers)
    { write(std::data(numbers), numbers.size() * sizeof(std::uint32_t)); };
    constexpr std::uint32_t kMagic = 0x46546C67;  // "glTF"
    constexpr std::uint32_t kJson = 0x4E4F534A;   // "JSON"
    constexpr std::uint32_t kBinary = 0x004E4942; // "BIN"
    writeNumbers(
        {kMagic, 2, static_cast<std::uint32_t>(size), static_cast<std::uint32_t>(json.size()), kJson});
    write(json.data(), json.size());
    if (binary == 0)
        return;
    writeNumbers({static_cast<std::uint32_t>(binary), kBinary});
    WriteViews(document, write);
    for (const Image& image : document.Images)
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

void Close(std::ofstream& file, const std::filesystem::path& path)
{
    file.close();
    if (!file)
    {
        const std::u8string name = path.u8string();
        throw std::runtime_error(std::string(name.begin(), name.end()) + " can't be written");
    }
}

void SaveFile(const std::filesystem::path& path, const std::function<void(std::ostream&)>& writeContent)
{
    std::ofstream file(path, std::ios::binary);
    writeContent(file);
    Close(file, path);
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
    {
        const std::u8string name = path.filename().u8string();
        return Uri(std::string(name.begin(), name.end()));
    };
    Links links = {nameOf(beside(".bin")), {}};
    for (const Image& image : document.Images)
    {
        const std::filesystem::path path =
            beside("-" + std::to_string(links.Images.size() + 1) + (image.IsJpeg ? ".jpg" : ".png"));
        SaveFile(path, [&](std::ostream& out) { Into(out)(image.Bytes.data(), image.Bytes.size()); });
        links.Images.push_back(nameOf(path));
    }
    if (!document.Views.empty())
        SaveFile(beside(".bin"), [&](std::ostream& out) { WriteViews(document, Into(out)); });
    SaveFile(file, [&](std::ostream& out) { out << JsonOf(document, &links); });
}

} // namespace

std::string ToGlb(const Document& document)
{
    std::string glb;
    MakeGlb(
        document, [&glb](std::size_t size) { glb.reserve(size); },
        [&glb](const void* bytes, std::size_t size) { glb.append(static_cast<const char*>(bytes), size); });
    return glb;
}

void Save(const Document& document, const std::filesystem::path& file)
{
    if (LowerCase(file.extension().u16string()) == u".gltf")
    {
        SaveFiles(document, file);
        return;
    }
    // Opened only when the size is known to be allowed.
    std::ofstream out;
    MakeGlb(
        document, [&](std::size_t) { out.open(file, std::ios::binary); }, Into(out));
    Close(out, file);
}

} // namespace ZLMIM::Export

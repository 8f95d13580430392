#include "tools/common/texture_files.h"

#include "tools/common/paths.h"

#include "zlmim/model/text.h"

#include <boost/crc.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <optional>
#include <span>

namespace ZLMIM::Tools
{
namespace
{

/// Endings of pictures, the likeliest first.
constexpr std::array<std::u16string_view, 5> kEndings = {u".tga", u".bmp", u".png", u".jpg", u".jpeg"};
constexpr std::u16string_view kDescription = u".texture.txt";
constexpr std::u16string_view kCompiled = u".texture";

constexpr const char* kCutShort = "is cut short";

/// The file's first bytes, as many as there are, and its size.
struct Beginning
{
    std::array<unsigned char, 32> Bytes = {};
    std::uint64_t Size = 0;

    [[nodiscard]] bool StartsWith(std::string_view text) const
    {
        return std::equal(text.begin(), text.end(), Bytes.begin(),
                          [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; });
    }
    [[nodiscard]] std::uint32_t Number(std::size_t position, std::size_t bytes) const
    {
        std::uint32_t number = 0;
        while (bytes-- > 0)
            number = number * 256 + Bytes.at(position + bytes);
        return number;
    }
};

std::string End(std::ifstream& stream, std::streamoff bytes)
{
    stream.clear();
    stream.seekg(-bytes, std::ios::end);
    std::string end(static_cast<std::size_t>(bytes), '\0');
    stream.read(end.data(), static_cast<std::streamsize>(bytes));
    return end;
}

constexpr std::size_t kTgaHeader = 18;

/// Whether the numbers of the header make a picture in this format, which has no signature.
bool IsTga(const Beginning& file)
{
    const unsigned kind = file.Bytes[2] & ~8U;
    const std::array<unsigned, 5> depths = {8, 15, 16, 24, 32};
    return file.Bytes[1] <= 1 && kind >= 1 && kind <= 3 &&
           std::find(depths.begin(), depths.end(), file.Bytes[16]) != depths.end();
}

/// Whether a file of packets, from `position` on, ends before it has all pixels.
bool ArePacketsCutShort(std::ifstream& stream, std::uint64_t position, std::uint64_t size,
                        std::uint64_t pixels, std::uint64_t bytesPerPixel)
{
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(position));
    while (pixels > 0 && position < size)
    {
        const auto packet = static_cast<unsigned>(stream.get());
        const std::uint64_t run = (packet & 0x7F) + 1;
        const std::uint64_t data = (packet & 0x80) != 0 ? bytesPerPixel : run * bytesPerPixel;
        stream.ignore(static_cast<std::streamsize>(data));
        position += 1 + data;
        pixels -= std::min(pixels, run);
    }
    return pixels > 0 || position > size;
}

bool IsTgaCutShort(const Beginning& file, std::ifstream& stream)
{
    const std::uint32_t colours = file.Bytes[1] == 1 ? file.Number(5, 2) * ((file.Bytes[7] + 7U) / 8) : 0;
    const std::uint64_t pixels = std::uint64_t{file.Number(12, 2)} * file.Number(14, 2);
    const std::uint64_t start = kTgaHeader + file.Bytes[0] + colours;
    const std::uint64_t bytesPerPixel = (file.Bytes[16] + 7U) / 8;
    const bool isPacked = file.Bytes[2] > 8;
    return isPacked ? ArePacketsCutShort(stream, start, file.Size, pixels, bytesPerPixel)
                    : file.Size < start + pixels * bytesPerPixel;
}

std::uint32_t BigEndian(std::span<const char, 4> bytes)
{
    std::uint32_t number = 0;
    for (const char byte : bytes)
        number = number * 256 + static_cast<unsigned char>(byte);
    return number;
}

/// Compares the checksums of a PNG file's chunks, whose sizes must fit into the file.
bool ArePngChunksDamaged(std::ifstream& stream, std::uint64_t size)
{
    constexpr std::uint64_t kSignature = 8;
    constexpr std::uint64_t kAroundData = 12;
    stream.clear();
    stream.seekg(kSignature);
    std::array<char, 4> number = {};
    std::array<char, 65'536> buffer = {};
    for (std::uint64_t position = kSignature; position + kAroundData <= size;)
    {
        stream.read(number.data(), number.size());
        const std::uint64_t length = BigEndian(number);
        position += kAroundData + length;
        if (position > size)
            return true;
        boost::crc_32_type sum;
        // The checksum is over the chunk's kind too.
        for (std::uint64_t left = length + 4; left > 0 && stream;)
        {
            const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(left, buffer.size()));
            stream.read(buffer.data(), static_cast<std::streamsize>(part));
            sum.process_bytes(buffer.data(), part);
            left -= part;
        }
        stream.read(number.data(), number.size());
        if (!stream || sum.checksum() != BigEndian(number))
            return true;
    }
    return false;
}

bool IsEnding(std::u16string_view ending)
{
    return std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end();
}

/// The file with that name in a folder.
std::optional<NativePath> FileIn(const NativePath& folder, std::u16string_view lowerName, PathResolver& names)
{
    const auto entries = names.List(folder);
    auto entry =
        std::lower_bound(entries.begin(), entries.end(), lowerName,
                         [](const FolderEntry& a, std::u16string_view b) { return a.lowerName < b; });
    for (; entry != entries.end() && entry->lowerName == lowerName; ++entry)
        if (!entry->isFolder)
            return folder + entry->nativePath;
    return std::nullopt;
}

/// The picture that a texture's description names in a line such as `Primary=wood.tga`; empty if there is no
/// such line.
std::u16string PrimaryOf(const NativePath& description)
{
    constexpr std::u16string_view kKey = u"primary=";
    constexpr std::size_t kMostLines = 100;
    std::ifstream stream(ToPath(description), std::ios::binary);
    std::array<char, 512> line = {};
    for (std::size_t i = 0; i < kMostLines && stream.getline(line.data(), line.size()); ++i)
    {
        const std::u16string text = LowerCase(Trim(FromWindows1252(line.data())));
        if (text.starts_with(kKey))
            return std::u16string(Trim(std::u16string_view(text).substr(kKey.size())));
    }
    return {};
}

} // namespace

std::vector<NativePath> TextureFiles(const NativePath& meshFolder, std::u16string_view texture,
                                     PathResolver& names)
{
    const std::u16string name = LowerCase(texture);
    const std::size_t dot = std::min(name.rfind(u'.'), name.size());
    const auto find = [&](const std::u16string& stem)
    {
        std::vector<NativePath> files;
        for (const std::u16string_view ending : kEndings)
            if (auto file = FileIn(meshFolder, stem + std::u16string(ending), names))
                files.push_back(*std::move(file));
        return files;
    };
    const std::u16string stem = name.substr(0, dot);
    std::vector<NativePath> files = find(stem);
    const std::u16string ending = name.substr(dot);
    // A name without an ending may have a dot.
    if (files.empty() && !ending.empty() && !IsEnding(ending) && ending != kCompiled)
        files = find(name);
    if (!files.empty())
        return files;
    if (auto description = FileIn(meshFolder, stem + std::u16string(kDescription), names))
    {
        const std::u16string primary = PrimaryOf(*description);
        auto picture = primary.empty() ? std::nullopt : FileIn(meshFolder, primary, names);
        files.push_back(*std::move(picture ? picture : description));
    }
    else if (auto compiled = FileIn(meshFolder, stem + std::u16string(kCompiled), names))
        files.push_back(*std::move(compiled));
    return files;
}

std::string PictureDamage(const NativePath& name)
{
    const std::filesystem::path path = ToPath(name);
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return "can't be read";
    Beginning file;
    stream.read(reinterpret_cast<char*>(file.Bytes.data()), std::ssize(file.Bytes));
    stream.clear();
    stream.seekg(0, std::ios::end);
    file.Size = static_cast<std::uint64_t>(std::max<std::streamoff>(stream.tellg(), 0));
    if (file.Size == 0)
        return "is empty";
    const std::u16string lowerName = LowerCase(ToName(path));
    constexpr const char* kNoPixels = "has a width or height of 0";
    const bool isPng = file.StartsWith("\x89PNG");
    const bool isJpeg = file.StartsWith("\xFF\xD8\xFF");
    const bool isBmp = file.StartsWith("BM");
    const bool isTga = lowerName.ends_with(u".tga");
    const bool isOtherKind = (lowerName.ends_with(u".png") && !isPng) ||
                             (lowerName.ends_with(u".bmp") && !isBmp) ||
                             ((lowerName.ends_with(u".jpg") || lowerName.ends_with(u".jpeg")) && !isJpeg) ||
                             (isTga && (isPng || isJpeg || (file.Size >= kTgaHeader && !IsTga(file))));
    if (isOtherKind)
        return "isn't the kind of picture that its ending says";
    if (isPng)
    {
        if (file.Size < 57 || End(stream, 8).substr(0, 4) != "IEND")
            return kCutShort;
        return ArePngChunksDamaged(stream, file.Size) ? "is damaged: a checksum in it is wrong" : "";
    }
    if (isJpeg)
    {
        // Some writers put zeros after the end.
        std::string end = End(stream, static_cast<std::streamoff>(std::min<std::uint64_t>(file.Size, 64)));
        end.erase(end.find_last_not_of('\0') + 1);
        return end.ends_with("\xFF\xD9") ? "" : kCutShort;
    }
    if (isBmp)
    {
        constexpr std::uint32_t kNewHeader = 40;
        if (file.Size < std::max(file.Number(2, 4), 26U))
            return kCutShort;
        const bool isNew = file.Number(14, 4) >= kNewHeader;
        return isNew && (file.Number(18, 4) == 0 || file.Number(22, 4) == 0) ? kNoPixels : "";
    }
    if (file.StartsWith("DDS "))
        return file.Size < 128 ? kCutShort : "";
    if (!isTga)
        return {};
    if (file.Size < kTgaHeader)
        return kCutShort;
    if (file.Number(12, 2) == 0 || file.Number(14, 2) == 0)
        return kNoPixels;
    return IsTgaCutShort(file, stream) ? kCutShort : "";
}

} // namespace ZLMIM::Tools

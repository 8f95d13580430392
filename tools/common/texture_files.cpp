#include "tools/common/texture_files.h"

#include "tools/common/paths.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>

namespace ZLMIM::Tools
{
namespace
{

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
    stream.read(end.data(), bytes);
    return end;
}

bool IsTgaCutShort(const Beginning& file)
{
    constexpr std::size_t kHeader = 18;
    const std::uint32_t colours = file.Bytes[1] == 1 ? file.Number(5, 2) * ((file.Bytes[7] + 7U) / 8) : 0;
    const std::uint64_t pixels = std::uint64_t{file.Number(12, 2)} * file.Number(14, 2);
    const bool isPacked = file.Bytes[2] > 8;
    // A packed run has at most 128 pixels, and at least one byte.
    const std::uint64_t data = isPacked ? pixels / 128 : pixels * ((file.Bytes[16] + 7U) / 8);
    return file.Size < kHeader + file.Bytes[0] + colours + data;
}

} // namespace

std::vector<NativePath> TextureFiles(const NativePath& meshFolder, std::u16string_view texture,
                                     PathResolver& names)
{
    const std::u16string stem = LowerCase(texture.substr(0, texture.rfind(u'.')));
    std::vector<NativePath> files;
    const auto entries = names.List(meshFolder);
    auto entry =
        std::lower_bound(entries.begin(), entries.end(), stem,
                         [](const FolderEntry& a, const std::u16string& b) { return a.lowerName < b; });
    for (; entry != entries.end() && entry->lowerName.starts_with(stem); ++entry)
    {
        const auto ending = std::u16string_view(entry->lowerName).substr(stem.size());
        const bool isAlike = ending.empty() || ending.front() == u'.';
        if (isAlike && !entry->isFolder && ending != u".im" && ending != u".kin")
            files.push_back(meshFolder + entry->nativePath);
    }
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
    const auto isCut = [&]
    {
        using namespace std::string_view_literals;
        if (file.StartsWith("\x89PNG"))
            return file.Size < 57 || End(stream, 8).substr(0, 4) != "IEND";
        if (file.StartsWith("\xFF\xD8\xFF"))
        {
            // Some writers put zeros after the end.
            std::string end =
                End(stream, static_cast<std::streamoff>(std::min<std::uint64_t>(file.Size, 64)));
            end.erase(end.find_last_not_of('\0') + 1);
            return !end.ends_with("\xFF\xD9");
        }
        if (file.StartsWith("BM"))
            return file.Size < std::max(file.Number(2, 4), 26U);
        if (file.StartsWith("DDS "))
            return file.Size < 128;
        return lowerName.ends_with(u".tga") && (file.Size < 18 || IsTgaCutShort(file));
    };
    if (isCut())
        return kCutShort;
    const bool isWrong =
        (lowerName.ends_with(u".png") && !file.StartsWith("\x89PNG")) ||
        (lowerName.ends_with(u".bmp") && !file.StartsWith("BM")) ||
        ((lowerName.ends_with(u".jpg") || lowerName.ends_with(u".jpeg")) && !file.StartsWith("\xFF\xD8"));
    return isWrong ? "isn't the kind of picture that its ending says" : "";
}

} // namespace ZLMIM::Tools

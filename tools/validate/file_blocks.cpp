#include "file_blocks.h"

#include "tools/common/paths.h"
#include "tools/common/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{
namespace
{

/// Blocks of one kind in a row.
struct Blocks
{
    std::string_view Tag;
    std::int64_t Most = 1;
    /// Plural of what the blocks contain, if the file has a count of them.
    std::string_view Counted = {};
};

struct Header
{
    std::string Tag;
    std::int64_t Size = 0;
};

class Walk
{
public:
    Walk(const NativePath& file, std::int64_t size)
        : mFile(Tools::ToPath(file), std::ios::binary), mSize(size)
    {
    }

    /// Walks over the blocks, which are optional and in that order.
    void Check(const std::vector<Blocks>& all, Report& report)
    {
        constexpr std::int64_t kInfo = 16;
        mPosition = kInfo + 4 + NumberAt(kInfo);
        std::string_view last = "the info block";
        for (const Blocks& blocks : all)
        {
            for (std::int64_t i = 0; i < blocks.Most && mPosition < mSize; ++i)
            {
                const Header header = Next();
                if (header.Tag != blocks.Tag || header.Size < 0)
                    break;
                mPosition += 8 + header.Size;
                last = blocks.Tag;
            }
        }
        if (mPosition > mSize)
        {
            report.Add(Code::FileLength, {},
                       "the file ends " + Tools::Bytes(static_cast<std::uint64_t>(mPosition - mSize)) +
                           " before its last block, " + std::string(last) + ", does: it is cut short");
        }
        else if (mPosition < mSize)
        {
            const Header rest = Next();
            const auto counted = std::find_if(all.begin(), all.end(),
                                              [&](const Blocks& blocks)
                                              { return blocks.Tag == rest.Tag && !blocks.Counted.empty(); });
            const std::int64_t surplus = mSize - mPosition;
            std::string message = Tools::Bytes(static_cast<std::uint64_t>(surplus)) +
                                  " after its last block, " + std::string(last) +
                                  (surplus == 1 ? ", isn't read" : ", aren't read");
            if (counted != all.end())
                message += ": it has more " + std::string(counted->Counted) + " than the " +
                           Tools::Number(counted->Most) + " that it announces";
            else if (std::all_of(rest.Tag.begin(), rest.Tag.end(),
                                 [](char c) { return c >= 'A' && c <= 'Z'; }))
                message += ": they begin with a block " + rest.Tag;
            report.Add(Code::FileLength, {}, std::move(message));
        }
    }

private:
    std::int64_t NumberAt(std::int64_t position)
    {
        std::int32_t number = 0;
        mFile.clear();
        mFile.seekg(position);
        mFile.read(reinterpret_cast<char*>(&number), sizeof(number));
        return number;
    }

    Header Next()
    {
        Header header = {std::string(4, '\0'), NumberAt(mPosition + 4)};
        mFile.clear();
        mFile.seekg(mPosition);
        mFile.read(header.Tag.data(), 4);
        return header;
    }

    std::ifstream mFile;
    std::int64_t mSize;
    std::int64_t mPosition = 0;
};

} // namespace

void CheckLength(const Mesh& mesh, const NativePath& file, Report& report)
{
    Walk(file, mesh.FileSize)
        .Check({{"CHNK", mesh.ChunkCount, "chunks"}, {"INFL"}, {"ATCH"}, {"SKEL"}}, report);
}

void CheckLength(const Anim& anim, const NativePath& file, Report& report)
{
    Walk(file, anim.FileSize).Check({{"EVNT"}, {"SKEL"}, {"FRAM", anim.FrameCount, "frames"}}, report);
}

} // namespace ZLMIM::Validate

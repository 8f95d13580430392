#include "bench/hostile.h"
#include "tests/asset_folder.h"
#include "tests/good_files.h"
#include "tests/outcome.h"

#include <fstream>
#include <string_view>

namespace Bench
{

using namespace ZLMIM::Testing;
using std::filesystem::path;

namespace
{

constexpr int kMissing = 4'096;
using ZLMIM::Testing::kBounds;

void Write(const path& file, const std::string& bytes)
{
    create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

/// Calls `line` for each number, and joins the lines.
template <class Line>
std::string Lines(int count, const Line& line)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::string(line(std::to_string(i))) + "\n";
    return text;
}

std::string Kuid(const std::string& name) { return "<" + name + ">"; }

std::string MissingReferences(int count)
{
    return Lines(count, [](const std::string& i) { return "bogey-" + i + " <none:" + i + ">"; });
}

std::string MeshTable(int entries, const std::string& keys)
{
    return "mesh-table\n{\n" +
           Lines(entries, [&](const std::string& i) { return "e" + i + "\n{\n" + keys + "}"; }) + "}\n";
}

/// One asset, whose folder holds all its files.
Hostile Asset(const std::string& name, std::string_view outcome,
              const std::function<std::string(const path&)>& writeFiles)
{
    const auto write = [writeFiles](const path& folder)
    {
        Write(folder / "top/assets/a/config.txt", writeFiles(folder / "top/assets/a"));
        return std::string("top/assets/a/config.txt");
    };
    return {name, Hostile::Kind::Asset, std::string(outcome), write};
}

/// Assets in levels, each referring to all of the next level.
Hostile Levels(const std::string& name, int levels, int width)
{
    const auto write = [levels, width](const path& folder)
    {
        for (int level = 0; level < levels; ++level)
        {
            for (int i = 0; i < width; ++i)
            {
                const auto asset = [](int l, const std::string& n) { return std::to_string(l) + "-" + n; };
                const std::string own = asset(level, std::to_string(i));
                const auto reference = [&](const std::string& n)
                { return "bogey-" + n + " " + Kuid(asset(level + 1, n)); };
                Write(folder / "top/assets" / ("x" + own) / "config.txt",
                      "kuid " + Kuid(own) + "\n" + Lines(width, reference));
            }
        }
        return std::string("top/assets/x0-0/config.txt");
    };
    return {name, Hostile::Kind::Asset, "done", write};
}

Hostile OneLine(const std::string& name, const std::string& outcome, const std::string& start)
{
    return Asset(name, outcome, [start](const path&) { return start + std::string(100'000'000, 'x'); });
}

} // namespace

std::vector<Hostile> HostileAssets()
{
    return {
        Levels("chain of 200 references", 200, 1),
        Levels("lattice of references, 8 wide", 12, 8),
        Levels("lattice of references, 2 wide", 40, 2),
        Asset("4,096 references to nothing", "done", [](const path&) { return MissingReferences(kMissing); }),
        Asset("20,000 keys of references", "done", [](const path&) { return MissingReferences(20'000); }),
        Asset("the same among 50,000 folders", "done",
              [](const path& folder)
              {
                  for (int i = 0; i < 50'000; ++i)
                      Write(folder.parent_path() / std::to_string(i) / "config.txt", "kuid <x>\n");
                  return MissingReferences(kMissing);
              }),
        Asset("a reference among 300 configs of 8 MiB", kBounds,
              [](const path& folder)
              {
                  const path longFile = folder.parent_path() / "0/config.txt";
                  Write(longFile, Lines(200'000, [](const std::string&)
                                        { return "description words, words and more words."; }));
                  for (int i = 1; i < 300; ++i)
                  {
                      create_directories(folder.parent_path() / std::to_string(i));
                      create_hard_link(longFile, folder.parent_path() / std::to_string(i) / "config.txt");
                  }
                  return MissingReferences(2);
              }),
        Asset("a quotation mark that is never closed", "done",
              [](const path&) {
                  return "description \"" +
                         Lines(1'000'000, [](const std::string&) { return "and so on, and so on"; });
              }),
        Asset("a neighbour's config of 1 GiB of zeroes", kBounds,
              [](const path& folder)
              {
                  Write(folder.parent_path() / "b/config.txt", "");
                  resize_file(folder.parent_path() / "b/config.txt", std::uintmax_t{1} << 30U);
                  return MissingReferences(1);
              }),
        Asset("100,000,000 line feeds in quotation marks", kBounds,
              [](const path&) { return "description \"" + std::string(100'000'000, '\n') + "\"\n"; }),
        OneLine("a line of 100 MB", std::string(kBounds), ""),
        OneLine("a value of 100 MB", std::string(kBounds), "description "),
        OneLine("a kuid of 100 MB", std::string(kBounds), "kuid "),
        OneLine("a quoted value of 100 MB", std::string(kBounds), "description \""),
        Asset("1,000,000 entries of a mesh table", kBounds,
              [](const path&) { return MeshTable(1'000'000, ""); }),
        Asset("16,000 entries with 65,536 bones each", kBounds,
              [](const path& folder)
              {
                  Write(folder / "m.im", MeshWith(MeshBone("r", 65'535)).Str());
                  return MeshTable(16'000, "mesh m.im\n");
              }),
        Asset("500 entries with a mesh of 32 MiB", kBounds,
              [](const path& folder)
              {
                  const std::array<std::int32_t, 5> counts = {1'600'000, 0, 0, 0, 0};
                  const auto geometry =
                      Bytes().Long(200).Zeros(8).Record(counts).Long(0).Zeros(std::size_t{32} * counts[0]);
                  Write(folder / "m.im",
                        MeshHeader(1).Block("CHNK", Bytes().Long(1).Long(1).Block("GEOM", geometry)).Str());
                  return MeshTable(500, "mesh m.im\n");
              }),
        Asset("16,000 attachments sought among 100,000", kBounds,
              [](const path& folder)
              {
                  auto payload = Bytes().Long(100).Long(100'000);
                  for (int i = 0; i < 100'000; ++i)
                      payload.String("a.point.with.a.name").Record(ZLMIM::Matrix{});
                  Write(folder / "m.im", MeshHeader(0).Block("ATCH", payload).Str());
                  return "mesh-table\n{\np\n{\nmesh m.im\n}\n" +
                         Lines(16'000, [](const std::string& i)
                               { return "e" + i + "\n{\natt-parent p\natt a.point.with.a.mark\n}"; }) +
                         "}\n";
              }),
        Asset("16,000 level-of-detail lists of 1 MB", kBounds,
              [](const path& folder)
              {
                  Write(folder / "l.lm.txt",
                        Lines(50'000, [](const std::string&) { return "mesh(\"2\") and more"; }));
                  return MeshTable(16'000, "mesh l.lm\n");
              }),
        Asset("4,096 references to 1 MB without a kuid", kBounds,
              [](const path& folder)
              {
                  Write(folder.parent_path() / "b/config.txt",
                        "description " + std::string(1'000'000, 'x') + "\n");
                  return Lines(kMissing, [](const std::string& i) { return "bogey-" + i + " <b>"; });
              }),
        Asset("1,000 names of 60 folders in another letter case", "done",
              [](const path& folder)
              {
                  std::string name;
                  for (int i = 0; i < 25; ++i)
                      name += "A/../";
                  create_directories(folder / "A");
                  return MeshTable(1'000, "mesh " + name + "missing.im\n");
              }),
    };
}

} // namespace Bench

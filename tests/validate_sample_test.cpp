#include "asset_folder.h"
#include "output.h"
#include "tools/sample/sample_assets.h"
#include "validate_findings.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>

namespace ZLMIM::Testing
{
namespace
{

/// A copy of the sample in a temporary folder, for a test to damage.
class WrittenSample
{
public:
    WrittenSample()
    {
        Sample::WriteSampleAssets("../..");
        std::filesystem::current_path("..");
    }

    [[nodiscard]] static std::string Read(const std::string& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void Write(const std::string& file, const std::string& bytes) { mFolder.Write(file, bytes); }
    void Replace(const std::string& file, const std::string& from, const std::string& to)
    {
        std::string text = Read(file);
        const std::size_t place = text.find(from);
        ASSERT_NE(place, std::string::npos) << from;
        Write(file, text.replace(place, from.size(), to));
    }

private:
    AssetFolder mFolder;
};

TEST(Validate, FindsMistakesInConfigs)
{
    const struct
    {
        const char* from;
        const char* to;
        Lines findings; // in the wagon's config
    } cases[] = {
        // Braces: one finding, whatever follows from it.
        {"  }\n  load\n", "  load\n", {"line 15: brace-missing"}},
        {"    }\n  }\n  spare", "  }\n  spare", {"line 25: brace-missing"}},
        {"      }\n    }", "    }", {"line 27: brace-missing"}},
        {"a.roof\n  }\n", "a.roof\n", {"line 33: brace-missing"}},
        {"a.roof\n  }\n}\n", "a.roof\n  }\n", {"line 13: brace-missing"}},
        {"a.roof\n  }\n}\n", "a.roof\n", {"line 33: brace-missing"}},
        {"doors.kin\n  }\n", "doors.kin\n  }\n  }\n", {"line 20: brace-extra"}},
        {"mesh body.im\n", "mesh body.im\n    }\n", {"line 18: brace-extra"}},
        {"pantograph <kuid:4711:3001>\n", "pantograph <kuid:4711:3001>\n}\n", {"line 12: brace-extra"}},
        {"a.roof\n  }\n}\n", "a.roof\n  }\n}\n}\n", {"line 40: brace-extra"}},
        {"load\n  {\n", "load\n", {"line 20: brace-missing"}},
        {"mesh-table\n{\n", "mesh-table\n", {"line 13: brace-missing"}},
        // Quotation marks.
        {"wagon\"", "wagon", {"line 3: quote-open"}},
        {"bogeys.\"", "bogeys.", {"line 6: quote-open"}},
        {"mesh body.im", "mesh \"body.im", {"line 17: quote-open"}},
        {"loaded", "{\nloaded", {"line 6: quote-doubtful"}},
        {"loaded", "\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\nloaded", {"line 6: quote-doubtful"}},
        {"wagon\"", "wagon\"\"", {"line 3: quote-doubtful"}},
        // Keys.
        {"username", "usernmae", {"line 3: key-misspelt"}},
        {"mesh-table", "mesh-tabel", {"line 13: key-misspelt", "line 17: no-mesh"}},
        {"mesh-table", "mesh table", {"line 17: no-mesh"}},
        {"mesh body",
         "msh body",
         {"line 15, entry \"default\": entry-without-mesh", "line 17, entry \"default\": key-misspelt"}},
        {"anim", "amin", {"line 18, entry \"default\": key-misspelt"}},
        {"username ", "username=", {"line 3: key-misspelt"}},
        {"username \"", "name \"", {"line 3: key-missing"}},
        {"kind \"traincar\"", "kind", {"line 2: value-missing"}},
        {"anim doors.kin", "anim \"\"", {"line 18, entry \"default\": value-missing"}},
        {"bogey-1", "bogye-1", {"line 10: key-misspelt"}},
        {"kuid ", "kiud ", {": kuid-missing", "line 1: key-misspelt"}},
        {"anim doors.kin", "anim doors.kin\n    mesh body.im", {"line 19, entry \"default\": key-twice"}},
        {"author", "username \"x\"\nauthor", {"line 4: key-twice"}},
        {"spare-crate", "default", {"line 33, entry \"default\": entry-twice"}},
        // Names.
        {"att a.roof", "att a.rof", {"line 37, entry \"spare-crate\": att-unknown"}},
        {"att-parent default", "att-parent defualt", {"line 23, entry \"load\": att-parent-unknown"}},
        {"att-parent default", "att-parent load", {"line 23, entry \"load\": att-parent-unknown"}},
        {"mesh body.im", "mesh bdy.im", {"line 17, entry \"default\": file-missing"}},
        {"mesh body.im", "mesh", {"line 17, entry \"default\": entry-without-mesh"}},
        {"doors.kin", "door.kin", {"line 18, entry \"default\": file-missing"}},
        {"load.lm", "laod.lm", {"line 22, entry \"load\": file-missing"}},
        // Kuids and references.
        {"kuid <kuid:4711:1001>\n", "", {": kuid-missing"}},
        {"<kuid:4711:1001>", "kuid:4711:1001", {"line 1: kuid-malformed"}},
        {"<kuid:4711:1001>", "<kuid2:4711:1001>", {"line 1: kuid-malformed"}},
        {"<kuid:4711:1001>", "<kuid2:-4711:1001:3>", {}},
        {"bogey-1 <kuid:4711:2001>", "bogey-1", {"line 10, bogey-1: reference-empty"}},
        {"bogey-1 <kuid:4711:2001>", "bogey-1 <kuid:4711:1001>", {"line 10, bogey-1: reference-to-itself"}},
        {"bogey-1 <kuid:4711:2001>", "bogey-1 <kuid:4711:2002>", {"line 10, bogey-1: kuid-not-found"}},
        {"bogey-1 <kuid:4711:2001>", "bogey-1 <kuid:4711 2001>", {"line 10, bogey-1: kuid-malformed"}},
        {"bogey-1 <kuid:4711:2001>", "bogey-1 <KUID:4711:2001>", {"line 10, bogey-1: kuid-not-found"}},
        // Encodings.
        {"The sample's author", "M\xC3\xBCller", {"line 4: config-utf8"}},
        {"The sample's author", "M\xFCller", {}},
        {"The sample's author", "M\x01ller", {"line 4: config-not-text"}},
    };
    for (const auto& [from, to, findings] : cases)
    {
        WrittenSample sample;
        sample.Replace("wagon/config.txt", from, to);
        EXPECT_EQ(Found({"."}, true), InFull("wagon/config.txt: ", findings)) << from << " -> " << to;
    }
}

using Damage = std::function<void(std::string& bytes)>;

Damage Becomes(const std::string& bytes)
{
    return [=](std::string& b) { b = bytes; };
}

Damage Grow(const std::string& bytes)
{
    return [=](std::string& b) { b += bytes; };
}

Damage Cut(std::size_t count)
{
    return [=](std::string& b) { b.resize(b.size() - count); };
}

/// Writes `bytes` over those in the file, `offset` after the last `place`.
Damage Put(const std::string& place, std::size_t offset, const std::string& bytes)
{
    return [=](std::string& b) { b.replace(b.rfind(place) + offset, bytes.size(), bytes); };
}

TEST(Validate, FindsDamagedFiles)
{
    const auto zeros = [](std::size_t count) { return std::string(count, '\0'); };
    constexpr const char* kConfig = "wagon/config.txt";
    constexpr const char* kBody = "wagon/body.im";
    constexpr const char* kCrates = "wagon/load/load_far.im";
    constexpr const char* kBogey = "bogey y/bogey.im";
    constexpr const char* kPlanks = "wagon/planks.tga";
    constexpr const char* kDoors = "wagon/doors.kin";
    constexpr const char* kNoAsset = "wagon/config.txt: line 15, entry \"default\": asset-not-loaded";
    constexpr const char* kBadTexture = "wagon/body.im: chunk 2, texture 1: texture-damaged";
    const struct
    {
        const char* file;
        Damage damage;
        Lines findings; // in this file, or in full
    } cases[] = {
        {kConfig, Becomes(" \r\n"), {": config-empty"}},
        {kConfig, Becomes({"\xFF\xFEk\0u\0", 6}), {": config-not-text"}}, // UTF-16
        {kConfig, Becomes(MeshHeader(0).Str()), {"line 1: config-not-text"}},
        {kConfig, Becomes("Dear reader,\nthis is a letter.\n"), {": config-unknown"}},
        {kConfig, [](auto& b) { b.resize(b.find("att-parent")); }, {"line 20: brace-missing"}},
        {kConfig, Becomes("kuid <a:1>\nkind x\nusername x\nmesh-table {\n}\n"), {"line 4: mesh-table-empty"}},
        {"bogey y/config.txt",
         Grow("bogey <kuid:4711:1001>\n"),
         {"wagon/config.txt: line 9, bogey-0: reference-cycle"}},
        {kBody, Becomes(""), {": not-loaded"}},
        {kBody, Cut(5'000), {": not-loaded", kNoAsset}},
        {kBody, Cut(2), {": not-loaded", kNoAsset}},
        {kBody, Grow("xxx"), {": file-length"}},
        {kBogey, Grow({"INFL\x40\0\0\0", 8}), {": file-length"}},
        {kCrates, Put("JIRF", 52, "\1"), {": file-length"}}, // a chunk fewer
        {kCrates, Becomes(MeshHeader(0).Str()), {": mesh-empty"}},
        {kCrates, Becomes(MeshHeader(-1).Str()), {": negative-count"}},
        {kBogey, Put("m.metal", 15, {"\0\0\x20\x40", 4}), {"chunk 3, material: material-range"}}, // opacity
        {kBody,
         [](auto& b) { b[b.rfind("textures\\wagon\\planks.") - 8] = 77; },
         {"chunk 2, texture 1: material-range"}},
        {kBody, Put("a.Bogey1", 0, "a.Bogey0"), {"attachment point 2 \"a.bogey0\": name-twice"}},
        {kBody, Put("a.Bogey1", 0, zeros(1)), {"attachment point 2 \"\": name-missing"}},
        {kBody, Put("a.Roof", 6, zeros(36)), {"attachment point 6 \"a.roof\": zero-transform"}},
        {kBody, Put("a.Roof", 18, zeros(12)), {"attachment point 6 \"a.roof\": zero-transform"}}, // flat
        {kBody, Put("b.r.body", 20, zeros(16)), {"bone 2 \"b.r.body\": zero-transform"}},
        {kBody,
         Put("b.r.body", 0, "b.r.bodi"),
         {"chunk 2: bone-unknown", "wagon/config.txt: line 15, entry \"default\": animation-tree"}},
        {kPlanks, Becomes(""), {kBadTexture}},
        {kPlanks, Becomes("<html>this is no picture</html>"), {kBadTexture}},
        {kPlanks, Cut(1), {kBadTexture}},
        {kDoors, Put("doors", 5, "\x18"), {": file-length"}}, // a frame fewer
        {kDoors, Put("doors", 9, zeros(1)), {": animation-rate"}},
        {kDoors, Becomes(""), {kNoAsset, ": not-loaded"}},
    };
    for (const auto& [file, damage, findings] : cases)
    {
        WrittenSample sample;
        std::string bytes = WrittenSample::Read(file);
        damage(bytes);
        sample.Write(file, bytes);
        EXPECT_EQ(Found({"."}, true), InFull(std::string(file) + ": ", findings));
    }
    WrittenSample sample;
    std::filesystem::rename("wagon/config.txt", "wagon/config.txt.txt");
    EXPECT_EQ(Found({"."}, true), Lines{"wagon/config.txt.txt: : config-name"});
    std::filesystem::rename("wagon/config.txt.txt", "wagon/confg.txt");
    EXPECT_EQ(Found({"."}, true), Lines{"wagon/confg.txt: : config-name"});
    std::filesystem::create_directory("empty");
    EXPECT_EQ(Found({"empty"}, true), Lines{"empty: : not-loaded"});
}

TEST(Validate, FindsNothingWrongWithTheSample)
{
    const AssetFolder folder;
    Sample::WriteSampleAssets("../..");
    std::ostringstream text;
    WriteText(Validate::Validate({{".."}, true, 0}), text);
    EXPECT_EQ(text.str(), "10 files in 3 assets, nothing wrong found\n");
}

TEST(Validate, ReportsAKuidOfSeveralAssetsOnce)
{
    WrittenSample sample;
    sample.Replace("wagon/config.txt", "<kuid:4711:1001>", "<kuid:4711:2001>");
    sample.Write("other/config.txt", "kuid <kuid:4711:2001>\nbogey <kuid:4711:3001>\nkind x\nusername x\n");
    const auto findings = Validate::Validate({{"."}, true, 2}).Findings;
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[0].Code, Validate::Code::KuidShared);
    EXPECT_NE(findings[0].Message.find("config.txt\", \""), std::string::npos) << findings[0].Message;
    EXPECT_EQ(findings[1].Code, Validate::Code::ReferenceToItself); // both bogeys of the wagon
    EXPECT_EQ(findings[2].Code, Validate::Code::ReferenceToItself);
    // Without the other asset's folder, its reference says so.
    EXPECT_EQ(Found({"wagon"}), (Lines{"wagon/config.txt: line 9, bogey-0: reference-to-itself",
                                       "wagon/config.txt: line 10, bogey-1: reference-to-itself"}));
}

TEST(Validate, WritesFindingsInEachForm)
{
    using enum Validate::Code;
    const Validate::Result result = {{{AttUnknown, u"w/config.txt", {7, u"a\u001B\u00E4", 0, {}}, "m"},
                                      {IndexOutside, u"w/a.im", {0, {}, 2, "index 3"}, "n"},
                                      {KuidMissing, u"v/config.txt", {}, "o"}},
                                     3,
                                     {u"v/config.txt", u"w/config.txt"}};
    const auto written = [&result](auto write)
    {
        std::ostringstream out;
        write(result, out);
        return out.str();
    };
    EXPECT_EQ(written([](auto& r, auto& out) { WriteText(r, out); }),
              "w/config.txt: line 7, entry \"a\\x1B\u00E4\": error: m [att-unknown]\n"
              "w/a.im: chunk 2, index 3: error: n [index-outside]\n"
              "v/config.txt: error: o [kuid-missing]\n"
              "3 files in 2 assets: 3 errors, 0 warnings in 2 of them\n");
    EXPECT_EQ(written([](auto& r, auto& out) { WriteLines(r, out); }),
              "w/config.txt:7: error: entry \"a\\x1B\u00E4\": m [att-unknown]\n"
              "w/a.im:1: error: chunk 2, index 3: n [index-outside]\n"
              "v/config.txt:1: error: o [kuid-missing]\n");
    std::string json = written([](auto& r, auto& out) { WriteJson(r, out); });
    std::erase_if(json, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(json,
              R"({"files":3,"assets":2,"errors":3,"warnings":0,"findings":[)"
              R"({"file":"w/config.txt","line":7,"entry":"a\u001Bä","severity":"error",)"
              R"("code":"att-unknown","message":"m"},)"
              R"({"file":"w/a.im","chunk":2,"place":"index3","severity":"error","code":"index-outside",)"
              R"("message":"n"},)"
              R"({"file":"v/config.txt","severity":"error","code":"kuid-missing","message":"o"}]})");
}

} // namespace
} // namespace ZLMIM::Testing

#include "asset_folder.h"
#include "good_files.h"
#include "output.h"
#include "tools/sample/sample_assets.h"
#include "tools/sample/sample_files.h"
#include "validate.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <sstream>

namespace ZLMIM::Testing
{
namespace
{

using Validate::Result;
using Lines = std::vector<std::string>;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// The contents of a chunk. By default, two valid triangles that form a square.
struct Plan
{
    PrimFlag kind = PrimFlag::TRIANGLES;
    std::int32_t primitives = 2;
    std::vector<Vertex> vertices = {{0, 0, 0, 0, 0}, {1, 0, 0, 1, 0}, {0, 1, 0, 0, 1}, {1, 1, 0, 1, 1}};
    std::vector<std::int16_t> indices = {0, 1, 2, 2, 1, 3};
    std::vector<Vector> normals = std::vector<Vector>(4, {0, 0, 1});
    std::vector<Vector> faceNormals = std::vector<Vector>(2, {0, 0, 1});
    std::string bone = "D";
    std::string texture = "x\\Wood.texture";
};

/// `count` small triangles in a row, facing up.
Plan RowOfTriangles(int count)
{
    Plan plan;
    plan.vertices.clear();
    plan.indices.clear();
    for (int i = 0; i < 3 * count; ++i)
    {
        const auto x = static_cast<float>(i / 3 + (i % 3 == 1 ? 1 : 0));
        plan.vertices.push_back({x, i % 3 == 2 ? 1.0F : 0, 0, x, 0});
        plan.indices.push_back(static_cast<std::int16_t>(i));
    }
    plan.primitives = count;
    plan.normals.assign(plan.vertices.size(), {0, 0, 1});
    plan.faceNormals.clear();
    return plan;
}

/// An animation's skeleton A(B(D), C), or that of a mesh.
template <class MakeBone>
Bytes Tree(const MakeBone& bone)
{
    return bone("A", 2, bone("B", 1, bone("D", 0, {})).Append(bone("C", 0, {})));
}

Bytes PlannedChunk(const Plan& plan)
{
    const auto size = [](const auto& list) { return static_cast<std::int32_t>(list.size()); };
    auto geometry = Bytes().Long(200).Long(static_cast<std::int32_t>(plan.kind)).Single(0);
    geometry.Long(size(plan.vertices)).Long(plan.primitives).Long(size(plan.indices));
    geometry.Long(size(plan.faceNormals)).Long(0).String(plan.bone);
    const auto append = [&geometry](const auto& records)
    { std::for_each(records.begin(), records.end(), [&](const auto& record) { geometry.Record(record); }); };
    append(plan.vertices);
    append(plan.indices);
    append(plan.normals);
    append(plan.faceNormals);
    auto material = Bytes().Long(101).Long(0).Zeros(3 * sizeof(rgbColour)).Long(0);
    material.Long(1).Long(1).String(plan.texture).Single(1);
    return Bytes().Long(100).Long(1).Block("MATL", material).Block("GEOM", geometry);
}

/// A mesh with a default chunk, a chunk according to `plan`, an attachment point and a skeleton.
std::string PlannedMesh(const Plan& plan = {})
{
    return MeshHeader(2)
        .Block("CHNK", PlannedChunk({}))
        .Block("CHNK", PlannedChunk(plan))
        .Block("ATCH",
               Bytes().Long(100).Long(1).String("a.Lamp").Record(Matrix{.m11 = 1, .m22 = 1, .m33 = 1}))
        .Append(MeshSkeleton(Tree(MeshBone)))
        .Str();
}

/// An animation for the skeleton of that mesh, with these frames.
std::string PlannedAnim(std::int32_t frameCount, const std::vector<std::int32_t>& frames, float x = 1)
{
    auto anim = AnimWith(frameCount, Tree(AnimBone));
    for (const std::int32_t frame : frames)
        anim.Append(Frame(frame, {x, 2, 3, 4}));
    return anim.Str();
}

/// The findings for these paths, "file: place: code" each, with slashes.
Lines Found(const Lines& paths, bool isRecursive = false, unsigned threads = 2)
{
    Lines lines;
    for (const auto& finding : Validate::Validate({paths, isRecursive, threads, {}}).Findings)
    {
        std::string file = ToUtf8(finding.File);
        std::replace(file.begin(), file.end(), '\\', '/');
        lines.push_back(file + ": " + Text(finding.Place) + ": " + std::string(Info(finding.Code).Name));
    }
    return lines;
}

TEST(Validate, ChecksMeshes)
{
    using enum PrimFlag;
    const struct
    {
        void (*damage)(Plan& p);
        Lines findings;
    } cases[] = {
        {[](Plan&) {}, {}},
        {[](Plan& p) { p.indices = {0, 1, 4, 2, 1, -1}; }, {", index 2: index-outside"}},
        {[](Plan& p) { p.kind = PrimFlag{13}; }, {": primitive-kind"}},
        {[](Plan& p) { p.primitives = 1; }, {": primitive-count"}},
        {[](Plan& p) { p.primitives = -1; }, {": negative-count"}},
        {[](Plan& p) { p.indices.push_back(0); }, {": primitive-count"}},
        {[](Plan& p) { p.kind = NONE; }, {": primitive-count"}},
        {[](Plan& p) { p.kind = LINES, p.primitives = 3, p.faceNormals = {}; }, {}},
        {[](Plan& p) { p.kind = LINE_STRIP, p.faceNormals = {}; }, {": primitive-count"}},
        {[](Plan& p) { p.kind = POINTS, p.primitives = 6; }, {": face-normal-count"}},
        {[](Plan& p) { p.kind = TRI_STRIP, p.primitives = 4, p.faceNormals.resize(4, {1}); }, {}},
        {[](Plan& p) { p.kind = TRI_FAN, p.indices.resize(4); }, {", triangle 1: degenerate-triangle"}},
        {[](Plan& p) { p.vertices[2].y = 1e-8F; }, {", triangle 0: degenerate-triangle"}},
        {[](Plan& p) { p.vertices[2].y = 1e-5F; }, {}},
        {[](Plan& p) { p.faceNormals.pop_back(); }, {": face-normal-count"}},
        {[](Plan& p) { p.normals[1].y = 0.2F; }, {", normal 1: normal-length"}},
        {[](Plan& p) { p.normals[1].z = 126 / 127.0F; }, {}},
        {[](Plan& p) { p.faceNormals[0].y = kNan; }, {", face normal 1: not-finite"}},
        {[](Plan& p) { p.vertices[2].v = kNan; }, {", vertex 2: not-finite"}},
        {[](Plan& p) { p.vertices[1].x = 2e5F; },
         {", vertex 1: vertex-far", ", triangle 1: degenerate-triangle"}},
        {[](Plan& p)
         { p.vertices.clear(), p.normals.clear(), p.indices.clear(), p.primitives = 0, p.faceNormals = {}; },
         {": chunk-empty"}},
        {[](Plan& p) { p = RowOfTriangles(10), std::swap(p.indices[9], p.indices[10]); },
         {", triangle 3: face-reversed"}},
        {[](Plan& p) { p = RowOfTriangles(2), std::swap(p.indices[3], p.indices[4]); }, {}},
        {[](Plan& p) { p = RowOfTriangles(3), p.indices[3] = 1, p.indices[4] = 2, p.indices[5] = 0; },
         {", triangle 1: triangle-twice"}},
        {[](Plan& p) {
             p.faceNormals.assign(2, {0, 0, -1}), p.indices = {1, 0, 2, 1, 2, 3};
         },
         {", face normal 1: face-normal-reversed"}},
        {[](Plan& p) { p.indices.clear(), p.faceNormals.clear(), p.primitives = 0; }, {": chunk-empty"}},
        {[](Plan& p)
         { std::for_each(p.vertices.begin(), p.vertices.end(), [](Vertex& v) { v.u = v.v = 0; }); },
         {": texture-unplaced"}},
        {[](Plan& p) { p.bone = "E"; }, {": bone-unknown"}},
        {[](Plan& p) { p.bone = "d"; }, {": bone-letter-case"}},
        {[](Plan& p) { p.texture = "Woo.texture"; }, {", texture 1: texture-missing"}},
        {[](Plan& p) { p.texture = "body"; }, {", texture 1: texture-missing"}},
    };
    AssetFolder folder;
    folder.Write("wagon/wood.TGA", ::Sample::CratePicture().Str());
    for (const auto& [damage, findings] : cases)
    {
        Plan plan;
        damage(plan);
        folder.Write("wagon/body.im", PlannedMesh(plan));
        Lines expected;
        for (const std::string& finding : findings)
            expected.push_back("body.im: chunk 2" + finding);
        EXPECT_EQ(Found({"body.im"}), expected) << testing::PrintToString(findings);
    }
}

TEST(Validate, ChecksAnimationsAndFilesThatDontLoad)
{
    const struct
    {
        std::string file;
        std::string bytes;
        Lines findings;
    } cases[] = {
        {"from 0.kin", PlannedAnim(2, {0, 1}), {}},
        {"from 1.kin", PlannedAnim(2, {2, 1}), {}},
        {"none.kin", PlannedAnim(0, {}), {"none.kin: : animation-rate"}},
        {"gap.kin", PlannedAnim(3, {3, 0, 1}), {"gap.kin: slot 2: frame-unfilled"}},
        {"zeros.kin", PlannedAnim(1, {0}, 0), {}},
        {"twice.kin", PlannedAnim(3, {0, 1, 1}), {"twice.kin: slot 2: frame-unfilled"}},
        {"too few.kin", PlannedAnim(3, {0, 1}), {"too few.kin: : not-loaded"}},
        {"nan.kin", PlannedAnim(1, {0}, kNan), {"nan.kin: bone 1 \"A\", slot 0: not-finite"}},
        {"no mesh.im", "JIRX", {"no mesh.im: : not-loaded"}},
        {"cut.im", PlannedMesh().substr(0, 300), {"cut.im: : not-loaded"}},
        {"empty.IM", "", {"empty.IM: : not-loaded"}},
        {"CONFIG.TXT", "kuid <a:1>\n\nauthor \"x", {"CONFIG.TXT: line 3: quote-open"}},
    };
    for (const auto& [file, bytes, findings] : cases)
    {
        AssetFolder folder;
        folder.Write("wagon/" + file, bytes);
        EXPECT_EQ(Found({file}), findings) << file;
        EXPECT_EQ(Found({"."}, true), findings) << file;
    }
    const AssetFolder folder;
    EXPECT_EQ(Found({"none.im", "."}), Lines({".: : not-loaded", "none.im: : not-loaded"}));
}

/// A copy of the sample in a temporary folder, for a test to damage.
class Sample
{
public:
    Sample()
    {
        ::Sample::WriteSampleAssets("../..");
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
    constexpr const char* kWagon = "wagon/config.txt: ";
    const struct
    {
        const char* from;
        const char* to;
        Lines findings; // in the wagon's config, or in full
    } cases[] = {
        {"kuid", "kuid", {}},
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
        Sample sample;
        sample.Replace("wagon/config.txt", from, to);
        Lines expected;
        for (const std::string& finding : findings)
            expected.push_back(kWagon + finding);
        EXPECT_EQ(Found({"."}, true), expected) << from << " -> " << to;
    }
}

TEST(Validate, FindsDamagedFiles)
{
    using Text = std::string;
    const struct
    {
        const char* name;
        const char* file;
        void (*damage)(Text& bytes);
        Lines findings;
    } cases[] = {
        {"empty config",
         "wagon/config.txt",
         [](Text& b) { b = " \r\n"; },
         {"wagon/config.txt: : config-empty"}},
        {"UTF-16",
         "wagon/config.txt",
         [](Text& b) { b = Text("\xFF\xFEk\0u\0", 6); },
         {"wagon/config.txt: : config-not-text"}},
        {"a mesh as config",
         "wagon/config.txt",
         [](Text& b) { b = Sample::Read("wagon/body.im"); },
         {"wagon/config.txt: line 1: config-not-text"}},
        {"another text",
         "wagon/config.txt",
         [](Text& b) { b = "Dear reader,\nthis is a letter.\n"; },
         {"wagon/config.txt: : config-unknown"}},
        {"cut config",
         "wagon/config.txt",
         [](Text& b) { b.resize(b.find("att-parent")); },
         {"wagon/config.txt: line 20: brace-missing"}},
        {"long quote",
         "wagon/config.txt",
         [](Text& b) { b.insert(b.find("loaded"), Text(25, '\n')); },
         {"wagon/config.txt: line 6: quote-doubtful"}},
        {"empty table",
         "wagon/config.txt",
         [](Text& b) { b.resize(b.find("mesh-table")), b += "mesh-table {\n}\n"; },
         {"wagon/config.txt: line 13: mesh-table-empty"}},
        {"empty mesh", "wagon/body.im", [](Text& b) { b.clear(); }, {"wagon/body.im: : not-loaded"}},
        {"cut mesh",
         "wagon/body.im",
         [](Text& b) { b.resize(b.size() / 2); },
         {"wagon/body.im: : not-loaded", "wagon/config.txt: line 15, entry \"default\": asset-not-loaded"}},
        {"cut skeleton",
         "wagon/body.im",
         [](Text& b) { b.resize(b.size() - 2); },
         {"wagon/body.im: : not-loaded", "wagon/config.txt: line 15, entry \"default\": asset-not-loaded"}},
        {"longer mesh", "wagon/body.im", [](Text& b) { b += "xxx"; }, {"wagon/body.im: : file-length"}},
        {"surplus chunk",
         "wagon/load/load_far.im",
         [](Text& b) { b[52] = 1; },
         {"wagon/load/load_far.im: : file-length"}},
        {"no chunks",
         "wagon/load/load_far.im",
         [](Text& b) { b = MeshHeader(0).Str(); },
         {"wagon/load/load_far.im: : mesh-empty"}},
        {"negative chunks",
         "wagon/load/load_far.im",
         [](Text& b) { b = MeshHeader(-1).Str(); },
         {"wagon/load/load_far.im: : negative-count"}},
        {"shorter mesh",
         "bogey y/bogey.im",
         [](Text& b) { b += Text("INFL\x40\0\0\0", 8); },
         {"bogey y/bogey.im: : file-length"}},
        {"opacity",
         "bogey y/bogey.im",
         [](Text& b) { b.replace(b.find("m.metal") + 15, 4, Text("\0\0\x20\x40", 4)); },
         {"bogey y/bogey.im: chunk 2, material: material-range"}},
        {"point twice",
         "wagon/body.im",
         [](Text& b) { b.replace(b.find("a.Bogey1"), 8, "a.Bogey0"); },
         {"wagon/body.im: attachment point 2 \"a.bogey0\": name-twice"}},
        {"point of zeros",
         "wagon/body.im",
         [](Text& b) { b.replace(b.find("a.Roof") + 6, 36, Text(36, '\0')); },
         {"wagon/body.im: attachment point 6 \"a.roof\": zero-transform"}},
        {"rotation of zeros",
         "wagon/body.im",
         [](Text& b) { b.replace(b.rfind("b.r.body") + 20, 16, Text(16, '\0')); },
         {"wagon/body.im: bone 2 \"b.r.body\": zero-transform"}},
        {"bone renamed",
         "wagon/body.im",
         [](Text& b) { b.replace(b.rfind("b.r.body"), 8, "b.r.bodi"); },
         {"wagon/body.im: chunk 2: bone-unknown",
          "wagon/config.txt: line 15, entry \"default\": animation-tree"}},
        {"empty texture",
         "wagon/planks.tga",
         [](Text& b) { b.clear(); },
         {"wagon/body.im: chunk 2, texture 1: texture-damaged"}},
        {"other picture kind",
         "wagon/planks.tga",
         [](Text& b) { b = "<html>this is no picture</html>"; },
         {"wagon/body.im: chunk 2, texture 1: texture-damaged"}},
        {"texture's role",
         "wagon/body.im",
         [](Text& b) { b[b.find("textures\\wagon\\planks.texture") - 8] = 77; },
         {"wagon/body.im: chunk 2, texture 1: material-range"}},
        {"point without a name",
         "wagon/body.im",
         [](Text& b) { b[b.find("a.Bogey1")] = 0; },
         {"wagon/body.im: attachment point 2 \"\": name-missing"}},
        {"flat point",
         "wagon/body.im",
         [](Text& b) { b.replace(b.find("a.Roof") + 6 + 12, 12, Text(12, '\0')); },
         {"wagon/body.im: attachment point 6 \"a.roof\": zero-transform"}},
        {"circle",
         "bogey y/config.txt",
         [](Text& b) { b += "bogey <kuid:4711:1001>\n"; },
         {"wagon/config.txt: line 9, bogey-0: reference-cycle"}},
        {"cut texture",
         "wagon/planks.tga",
         [](Text& b) { b.pop_back(); },
         {"wagon/body.im: chunk 2, texture 1: texture-damaged"}},
        {"extra frame",
         "wagon/doors.kin",
         [](Text& b) { b[b.find("doors") + 5] = 24; },
         {"wagon/doors.kin: : file-length"}},
        {"no rate",
         "wagon/doors.kin",
         [](Text& b) { b[b.find("doors") + 9] = 0; },
         {"wagon/doors.kin: : animation-rate"}},
        {"empty animation",
         "wagon/doors.kin",
         [](Text& b) { b.clear(); },
         {"wagon/config.txt: line 15, entry \"default\": asset-not-loaded", "wagon/doors.kin: : not-loaded"}},
    };
    for (const auto& [name, file, damage, findings] : cases)
    {
        Sample sample;
        std::string bytes = Sample::Read(file);
        damage(bytes);
        sample.Write(file, bytes);
        EXPECT_EQ(Found({"."}, true), findings) << name;
    }
    Sample sample;
    std::filesystem::rename("wagon/config.txt", "wagon/config.txt.txt");
    EXPECT_EQ(Found({"."}, true), Lines{"wagon/config.txt.txt: : config-name"});
    std::filesystem::rename("wagon/config.txt.txt", "wagon/confg.txt");
    EXPECT_EQ(Found({"."}, true), Lines{"wagon/confg.txt: : config-name"});
    std::filesystem::create_directory("empty");
    EXPECT_EQ(Found({"empty"}, true), Lines{"empty: : not-loaded"});
}

TEST(Validate, ComparesEntriesWithTheirFiles)
{
    const auto second = [](const std::string& keys)
    { return "kuid <a:1>\nmesh-table {\nbody {\nmesh body.im\n}\nx {\n" + keys + "}\n}\n"; };
    constexpr const char* kNames = "kind x\nusername x\n";
    const struct
    {
        std::string config;
        Lines findings;
    } cases[] = {
        {second("mesh body.im\nanim run.kin\natt-parent BODY\natt A.LAMP\n"), {}},
        {second("mesh body.im\nanim other.kin\n"), {"line 6, entry \"x\": animation-tree"}},
        {second("mesh bare.im\nanim run.kin\n"), {"line 8, entry \"x\": animation-tree"}},
        {second("mesh body.im\natt a.lamp\n"), {"line 8, entry \"x\": att-unknown"}},
        {second("mesh body.im\natt-parent body\n"), {"line 8, entry \"x\": att-unknown"}},
        {second("mesh body.im\neffects {\na {\n}\natt-parent no\n}\n"), {}},
        {"kuid <a:1>\nasset-filename bady\n", {"line 2, asset-filename: file-missing"}},
        {"kuid <a:1>\nasset-filename body\nbogeys {\n}\n", {}},
        {"kuid <a:1>\nbogey-0 <a:2>\nbogey-1 <a:2>\npantograph <A:3>\n",
         {"line 2, bogey-0: kuid-not-found", "line 4, pantograph: kuid-not-found"}},
        {"kuid <a:1>\nbogey <b:1>\n", {"line 2, bogey: kuid-found-twice"}},
        {"kuid <a:1>\nbogey <b:2>\n", {}},
    };
    AssetFolder folder;
    folder.Write("wagon/body.im", PlannedMesh()).Write("wagon/wood.tga", ::Sample::CratePicture().Str());
    folder.Write("wagon/run.kin", PlannedAnim(1, {0})).Write("wagon/bare.im", MeshHeader(0).Str());
    folder.Write("wagon/other.kin", AnimWith(0, AnimBone("A", 1, AnimBone("C"))).Str());
    folder.Write("p/config.txt", "kuid <b:1>\n").Write("q/config.txt", "author x\nKUID <B:1>\n");
    folder.Write("b 2/config.txt", "kuid <other:1>\n");
    for (const auto& [config, findings] : cases)
    {
        folder.Wagon(config + kNames);
        Lines expected;
        for (const std::string& finding : findings)
            expected.push_back("wagon/config.txt: " + finding);
        // The working folder doesn't matter.
        std::filesystem::current_path("..");
        Lines found = Found({"wagon"});
        std::erase_if(found, [](const std::string& line) { return !line.starts_with("wagon/config"); });
        EXPECT_EQ(found, expected) << config;
        std::filesystem::current_path("wagon");
        found = Found({"config.txt"});
        std::erase_if(found, [](const std::string& line) { return !line.starts_with("config"); });
        EXPECT_EQ(found.size(), expected.size()) << config;
    }
}

TEST(Validate, ChecksEachFileOnceAndContinuesAfterFailures)
{
    AssetFolder folder;
    folder.Write("bogey/cut.im", PlannedMesh().substr(0, 300)).Write("bogey/body.im", PlannedMesh());
    folder.Wagon("kuid <a:1>\nbogey <b:1>\nmesh-table {\na {\nmesh ../BOGEY/body.im\n}\nb {\nmesh "
                 "../bogey/cut.im\n}\n}\nkind x\nusername x\n");
    folder.Write("bogey/config.txt",
                 "kuid <b:1>\nmesh-table {\nc {\nmesh cut.im\n}\n}\nkind x\nusername x\n");
    std::filesystem::current_path("..");
    const Lines expected = {"bogey/body.im: chunk 1, texture 1: texture-missing",
                            "bogey/config.txt: line 3, entry \"c\": asset-not-loaded",
                            "bogey/cut.im: : not-loaded",
                            "wagon/config.txt: line 7, entry \"b\": asset-not-loaded"};
    EXPECT_EQ(Found({"wagon"}), expected);
    EXPECT_EQ(Found({"."}, true, 1), expected);
    EXPECT_EQ(Found({"bogey/cut.im", ".", "wagon", "bogey"}, true, 8), expected);
}

TEST(Validate, FindsNothingWrongWithTheSample)
{
    const AssetFolder folder;
    ::Sample::WriteSampleAssets("../..");
    std::ostringstream text;
    WriteText(Validate::Validate({{".."}, true, 0}), text);
    EXPECT_EQ(text.str(), "10 files in 3 assets, nothing wrong found\n");
}

TEST(Validate, ReportsAKuidOfSeveralAssetsOnce)
{
    Sample sample;
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
    const Result result = {{{AttUnknown, u"w/config.txt", {7, u"a\u001B\u00E4", 0, {}}, "m"},
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

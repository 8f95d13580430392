#include "asset_folder.h"
#include "good_files.h"
#include "output.h"
#include "tools/sample/sample_assets.h"
#include "validate.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace ZLMIM::Testing
{
namespace
{

using Validate::Result;
using Lines = std::vector<std::string>;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// A chunk's numbers: at first those of two good triangles that make a square.
struct Plan
{
    PrimFlag kind = PrimFlag::TRIANGLES;
    std::int32_t primitives = 2;
    std::vector<Vertex> vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    std::vector<std::int16_t> indices = {0, 1, 2, 2, 1, 3};
    std::vector<Vector> normals = std::vector<Vector>(4, {0, 0, 1});
    std::vector<Vector> faceNormals = std::vector<Vector>(2, {0, 0, 1});
    std::string bone = "D";
    std::string texture = "x\\Wood.texture";
};

/// An animation's skeleton A(B(D), C), or that of a mesh.
template <class MakeBone>
Bytes Tree(const MakeBone& bone)
{
    return bone("A", 2, bone("B", 1, bone("D", 0, {})).Append(bone("C", 0, {})));
}

/// A mesh with an empty chunk, then the planned one; with a lamp to hang things on, and a skeleton.
std::string PlannedMesh(const Plan& plan = {})
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
    const auto chunk = Bytes().Long(100).Long(1).Block("MATL", material).Block("GEOM", geometry);
    return MeshHeader(2)
        .Block("CHNK", Bytes().Long(100).Long(1).Text("none"))
        .Block("CHNK", chunk)
        .Block("ATCH", Bytes().Long(100).Long(1).String("a.Lamp").Record(Matrix{}))
        .Append(MeshSkeleton(Tree(MeshBone)))
        .Str();
}

/// The animation that fits it, with these frames.
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
        lines.push_back(file + ": " + finding.Place + ": " + std::string(Info(finding.Code).Name));
    }
    return lines;
}

TEST(Validate, JudgesMeshes)
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
        {[](Plan& p) { p.bone = "E"; }, {": bone-unknown"}},
        {[](Plan& p) { p.bone = "d"; }, {": bone-letter-case"}},
        {[](Plan& p) { p.texture = "Woo.texture"; }, {", texture 1: texture-missing"}},
        {[](Plan& p) { p.texture = "body"; }, {", texture 1: texture-missing"}},
    };
    AssetFolder folder;
    folder.Write("wagon/wood.x.TGA", "");
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

TEST(Validate, JudgesAnimationsAndFilesThatDontLoad)
{
    const struct
    {
        std::string file;
        std::string bytes;
        Lines findings;
    } cases[] = {
        {"from 0.kin", PlannedAnim(2, {0, 1}), {}},
        {"from 1.kin", PlannedAnim(2, {2, 1}), {}},
        {"none.kin", PlannedAnim(0, {}), {}},
        {"gap.kin", PlannedAnim(3, {3, 0, 1}), {"gap.kin: slot 2: frame-unfilled"}},
        {"twice.kin", PlannedAnim(3, {0, 1, 1}), {"twice.kin: slot 2: frame-unfilled"}},
        {"too few.kin", PlannedAnim(3, {0, 1}), {"too few.kin: : not-loaded"}},
        {"nan.kin", PlannedAnim(1, {0}, kNan), {"nan.kin: bone 1 \"A\", slot 0: not-finite"}},
        {"no mesh.im", "JIRX", {"no mesh.im: : not-loaded"}},
        {"cut.im", PlannedMesh().substr(0, 300), {"cut.im: : not-loaded"}},
        {"empty.IM", "", {"empty.IM: : not-loaded"}},
        {"CONFIG.TXT", "kuid <a>\n\nauthor \"x", {"CONFIG.TXT: line 3: not-loaded"}},
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

TEST(Validate, JudgesAssets)
{
    const auto second = [](const std::string& keys)
    { return "mesh-table {\nbody {\nmesh body.im\n}\nx {\n" + keys + "}\n}\n"; };
    const struct
    {
        std::string config;
        Lines findings;
    } cases[] = {
        {second("mesh body.im\nanim run.kin\natt-parent BODY\natt A.LAMP\n"), {}},
        {second("mesh body.im\natt-parent a\natt a.lamp\n"), {"line 7, entry \"x\": att-parent-unknown"}},
        {second("mesh body.im\natt-parent body\natt a\n"), {"line 8, entry \"x\": att-unknown"}},
        {second("mesh body.im\neffects {\na {\n}\natt-parent no\n}\n"), {}},
        {second("att-parent body\natt a.lamp\n"), {"line 5, entry \"x\": entry-without-mesh"}},
        {second("mesh no.im\n"), {"line 6, entry \"x\": file-missing"}},
        {second("mesh body.im\nanim no.kin\n"), {"line 7, entry \"x\": file-missing"}},
        {second("mesh no.lm\n"), {"line 6, entry \"x\": file-missing"}},
        {second("mesh body.im\nanim other.kin\n"), {"line 5, entry \"x\": animation-tree"}},
        {second("mesh bare.im\nanim run.kin\n"), {"line 7, entry \"x\": animation-tree"}},
        {"mesh-table\n{\nx\n{\nmesh body.im\n", {"line 3, entry \"x\": entry-lost"}},
        {"asset-filename no\n", {"line 1, asset-filename: file-missing"}},
        {"asset-filename body\n", {}},
        {"kuid <a:1>\nbogey-0 <a:2>\nbogey-1 <a:2>\npantograph <A:1>\nbogeys {\n}\n",
         {"line 2, bogey-0: kuid-not-found", "line 4, pantograph: kuid-not-found"}},
        {"bogey <b:1>\n", {"line 1, bogey: kuid-found-twice"}},
        {"bogey <b:2>\n", {}},
    };
    AssetFolder folder;
    folder.Write("wagon/body.im", PlannedMesh()).Write("wagon/wood.tga", "");
    folder.Write("wagon/run.kin", PlannedAnim(1, {0})).Write("wagon/bare.im", MeshHeader(0).Str());
    folder.Write("wagon/other.kin", AnimWith(0, AnimBone("A", 1, AnimBone("C"))).Str());
    folder.Write("p/config.txt", "kuid <b:1>\n").Write("q/config.txt", "author x\nKUID <B:1>\n");
    folder.Write("b 2/config.txt", "kuid <other>\n");
    for (const auto& [config, findings] : cases)
    {
        folder.Wagon(config);
        Lines expected;
        for (const std::string& finding : findings)
            expected.push_back("wagon/config.txt: " + finding);
        // The working folder doesn't matter.
        std::filesystem::current_path("..");
        EXPECT_EQ(Found({"wagon"}), expected) << config;
        std::filesystem::current_path("wagon");
        EXPECT_EQ(Found({"config.txt"}).size(), expected.size()) << config;
    }
}

TEST(Validate, JudgesEachFileOnceAndGoesOnBehindWhatEndsALoad)
{
    AssetFolder folder;
    folder.Write("bogey/cut.im", PlannedMesh().substr(0, 300)).Write("bogey/body.im", PlannedMesh());
    folder.Wagon("bogey <b>\nmesh-table {\na {\nmesh ../BOGEY/body.im\n}\nb {\nmesh ../bogey/cut.im\n}\n}\n");
    folder.Write("bogey/config.txt", "kuid <b>\nmesh-table {\nc {\nmesh cut.im\n}\n}\n");
    std::filesystem::current_path("..");
    const Lines expected = {"bogey/body.im: chunk 2, texture 1: texture-missing",
                            "bogey/config.txt: line 3, entry \"c\": asset-not-loaded",
                            "bogey/cut.im: : not-loaded",
                            "wagon/config.txt: line 6, entry \"b\": asset-not-loaded"};
    EXPECT_EQ(Found({"wagon"}), expected);
    EXPECT_EQ(Found({"."}, true, 1), expected);
    EXPECT_EQ(Found({"bogey/cut.im", ".", "wagon", "bogey"}, true, 8), expected);
}

TEST(Validate, FindsNothingWrongWithTheSample)
{
    const AssetFolder folder;
    Sample::WriteSampleAssets("../..");
    const Result result = Validate::Validate({{".."}, true, 0, {}});
    EXPECT_EQ(result.Files, 9U);
    std::ostringstream text;
    WriteText(result, text);
    EXPECT_EQ(text.str(), "");
}

TEST(Validate, WritesOneLineOrObjectForEach)
{
    const Result result = {{{Validate::Code::IndexOutside, u"a\u001B\u00E4.im", "chunk 1", "m"}}, 3};
    std::ostringstream text;
    WriteText(result, text);
    EXPECT_EQ(text.str(), "a\\x1B\u00E4.im: chunk 1: error: m [index-outside]\n");
    std::ostringstream json;
    WriteJson(result, json);
    std::string packed = json.str();
    std::erase_if(packed, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(packed, R"({"files":3,"errors":1,"warnings":0,"findings":[{"file":"a\u001Bä.im",)"
                      R"("place":"chunk1","severity":"error","code":"index-outside","message":"m"}]})");
}

} // namespace
} // namespace ZLMIM::Testing

#include "asset_folder.h"
#include "good_files.h"
#include "made_assets.h"
#include "tools/sample/sample_files.h"
#include "validate_findings.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// A chunk of two triangles that form a square, facing up.
ChunkPlan Square()
{
    return {.primitives = 2,
            .vertices = {{0, 0, 0, 0, 0}, {1, 0, 0, 1, 0}, {0, 1, 0, 0, 1}, {1, 1, 0, 1, 1}},
            .indices = {0, 1, 2, 2, 1, 3},
            .normals = std::vector<Vector>(4, {0, 0, 1}),
            .faceNormals = std::vector<Vector>(2, {0, 0, 1}),
            .bone = "D",
            .texture = "x\\Wood.texture"};
}

/// `count` small triangles in a row, facing up.
ChunkPlan RowOfTriangles(int count)
{
    ChunkPlan plan = {.primitives = count, .bone = "D", .texture = "x\\Wood.texture"};
    for (int i = 0; i < 3 * count; ++i)
    {
        const auto x = static_cast<float>(i / 3 + (i % 3 == 1 ? 1 : 0));
        plan.vertices.push_back({x, i % 3 == 2 ? 1.0F : 0, 0, x, 0});
        plan.indices.push_back(i);
    }
    return plan;
}

/// An animation's skeleton A(B(D), C), or that of a mesh.
template <class MakeBone>
Bytes Tree(const MakeBone& bone)
{
    return bone("A", 2, bone("B", 1, bone("D", 0, {})).Append(bone("C", 0, {})));
}

/// A mesh with a default chunk, a chunk according to `plan`, an attachment point and a skeleton.
std::string PlannedMesh(const ChunkPlan& plan = Square())
{
    return MeshOf({PlannedChunk(Square()), PlannedChunk(plan)})
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

TEST(Validate, ChecksMeshes)
{
    using enum PrimFlag;
    const struct
    {
        void (*damage)(ChunkPlan& p);
        Lines findings;
    } cases[] = {
        {[](ChunkPlan&) {}, {}},
        {[](ChunkPlan& p) { p.indices = {0, 1, 4, 2, 1, -1}; }, {", index 2: index-outside"}},
        {[](ChunkPlan& p) { p.kind = PrimFlag{13}; }, {": primitive-kind"}},
        {[](ChunkPlan& p) { p.primitives = 1; }, {": primitive-count"}},
        {[](ChunkPlan& p) { p.primitives = -1; }, {": negative-count"}},
        {[](ChunkPlan& p) { p.indices.push_back(0); }, {": primitive-count"}},
        {[](ChunkPlan& p) { p.kind = NONE; }, {": primitive-count"}},
        {[](ChunkPlan& p) { p.kind = LINES, p.primitives = 3, p.faceNormals = {}; }, {}},
        {[](ChunkPlan& p) { p.kind = LINE_STRIP, p.faceNormals = {}; }, {": primitive-count"}},
        {[](ChunkPlan& p) { p.kind = POINTS, p.primitives = 6; }, {": face-normal-count"}},
        {[](ChunkPlan& p) { p.kind = TRI_STRIP, p.primitives = 4, p.faceNormals.resize(4, {1}); }, {}},
        {[](ChunkPlan& p) { p.kind = TRI_FAN, p.indices.resize(4); }, {", triangle 1: degenerate-triangle"}},
        {[](ChunkPlan& p) { p.vertices[2].y = 1e-8F; }, {", triangle 0: degenerate-triangle"}},
        {[](ChunkPlan& p) { p.vertices[2].y = 1e-5F; }, {}},
        {[](ChunkPlan& p) { p.faceNormals.pop_back(); }, {": face-normal-count"}},
        {[](ChunkPlan& p) { p.normals[1].y = 0.2F; }, {", normal 1: normal-length"}},
        {[](ChunkPlan& p) { p.normals[1].z = 126 / 127.0F; }, {}},
        {[](ChunkPlan& p) { p.faceNormals[0].y = kNan; }, {", face normal 1: not-finite"}},
        {[](ChunkPlan& p) { p.vertices[2].v = kNan; }, {", vertex 2: not-finite"}},
        {[](ChunkPlan& p) { p.vertices[1].x = 2e5F; },
         {", vertex 1: vertex-far", ", triangle 1: degenerate-triangle"}},
        {[](ChunkPlan& p)
         { p.vertices.clear(), p.normals.clear(), p.indices.clear(), p.primitives = 0, p.faceNormals = {}; },
         {": chunk-empty"}},
        {[](ChunkPlan& p) { p = RowOfTriangles(10), std::swap(p.indices[9], p.indices[10]); },
         {", triangle 3: face-reversed"}},
        {[](ChunkPlan& p) { p = RowOfTriangles(2), std::swap(p.indices[3], p.indices[4]); }, {}},
        {[](ChunkPlan& p) { p = RowOfTriangles(3), p.indices[3] = 1, p.indices[4] = 2, p.indices[5] = 0; },
         {", triangle 1: triangle-twice"}},
        {[](ChunkPlan& p) {
             p.faceNormals.assign(2, {0, 0, -1}), p.indices = {1, 0, 2, 1, 2, 3};
         },
         {", face normal 1: face-normal-reversed"}},
        {[](ChunkPlan& p) { p.indices.clear(), p.faceNormals.clear(), p.primitives = 0; }, {": chunk-empty"}},
        {[](ChunkPlan& p)
         { std::for_each(p.vertices.begin(), p.vertices.end(), [](Vertex& v) { v.u = v.v = 0; }); },
         {": texture-unplaced"}},
        {[](ChunkPlan& p) { p.bone = "E"; }, {": bone-unknown"}},
        {[](ChunkPlan& p) { p.bone = "d"; }, {": bone-letter-case"}},
        {[](ChunkPlan& p) { p.texture = "Woo.texture"; }, {", texture 1: texture-missing"}},
        {[](ChunkPlan& p) { p.texture = "body"; }, {", texture 1: texture-missing"}},
    };
    AssetFolder folder;
    folder.Write("wagon/wood.TGA", Sample::CratePicture().Str());
    for (const auto& [damage, findings] : cases)
    {
        ChunkPlan plan = Square();
        damage(plan);
        folder.Write("wagon/body.im", PlannedMesh(plan));
        EXPECT_EQ(Found({"body.im"}), InFull("body.im: chunk 2", findings));
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
    folder.Write("wagon/body.im", PlannedMesh()).Write("wagon/wood.tga", Sample::CratePicture().Str());
    folder.Write("wagon/run.kin", PlannedAnim(1, {0})).Write("wagon/bare.im", MeshHeader(0).Str());
    folder.Write("wagon/other.kin", AnimWith(0, AnimBone("A", 1, AnimBone("C"))).Str());
    folder.Write("p/config.txt", "kuid <b:1>\n").Write("q/config.txt", "author x\nKUID <B:1>\n");
    folder.Write("b 2/config.txt", "kuid <other:1>\n");
    for (const auto& [config, findings] : cases)
    {
        folder.Wagon(config + kNames);
        const Lines expected = InFull("wagon/config.txt: ", findings);
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

} // namespace
} // namespace ZLMIM::Testing

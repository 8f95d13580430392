#include "good_files.h"
#include "model_walker.h"
#include "zlmim/mesh/mesh.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

/// A chunk that hangs from the bone of that name.
Bytes BoundChunk(std::string_view bone)
{
    return Bytes().Block("CHNK", Bytes().Zeros(8).Block("GEOM", Bytes().Long(200).Zeros(28).String(bone)));
}

TEST(MeshSkeleton, IsTheTreeInTheFile)
{
    const auto leaf = MeshBone("L");
    const auto foreign = Bytes().Block("OTHR", Bytes());
    const auto fields = [](std::int32_t count)
    { return Bytes().Long(100).String("S").Zeros(28).Long(count); };
    const struct
    {
        const char* name;
        Bytes file;
        std::string_view outline;
        std::int32_t boneCount;
    } cases[] = {
        {"one bone", MeshSkeleton(leaf), "L", 1},
        {"dropped field", Bytes().Block("SKEL", Bytes().Long(-1).Append(leaf)), "L", 1},
        {"nested",
         MeshSkeleton(MeshBone("A", 2, MeshBone("B", 2, Bytes(leaf).Append(MeshBone("M"))).Append(leaf))),
         "A(B(L M) L)", 5},
        {"nothing after the dropped field", MeshSkeleton({}), "", 0},
        {"no root block", MeshSkeleton(foreign), "", 0},
        {"surplus children", MeshSkeleton(MeshBone("A", 3, leaf)), "A(L  )", 2},
        {"foreign child", MeshSkeleton(MeshBone("A", 2, Bytes(foreign).Append(leaf))), "A( )", 1},
        {"negative child count", MeshSkeleton(MeshBone("A", -1, leaf)), "A", 1},
        {"child block with extra bytes",
         MeshSkeleton(MeshBone("A", 2, Bytes().Block("BONE", fields(0).Zeros(5)).Append(leaf))), "A(S L)", 3},
        {"child ends before its child",
         MeshSkeleton(MeshBone("A", 2, Bytes().Block("BONE", fields(1).Append(leaf), -49))), "A(S(L) L)", 4},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Mesh mesh;
        ASSERT_EQ(LoadOutcome(mesh, MeshHeader(0).Append(c.file).Span()), "true");
        EXPECT_EQ(Outline(*mesh.RootBone), c.outline);
        EXPECT_EQ(mesh.RootBone->Parent(), nullptr);
        EXPECT_EQ(mesh.BoneCount, c.boneCount);
    }
}

TEST(MeshSkeleton, IsReplacedByALaterLoadWhichAddsToBoneCount)
{
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(GoodMesh().Span()));
    const auto first = mesh.RootBone;
    ASSERT_TRUE(mesh.LoadBytes(GoodMesh().Span()));
    EXPECT_EQ(mesh.BoneCount, 8);
    EXPECT_NE(mesh.RootBone, first);
    EXPECT_EQ(Outline(*mesh.RootBone), "A(B(D) C)");
    EXPECT_EQ(std::tuple(first->Version, first->Position, first->Rotation),
              std::tuple(100, Vector{1, 2, 3}, Quaternion{0, 0, 0, 1}));
}

TEST(MeshSkeleton, KeepsWhatWasReadBeforeAFailure)
{
    const auto good = MeshHeader(1)
                          .Append(BoundChunk("A"))
                          .Append(MeshSkeleton(MeshBone("A", 2, MeshBone("B").Append(MeshBone("C")))));
    const struct
    {
        std::size_t cut;
        std::string_view outline;
        std::int32_t boneCount;
    } cases[] = {
        {2, "A(B C)", 3}, // the file ends in C's count
        {6, "A(B C)", 2}, // in C's rotation
        {34, "A(B )", 2}, // in C's name
        {97, "A()", 1},   // in B's tag
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.cut);
        Mesh mesh;
        EXPECT_EQ(LoadOutcome(mesh, good.Span().first(good.Size() - c.cut)), "BoundsError");
        EXPECT_EQ(Outline(*mesh.RootBone), c.outline);
        EXPECT_EQ(mesh.BoneCount, c.boneCount);
        EXPECT_EQ(mesh.Chunks->Item(1)->Geometry->BoneObject, nullptr);
    }
    Mesh mesh;
    mesh.BoneCount = std::numeric_limits<std::int32_t>::max() - 1;
    EXPECT_EQ(LoadOutcome(mesh, good.Span()), "OverflowError");
    EXPECT_EQ(Outline(*mesh.RootBone), "A(B)");
    EXPECT_EQ(mesh.BoneCount, 2147483647);
}

TEST(MeshBindBones, FindsTheFirstOfEqualNamesParentsFirst)
{
    // Equal names: one below the other, and in two subtrees, the deeper one first.
    const auto deep = MeshBone("B", 1, MeshBone("B", 1, MeshBone("T")));
    const auto root = MeshBone(
        "R", 4, MeshBone("", 1, deep).Append(MeshBone("T")).Append(MeshBone("R")).Append(MeshBone("Z")));
    const std::pair<std::string_view, std::vector<std::int32_t>> cases[] = {
        {"Z", {4}},          {"T", {1, 1, 1, 1}}, {"R", {}},  {"B", {1, 1}},
        {"T", {1, 1, 1, 1}}, {"t", {-1}},         {"", {-1}}, {"ZZ", {-1}},
    };
    auto file = MeshHeader(8);
    for (const auto& [name, path] : cases)
        file.Append(BoundChunk(name));
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(file.Append(MeshSkeleton(root)).Span()));

    for (std::int32_t i = 0; i < 8; ++i)
    {
        SCOPED_TRACE(i);
        auto bone = mesh.RootBone;
        for (const std::int32_t number : cases[i].second)
            bone = number == -1 ? nullptr : bone->Children()->Item(number);
        EXPECT_EQ(mesh.Chunks->Item(i + 1)->Geometry->BoneObject, bone);
    }
}

TEST(MeshBindBones, FindsAHundredBonesFromLastToFirst)
{
    Bytes bones;
    auto file = MeshHeader(100);
    for (int i = 0; i < 100; ++i)
    {
        bones.Append(MeshBone("b" + std::to_string(i)));
        file.Append(BoundChunk("b" + std::to_string(99 - i)));
    }
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(file.Append(MeshSkeleton(MeshBone("root", 100, bones))).Span()));
    for (std::int32_t i = 1; i <= 100; ++i)
        EXPECT_EQ(mesh.Chunks->Item(i)->Geometry->BoneObject, mesh.RootBone->Children()->Item(101 - i));
}

TEST(MeshBindBones, SearchesATreeOfTheHost)
{
    const auto root = std::make_shared<Bone>();
    const auto child = std::make_shared<Bone>();
    child->Name = u"X";
    root->Children()->Add(std::make_shared<Bone>());
    root->Children()->Item(1)->SetChildren(nullptr);
    root->Children()->Add(nullptr);
    root->Children()->Add(child);
    Mesh mesh;
    mesh.RootBone = root;
    ASSERT_TRUE(mesh.LoadBytes(MeshHeader(1).Append(BoundChunk("X")).Span()));
    EXPECT_EQ(mesh.Chunks->Item(1)->Geometry->BoneObject, child);

    root->Children()->Add(root);
    EXPECT_EQ(LoadOutcome(mesh, MeshHeader(1).Append(BoundChunk("Y")).Span()), "BoundsError");
    root->Children()->Remove(root->Children()->Count()); // breaks the cycle

    for (int i = 0; i < 70'000; ++i)
        root->Children()->Add(std::make_shared<Bone>());
    EXPECT_EQ(LoadOutcome(mesh, MeshHeader(1).Append(BoundChunk("Y")).Span()), "true");
}

TEST(BoneToMatrix, RoundsSixProductsAndEveryElement)
{
    const std::pair<Quaternion, Matrix> cases[] = {
        {{0.5F, 0.5F, 0.5F, 0.5F}, {0, 0, 1, 1, 0, 0, 0, 1, 0}},
        {{1, 1, 1, 1}, {-3, 0, 4, 4, -3, 0, 0, 4, -3}},
        {{0, 0, 0, 0}, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
        {{0, 0, 0, 1}, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
        {{1, 0, 0, 0}, {1, 0, 0, 0, -1, 0, 0, 0, -1}},
        // Rounding any other product, or one fewer, changes the last bit of an element.
        {{-0.567F, -0.539F, 0.547F, -0.595F},
         {-0x1.6f88bp-3F, 0x1.431ca8p+0F, 0x1.59e64p-6F, -0x1.45417ep-5F, -0x1.ee60fep-3F, -0x1.43af74p+0F,
          -0x1.42ff4cp+0F, 0x1.5c6c2p-4F, -0x1.cacaeep-3F}},
    };
    for (const auto& [rotation, rows] : cases)
    {
        Bone bone;
        bone.Rotation = rotation;
        bone.Position = {0.1F, -2, 3e30F};
        Matrix expected = rows;
        expected.m41 = 0.1F;
        expected.m42 = -2;
        expected.m43 = 3e30F;
        EXPECT_EQ(bone.ToMatrix(), expected) << ::testing::PrintToString(rotation.x);
    }
}

} // namespace
} // namespace ZLMIM::Testing

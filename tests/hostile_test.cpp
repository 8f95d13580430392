#include "good_files.h"
#include "model_walker.h"

#include <gtest/gtest.h>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

/// Loads the bytes into `model` and a second model, which must be equal and consistent. The buffer has
/// exactly the size of the bytes, so that sanitizers detect any read past the end.
template <class Model>
std::string LoadAndWalk(Model& model, std::span<const std::byte> file)
{
    const std::vector<std::byte> exact(file.begin(), file.end());
    auto outcome = LoadOutcome(model, exact);
    Model again;
    EXPECT_EQ(LoadOutcome(again, exact), outcome);
    EXPECT_EQ(Walk(again), Walk(model));
    return outcome;
}

template <class Model>
void LoadEveryPrefix(const Bytes& good)
{
    for (std::size_t size = 0; size <= good.Size(); ++size)
    {
        SCOPED_TRACE(size);
        Model model;
        const auto outcome = LoadAndWalk(model, good.Span().first(size));

        // Both good files end with a 0. As the data is followed by a 0, they load without their last byte,
        // too.
        EXPECT_TRUE(outcome == "true" || size + 1 < good.Size()) << outcome;
        EXPECT_EQ(model.FileSize, static_cast<std::int32_t>(size));
    }
}

template <class Model>
void LoadWithEachByteChanged(const Bytes& good)
{
    std::vector<std::byte> file(good.Span().begin(), good.Span().end());
    for (std::size_t at = 0; at < file.size(); ++at)
    {
        const std::byte old = file[at];
        for (const int value : {0, 0x7F, 0x80, 0xFF})
        {
            SCOPED_TRACE(testing::Message() << "byte " << at << " = " << value);
            file[at] = static_cast<std::byte>(value);
            Model model;
            static_cast<void>(LoadAndWalk(model, file)); // the tests below check results
        }
        file[at] = old;
    }
}

TEST(DamagedMesh, ReturnsOrThrowsForEveryPrefix) { LoadEveryPrefix<Mesh>(GoodMesh()); }
TEST(DamagedAnim, ReturnsOrThrowsForEveryPrefix) { LoadEveryPrefix<Anim>(GoodAnim()); }
TEST(DamagedMesh, ReturnsOrThrowsForEachChangedByte) { LoadWithEachByteChanged<Mesh>(GoodMesh()); }
TEST(DamagedAnim, ReturnsOrThrowsForEachChangedByte) { LoadWithEachByteChanged<Anim>(GoodAnim()); }

template <class AnyBone>
std::int32_t Levels(std::shared_ptr<AnyBone> bone)
{
    std::int32_t levels = 0;
    for (; bone; ++levels)
        bone = bone->Children()->Count() > 0 ? bone->Children()->Item(1) : nullptr;
    return levels;
}

/// Chunks, attachments, children of the root (-1 where there is no list), levels of the tree; `BoneCount`,
/// `VertexCount`, `TextureCount`.
std::vector<std::int32_t> WhatWasRead(const Mesh& mesh)
{
    return {mesh.Chunks ? mesh.Chunks->Count() : -1,
            mesh.Attachments ? mesh.Attachments->Count() : -1,
            mesh.RootBone ? mesh.RootBone->Children()->Count() : -1,
            Levels(mesh.RootBone),
            mesh.BoneCount,
            mesh.VertexCount,
            mesh.TextureCount};
}

TEST(HostileMesh, EndsAtItsLimitsAndKeepsWhatWasRead)
{
    const auto chunk = [](std::string_view tag, const Bytes& block)
    { return MeshHeader(1).Block("CHNK", Bytes().Long(1).Long(1).Block(tag, block)); };
    const auto geometry = [&](std::int32_t vertices, std::int32_t indices, std::int32_t faceNormals)
    {
        const std::array<std::int32_t, 5> counts = {vertices, 0, indices, faceNormals, 0};
        return chunk("GEOM", Bytes().Long(200).Zeros(8).Record(counts).Zeros(64));
    };
    // Each of these blocks follows itself: its size, or the length of a string, leads back to its first byte.
    const auto selfChunk = MeshHeader(kHighest).Text("CHNK").Long(-8).Zeros(16);
    const auto selfTexture = Bytes().Long(101).Zeros(44).Long(kHighest).Long(0).Long(-12).Zeros(8);
    const auto selfAttachment = [](std::int32_t count)
    { return MeshHeader(0).Block("ATCH", Bytes().Long(1).Long(count).Long(-52).Zeros(66)); };
    const auto selfBone = Bytes().Text("BONE").Long(-8).Zeros(40);
    // The negative length of its name leads back, so its other fields are the 32 bytes before it. The last of
    // them is the number of children, 1, and this child is the block itself.
    const auto ownChild = Bytes().Long(1).Text("BONE").Long(0).Long(1).Long(-48);

    const struct
    {
        const char* name;
        Bytes file;
        const char* outcome;
        std::vector<std::int32_t> read;
    } cases[] = {
        {"endless chunks", selfChunk, "BoundsError", {4104, -1, -1, 0, 0, 0, 0}},
        {"chunks past the file",
         MeshHeader(kHighest).Block("CHNK", Bytes().Zeros(12)),
         "BoundsError",
         {1, -1, -1, 0, 0, 0, 0}},
        {"endless textures", chunk("MATL", selfTexture), "BoundsError", {0, -1, -1, 0, 0, 0, kHighest}},
        {"endless attachments", selfAttachment(kHighest), "BoundsError", {0, 1265, -1, 0, 0, 0, 0}},
        {"as many as allowed", selfAttachment(1265), "true", {0, 1265, -1, 0, 0, 0, 0}},
        {"one more", selfAttachment(1266), "BoundsError", {0, 1265, -1, 0, 0, 0, 0}},
        {"endless siblings",
         MeshWith(MeshBone("r", kHighest, selfBone)),
         "BoundsError",
         {0, 0, 1371, 2, 1371, 0, 0}},
        {"its own child", MeshHeader(0).Block("SKEL", ownChild), "BoundsError", {0, 0, 1, 1024, 1024, 0, 0}},
        {"1,024 levels", MeshWith(Chain(MeshBone, 1024)), "true", {0, 0, 1, 1024, 1024, 0, 0}},
        {"1,025 levels", MeshWith(Chain(MeshBone, 1025)), "BoundsError", {0, 0, 1, 1024, 1024, 0, 0}},
        {"65,536 bones", MeshWith(MeshBone("r", 65'535)), "true", {0, 0, 65'535, 2, 1, 0, 0}},
        {"65,536 bones, before another tag",
         MeshWith(MeshBone("r", 65'535)).Text("NEXT"),
         "true",
         {0, 0, 65'535, 2, 1, 0, 0}},
        {"65,537 bones", MeshWith(MeshBone("r", 65'536)), "BoundsError", {0, 0, 65'535, 2, 1, 0, 0}},
        {"2^31 bones", MeshWith(MeshBone("r", kHighest)), "BoundsError", {0, 0, 65'535, 2, 1, 0, 0}},
        {"vertices past the file", geometry(kHighest, 0, 0), "BoundsError", {0, -1, -1, 0, 0, kHighest, 0}},
        {"indices past the file", geometry(0, kHighest, 0), "BoundsError", {0, -1, -1, 0, 0, 0, 0}},
        {"face normals past the file", geometry(0, 0, kHighest), "BoundsError", {0, -1, -1, 0, 0, 0, 0}},
        {"lowest count", geometry(0, -kHighest - 1, 0), "OverflowError", {0, -1, -1, 0, 0, 0, 0}},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Mesh mesh;
        EXPECT_EQ(LoadAndWalk(mesh, c.file.Span()), c.outcome);
        EXPECT_EQ(WhatWasRead(mesh), c.read);
    }
}

TEST(HostileAnim, EndsAtItsLimitsAndKeepsWhatWasRead)
{
    const auto leaf = AnimBone("r");
    const auto selfBone = Bytes().Text("BONE").Long(-8).Zeros(12);
    // Likewise: its number of children is the size, 1, of the skeleton before it.
    const auto ownChild = Bytes().Text("SKEL").Long(1).Text("BONE").Long(0).Long(1).Long(-20);
    // 208 bytes and two bones: 64 MiB + 16 x 208 bytes are 1,198,432 slots of each.
    const auto tables = [&](std::int32_t frameCount)
    { return AnimWith(frameCount, AnimBone("r", 1, leaf)).Zeros(109); };

    const struct
    {
        const char* name;
        Bytes file;
        const char* outcome;
        std::int32_t rootChildren, levels;
        std::size_t rootSlots, lastSlots;
    } cases[] = {
        {"endless frames", AnimWith(kHighest / 2'000, leaf).Append(Frame(1, {5}, -44)), "BoundsError", 0, 1,
         1'073'742, 1'073'742},
        {"endless siblings", AnimWith(0, AnimBone("r", kHighest, selfBone)), "BoundsError", 3284, 2, 0, 0},
        {"its own child", AnimHeader("n", 0).Block("EVNT", {}).Append(ownChild), "BoundsError", 1, 1024, 0,
         0},
        {"1,024 levels", AnimWith(0, Chain(AnimBone, 1024)), "true", 1, 1024, 1, 1},
        {"1,025 levels", AnimWith(0, Chain(AnimBone, 1025)), "BoundsError", 1, 1024, 0, 0},
        {"65,536 bones", AnimWith(0, AnimBone("r", 65'535)), "true", 65'535, 2, 1, 1},
        {"65,537 bones", AnimWith(0, AnimBone("r", 65'536)), "BoundsError", 65'535, 2, 0, 0},
        {"2^31 slots", AnimWith(kHighest, leaf), "BoundsError", 0, 1, 0, 0},
        {"2^31 - 1 slots", AnimWith(kHighest - 1, leaf), "BoundsError", 0, 1, 0, 0},
        {"as many slots as allowed", tables(1'198'431), "false", 1, 2, 1'198'432, 1'198'432},
        {"one more in each", tables(1'198'432), "BoundsError", 1, 2, 1'198'433, 0},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Anim anim;
        EXPECT_EQ(LoadAndWalk(anim, c.file.Span()), c.outcome);
        ASSERT_NE(anim.RootBone, nullptr);
        EXPECT_EQ(anim.RootBone->Children()->Count(), c.rootChildren);
        EXPECT_EQ(Levels(anim.RootBone), c.levels);
        auto last = anim.RootBone;
        while (last->Children()->Count() > 0)
            last = last->Children()->Item(last->Children()->Count());
        EXPECT_EQ(anim.RootBone->Frames().size(), c.rootSlots);
        EXPECT_EQ(last->Frames().size(), c.lastSlots);
    }
}

} // namespace
} // namespace ZLMIM::Testing

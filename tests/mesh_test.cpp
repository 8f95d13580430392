#include "good_files.h"
#include "model_walker.h"
#include "outcome.h"
#include "zlmim/mesh/mesh.h"

#include <array>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace ZLMIM::Testing
{
namespace
{

using namespace std::string_literals;
using namespace std::string_view_literals;

Bytes ChunkBlock(const Bytes& content, std::int32_t sizeError = 0)
{
    return Bytes().Block("CHNK", Bytes().Long(103).Long(7).Append(content), sizeError);
}

Bytes TextureRecord(std::string_view name, std::int32_t role = 1)
{
    return Bytes().Long(role).String(name).Single(0.5F);
}

Bytes ShortMaterial(std::int32_t count, const Bytes& textures)
{
    return Bytes().Block("MATL", Bytes().Long(101).Long(2).Zeros(36).Long(9).Long(count).Append(textures));
}

/// `counts`: vertices, primitives, indices, face normals, influences.
Bytes GeometryBlock(const std::array<std::int32_t, 5>& counts, const Bytes& arrays = {},
                    std::string_view bone = {})
{
    return Bytes().Block("GEOM",
                         Bytes().Long(200).Long(4).Single(1).Record(counts).String(bone).Append(arrays));
}

std::tuple<std::int32_t, std::int32_t, std::int32_t> Totals(const Mesh& mesh)
{
    return {mesh.TextureCount, mesh.VertexCount, mesh.Polygons};
}

template <class List>
std::int32_t CountOf(const List& list)
{
    return list ? list->Count() : -1;
}

TEST(Mesh, HoldsEveryFieldOfAGoodFile)
{
    const std::array colours = {1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F, 7.0F, 8.0F, 9.0F, -1.0F, 0.5F, 1.5F};
    auto material = Bytes().Long(102).String("a\\M.onetex").Long(3).Long(-2).Single(0.75F).Record(colours);
    material.Long(-20).Long(2).Append(TextureRecord("A", 8)).Append(TextureRecord("b\\B", 13)).Zeros(5);
    // The odd lengths of the name and of the indices put the arrays at odd addresses.
    auto geometry = Bytes().Record(std::array{201, -1, 99}).Single(2.5F).Record(std::array{2, 40, 3, 1, 6});
    geometry.String("Arm").Record(Vertex{1, 2, 3, 4, 5}).Record(Vertex{6, 7, 8, 9, 10});
    geometry.Short(32767).Short(-32768).Short(-1).Record(Vector{11, 12, 13}).Record(Vector{14, 15, 16});
    geometry.Record(Vector{17, 18, 19}).Zeros(3);
    const Matrix place{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    const auto chunkBlock = ChunkBlock(Bytes().Block("MATL", material).Block("GEOM", geometry));
    const auto points =
        Bytes().Long(100).Long(2).String("a.\xC4RM").Record(place).String("").Record(Matrix());
    const auto file = MeshHeader(1, 105).Append(chunkBlock).Block("ATCH", points);
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(file.Span(), u"Some\\Name.im"));

    EXPECT_EQ(mesh.FileName, u"Some\\Name.im");
    EXPECT_EQ(std::tuple(mesh.FileSize, mesh.Version, mesh.ChunkCount, mesh.BoneCount, mesh.AttVersion),
              std::tuple(460, 105, 1, 0, 100));
    EXPECT_EQ(Totals(mesh), std::tuple(2, 2, 40));
    ASSERT_EQ(mesh.Chunks->Count(), 1);
    const auto chunk = mesh.Chunks->Item(1);
    EXPECT_EQ(std::tuple(chunk->Version, chunk->Id), std::tuple(103, 7));

    const Material& m = *chunk->Material;
    EXPECT_EQ(std::tuple(m.Version, m.NumProperties, m.TwoSided, m.Opacity, m.SpecularPower, m.Name),
              std::tuple(102, 3, -2, 0.75F, -20.0F, u"a\\M.onetex"s));
    EXPECT_EQ(std::tuple(m.Ambient, m.Diffuse), std::tuple(rgbColour{1, 2, 3}, rgbColour{4, 5, 6}));
    EXPECT_EQ(std::tuple(m.Specular, m.Emissive), std::tuple(rgbColour{7, 8, 9}, rgbColour{-1, 0.5F, 1.5F}));
    ASSERT_EQ(m.Textures->Count(), 2);
    const auto texture = m.Textures->Item(2);
    EXPECT_EQ(m.Textures->Item(1)->TextureType, txtype::TEX_Bump);
    EXPECT_EQ(std::tuple(texture->TextureType, texture->Name, texture->Amount),
              std::tuple(static_cast<txtype>(13), u"B"s, 0.5F));

    const Geometry& g = *chunk->Geometry;
    EXPECT_EQ(std::tuple(g.Version, g.PrimitiveType, g.Area, g.PrimitiveCount, g.MaxInfl, g.Bone),
              std::tuple(201, static_cast<PrimFlag>(-1), 2.5F, 40, 6, u"Arm"s));
    EXPECT_EQ(std::tuple(g.MaxVertices(), g.MaxVertNormal(), g.MaxIndex()), std::tuple(2, 2, 3));
    EXPECT_EQ(g.Vertices()[0], (Vertex{1, 2, 3, 4, 5}));
    EXPECT_EQ(g.Vertices()[1], (Vertex{6, 7, 8, 9, 10}));
    EXPECT_EQ(std::tuple(g.GetIndex(0), g.GetIndex(1), g.GetIndex(2)), std::tuple(32767, -32768, -1));
    EXPECT_EQ(g.VertexNormals()[0], (Vector{11, 12, 13}));
    EXPECT_EQ(g.VertexNormals()[1], (Vector{14, 15, 16}));
    ASSERT_EQ(g.FaceNormals->Count(), 1);
    EXPECT_EQ(g.FaceNormals->Item(1), (Vector{17, 18, 19}));

    ASSERT_EQ(mesh.Attachments->Count(), 2);
    const auto point = mesh.Attachments->Item(1);
    EXPECT_EQ(std::tuple(point->Version, point->Name, point->Matrix), std::tuple(0, u"a.\u00E4rm"s, place));
    EXPECT_EQ(mesh.Attachments->Item(2)->Name, u"");
}

TEST(MeshHeader, FailsByWhereTheFileEnds)
{
    const auto noSignature = u"Not a ZLM IM file - no JIRF"s;
    const auto noKind = u"Not a ZLM IM file - no IDXM"s;
    const Bytes good = MeshHeader(0);
    const struct
    {
        Bytes file;
        std::size_t length;
        std::string_view outcome;
        std::u16string message;
        std::int32_t version, chunkCount; // 5 and 6 before the load
    } cases[] = {
        {good, 0, "false", u"", 5, 6},     {good, 1, kBounds, u"", 5, 6},
        {good, 2, kBounds, u"", 5, 6},     {good, 3, "false", noSignature, 5, 6},
        {good, 4, kBounds, u"", 5, 6},     {good, 10, kBounds, u"", 5, 6},
        {good, 11, "false", noKind, 5, 6}, {good, 12, kBounds, u"", 5, 6},
        {good, 22, kBounds, u"", 5, 6},    {good, 23, kBounds, u"", 104, 6},
        {good, 54, kBounds, u"", 104, 6},  {good, 55, "true", u"", 104, 0},
        {good, 56, "true", u"", 104, 0},   {AnimHeader("", 0), 40, "false", noKind, 5, 6},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.length);
        Mesh mesh;
        mesh.Version = 5;
        mesh.ChunkCount = 6;
        mesh.Polygons = mesh.VertexCount = mesh.TextureCount = 9;
        EXPECT_EQ(LoadOutcome(mesh, c.file.Span().first(c.length)), c.outcome);
        EXPECT_EQ(std::tuple(mesh.ErrorMessage, mesh.FileSize, mesh.Version, mesh.ChunkCount),
                  std::tuple(c.message, static_cast<std::int32_t>(c.length), c.version, c.chunkCount));
        EXPECT_EQ(Totals(mesh), std::tuple(0, 0, 0));
    }
}

TEST(Mesh, FindsBlocksByTheSizesBeforeThem)
{
    const auto any = Bytes().Text("none"); // neither material nor geometry
    const auto chunk = ChunkBlock(any);
    const auto greater = ChunkBlock(Bytes(any).Zeros(9));
    const auto noPoints = Bytes().Long(5).Long(-1).Zeros(9);
    const auto infl = Bytes().Block("INFL", Bytes().Zeros(3));
    const auto atch = Bytes().Block("ATCH", Bytes().Long(5).Long(1).String("L").Zeros(48));
    const auto skel = Bytes().Block("SKEL", Bytes().Long(0));
    const auto one = MeshHeader(1).Append(chunk);
    const auto headerWithSize = [](std::int32_t size)
    { return Bytes().Text("JIRF").Long(0).Block("IDXM", Bytes()).Long(size); };
    const struct
    {
        const char* name;
        Bytes file;
        std::string_view outcome;
        std::int32_t chunks, attachments; // -1: no list
        bool hasRoot;
    } cases[] = {
        {"no chunk", MeshHeader(0), "true", 0, 0, false},
        {"negative chunk count", MeshHeader(-1).Append(atch), "true", 0, 1, false},
        {"nothing after the chunk", one, "true", 1, 0, false},
        {"all", Bytes(one).Append(infl).Append(atch).Append(skel), "true", 1, 1, true},
        {"no INFL", Bytes(one).Append(atch).Append(skel), "true", 1, 1, true},
        {"ATCH, INFL, SKEL", Bytes(one).Append(atch).Append(infl).Append(skel), "true", 1, 1, false},
        {"SKEL, ATCH", Bytes(one).Append(skel).Append(atch), "true", 1, 0, true},
        {"foreign block", Bytes(one).Block("OTHR", any).Append(atch), "true", 1, 0, false},
        {"surplus chunk", Bytes(one).Append(chunk).Append(atch), "true", 1, 0, false},
        {"chunk missing, ATCH", MeshHeader(2).Append(chunk).Append(atch), "false", 1, -1, false},
        {"chunk missing, end", MeshHeader(2).Append(chunk), kBounds, 1, -1, false},
        {"empty chunk", MeshHeader(1).Append(ChunkBlock({})), kBounds, 0, -1, false},
        {"3 bytes more", Bytes(one).Text("ATC"), "true", 1, 0, false},
        {"2 bytes more", Bytes(one).Text("AT"), kBounds, 1, -1, false},
        {"longer info", MeshHeader(0, 104, 7).Append(atch), "true", 0, 1, false},
        {"ATCH in the info", headerWithSize(0).Append(atch), "true", 0, 1, false},
        {"before the file by info", headerWithSize(-30).Zeros(36), kBounds, 0, -1, false},
        {"overflow by info", headerWithSize(kHighest - 19).Zeros(36), kOverflow, -1, -1, false},
        {"longer chunk", MeshHeader(1).Append(greater).Append(atch), "true", 1, 1, false},
        {"ATCH in the chunk", MeshHeader(1).Text("CHNK").Long(4).Long(100).Append(atch), "true", 1, 1, false},
        {"before the file by chunk", MeshHeader(2).Append(ChunkBlock(any, -999)), kBounds, 1, -1, false},
        {"overflow by chunk", MeshHeader(1).Append(ChunkBlock(any, kHighest - 12)), kOverflow, 1, -1, false},
        {"ATCH in INFL", Bytes(one).Block("INFL", atch).Append(skel), "true", 1, 0, true},
        {"past the file by INFL", Bytes(one).Block("INFL", any, 999), "true", 1, 0, false},
        {"before the file by INFL", Bytes(one).Block("INFL", any, -999), kBounds, 1, 0, false},
        {"longer ATCH", Bytes(one).Block("ATCH", noPoints).Append(skel), "true", 1, 0, true},
        {"SKEL in ATCH", Bytes(one).Block("ATCH", Bytes(noPoints).Append(skel), -12), "true", 1, 0, true},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Mesh mesh;
        EXPECT_EQ(LoadOutcome(mesh, c.file.Span()), c.outcome);
        EXPECT_EQ(mesh.ErrorMessage, c.outcome == "false" ? u"Not a ZLM IM file - CHNK missing" : u"");
        EXPECT_EQ(CountOf(mesh.Chunks), c.chunks);
        EXPECT_EQ(CountOf(mesh.Attachments), c.attachments);
        EXPECT_EQ(mesh.RootBone != nullptr, c.hasRoot);
    }
}

TEST(Mesh, KeepsWhatWasReadBeforeAFailure)
{
    const auto vertex = GeometryBlock({1, 2, 0, 0, 0}, Bytes().Zeros(32));
    const auto two = MeshHeader(2).Append(ChunkBlock(ShortMaterial(1, TextureRecord("t")).Append(vertex)));
    const auto second = [&](const Bytes& content) { return Bytes(two).Append(ChunkBlock(content)); };
    const auto attachments = Bytes().Long(5).Long(2).String("New").Zeros(48).Long(0);
    const auto texture = TextureRecord("t");
    const struct
    {
        const char* name;
        Bytes file;
        std::string_view outcome;
        std::int32_t chunks;
        std::tuple<std::int32_t, std::int32_t, std::int32_t> totals;
        std::int32_t attVersion;
    } cases[] = {
        {"signature", Bytes().Text("JIRX"), "false", 2, {0, 0, 0}, 100},
        {"chunk's tag", Bytes(two).Block("CHNk", {}), "false", 1, {1, 1, 2}, 100},
        {"textures cut", second(ShortMaterial(3, texture)), kBounds, 1, {4, 1, 2}, 100},
        {"texture total", second(ShortMaterial(kHighest, {})), kOverflow, 1, {1, 1, 2}, 100},
        {"vertices cut", second(GeometryBlock({2, 3, 0, 0, 0}, texture)), kBounds, 1, {1, 3, 5}, 100},
        {"vertex total", second(GeometryBlock({kHighest, 3, 0, 0, 0})), kOverflow, 1, {1, 1, 2}, 100},
        {"primitive total", second(GeometryBlock({2, kHighest, 0, 0, 0})), kOverflow, 1, {1, 3, 2}, 100},
        {"attachments cut", MeshHeader(0).Block("ATCH", attachments), kBounds, 0, {0, 0, 0}, 5},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Mesh mesh;
        ASSERT_TRUE(mesh.LoadBytes(GoodMesh().Span()));
        const auto root = mesh.RootBone;
        EXPECT_EQ(LoadOutcome(mesh, c.file.Span()), c.outcome);
        EXPECT_EQ(mesh.Chunks->Count(), c.chunks);
        EXPECT_EQ(Totals(mesh), c.totals);
        EXPECT_EQ(mesh.AttVersion, c.attVersion);
        ASSERT_EQ(mesh.Attachments->Count(), 1);
        EXPECT_EQ(mesh.Attachments->Item(1)->Name, c.attVersion == 5 ? u"new" : u"a.lamp");
        EXPECT_EQ(mesh.RootBone, root);
        EXPECT_EQ(mesh.BoneCount, 4);
    }
}

TEST(Mesh, KeepsSkeletonAttVersionAndMessageInALaterLoad)
{
    Mesh mesh;
    EXPECT_FALSE(mesh.LoadBytes(Bytes().Text("JIRX").Span()));
    ASSERT_TRUE(mesh.LoadBytes(GoodMesh().Span()));
    const auto root = mesh.RootBone;
    const auto chunk = ChunkBlock(GeometryBlock({}, {}, "C"));
    ASSERT_TRUE(mesh.LoadBytes(MeshHeader(1).Append(chunk).Span()));

    EXPECT_EQ(mesh.ErrorMessage, u"Not a ZLM IM file - no JIRF");
    EXPECT_EQ(Totals(mesh), std::tuple(0, 0, 0));
    EXPECT_EQ(std::tuple(mesh.Attachments->Count(), mesh.AttVersion, mesh.BoneCount), std::tuple(0, 100, 4));
    EXPECT_EQ(mesh.RootBone, root);
    EXPECT_EQ(mesh.Chunks->Item(1)->Geometry->BoneObject, root->Children()->Item(2));
}

TEST(MeshChunk, HasTheFieldsOfItsBlocksVersions)
{
    for (const std::int32_t version : {kLowest, 0, 101, 102, 200, 201, kHighest})
    {
        SCOPED_TRACE(version);
        auto material = Bytes().Long(version);
        if (version > 101)
            material.String("m").Long(3);
        material.Long(1);
        if (version > 101)
            material.Single(0.5F);
        material.Zeros(24).Record(rgbColour{1, 2, 3}).Zeros(version > 101 ? 12 : 0).Long(20).Long(0);
        auto geometry = Bytes().Long(version).Long(4).Zeros(version > 200 ? 4 : 0).Single(2.5F);
        geometry.Zeros(16).Long(8).String("b");
        const auto chunk = ChunkBlock(Bytes().Block("MATL", material).Block("GEOM", geometry));
        Mesh mesh;
        ASSERT_TRUE(mesh.LoadBytes(MeshHeader(1).Append(chunk).Span()));
        const Material& m = *mesh.Chunks->Item(1)->Material;
        const Geometry& g = *mesh.Chunks->Item(1)->Geometry;
        EXPECT_EQ(std::tuple(m.Name, m.NumProperties, m.Opacity),
                  version > 101 ? std::tuple(u"m"s, 3, 0.5F) : std::tuple(u""s, 0, 0.0F));
        EXPECT_EQ(std::tuple(m.TwoSided, m.Specular, m.SpecularPower),
                  std::tuple(1, rgbColour{1, 2, 3}, 20.0F));
        EXPECT_EQ(std::tuple(g.Area, g.MaxInfl, g.Bone), std::tuple(2.5F, 8, u"b"s));
    }
}

TEST(MeshMaterial, StripsFoldersFromTextureNamesAndSumsStoredCounts)
{
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"Wood", u"Wood"}, {"a\\b\\Wood", u"Wood"}, {"\\Wood", u"Wood"}, {"a\\", u""}, {"a/Wood", u"a/Wood"},
        {"", u""},         {"a\\b\0\\c"sv, u"b"},
    };
    Bytes textures;
    for (const auto& [stored, name] : cases)
        textures.Append(TextureRecord(stored));
    const auto first = ChunkBlock(ShortMaterial(7, textures).Text("none"));
    const auto second = ChunkBlock(ShortMaterial(-2, {}).Text("none"));
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(MeshHeader(2).Append(first).Append(second).Span()));
    EXPECT_EQ(mesh.TextureCount, 5);
    EXPECT_EQ(mesh.Chunks->Item(2)->Material->Textures->Count(), 0);
    for (std::int32_t i = 0; i < 7; ++i)
        EXPECT_EQ(mesh.Chunks->Item(1)->Material->Textures->Item(i + 1)->Name, cases[i].second);
}

TEST(MeshGeometry, KeepsNegativeCountsAsStored)
{
    const std::pair<std::array<std::int32_t, 5>, std::string_view> cases[] = {
        {{-1, -2, -3, -4, -5}, "true"},
        {{kLowest + 1, kLowest, kLowest + 1, kLowest, 0}, "true"},
        {{kLowest, 0, 0, 0, 0}, kOverflow},
        {{0, 0, kLowest, 0, 0}, kOverflow},
        {{kLowest, 0, kHighest, 0, 0}, kOverflow},
        {{kHighest, 0, kLowest, 0, 0}, kBounds},
        {{0, kHighest, kHighest, 0, 0}, kBounds},
        {{0, 0, 0, kHighest, 0}, kBounds},
    };
    for (const auto& [counts, outcome] : cases)
    {
        SCOPED_TRACE(::testing::PrintToString(counts));
        Mesh mesh;
        EXPECT_EQ(LoadOutcome(mesh, MeshHeader(1).Append(ChunkBlock(GeometryBlock(counts))).Span()), outcome);
        EXPECT_EQ(Totals(mesh), std::tuple(0, counts[0], counts[1]));
        ASSERT_EQ(mesh.Chunks->Count(), outcome == "true" ? 1 : 0);
        if (outcome != "true")
            continue;
        const Geometry& g = *mesh.Chunks->Item(1)->Geometry;
        EXPECT_EQ(std::tuple(g.MaxVertices(), g.MaxVertNormal(), g.MaxIndex(), g.FaceNormals->Count()),
                  std::tuple(counts[0], counts[0], counts[2], 0));
    }
}

TEST(Geometry, ChecksReadsAgainstTheCountAndWritesAgainstTheArray)
{
    Geometry g;
    const Vector normal{1, 2, 3};
    const Vector other{9, 9, 9};
    const auto get = [&](std::int32_t index)
    {
        Vector v = other;
        const bool isThere = g.GetVertexNormal(index, v);
        EXPECT_TRUE(isThere || v == other) << "unchanged";
        return isThere ? std::optional(v) : std::nullopt;
    };
    EXPECT_THROW(g.SetVertexNormal(0, normal), BoundsError);
    g.SetMaxVertNormal(2);
    EXPECT_EQ(get(1), Vector());
    g.SetVertexNormal(1, normal);
    EXPECT_EQ(get(1), normal);
    for (const std::int32_t outside : {kLowest, -1, 2, kHighest})
    {
        EXPECT_EQ(get(outside), std::nullopt) << outside;
        EXPECT_EQ(ErrorPosition([&] { g.SetVertexNormal(outside, normal); }), outside);
    }
    for (const std::int32_t count : {0, -3})
    {
        g.SetMaxVertNormal(count);
        EXPECT_EQ(g.MaxVertNormal(), count);
        EXPECT_EQ(get(1), std::nullopt);
        EXPECT_NO_THROW(g.SetVertexNormal(1, normal)) << "the array is still there";
    }
    g.SetMaxVertNormal(3);
    EXPECT_EQ(get(1), Vector()) << "a new array";

    EXPECT_THROW(g.SetVertex(0, {}), BoundsError) << "a store of its own";
    EXPECT_THROW(g.SetIndex(0, 5), BoundsError) << "a store of its own";
    g.SetMaxIndex(1);
    g.SetIndex(0, 70000);
    EXPECT_EQ(std::tuple(g.GetIndex(0), g.GetIndex(1), g.MaxVertices()), std::tuple(70000, -1, 0));
}

} // namespace
} // namespace ZLMIM::Testing

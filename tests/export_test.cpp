#include "asset_folder.h"
#include "damaged_bytes.h"
#include "exporter.h"
#include "gltf_writer.h"
#include "good_files.h"
#include "made_assets.h"
#include "matrix_export.h"
#include "tools/sample/sample_assets.h"
#include "tools/sample/sample_files.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtc/type_ptr.hpp>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <rapidjson/document.h>
#include <string>
#include <vector>

namespace ZLMIM::Export
{
namespace
{

using namespace ZLMIM::Testing;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinite = std::numeric_limits<float>::infinity();

std::size_t SizeOf(ComponentType type)
{
    return type == ComponentType::UnsignedByte ? 1 : type == ComponentType::UnsignedShort ? 2 : 4;
}

std::size_t CountOf(const std::string& type)
{
    return type == "SCALAR" ? 1 : type == "MAT4" ? 16 : static_cast<std::size_t>(type.back() - '0');
}

/// The elements of an accessor.
template <class T>
std::vector<T> Read(const Document& document, Index index)
{
    const Accessor& accessor = document.Accessors.at(index);
    const BufferView& view = document.Views.at(accessor.View);
    EXPECT_EQ(sizeof(T), SizeOf(accessor.ComponentType) * CountOf(accessor.Type));
    const std::size_t stride = view.Stride > 0 ? view.Stride : sizeof(T);
    std::vector<T> elements(accessor.Count);
    for (std::size_t i = 0; i < accessor.Count; ++i)
        std::memcpy(&elements[i], view.Bytes.subspan(accessor.Offset + i * stride, sizeof(T)).data(),
                    sizeof(T));
    return elements;
}

struct Exported
{
    Document Gltf;
    std::vector<std::string> Repairs;
};

template <class Object>
Exported ExportOf(const Object& object, const Options& options = {})
{
    PathResolver names;
    Repairs repairs;
    Exported exported = {ToGltf(object, options, names, repairs), {}};
    exported.Repairs = repairs.Lines();
    return exported;
}

Bytes ChunkOf(PrimFlag kind, const std::vector<Vector>& points, const std::vector<int>& indices,
              const std::vector<Vector>& normals = {}, const std::string& bone = {})
{
    ChunkPlan plan = {.kind = kind, .indices = indices, .normals = normals, .bone = bone};
    for (const auto& [x, y, z] : points)
        plan.vertices.push_back({x, y, z, 0.25F, 0.75F});
    return PlannedChunk(plan);
}

Exported ExportOf(const std::vector<Bytes>& chunks, const Options& options = {})
{
    Mesh mesh;
    EXPECT_TRUE(mesh.LoadBytes(MeshOf(chunks).Span()));
    return ExportOf(mesh, options);
}

const std::vector<Vector> kPoints = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

TEST(Export, MapsEachKindOfPrimitiveAndLeavesOutWhatIsBroken)
{
    const struct
    {
        PrimFlag type;
        std::vector<int> indices;
        std::int32_t mode;
        std::vector<std::uint16_t> written; // empty if the chunk is skipped
        std::string repair = {};
    } cases[] = {
        {PrimFlag::POINTS, {0, 3}, 0, {0, 3}},
        {PrimFlag::LINES, {0, 1, 2, 3}, 1, {0, 1, 2, 3}},
        {PrimFlag::LINE_STRIP, {0, 1, 2}, 3, {0, 1, 2}},
        {PrimFlag::TRIANGLES, {0, 1, 2, 0, 2, 3}, 4, {0, 1, 2, 0, 2, 3}},
        {PrimFlag::TRI_STRIP, {0, 1, 3, 2}, 5, {0, 1, 3, 2}},
        {PrimFlag::TRI_FAN, {0, 1, 2, 3}, 6, {0, 1, 2, 3}},
        {PrimFlag::TRIANGLES, {0, 1, 2, 0, 2}, 4, {0, 1, 2}, "too few"},
        {PrimFlag::TRIANGLES, {0, 1, 4, 0, 2, 3}, 4, {0, 2, 3}, "out of range"},
        {PrimFlag::TRI_STRIP, {9, 0, 1, 3, 2}, 4, {1, 0, 3, 1, 3, 2}, "out of range"},
        {PrimFlag::TRI_FAN, {0, 1, 2, -1, 3, 1}, 4, {0, 1, 2, 0, 3, 1}, "out of range"},
        {PrimFlag::LINE_STRIP, {0, 1, 9, 2, 3}, 1, {0, 1, 2, 3}, "out of range"},
        {PrimFlag::TRIANGLES, {7, 8, 9}, 4, {}, "nothing can be drawn"},
        {PrimFlag::TRI_FAN, {0, 1}, 4, {}, "nothing can be drawn"},
        {PrimFlag::TRIANGLES, {}, 4, {}, "without vertices or indices"},
        {static_cast<PrimFlag>(7), {0, 1, 2}, 4, {}, "unknown kind"},
    };
    for (const auto& [type, indices, mode, written, repair] : cases)
    {
        SCOPED_TRACE(testing::PrintToString(static_cast<int>(type)) + testing::PrintToString(indices));
        const auto [gltf, repairs] = ExportOf({ChunkOf(type, kPoints, indices)});
        const std::string all = testing::PrintToString(repairs);
        EXPECT_EQ(repairs.empty(), repair.empty()) << all;
        EXPECT_NE(all.find(repair), std::string::npos) << all;
        ASSERT_EQ(gltf.Meshes.size(), written.empty() ? 0 : 1);
        if (written.empty())
            continue;
        const Primitive& primitive = gltf.Meshes[0].Primitives.at(0);
        EXPECT_EQ(primitive.Mode, mode);
        EXPECT_EQ(Read<std::uint16_t>(gltf, primitive.Indices), written);
        EXPECT_EQ(Read<Vector>(gltf, primitive.Position), kPoints);
        EXPECT_EQ(Read<glm::vec2>(gltf, primitive.Coordinates), std::vector(4, glm::vec2(0.25, 0.75)));
        EXPECT_EQ(gltf.Accessors[primitive.Position].Max, (std::vector<float>{1, 1, 0}));
    }
}

TEST(Export, TakesStoredIndicesAsUnsigned)
{
    const std::vector<Vector> points(0x10000, Vector{1, 2, 3});
    const auto narrow = ExportOf({ChunkOf(PrimFlag::TRIANGLES, points, {0, 0x8000, 0xFFFE})}).Gltf;
    EXPECT_EQ(Read<std::uint16_t>(narrow, narrow.Meshes.at(0).Primitives[0].Indices),
              (std::vector<std::uint16_t>{0, 0x8000, 0xFFFE}));
    // As a narrow index, this number would restart the primitive.
    const auto wide = ExportOf({ChunkOf(PrimFlag::TRIANGLES, points, {0, 1, 0xFFFF})}).Gltf;
    EXPECT_EQ(Read<std::uint32_t>(wide, wide.Meshes.at(0).Primitives[0].Indices),
              (std::vector<std::uint32_t>{0, 1, 0xFFFF}));
}

TEST(Export, RepairsNormals)
{
    const Vector up = {0, 0, 1};
    const struct
    {
        PrimFlag type;
        std::vector<Vector> stored;
        std::vector<Vector> written; // empty if skipped
    } cases[] = {
        {PrimFlag::TRI_FAN,
         {{0, 3, 4}, up, {1e-30F, 0, 0}, {0, -3e38F, 0}},
         {{0, 0.6F, 0.8F}, up, {1, 0, 0}, {0, -1, 0}}},
        {PrimFlag::TRI_FAN, {{}, {kNan, 0, 0}, {1, 0, kInfinite}, {0, 1, 0}}, {up, up, up, {0, 1, 0}}},
        {PrimFlag::LINE_STRIP, {up, up, up, {}}, {}},
        {PrimFlag::LINE_STRIP, {up, up, up, {0, 2, 0}}, {up, up, up, {0, 1, 0}}},
    };
    for (const auto& [type, stored, written] : cases)
    {
        SCOPED_TRACE(testing::PrintToString(written.size()));
        const auto [gltf, repairs] = ExportOf({ChunkOf(type, kPoints, {0, 1, 2, 3}, stored)});
        EXPECT_EQ(repairs.size(), 1);
        const auto normal = gltf.Meshes.at(0).Primitives.at(0).Normal;
        ASSERT_EQ(normal.has_value(), !written.empty());
        if (normal)
        {
            EXPECT_EQ(Read<Vector>(gltf, *normal), written);
        }
    }
}

TEST(Export, LeavesOutChunksWithNumbersThatAreNone)
{
    auto points = kPoints;
    points[3].y = kInfinite; // used by no triangle
    const Bytes broken = ChunkOf(PrimFlag::TRIANGLES, points, {0, 1, 2});
    const Bytes good = ChunkOf(PrimFlag::TRIANGLES, kPoints, {0, 1, 2});
    const auto [gltf, repairs] = ExportOf({broken, good, broken});
    ASSERT_EQ(gltf.Meshes.at(0).Primitives.size(), 1);
    EXPECT_EQ(gltf.Meshes[0].Primitives[0].Chunk, 2);
    EXPECT_EQ(repairs, (std::vector<std::string>{
                           "chunks 1, 3: a chunk with infinite or undefined coordinates is skipped"}));
    const auto flipped = ExportOf({good}, {.IsVFlipped = true}).Gltf;
    EXPECT_EQ(Read<glm::vec2>(flipped, flipped.Meshes[0].Primitives[0].Coordinates),
              std::vector(4, glm::vec2(0.25, 0.25)));
}

TEST(Export, MakesMatricesThatAreARotationAScaleAndAPosition)
{
    const struct
    {
        Matrix stored;
        bool isRepaired;
        std::array<float, 16> written;
    } cases[] = {
        {{0, 2, 0, -2, 0, 0, 0, 0, -2, 7, 8, 9}, false, {0, 2, 0, 0, -2, 0, 0, 0, 0, 0, -2, 0, 7, 8, 9, 1}},
        {{1, 0, 0, 1, 1, 0, 0, 0, 1, 7, 8, 9},
         true,
         {1, 0, 0, 0, 0, std::sqrt(2.0F), 0, 0, 0, 0, 1, 0, 7, 8, 9, 1}},
        {{1, 0, 0, 0, 0, 0, 0, 0, 1, 7, 8, 9}, true, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1}},
        {{}, true, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}},
        {{kNan, 0, 0, 0, 1, 0, 0, 0, 1, 7, kNan, 9}, true, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}},
    };
    for (const auto& [stored, isRepaired, written] : cases)
    {
        const PlaceMatrix place = ToPlace(stored);
        EXPECT_EQ(place.IsRepaired, isRepaired);
        EXPECT_EQ(place.Columns, written) << testing::PrintToString(place.Columns);
    }
}

/// Where a node puts what is below it.
glm::mat4 PlaceOf(const Document& document, Index wanted)
{
    glm::mat4 place(1);
    const Node& node = document.Nodes[wanted];
    if (node.Matrix)
        place = glm::make_mat4(node.Matrix->data());
    if (node.Rotation)
    {
        const auto& [x, y, z, w] = *node.Rotation;
        place = glm::mat4_cast(glm::quat(w, x, y, z));
        place[3] = glm::vec4(glm::make_vec3(node.Translation->data()), 1);
    }
    for (Index parent = 0; parent < document.Nodes.size(); ++parent)
        for (const Index child : document.Nodes[parent].Children)
            if (child == wanted)
                return PlaceOf(document, parent) * place;
    return place;
}

Bytes PosedBone(std::string_view name, const Keyframe& pose, const Bytes& children = {})
{
    const std::int32_t count = children.Size() > 0 ? 1 : 0;
    return Bytes().Block("BONE", Bytes().Long(100).String(name).Record(pose).Long(count).Append(children));
}

/// In a frame, the same as `picture` shows; the rest pose is the mesh as stored.
TEST(Export, PosesSkinsAsPictureDoes)
{
    const Keyframe outer = {{5, 1, -2}, {0.5F, 0.5F, 0.5F, 0.5F}};
    const Keyframe inner = {{1, 2, 3}, {0.6F, 0, 0, 0.8F}};
    const Keyframe moved = {{4, 0, 1}, {0, -0.6F, 0, -0.8F}};
    const Keyframe turned = {{0, 0, 1}, {0, 0, 2, 0}}; // not of unit length
    const Bytes file = MeshOf({ChunkOf(PrimFlag::TRIANGLES, kPoints, {0, 1, 2}, {}, "inner")})
                           .Append(MeshSkeleton(PosedBone("outer", outer, PosedBone("inner", inner))));
    const Bytes frames = AnimWith(3, AnimBone("outer", 1, AnimBone("inner")))
                             .Block("FRAM", Bytes().Long(0).Long(1).Record(outer).Record(inner))
                             .Block("FRAM", Bytes().Long(0).Long(3).Record(moved).Record(moved))
                             .Block("FRAM", Bytes().Long(0).Long(2).Record(moved).Record(turned));
    for (const auto base : {Tools::PoseBase::Parent, Tools::PoseBase::Mesh})
    {
        const auto model = ModelOf(file.Str(), frames.Str());
        const auto entry = model->MeshTable()->Item(1);
        auto [gltf, repairs] = ExportOf(*model, {.Scale = 2, .Poses = base});
        EXPECT_EQ(repairs.size(), 1) << testing::PrintToString(repairs);

        ASSERT_EQ(gltf.Skins.size(), 1);
        ASSERT_EQ(gltf.Meshes.size(), 1);
        EXPECT_EQ(gltf.RootNodes.size(), 2); // a mesh with a skin has no parent
        const Primitive& primitive = gltf.Meshes[0].Primitives.at(0);
        const auto joints = Read<std::array<std::uint16_t, 4>>(gltf, primitive.Joints.value());
        EXPECT_EQ(joints, std::vector(4, std::array<std::uint16_t, 4>{1}));
        const auto inverse = Read<glm::mat4>(gltf, gltf.Skins[0].InverseBindMatrices).at(1);
        const Index joint = gltf.Skins[0].Joints.at(1);
        // What the root node does to the mesh as a whole.
        const glm::mat4 root = PlaceOf(gltf, 0);
        const auto expectNear = [](const glm::mat4& a, const glm::mat4& b)
        {
            for (int i = 0; i < 4; ++i)
                EXPECT_LT(glm::distance(a[i], b[i]), 1e-5F);
        };
        expectNear(PlaceOf(gltf, joint) * inverse, root);

        ASSERT_EQ(gltf.Animations.size(), 1);
        const Animation animation = gltf.Animations[0];
        EXPECT_EQ(animation.Name, u"n");
        ASSERT_EQ(animation.Channels.size(), 4);
        // The slot that no frame filled, 0, has no time.
        EXPECT_EQ(Read<float>(gltf, animation.Samplers[0].Input),
                  (std::vector<float>{1 / 30.0F, 2 / 30.0F, 3 / 30.0F}));
        for (const std::size_t frame : {0U, 2U})
        {
            for (const Channel& channel : animation.Channels)
            {
                Node& node = gltf.Nodes[channel.Node];
                const Index output = animation.Samplers[channel.Sampler].Output;
                if (channel.IsRotation)
                    node.Rotation = Read<std::array<float, 4>>(gltf, output).at(frame);
                else
                    node.Translation = Read<std::array<float, 3>>(gltf, output).at(frame);
            }
            const glm::mat4 motion =
                Tools::Poses(*entry->anim, base)
                    .Motion(*entry->Mesh->RootBone->Children()->Item(1), static_cast<double>(frame) + 1);
            expectNear(PlaceOf(gltf, joint) * inverse, root * motion);
        }
        // Neighbours are in one hemisphere, and of unit length.
        const auto rotations = Read<glm::vec4>(gltf, animation.Samplers.back().Output);
        for (std::size_t i = 0; i < rotations.size(); ++i)
        {
            EXPECT_NEAR(glm::length(rotations[i]), 1, 1e-6);
            if (i > 0)
            {
                EXPECT_GE(glm::dot(rotations[i - 1], rotations[i]), 0);
            }
        }
    }
}

TEST(Export, WritesTheSampleAsOneFileAndAsSeveral)
{
    const TempFolder folder;
    Sample::WriteSampleAssets(folder.Path());
    const auto names = std::make_shared<PathResolver>();
    const auto exportSample = [&]
    {
        Repairs repairs;
        const auto asset =
            Tools::LoadAsset({Tools::Kind::Model, folder.Name(u"assets\\wagon\\config.txt")}, names);
        const Document gltf = ToGltf(asset, {}, *names, repairs);
        EXPECT_TRUE(repairs.Lines().empty()) << testing::PrintToString(repairs.Lines());
        Save(gltf, folder.Path() / "a wagon.gltf");
        return ToGlb(gltf);
    };
    const std::string glb = exportSample();
    EXPECT_EQ(exportSample(), glb); // the same bytes

    std::uint32_t head[5];
    std::memcpy(head, glb.data(), sizeof(head));
    EXPECT_EQ(head[2], glb.size());
    rapidjson::Document json;
    json.Parse(glb.data() + sizeof(head), head[3]);
    ASSERT_FALSE(json.HasParseError());
    const auto& extras = json["scenes"][0]["extras"];
    EXPECT_STREQ(extras["kuid"].GetString(), "<kuid:4711:1001>");
    EXPECT_STREQ(extras["name"].GetString(), "Covered wagon");
    // An entry's node hangs on its point's, a bogey's on the point named after its key.
    const auto parentOf = [&](const std::string& name, const std::string& kind) -> std::string
    {
        const auto& nodes = json["nodes"].GetArray();
        for (const auto& parent : nodes)
            if (parent.HasMember("children"))
                for (const auto& child : parent["children"].GetArray())
                    if (const auto& node = nodes[child.GetUint()];
                        node["name"].GetString() == name && node["extras"]["kind"].GetString() == kind)
                        return parent["name"].GetString();
        return "no parent";
    };
    EXPECT_EQ(parentOf("default", "entry"), "Covered wagon");
    EXPECT_EQ(parentOf("load", "entry"), "a.load");
    EXPECT_EQ(parentOf("bogey-1", "reference"), "a.bogey1");
    EXPECT_EQ(parentOf("bogey", "entry"), "bogey-0");
    EXPECT_EQ(parentOf("b.r.handle.left", "bone"), "b.r.door.left");

    rapidjson::Document separate;
    std::ifstream file(folder.Path() / "a wagon.gltf");
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    ASSERT_FALSE(separate.Parse(text.c_str()).HasParseError());
    EXPECT_STREQ(separate["buffers"][0]["uri"].GetString(), "a%20wagon.bin");
    EXPECT_EQ(std::filesystem::file_size(folder.Path() / "a wagon.bin"),
              separate["buffers"][0]["byteLength"].GetUint64());
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "a wagon-1.png"));
}

/// Walks a document as its readers will. The validator's judgement is scripts/export-check.
void ExpectInBounds(const Document& document)
{
    for (const Accessor& accessor : document.Accessors)
    {
        const BufferView& view = document.Views.at(accessor.View);
        const std::size_t element = SizeOf(accessor.ComponentType) * CountOf(accessor.Type);
        const std::size_t stride = view.Stride > 0 ? view.Stride : element;
        ASSERT_GT(accessor.Count, 0);
        ASSERT_LE(accessor.Offset + (accessor.Count - 1) * stride + element, view.Bytes.size());
        for (std::size_t i = 0; i < accessor.Count && accessor.ComponentType == ComponentType::Float; ++i)
        {
            const auto bytes = view.Bytes.subspan(accessor.Offset + i * stride, element);
            for (std::size_t c = 0; c < CountOf(accessor.Type); ++c)
            {
                float number = 0;
                std::memcpy(&number, bytes.subspan(c * sizeof(float), sizeof(float)).data(), sizeof(float));
                ASSERT_TRUE(std::isfinite(number));
            }
        }
    }
    for (const GltfMesh& mesh : document.Meshes)
    {
        for (const Primitive& primitive : mesh.Primitives)
        {
            const std::size_t vertices = document.Accessors.at(primitive.Position).Count;
            for (const std::uint16_t index : Read<std::uint16_t>(document, primitive.Indices))
                ASSERT_LT(index, vertices);
            const auto normals =
                primitive.Normal ? Read<Vector>(document, *primitive.Normal) : std::vector<Vector>();
            for (const auto& [x, y, z] : normals)
                ASSERT_NEAR(std::sqrt(x * x + y * y + z * z), 1, 1e-3);
        }
    }
}

TEST(Export, WritesWhatIsValidOfAThousandDamagedAssets)
{
    // Small files, so that damage hits everything.
    const auto points =
        Bytes().Long(100).Long(1).String("a.p").Record(Matrix{0, 1, 0, -1, 0, 0, 0, 0, 1, 7, 8, 9});
    const Keyframe pose = {{1, 2, 3}, {0, 0, 0.6F, 0.8F}};
    const std::string mesh = MeshOf({ChunkOf(PrimFlag::TRIANGLES, kPoints, {0, 1, 2, 0, 2, 3}, {}, "A"),
                                     ChunkOf(PrimFlag::TRI_STRIP, kPoints, {0, 1, 3, 2}, {}, "B"),
                                     ChunkOf(PrimFlag::LINE_STRIP, kPoints, {0, 1, 2, 3}),
                                     ChunkOf(PrimFlag::POINTS, kPoints, {0, 1, 2, 3})})
                                 .Block("ATCH", points)
                                 .Append(MeshSkeleton(PosedBone("A", pose, PosedBone("B", pose))))
                                 .Str();
    const std::string anim = GoodAnim().Str();
    constexpr std::uint32_t kAssets = 1'000;
    std::size_t meshes = 0;
    std::size_t animations = 0;
    std::size_t repaired = 0;
    for (std::uint32_t seed = 0; seed < kAssets; ++seed)
    {
        SCOPED_TRACE(seed);
        const auto [gltf, repairs] = ExportOf(*ModelOf(Damaged(mesh, seed), Damaged(anim, seed + kAssets)));
        meshes += gltf.Meshes.empty() ? 0 : 1;
        animations += gltf.Animations.size();
        repaired += repairs.empty() ? 0 : 1;
        ASSERT_NO_FATAL_FAILURE(ExpectInBounds(gltf));
        ASSERT_GT(ToGlb(gltf).size(), 0);
    }
    // Most damage leaves something to show.
    EXPECT_GT(meshes, kAssets / 2);
    EXPECT_GT(animations, kAssets / 8);
    EXPECT_GT(repaired, kAssets / 4);
}

} // namespace
} // namespace ZLMIM::Export

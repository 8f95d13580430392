#include "tree_mesh.h"
#include "tree.h"
#include "tree_skeleton.h"
#include "tree_text.h"

#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

namespace ZLMIM::Inspect
{
namespace
{

constexpr std::array<std::string_view, 7> kPrimFlagNames = {"NONE",      "POINTS",    "LINES",  "LINE_STRIP",
                                                            "TRIANGLES", "TRI_STRIP", "TRI_FAN"};

constexpr std::array<std::string_view, 13> kTxtypeNames = {
    "TEX_Ambient",   "TEX_Diffuse",      "TEX_Specular",    "TEX_Shine", "TEX_Shinestrength",
    "TEX_Selfillum", "TEX_Opacity",      "TEX_Filtercolor", "TEX_Bump",  "TEX_Reflect",
    "TEX_Refract",   "TEX_Displacement", "TEX_NumtypeS"};

/// Materials above this version have the long form.
constexpr std::int32_t kLastShortMaterial = 101;

/// The enumerator's name, or the number if it has none.
template <class Enumeration>
Cell EnumeratorCell(Enumeration value, std::span<const std::string_view> names)
{
    const auto number = static_cast<std::int32_t>(value);
    const bool isNamed = number >= 0 && static_cast<std::size_t>(number) < names.size();
    return {isNamed ? std::string(names[static_cast<std::size_t>(number)]) : Number(number)};
}

Cell VersionCell(std::int32_t version) { return {Words({"version", Number(version)}), Cell::Align::Right}; }

/// As #RRGGBB, or as three numbers if a component isn't in 0 to 1.
std::string ColourText(const rgbColour& colour)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const float component : {colour.r, colour.g, colour.b})
    {
        if (!(component >= 0 && component <= 1))
            return Words({"rgb", Decimal(colour.r), Decimal(colour.g), Decimal(colour.b)});
        const auto byte = static_cast<std::size_t>(std::lround(component * 255));
        text += {kDigits[byte / 16], kDigits[byte % 16]};
    }
    return text;
}

/// The smallest box around points. Ignores NaN coordinates.
class Bounds
{
public:
    void Add(const Vertex& vertex)
    {
        mX.Add(vertex.x);
        mY.Add(vertex.y);
        mZ.Add(vertex.z);
    }

    /// "x -1.000 … 1.000" for each coordinate.
    [[nodiscard]] std::array<std::string, 3> Texts() const
    {
        return {mX.Text("x"), mY.Text("y"), mZ.Text("z")};
    }

    [[nodiscard]] bool IsEmpty() const { return !(mX.Min <= mX.Max && mY.Min <= mY.Max && mZ.Min <= mZ.Max); }

    [[nodiscard]] Vector Centre() const { return {mX.Middle(), mY.Middle(), mZ.Middle()}; }

private:
    struct Range
    {
        float Min = std::numeric_limits<float>::infinity();
        float Max = -std::numeric_limits<float>::infinity();

        void Add(float value)
        {
            Min = value < Min ? value : Min;
            Max = value > Max ? value : Max;
        }
        [[nodiscard]] float Middle() const { return Min / 2 + Max / 2; }
        [[nodiscard]] std::string Text(std::string_view name) const
        {
            return Min <= Max ? Words({name, Decimal(Min), "…", Decimal(Max)}) : Words({name, "none"});
        }
    };

    Range mX;
    Range mY;
    Range mZ;
};

Node BoundsNode(const Mesh& mesh)
{
    Bounds bounds;
    if (mesh.Chunks)
        for (const auto& chunk : *mesh.Chunks)
            if (chunk && chunk->Geometry)
                for (const Vertex& vertex : chunk->Geometry->Vertices())
                    bounds.Add(vertex);
    Node node{{}, "Bounds", {}, {}};
    if (bounds.IsEmpty())
    {
        node.Cells.push_back({"none"});
        return node;
    }
    for (const std::string& text : bounds.Texts())
        node.Cells.push_back({text});
    AddVectorCells(node, "centre", bounds.Centre());
    return node;
}

Node TextureNode(const Texture& texture, std::int32_t)
{
    return {"texture",
            "Texture",
            {{NameText(texture.Name)},
             EnumeratorCell(texture.TextureType, kTxtypeNames),
             {Words({"amount", Decimal(texture.Amount)}), Cell::Align::Right}},
            {}};
}

Node MaterialNode(const Material& material)
{
    Node node{"material", "Material", {}, {}};
    // Blocks in the short form leave these at 0, which would read as invisible.
    const bool isShort = material.Version <= kLastShortMaterial;
    node.Cells = {
        {NameText(material.Name)},
        VersionCell(material.Version),
        {isShort ? std::string() : Words({"opacity", Decimal(material.Opacity)}), Cell::Align::Right},
        {Words({"power", Decimal(material.SpecularPower)}), Cell::Align::Right},
        {Words({"ambient", ColourText(material.Ambient)})},
        {Words({"diffuse", ColourText(material.Diffuse)})},
        {Words({"specular", ColourText(material.Specular)})},
        {isShort ? std::string() : Words({"emissive", ColourText(material.Emissive)})},
        {material.TwoSided != 0 ? "two-sided" : ""},
    };
    if (material.Textures)
        AddList(node, *material.Textures, TextureNode);
    return node;
}

Node GeometryNode(const Geometry& geometry)
{
    Node node{"geometry", "Geometry", {}, {}};
    node.Cells = {
        EnumeratorCell(geometry.PrimitiveType, kPrimFlagNames),
        VersionCell(geometry.Version),
        CountCell(geometry.PrimitiveCount, "primitive", "primitives"),
        CountCell(geometry.MaxVertices(), "vertex", "vertices"),
        CountCell(geometry.MaxIndex(), "index", "indices"),
        CountCell(geometry.FaceNormals ? geometry.FaceNormals->Count() : 0, "face normal", "face normals"),
    };
    Bounds bounds;
    for (const Vertex& vertex : geometry.Vertices())
        bounds.Add(vertex);
    for (const std::string& text : bounds.Texts())
        node.Cells.push_back({text, Cell::Align::Right});
    if (!geometry.Bone.empty())
        node.Cells.push_back(
            {Words({"on", NameText(geometry.Bone), geometry.BoneObject ? "" : "(no such bone)"})});
    return node;
}

Node ChunkNode(const Chunk& chunk, std::int32_t number)
{
    Node node{"chunk", Words({"Chunk", Number(number)}), {}, {}};
    node.Cells = {{Words({"id", Number(chunk.Id)}), Cell::Align::Right}, VersionCell(chunk.Version)};
    if (chunk.Material)
        node.Children.push_back(MaterialNode(*chunk.Material));
    if (chunk.Geometry)
        node.Children.push_back(GeometryNode(*chunk.Geometry));
    return node;
}

Node AttachmentNode(const Attachment& attachment, std::int32_t)
{
    Node node{"attachment", NameText(attachment.Name), {}, {}};
    const Matrix& m = attachment.Matrix;
    AddVectorCells(node, "at", {m.m41, m.m42, m.m43});
    return node;
}

void FillBone(Node& node, const Bone& bone)
{
    AddVectorCells(node, "at", bone.Position);
    AddVectorCells(node, "rotation", {bone.Rotation.x, bone.Rotation.y, bone.Rotation.z});
    node.Cells.push_back(DecimalCell(bone.Rotation.w));
    node.Cells.push_back(VersionCell(bone.Version));
}

/// The heading of a list, with its entries below.
template <class List, class ToNode>
Node ListNode(std::string label, const std::shared_ptr<List>& list, ToNode toNode)
{
    Node node{{}, std::move(label), {}, {}};
    node.Cells.push_back({list ? Number(list->Count()) : "none"});
    if (list)
        AddList(node, *list, toNode);
    return node;
}

} // namespace

void AddMaterials(Node& node, const Mesh& mesh)
{
    if (!mesh.Chunks)
        return;
    for (std::int32_t number = 1; const auto& chunk : *mesh.Chunks)
    {
        if (chunk && chunk->Material)
        {
            Node material = MaterialNode(*chunk->Material);
            material.Label = Words({"Chunk", Number(number), "material"});
            node.Children.push_back(std::move(material));
        }
        ++number;
    }
}

Node ToTree(const Mesh& mesh)
{
    Node node{"mesh", "Mesh", {}, {}};
    node.Cells = {
        VersionCell(mesh.Version),
        {Counted(mesh.FileSize, "byte", "bytes")},
        {Counted(mesh.ChunkCount, "chunk declared", "chunks declared")},
        {Counted(mesh.Polygons, "triangle", "triangles")},
        {Counted(mesh.VertexCount, "vertex", "vertices")},
        {Counted(mesh.TextureCount, "texture", "textures")},
        {Counted(mesh.BoneCount, "bone", "bones")},
    };
    node.Children.push_back(BoundsNode(mesh));
    node.Children.push_back(ListNode("Chunks", mesh.Chunks, ChunkNode));
    Node attachments = ListNode("Attachments", mesh.Attachments, AttachmentNode);
    if (mesh.AttVersion != 0)
        attachments.Cells.push_back(VersionCell(mesh.AttVersion));
    node.Children.push_back(std::move(attachments));
    node.Children.push_back(SkeletonTree<Bone>(FillBone).ToTree(mesh.RootBone));
    return node;
}

} // namespace ZLMIM::Inspect

#include "exporter.h"

#include "geometry_export.h"
#include "material_export.h"
#include "matrix_export.h"
#include "skeleton_export.h"

#include "tools/common/assembly.h"
#include "tools/common/paths.h"

#include <list>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>

namespace ZLMIM::Export
{
namespace
{

class Exporter
{
public:
    Exporter(const Options& options, PathResolver& names, Repairs& repairs)
        : mOptions(options), mRepairs(repairs), mMaterials(names, mDocument)
    {
        AddRoot();
    }

    Document Make(const ZLMModel& model)
    {
        mDocument.Texts = {model.UserName, model.kuid(), model.Author, model.Description};
        mDocument.Nodes[kRoot].Name = model.UserName;
        const Tools::Assembly assembly = Tools::Assemble(model);
        for (const auto* const lines : {&assembly.Problems, &assembly.Notes})
            for (const std::string& what : *lines)
                mRepairs.Add({}, what);
        for (const Tools::Part& part : assembly.Parts)
        {
            // A large skeleton in many places would take up much more than its file.
            if (mDocument.Nodes.size() > kMaxNodes)
            {
                mRepairs.Add({},
                             "entries, bogeys and pantographs are skipped, since there are too many bones "
                             "and attachment points");
                break;
            }
            const Index parent = ParentOf(part);
            if (part.Entry)
                mPlaced.push_back(AddEntry(part.Name, *part.Entry->Mesh, part.Entry->anim.get(), parent));
            else
                mPlaced.push_back({AddNode({.Name = part.Name, .Kind = "reference"}, parent), {}});
        }
        AddAnimations();
        return std::move(mDocument);
    }

    Document Make(const Mesh& mesh)
    {
        const std::u16string_view name = Tools::BaseName(mesh.FileName);
        mDocument.Texts.Name = name.substr(0, name.rfind(u'.'));
        AddEntry(mDocument.Texts.Name, mesh, nullptr, kRoot);
        return std::move(mDocument);
    }

private:
    static constexpr Index kRoot = 0;
    static constexpr std::size_t kMaxNodes = 1'000'000;

    /// A mesh, which may be in several places of the asset.
    struct MeshParts
    {
        /// Of its chunks without and with bones.
        std::optional<Index> Rigid;
        std::optional<Index> Skinned;
        std::optional<SkeletonExport> Skeleton;
        const Mesh* Source = nullptr;
        const Anim* Animation = nullptr;
        std::u16string Entry;
    };

    /// The node of a part, and those of its attachment points.
    struct Placed
    {
        Index Node = 0;
        std::unordered_map<const Attachment*, Index> Points;
    };

    void AddRoot()
    {
        Node root;
        const float scale = mOptions.Scale;
        if (mOptions.Up == UpAxis::Z)
            root.Matrix = {scale, 0, 0, 0, 0, 0, -scale, 0, 0, scale, 0, 0, 0, 0, 0, 1};
        else if (scale != 1)
            root.Matrix = {scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, 1};
        mDocument.Nodes.push_back(std::move(root));
        mDocument.RootNodes.push_back(kRoot);
    }

    Index AddNode(Node node, Index parent)
    {
        const Index index = mDocument.Nodes.size();
        mDocument.Nodes.push_back(std::move(node));
        mDocument.Nodes[parent].Children.push_back(index);
        return index;
    }

    [[nodiscard]] Report ReportFor(const std::u16string& file, std::size_t chunk = 0)
    {
        return [this, &file, chunk](const std::string& what) { mRepairs.Add(file, what, chunk); };
    }

    /// The node that a part hangs on.
    [[nodiscard]] Index ParentOf(const Tools::Part& part) const
    {
        if (!part.Parent)
            return kRoot;
        const Placed& parent = mPlaced[*part.Parent];
        const auto point = parent.Points.find(part.Point.get());
        return point == parent.Points.end() ? parent.Node : point->second;
    }

    Placed AddEntry(const std::u16string& name, const Mesh& mesh, const Anim* anim, Index parent)
    {
        const auto [known, isNew] = mMeshes.try_emplace(&mesh, nullptr);
        if (isNew)
        {
            known->second = &mParts.emplace_back(AddMesh(mesh, name));
            known->second->Animation = anim;
        }
        MeshParts& parts = *known->second;
        Placed placed = {AddNode({.Name = name, .Kind = "entry", .Mesh = parts.Rigid}, parent), {}};
        if (mesh.Attachments)
            for (const auto& attachment : mesh.Attachments->Entries())
                if (attachment)
                    placed.Points.try_emplace(attachment.get(), AddPoint(*attachment, mesh, placed.Node));
        if (parts.Skeleton)
            parts.Skeleton->AddJoints(placed.Node, mDocument);
        if (parts.Skinned)
        {
            mDocument.RootNodes.push_back(mDocument.Nodes.size());
            const Index skin = parts.Skeleton->AddSkin(mDocument, ReportFor(mesh.FileName));
            mDocument.Nodes.push_back({.Name = name, .Kind = "mesh", .Mesh = parts.Skinned, .Skin = skin});
        }
        return placed;
    }

    Index AddPoint(const Attachment& attachment, const Mesh& mesh, Index parent)
    {
        Node node = {.Name = attachment.Name, .Kind = "attachment"};
        const PlaceMatrix place = ToPlace(attachment.Matrix);
        if (place.IsRepaired)
            mRepairs.Add(mesh.FileName,
                         "matrices of attachment points that aren't of a rotation, a scale and "
                         "a position are replaced by the nearest that are");
        if (!place.IsIdentity)
            node.Matrix = place.Columns;
        return AddNode(std::move(node), parent);
    }

    MeshParts AddMesh(const Mesh& mesh, const std::u16string& name)
    {
        MeshParts parts;
        parts.Source = &mesh;
        parts.Entry = name;
        if (mesh.RootBone)
            parts.Skeleton.emplace(*mesh.RootBone, mOptions.Poses, ReportFor(mesh.FileName));
        if (!mesh.Chunks)
            return parts;
        GltfMesh rigid = {name, {}};
        GltfMesh skinned = {name, {}};
        std::size_t number = 0;
        for (const auto& chunk : mesh.Chunks->Entries())
        {
            ++number;
            if (!chunk || !chunk->Geometry || !chunk->Material)
                continue;
            const Report report = ReportFor(mesh.FileName, number);
            auto primitive = AddGeometry(chunk->Geometry, mOptions.IsVFlipped, mDocument, report);
            if (!primitive)
                continue;
            primitive->Chunk = number;
            primitive->Material = mMaterials.Add(*chunk->Material, mesh, report);
            const Bone* const bone = chunk->Geometry->BoneObject.get();
            const auto joint = bone && parts.Skeleton ? parts.Skeleton->Find(bone) : std::nullopt;
            if (joint)
                AddJoint(*primitive, *joint, mDocument);
            (joint ? skinned : rigid).Primitives.push_back(*primitive);
        }
        const auto add = [this](GltfMesh& made, std::optional<Index>& index)
        {
            if (made.Primitives.empty())
                return;
            index = mDocument.Meshes.size();
            mDocument.Meshes.push_back(std::move(made));
        };
        add(rigid, parts.Rigid);
        add(skinned, parts.Skinned);
        return parts;
    }

    void AddAnimations()
    {
        for (const MeshParts& parts : mParts)
            if (parts.Skeleton && parts.Animation)
                parts.Skeleton->AddAnimation(*parts.Animation, parts.Entry, mDocument,
                                             ReportFor(parts.Animation->FileName));
    }

    const Options& mOptions;
    Repairs& mRepairs;
    Document mDocument;
    MaterialExport mMaterials;
    std::list<MeshParts> mParts;
    std::unordered_map<const Mesh*, MeshParts*> mMeshes;
    std::vector<Placed> mPlaced;
};

} // namespace

Document ToGltf(const ZLMModel& model, const Options& options, PathResolver& names, Repairs& repairs)
{
    return Exporter(options, names, repairs).Make(model);
}

Document ToGltf(const Mesh& mesh, const Options& options, PathResolver& names, Repairs& repairs)
{
    return Exporter(options, names, repairs).Make(mesh);
}

Document ToGltf(const Tools::Asset& asset, const Options& options, PathResolver& names, Repairs& repairs)
{
    if (const auto* const mesh = std::get_if<std::shared_ptr<Mesh>>(&asset.Object))
        return ToGltf(**mesh, options, names, repairs);
    return ToGltf(*std::get<std::shared_ptr<ZLMModel>>(asset.Object), options, names, repairs);
}

} // namespace ZLMIM::Export

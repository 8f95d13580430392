#include "page_data.h"

#include "output.h"

#include "tools/common/assembly.h"
#include "tools/common/json_writer.h"
#include "tools/common/paths.h"
#include "tools/common/text.h"

#include "zlmim/model/text.h"

#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ZLMIM::View
{
namespace
{

using Export::Index;
using Tools::JsonWriter;
using Tools::Printable;

/// An entry or a reference, in the order of the nodes.
struct Part
{
    const ZLMIM::Mesh* Mesh = nullptr;
    const ZLMIM::Anim* Anim = nullptr;
    const ZLMModel* Reference = nullptr;
};

std::vector<Part> PartsOf(const Tools::Asset& asset)
{
    if (const auto* const mesh = std::get_if<std::shared_ptr<Mesh>>(&asset.Object))
        return {{.Mesh = mesh->get()}};
    std::vector<Part> parts;
    for (const Tools::Part& part : Tools::Assemble(*std::get<std::shared_ptr<ZLMModel>>(asset.Object)).Parts)
    {
        if (part.Entry)
            parts.push_back({part.Entry->Mesh.get(), part.Entry->anim.get()});
        else
            parts.push_back({.Reference = part.Reference.get()});
    }
    return parts;
}

std::vector<const Attachment*> PointsOf(const Mesh& mesh)
{
    std::vector<const Attachment*> points;
    if (mesh.Attachments)
        for (const auto& attachment : mesh.Attachments->Entries())
            if (attachment)
                points.push_back(attachment.get());
    return points;
}

/// Depth-first, parents first.
std::vector<const Bone*> BonesOf(const Mesh& mesh)
{
    std::vector<const Bone*> bones;
    std::vector<const Bone*> waiting = {mesh.RootBone.get()};
    while (!waiting.empty())
    {
        const Bone* const bone = waiting.back();
        waiting.pop_back();
        if (!bone)
            continue;
        bones.push_back(bone);
        const auto children = bone->Children();
        for (std::int32_t i = children ? children->Count() : 0; i > 0; --i)
            waiting.push_back(children->Entries()[static_cast<std::size_t>(i - 1)].get());
    }
    return bones;
}

/// Text of several lines, each printable.
std::string Lines(std::u16string_view text)
{
    std::string lines;
    while (!text.empty())
    {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        std::u16string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with(u'\r'))
            line.remove_suffix(1);
        lines += Printable(std::u16string(line)) + (text.empty() ? "" : "\n");
    }
    return lines;
}

class DataWriter
{
public:
    DataWriter(const Subject& subject, const Export::Document& document, std::ostream& out)
        : mSubject(subject), mDocument(document), mParts(PartsOf(subject.Asset)),
          mJson(out, JsonWriter::Form::OneLine)
    {
        for (const Part& part : mParts)
            if (part.Mesh && mMeshes.emplace(part.Mesh, mMeshList.size()).second)
                mMeshList.push_back(part.Mesh);
    }

    void Write()
    {
        mJson.BeginObject();
        WriteAsset();
        List("problems", mSubject.Problems,
             [this](const std::string& line) { mJson.Text(std::string_view(line)); });
        Text("summary", Validate::Summary(mSubject.Findings));
        List("findings", mSubject.Findings.Findings,
             [this](const Validate::Finding& finding) { WriteFinding(finding); });
        List("meshes", mMeshList, [this](const Mesh* mesh) { WriteMesh(*mesh); });
        WriteNodes();
        mJson.EndObject();
    }

private:
    template <class Container, class WriteElement>
    void List(std::string_view name, const Container& elements, WriteElement writeElement)
    {
        mJson.Key(name).BeginArray();
        for (const auto& element : elements)
            writeElement(element);
        mJson.EndArray();
    }

    /// Nothing for an empty text.
    void Text(std::string_view name, const std::string& text)
    {
        if (!text.empty())
            mJson.Key(name).Text(std::string_view(text));
    }
    void Text(std::string_view name, const std::u16string& text) { Text(name, Printable(text)); }
    void Number(std::string_view name, std::int64_t number) { mJson.Key(name).Integer(number); }
    template <class Record>
    void Floats(std::string_view name, const Record& record)
    {
        static_assert(kIsRecord<Record>);
        mJson.Key(name).BeginArray();
        for (const float field : std::bit_cast<std::array<float, sizeof(Record) / sizeof(float)>>(record))
            mJson.Float(field);
        mJson.EndArray();
    }

    void WriteAsset()
    {
        Text("path", mSubject.Path);
        const auto* const model = std::get_if<std::shared_ptr<ZLMModel>>(&mSubject.Asset.Object);
        const std::u16string& name = mDocument.Texts.Name;
        Text("title", name.empty() ? mSubject.Path : Printable(name));
        mJson.Key("asset").BeginObject();
        if (model)
        {
            Text("name", (*model)->UserName);
            Text("kuid", (*model)->kuid());
            Text("kind", (*model)->Kind);
            Text("author", (*model)->Author);
            Text("build", (*model)->ZLMBuild);
            Text("description", Lines((*model)->Description));
        }
        mJson.EndObject();
    }

    void WriteFinding(const Validate::Finding& finding)
    {
        const Validate::CodeInfo& info = Validate::Info(finding.Code);
        mJson.BeginObject();
        Text("severity", std::string(Validate::Name(info.Severity)));
        Text("code", std::string(info.Name));
        Text("meaning", std::string(info.Meaning));
        Text("file", finding.File);
        Text("place", Validate::Text(finding.Place));
        Text("entry", finding.Place.Entry);
        if (finding.Place.Chunk > 0)
            Number("chunk", finding.Place.Chunk);
        Text("message", finding.Message);
        mJson.EndObject();
    }

    void WriteMesh(const Mesh& mesh)
    {
        mJson.BeginObject();
        Text("file", Tools::ShownFile(mesh.FileName));
        Number("version", mesh.Version);
        Number("attachmentVersion", mesh.AttVersion);
        Number("size", mesh.FileSize);
        Number("vertices", mesh.VertexCount);
        Number("polygons", mesh.Polygons);
        Number("textures", mesh.TextureCount);
        Number("bones", mesh.BoneCount);
        Number("attachments", static_cast<std::int64_t>(PointsOf(mesh).size()));
        mJson.Key("chunks").BeginArray();
        std::int64_t number = 0;
        if (mesh.Chunks)
            for (const auto& chunk : mesh.Chunks->Entries())
                WriteChunk(chunk.get(), ++number);
        mJson.EndArray();
        mJson.EndObject();
    }

    void WriteChunk(const Chunk* chunk, std::int64_t number)
    {
        mJson.BeginObject();
        Number("number", number);
        if (chunk && chunk->Geometry)
        {
            const Geometry& geometry = *chunk->Geometry;
            Text("bone", geometry.Bone);
            Number("primitive", static_cast<std::int64_t>(geometry.PrimitiveType));
            Number("count", geometry.PrimitiveCount);
            Number("vertices", geometry.MaxVertices());
            Number("normals", geometry.MaxVertNormal());
            Number("indices", geometry.MaxIndex());
        }
        if (chunk && chunk->Material)
            WriteMaterial(*chunk->Material);
        mJson.EndObject();
    }

    void WriteMaterial(const Material& material)
    {
        mJson.Key("material").BeginObject();
        Text("name", material.Name);
        Number("version", material.Version);
        mJson.Key("twoSided").Boolean(material.TwoSided != 0);
        mJson.Key("opacity").Float(material.Opacity);
        mJson.Key("power").Float(material.SpecularPower);
        Floats("diffuse", material.Diffuse);
        Floats("ambient", material.Ambient);
        Floats("specular", material.Specular);
        Floats("emissive", material.Emissive);
        mJson.Key("textures").BeginArray();
        if (material.Textures)
            for (const auto& texture : material.Textures->Entries())
                if (texture)
                    WriteTexture(*texture);
        mJson.EndArray();
        mJson.EndObject();
    }

    void WriteTexture(const Texture& texture)
    {
        mJson.BeginObject();
        Text("name", texture.Name);
        Number("kind", static_cast<std::int64_t>(texture.TextureType));
        mJson.Key("amount").Float(texture.Amount);
        mJson.EndObject();
    }

    void WriteNodes()
    {
        std::vector<std::optional<Index>> parents(mDocument.Nodes.size());
        for (Index node = 0; node < mDocument.Nodes.size(); ++node)
            for (const Index child : mDocument.Nodes[node].Children)
                parents[child] = node;
        mJson.Key("nodes").BeginArray();
        for (Index node = 0; node < mDocument.Nodes.size(); ++node)
        {
            mJson.BeginObject();
            Text("name", mDocument.Nodes[node].Name);
            if (const char* const kind = mDocument.Nodes[node].Kind)
            {
                Text("kind", std::string(kind));
                WriteNode(kind, node);
            }
            // What bones move is beside the root, but belongs to the entry before it.
            const auto parent =
                std::string_view(mDocument.Nodes[node].Kind ? mDocument.Nodes[node].Kind : "") == "mesh"
                    ? std::optional(mEntry)
                    : parents[node];
            if (parent)
                Number("parent", static_cast<std::int64_t>(*parent));
            mJson.EndObject();
        }
        mJson.EndArray();
    }

    void WriteNode(std::string_view kind, Index node)
    {
        if (kind == "entry")
        {
            const Part& part = mParts.at(mNextPart++);
            mEntry = node;
            mPoints = PointsOf(*part.Mesh);
            mBones = BonesOf(*part.Mesh);
            mNextPoint = mNextBone = 0;
            Number("mesh", static_cast<std::int64_t>(mMeshes.at(part.Mesh)));
            if (part.Anim && part.Anim->FileSize > 0)
                WriteAnimation(*part.Anim);
        }
        else if (kind == "reference")
        {
            WriteReference(*mParts.at(mNextPart++).Reference);
        }
        else if (kind == "attachment")
        {
            const Attachment& point = *mPoints.at(mNextPoint++);
            Number("version", point.Version);
            Floats("matrix", point.Matrix);
        }
        else if (kind == "bone")
        {
            const Bone& bone = *mBones.at(mNextBone++);
            Number("version", bone.Version);
            Floats("position", bone.Position);
            Floats("rotation", bone.Rotation);
        }
    }

    void WriteAnimation(const Anim& anim)
    {
        mJson.Key("animation").BeginObject();
        Text("file", Tools::ShownFile(anim.FileName));
        Number("frames", anim.FrameCount);
        Number("rate", anim.FPS);
        mJson.EndObject();
    }

    void WriteReference(const ZLMModel& model)
    {
        Text("asset", model.UserName);
        Text("kuid", model.kuid());
        Text("type", model.Kind);
        Text("author", model.Author);
    }

    const Subject& mSubject;
    const Export::Document& mDocument;
    std::vector<Part> mParts;
    std::vector<const Mesh*> mMeshList;
    std::unordered_map<const Mesh*, std::size_t> mMeshes;
    JsonWriter mJson;

    // The entry whose nodes are being written.
    std::size_t mNextPart = 0;
    Index mEntry = 0;
    std::vector<const Attachment*> mPoints;
    std::vector<const Bone*> mBones;
    std::size_t mNextPoint = 0;
    std::size_t mNextBone = 0;
};

} // namespace

std::string PageData(const Subject& subject, const Export::Document& document)
{
    std::ostringstream out;
    DataWriter(subject, document, out).Write();
    return std::move(out).str();
}

void NumberNodes(Export::Document& document)
{
    for (std::size_t number = 0; Export::Node & node : document.Nodes)
        node.Name = FromWindows1252("n" + std::to_string(number++));
    for (Export::GltfMesh& mesh : document.Meshes)
        mesh.Name.clear();
}

} // namespace ZLMIM::View

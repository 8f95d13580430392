#include "gltf_json.h"

#include "tools/common/json_writer.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

namespace ZLMIM::Export
{
namespace
{

using Tools::JsonWriter;

const char* TextureKind(std::int32_t kind)
{
    constexpr std::array kNames = {"ambient",       "diffuse",   "specular", "shine",
                                   "shinestrength", "selfillum", "opacity",  "filtercolor",
                                   "bump",          "reflect",   "refract",  "displacement"};
    return kind >= 0 && static_cast<std::size_t>(kind) < kNames.size()
               ? kNames[static_cast<std::size_t>(kind)]
               : "unknown";
}

class Json
{
public:
    /// `links` is null if the document is one file.
    Json(const Document& document, const Links* links, std::ostream& out)
        : mDocument(document), mLinks(links), mOut(out, JsonWriter::Form::OneLine)
    {
    }

    void Write()
    {
        mOut.BeginObject();
        mOut.Key("asset").BeginObject();
        mOut.Key("version").Text("2.0");
        mOut.Key("generator").Text("zlmim export");
        mOut.EndObject();
        if (!mDocument.Materials.empty())
        {
            mOut.Key("extensionsUsed").BeginArray();
            mOut.Text("KHR_materials_specular");
            mOut.EndArray();
        }
        mOut.Key("scene").Integer(0);
        WriteScene();
        List("nodes", mDocument.Nodes, [this](const Node& node) { Write(node); });
        List("meshes", mDocument.Meshes, [this](const GltfMesh& mesh) { Write(mesh); });
        List("skins", mDocument.Skins,
             [this](const Skin& skin)
             {
                 Number("inverseBindMatrices", skin.InverseBindMatrices);
                 Numbers("joints", skin.Joints);
             });
        List("animations", mDocument.Animations, [this](const Animation& animation) { Write(animation); });
        List("materials", mDocument.Materials, [this](const Material& material) { Write(material); });
        Index image = 0;
        List("textures", mDocument.Images, [&](const Image&) { Number("source", image++); });
        WriteImages();
        List("accessors", mDocument.Accessors, [this](const Accessor& accessor) { Write(accessor); });
        WriteBuffer();
        mOut.EndObject();
    }

private:
    /// A list of objects; glTF has no empty lists.
    template <class T, class WriteMembers>
    void List(const char* name, const std::vector<T>& list, WriteMembers writeMembers)
    {
        if (list.empty())
            return;
        mOut.Key(name).BeginArray();
        for (const T& element : list)
        {
            mOut.BeginObject();
            writeMembers(element);
            mOut.EndObject();
        }
        mOut.EndArray();
    }
    void Number(const char* name, std::size_t number)
    {
        mOut.Key(name).Integer(static_cast<std::int64_t>(number));
    }
    void Number(const char* name, const std::optional<Index>& number)
    {
        if (number)
            Number(name, *number);
    }
    void Numbers(const char* name, const std::vector<Index>& numbers)
    {
        if (numbers.empty())
            return;
        mOut.Key(name).BeginArray();
        for (const Index number : numbers)
            mOut.Integer(static_cast<std::int64_t>(number));
        mOut.EndArray();
    }
    template <class Floats>
    void Numbers(const char* name, const Floats& numbers)
    {
        if (numbers.empty())
            return;
        mOut.Key(name).BeginArray();
        for (const float number : numbers)
            mOut.Float(number);
        mOut.EndArray();
    }
    void Text(const char* name, const std::u16string& text)
    {
        if (!text.empty())
            mOut.Key(name).Text(text);
    }

    void WriteScene()
    {
        mOut.Key("scenes").BeginArray();
        mOut.BeginObject();
        const AssetTexts& texts = mDocument.Texts;
        Text("name", texts.Name);
        Numbers("nodes", mDocument.RootNodes);
        mOut.Key("extras").BeginObject();
        Text("name", texts.Name);
        Text("kuid", texts.Kuid);
        Text("author", texts.Author);
        Text("description", texts.Description);
        mOut.EndObject();
        mOut.EndObject();
        mOut.EndArray();
    }

    void Write(const Node& node)
    {
        Text("name", node.Name);
        if (node.Matrix)
            Numbers("matrix", *node.Matrix);
        if (node.Translation)
            Numbers("translation", *node.Translation);
        if (node.Rotation)
            Numbers("rotation", *node.Rotation);
        Number("mesh", node.Mesh);
        Number("skin", node.Skin);
        Numbers("children", node.Children);
        if (node.Kind)
        {
            mOut.Key("extras").BeginObject();
            mOut.Key("kind").Text(std::string_view(node.Kind));
            mOut.EndObject();
        }
    }

    void Write(const GltfMesh& mesh)
    {
        Text("name", mesh.Name);
        List("primitives", mesh.Primitives,
             [this](const Primitive& primitive)
             {
                 mOut.Key("attributes").BeginObject();
                 Number("POSITION", primitive.Position);
                 Number("NORMAL", primitive.Normal);
                 Number("TEXCOORD_0", primitive.Coordinates);
                 Number("JOINTS_0", primitive.Joints);
                 Number("WEIGHTS_0", primitive.Weights);
                 mOut.EndObject();
                 Number("indices", primitive.Indices);
                 Number("material", primitive.Material);
                 mOut.Key("mode").Integer(primitive.Mode);
                 mOut.Key("extras").BeginObject();
                 Number("chunk", primitive.Chunk);
                 mOut.EndObject();
             });
    }

    void Write(const Animation& animation)
    {
        Text("name", animation.Name);
        List("samplers", animation.Samplers,
             [this](const Sampler& sampler)
             {
                 Number("input", sampler.Input);
                 Number("output", sampler.Output);
             });
        List("channels", animation.Channels,
             [this](const Channel& channel)
             {
                 Number("sampler", channel.Sampler);
                 mOut.Key("target").BeginObject();
                 Number("node", channel.Node);
                 mOut.Key("path").Text(std::string_view(channel.IsRotation ? "rotation" : "translation"));
                 mOut.EndObject();
             });
        mOut.Key("extras").BeginObject();
        Text("entry", animation.Entry);
        mOut.Key("framesPerSecond").Integer(animation.FramesPerSecond);
        mOut.EndObject();
    }

    void Write(const Material& material)
    {
        Text("name", material.Name);
        mOut.Key("pbrMetallicRoughness").BeginObject();
        Numbers("baseColorFactor", material.BaseColour);
        if (material.BaseColourTexture)
        {
            mOut.Key("baseColorTexture").BeginObject();
            Number("index", *material.BaseColourTexture);
            mOut.EndObject();
        }
        mOut.Key("metallicFactor").Float(0);
        mOut.Key("roughnessFactor").Float(material.Roughness);
        mOut.EndObject();
        Numbers("emissiveFactor", material.Emissive);
        if (material.IsBlended)
            mOut.Key("alphaMode").Text("BLEND");
        if (material.IsTwoSided)
            mOut.Key("doubleSided").Boolean(true);
        mOut.Key("extensions").BeginObject();
        mOut.Key("KHR_materials_specular").BeginObject();
        Numbers("specularColorFactor", material.Specular);
        mOut.EndObject();
        mOut.EndObject();
        if (material.OtherTextures.empty())
            return;
        mOut.Key("extras").BeginObject();
        List("textures", material.OtherTextures,
             [this](const OtherTexture& texture)
             {
                 mOut.Key("kind").Text(std::string_view(TextureKind(texture.Kind)));
                 mOut.Key("name").Text(texture.Name);
                 mOut.Key("amount").Float(texture.Amount);
             });
        mOut.EndObject();
    }

    /// In a document of one file, images come after all other views.
    void WriteImages()
    {
        Index number = 0;
        List("images", mDocument.Images,
             [&](const Image& image)
             {
                 mOut.Key("name").Text(std::string_view(image.Name));
                 if (mLinks)
                 {
                     mOut.Key("uri").Text(std::string_view(mLinks->Images[number]));
                 }
                 else
                 {
                     Number("bufferView", mDocument.Views.size() + number);
                     mOut.Key("mimeType").Text(std::string_view(image.IsJpeg ? "image/jpeg" : "image/png"));
                 }
                 ++number;
             });
    }

    void Write(const Accessor& accessor)
    {
        Number("bufferView", accessor.View);
        if (accessor.Offset > 0)
            Number("byteOffset", accessor.Offset);
        mOut.Key("componentType").Integer(static_cast<std::int32_t>(accessor.ComponentType));
        if (accessor.IsNormalized)
            mOut.Key("normalized").Boolean(true);
        Number("count", accessor.Count);
        mOut.Key("type").Text(std::string_view(accessor.Type));
        Numbers("min", accessor.Min);
        Numbers("max", accessor.Max);
    }

    void WriteBuffer()
    {
        std::size_t offset = 0;
        const auto view = [&](std::size_t size)
        {
            Number("buffer", 0);
            if (offset > 0)
                Number("byteOffset", offset);
            Number("byteLength", size);
            offset += Aligned(size);
        };
        const bool hasImages = !mLinks && !mDocument.Images.empty();
        if (mDocument.Views.empty() && !hasImages)
            return;
        mOut.Key("bufferViews").BeginArray();
        for (const BufferView& bufferView : mDocument.Views)
        {
            mOut.BeginObject();
            view(bufferView.Bytes.size());
            if (bufferView.Stride > 0)
                Number("byteStride", bufferView.Stride);
            if (bufferView.Target != 0)
                mOut.Key("target").Integer(bufferView.Target);
            mOut.EndObject();
        }
        if (hasImages)
        {
            for (const Image& image : mDocument.Images)
            {
                mOut.BeginObject();
                view(image.Bytes.size());
                mOut.EndObject();
            }
        }
        mOut.EndArray();
        mOut.Key("buffers").BeginArray();
        mOut.BeginObject();
        Number("byteLength", offset);
        if (mLinks)
            mOut.Key("uri").Text(std::string_view(mLinks->Buffer));
        mOut.EndObject();
        mOut.EndArray();
    }

    const Document& mDocument;
    const Links* mLinks;
    JsonWriter mOut;
};

} // namespace

std::string JsonOf(const Document& document, const Links* links)
{
    std::ostringstream out;
    Json(document, links, out).Write();
    return std::move(out).str();
}

} // namespace ZLMIM::Export

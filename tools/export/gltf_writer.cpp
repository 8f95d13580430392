#include "gltf_writer.h"

#include "tools/common/json_writer.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <bit>
#include <fstream>
#include <functional>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace ZLMIM::Export
{
namespace
{

using Tools::JsonWriter;

constexpr std::size_t Aligned(std::size_t size) { return (size + 3) / 4 * 4; }

const char* TextureKind(std::int32_t kind)
{
    constexpr std::array kNames = {"ambient",       "diffuse",   "specular", "shine",
                                   "shinestrength", "selfillum", "opacity",  "filtercolor",
                                   "bump",          "reflect",   "refract",  "displacement"};
    return kind >= 0 && static_cast<std::size_t>(kind) < kNames.size()
               ? kNames[static_cast<std::size_t>(kind)]
               : "unknown";
}

/// Where a `.gltf` has what a `.glb` has inside it: the names of files as URIs.
struct Links
{
    std::string Buffer;
    std::vector<std::string> Images;
};

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

std::string JsonOf(const Document& document, const Links* links)
{
    std::ostringstream out;
    Json(document, links, out).Write();
    return std::move(out).str();
}

using Write = std::function<void(const void* bytes, std::size_t size)>;

void WritePadded(const void* bytes, std::size_t size, const Write& write)
{
    write(bytes, size);
    if (Aligned(size) > size)
        write("\0\0\0", Aligned(size) - size);
}

void WriteViews(const Document& document, const Write& write)
{
    for (const BufferView& view : document.Views)
        WritePadded(view.Bytes.data(), view.Bytes.size(), write);
}

/// Passes a document of one file to `write`, piece by piece, after its size to `reserve`.
void MakeGlb(const Document& document, const std::function<void(std::size_t)>& reserve, const Write& write)
{
    std::string json = JsonOf(document, nullptr);
    json.resize(Aligned(json.size()), ' ');
    std::size_t binary = 0;
    for (const BufferView& view : document.Views)
        binary += Aligned(view.Bytes.size());
    for (const Image& image : document.Images)
        binary += Aligned(image.Bytes.size());
    constexpr std::size_t kHead = 12;
    constexpr std::size_t kChunkHead = 8;
    const std::size_t size = kHead + kChunkHead + json.size() + (binary > 0 ? kChunkHead + binary : 0);
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("it is too large for one file; write a .gltf");
    reserve(size);
    static_assert(std::endian::native == std::endian::little);
    const auto writeNumbers = [&](std::initializer_list<std::uint32_t> numbers)
    { write(std::data(numbers), numbers.size() * sizeof(std::uint32_t)); };
    constexpr std::uint32_t kMagic = 0x46546C67;  // "glTF"
    constexpr std::uint32_t kJson = 0x4E4F534A;   // "JSON"
    constexpr std::uint32_t kBinary = 0x004E4942; // "BIN"
    writeNumbers(
        {kMagic, 2, static_cast<std::uint32_t>(size), static_cast<std::uint32_t>(json.size()), kJson});
    write(json.data(), json.size());
    if (binary == 0)
        return;
    writeNumbers({static_cast<std::uint32_t>(binary), kBinary});
    WriteViews(document, write);
    for (const Image& image : document.Images)
        WritePadded(image.Bytes.data(), image.Bytes.size(), write);
}

/// Escapes what may not be part of a URI.
std::string Uri(const std::string& name)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    constexpr std::string_view kPlain = "-._~";
    std::string uri;
    for (const char c : name)
    {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                             kPlain.find(c) != std::string_view::npos;
        const auto byte = static_cast<unsigned char>(c);
        if (isPlain)
            uri += c;
        else
            uri.append(1, '%').append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
    }
    return uri;
}

void Close(std::ofstream& file, const std::filesystem::path& path)
{
    file.close();
    if (!file)
    {
        const std::u8string name = path.u8string();
        throw std::runtime_error(std::string(name.begin(), name.end()) + " can't be written");
    }
}

void SaveFile(const std::filesystem::path& path, const std::function<void(std::ostream&)>& writeContent)
{
    std::ofstream file(path, std::ios::binary);
    writeContent(file);
    Close(file, path);
}

Write Into(std::ostream& out)
{
    return [&out](const void* bytes, std::size_t size)
    { out.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(size)); };
}

void SaveFiles(const Document& document, const std::filesystem::path& file)
{
    const auto beside = [&file](const std::string& ending)
    {
        std::filesystem::path path = file;
        path.replace_extension();
        return path += ending;
    };
    const auto nameOf = [](const std::filesystem::path& path)
    {
        const std::u8string name = path.filename().u8string();
        return Uri(std::string(name.begin(), name.end()));
    };
    Links links = {nameOf(beside(".bin")), {}};
    for (const Image& image : document.Images)
    {
        const std::filesystem::path path =
            beside("-" + std::to_string(links.Images.size() + 1) + (image.IsJpeg ? ".jpg" : ".png"));
        SaveFile(path, [&](std::ostream& out) { Into(out)(image.Bytes.data(), image.Bytes.size()); });
        links.Images.push_back(nameOf(path));
    }
    if (!document.Views.empty())
        SaveFile(beside(".bin"), [&](std::ostream& out) { WriteViews(document, Into(out)); });
    SaveFile(file, [&](std::ostream& out) { out << JsonOf(document, &links); });
}

} // namespace

std::string ToGlb(const Document& document)
{
    std::string glb;
    MakeGlb(
        document, [&glb](std::size_t size) { glb.reserve(size); },
        [&glb](const void* bytes, std::size_t size) { glb.append(static_cast<const char*>(bytes), size); });
    return glb;
}

void Save(const Document& document, const std::filesystem::path& file)
{
    if (LowerCase(file.extension().u16string()) == u".gltf")
    {
        SaveFiles(document, file);
        return;
    }
    // Opened only when the size is known to be allowed.
    std::ofstream out;
    MakeGlb(
        document, [&](std::size_t) { out.open(file, std::ios::binary); }, Into(out));
    Close(out, file);
}

} // namespace ZLMIM::Export

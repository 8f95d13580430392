#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

// The parts of a glTF 2.0 document that exports have, under glTF's names. Indices refer to the lists of the
// document.

namespace ZLMIM::Export
{

using Index = std::size_t;

/// A run of the binary buffer. It refers to an array of the model where that can be written as it is.
struct BufferView
{
    std::span<const std::byte> Bytes;
    /// Keeps the bytes alive.
    std::shared_ptr<const void> Owner;
    /// 0 if the elements are packed.
    std::size_t Stride = 0;
    /// What the view is for; 0 for all but vertices and indices.
    std::int32_t Target = 0;
};

constexpr std::int32_t kVertices = 34962;
constexpr std::int32_t kIndices = 34963;

enum class ComponentType : std::int32_t
{
    UnsignedByte = 5121,
    UnsignedShort = 5123,
    UnsignedInt = 5125,
    Float = 5126,
};

struct Accessor
{
    Index View = 0;
    std::size_t Offset = 0;
    Export::ComponentType ComponentType = Export::ComponentType::Float;
    bool IsNormalized = false;
    std::size_t Count = 0;
    const char* Type = "SCALAR";
    /// Empty where glTF doesn't ask for them.
    std::vector<float> Min = {};
    std::vector<float> Max = {};
};

struct Image
{
    /// The texture's file without its folder.
    std::string Name;
    bool IsJpeg = false;
    std::string Bytes;
};

/// A texture of a material that glTF has no place for.
struct OtherTexture
{
    std::int32_t Kind = 0;
    std::u16string Name;
    float Amount = 0;
};

struct Material
{
    std::u16string Name;
    std::array<float, 4> BaseColour = {1, 1, 1, 1};
    std::array<float, 3> Emissive = {};
    std::array<float, 3> Specular = {1, 1, 1};
    float Roughness = 1;
    bool IsTwoSided = false;
    bool IsBlended = false;
    /// An image; each is a texture of the same number.
    std::optional<Index> BaseColourTexture;
    std::vector<OtherTexture> OtherTextures;
};

struct Primitive
{
    Index Position = 0;
    std::optional<Index> Normal = {};
    Index Coordinates = 0;
    std::optional<Index> Joints = {};
    std::optional<Index> Weights = {};
    Index Indices = 0;
    std::int32_t Mode = 0;
    Index Material = 0;
    /// The chunk's number in its mesh, from 1.
    std::size_t Chunk = 0;
};

struct GltfMesh
{
    std::u16string Name;
    std::vector<Primitive> Primitives;
};

struct Skin
{
    Index InverseBindMatrices = 0;
    std::vector<Index> Joints;
};

struct Node
{
    std::u16string Name;
    /// What it is: "entry", "attachment", "bone", "reference", "mesh"; null for the root.
    const char* Kind = nullptr;
    /// Columns. It goes with no translation and rotation.
    std::optional<std::array<float, 16>> Matrix = {};
    std::optional<std::array<float, 3>> Translation = {};
    std::optional<std::array<float, 4>> Rotation = {};
    std::optional<Index> Mesh = {};
    std::optional<Index> Skin = {};
    std::vector<Index> Children = {};
};

struct Sampler
{
    Index Input = 0;
    Index Output = 0;
};

struct Channel
{
    Index Sampler = 0;
    Index Node = 0;
    bool IsRotation = false;
};

struct Animation
{
    std::u16string Name;
    /// The entry's.
    std::u16string Entry;
    std::int32_t FramesPerSecond = 0;
    std::vector<Sampler> Samplers;
    std::vector<Channel> Channels;
};

/// Texts about the asset; empty ones aren't written.
struct AssetTexts
{
    std::u16string Name;
    std::u16string Kuid;
    std::u16string Author;
    std::u16string Description;
};

struct Document
{
    AssetTexts Texts;
    std::vector<Index> RootNodes;
    std::vector<Node> Nodes;
    std::vector<GltfMesh> Meshes;
    std::vector<Skin> Skins;
    std::vector<Animation> Animations;
    std::vector<Material> Materials;
    std::vector<Image> Images;
    std::vector<Accessor> Accessors;
    std::vector<BufferView> Views;
};

} // namespace ZLMIM::Export

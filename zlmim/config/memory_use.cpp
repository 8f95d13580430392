#include "zlmim/config/memory_use.h"

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"

#include <span>
#include <string>

namespace ZLMIM
{
namespace
{

/// An object with what counts its references, and its place in a list.
template <class T>
constexpr std::int64_t kObject = sizeof(T) + 48;

template <class T>
std::int64_t Size(std::span<const T> records)
{
    return static_cast<std::int64_t>(records.size_bytes());
}

std::int64_t Size(const std::u16string& text) { return Size(std::span<const char16_t>(text)); }

template <class Bone>
std::int64_t TreeSize(const Bone& bone)
{
    std::int64_t size = kObject<Bone> + kObject<Collection<Bone>> + Size(bone.Name);
    if constexpr (requires { bone.Frames(); })
        size += Size(bone.Frames());
    for (const auto& child : bone.Children()->Entries())
        size += TreeSize(*child);
    return size;
}

std::int64_t Size(const Chunk& chunk)
{
    const Material& material = *chunk.Material;
    const Geometry& geometry = *chunk.Geometry;
    std::int64_t size = kObject<Chunk> + kObject<Material> + kObject<Geometry> + Size(material.Name) +
                        Size(geometry.Bone) + Size(geometry.Vertices()) + Size(geometry.VertexNormals()) +
                        Size(geometry.Indices()) + Size(geometry.FaceNormals->Entries());
    for (const auto& texture : material.Textures->Entries())
        size += kObject<Texture> + Size(texture->Name);
    return size;
}

} // namespace

std::int64_t MemoryUse(const Mesh& mesh)
{
    std::int64_t size = mesh.RootBone ? TreeSize(*mesh.RootBone) : 0;
    if (mesh.Chunks)
    {
        for (const auto& chunk : mesh.Chunks->Entries())
            size += Size(*chunk);
    }
    if (mesh.Attachments)
    {
        for (const auto& attachment : mesh.Attachments->Entries())
            size += kObject<Attachment> + Size(attachment->Name);
    }
    return size;
}

std::int64_t MemoryUse(const Anim& anim) { return anim.RootBone ? TreeSize(*anim.RootBone) : 0; }

} // namespace ZLMIM

#pragma once

#include "block_writer.h"

#include <initializer_list>

namespace ZLMIM::Testing
{

/// A BONE block of a mesh file. For a valid block, `children` has as many blocks as `count` says.
inline Bytes MeshBone(std::string_view name, std::int32_t count = 0, const Bytes& children = {})
{
    const auto pose = Bytes().Record(Vector{1, 2, 3}).Record(Quaternion{0, 0, 0, 1});
    return Bytes().Block("BONE", Bytes().Long(100).String(name).Append(pose).Long(count).Append(children));
}

/// The same of an animation file.
inline Bytes AnimBone(std::string_view name, std::int32_t count = 0, const Bytes& children = {})
{
    return Bytes().Block("BONE", Bytes().Long(100).String(name).Long(count).Append(children));
}

/// A chain of `levels` bones of either kind, each the only child of the one before.
template <class MakeBone>
Bytes Chain(const MakeBone& makeBone, std::int32_t levels)
{
    Bytes chain;
    for (std::int32_t level = 0; level < levels; ++level)
        chain = makeBone("c", level > 0 ? 1 : 0, chain);
    return chain;
}

inline Bytes MeshSkeleton(const Bytes& root) { return Bytes().Block("SKEL", Bytes().Long(0).Append(root)); }

inline Bytes AnimSkeleton(const Bytes& root) { return Bytes().Block("SKEL", root); }

/// A mesh file with only a skeleton.
inline Bytes MeshWith(const Bytes& root) { return MeshHeader(0).Append(MeshSkeleton(root)); }

/// An animation file up to its skeleton.
inline Bytes AnimWith(std::int32_t frameCount, const Bytes& root)
{
    return AnimHeader("n", frameCount).Block("EVNT", Bytes()).Append(AnimSkeleton(root));
}

/// A FRAM block. Poses differ only in x of the position.
inline Bytes Frame(std::int32_t number, std::initializer_list<float> poses, std::int32_t sizeError = 0)
{
    auto payload = Bytes().Long(-1).Long(number);
    for (const float x : poses)
        payload.Record(Keyframe{{x, 0, 0}, {0, 0, 0.6f, 0.8f}});
    return Bytes().Block("FRAM", payload, sizeError);
}

/// A mesh file with every block: a chunk in the short forms that hangs from D, one in the long forms, and the
/// tree A(B(D), C).
inline Bytes GoodMesh()
{
    const auto colours = Bytes().Record(std::array<rgbColour, 3>{{{0.5f, 0.25f, 1}, {}, {1, 1, 2}}});
    const auto texture = Bytes().Long(1).String("textures\\Wood.texture").Single(1);
    const auto shortMaterial = Bytes().Long(101).Long(1).Append(colours).Long(20).Long(1).Append(texture);
    const auto longMaterial = Bytes().Long(102).String("m.onetex").Long(0).Long(0).Single(1).Append(colours);
    const auto textures = Bytes().Record(rgbColour{1, 0, 0}).Long(-1).Long(2).Append(texture).Append(texture);

    const auto counts = Bytes().Single(2).Record(std::array{2, 1, 3, 1, 4});
    const auto arrays = Bytes()
                            .Record(std::array<Vertex, 2>{{{1, 2, 3, 0.5f, 0.5f}, {4, 5, 6, 1, 1}}})
                            .Record(std::array<std::int16_t, 3>{0, 1, -1})
                            .Record(std::array<Vector, 3>{{{0, 0, 1}, {0, 1, 0}, {1, 0, 0}}});
    const auto shortGeometry = Bytes().Long(200).Long(4).Append(counts).String("D").Append(arrays);
    const auto longGeometry = Bytes().Long(201).Long(5).Long(7).Append(counts).String("").Append(arrays);

    const auto chunk = [](const Bytes& material, const Bytes& geometry)
    { return Bytes().Long(100).Long(1).Block("MATL", material).Block("GEOM", geometry); };
    const auto tree = MeshBone("A", 2, MeshBone("B", 1, MeshBone("D")).Append(MeshBone("C")));
    return MeshHeader(2)
        .Block("CHNK", chunk(shortMaterial, shortGeometry))
        .Block("CHNK", chunk(Bytes(longMaterial).Append(textures), longGeometry))
        .Block("INFL", Bytes().Zeros(5))
        .Block("ATCH", Bytes().Long(100).Long(1).String("a.Lamp").Record(Matrix{.m11 = 1, .m41 = 9}))
        .Append(MeshSkeleton(tree));
}

/// An animation file with every block, the same tree, and two of its three slots filled.
inline Bytes GoodAnim()
{
    const auto tree = AnimBone("A", 2, AnimBone("B", 1, AnimBone("D")).Append(AnimBone("C")));
    return AnimHeader("Run", 2, 25, 0.5f, 102)
        .Block("EVNT", Bytes().Zeros(5))
        .Append(AnimSkeleton(tree))
        .Append(Frame(1, {11, 12, 13, 14}))
        .Append(Frame(2, {21, 22, 23, 24}));
}

} // namespace ZLMIM::Testing

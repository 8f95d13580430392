#pragma once

#include "outcome.h"
#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace ZLMIM::Testing
{

/// Result of the load of a file, see `OutcomeOf`.
template <class Model>
std::string LoadOutcome(Model& model, std::span<const std::byte> file)
{
    return OutcomeOf([&] { return model.LoadBytes(file); });
}

/// Names and nesting of a tree, such as "A(B C)".
/// @throws std::logic_error if a bone's parent isn't the one that lists it.
template <class AnyBone>
std::string Outline(const AnyBone& bone)
{
    std::string text = ToUtf8(bone.Name);
    const char* separator = "(";
    for (const auto& child : *bone.Children())
    {
        if constexpr (std::is_same_v<AnyBone, Bone>)
            if (child->Parent().get() != &bone)
                throw std::logic_error("a bone with another parent");
        text += std::exchange(separator, " ") + Outline(*child);
    }
    return bone.Children()->Count() > 0 ? text + ")" : text;
}

/// Visits every public member of the objects that a load of a new `Mesh` or `Anim` created, successful or
/// not. Also requests missing elements. Needs no test framework: throws `std::logic_error` if a model
/// contradicts itself.
class ModelWalker
{
public:
    void Walk(const Mesh& mesh)
    {
        See(mesh.ErrorMessage, mesh.FileName, mesh.ChunkCount, mesh.Version, mesh.FileSize, mesh.AttVersion,
            mesh.Polygons, mesh.BoneCount, mesh.VertexCount, mesh.TextureCount);
        Require(!mesh.RootBone || !mesh.RootBone->Parent(), "the root has no parent");
        if (mesh.RootBone)
            WalkTree(mesh.RootBone, 1);
        if (mesh.Chunks)
            WalkList(*mesh.Chunks, [this](const auto& chunk) { WalkPart(*chunk); });
        if (mesh.Attachments)
            WalkList(*mesh.Attachments, [this](const auto& attachment)
                     { See(attachment->Version, attachment->Name, attachment->Matrix); });
    }

    void Walk(const Anim& anim)
    {
        See(anim.ErrorMessage, anim.FileName, anim.Name, anim.FrameCount, anim.FPS, anim.Version,
            anim.MetScale, anim.FileSize);
        if (anim.RootBone)
            WalkTree(anim.RootBone, 1);
    }

    /// A hash of everything visited: the same for equal models.
    [[nodiscard]] std::uint64_t Digest() const { return mDigest; }

private:
    static void Require(bool holds, const char* what)
    {
        if (!holds)
            throw std::logic_error(what);
    }

    /// Throwing is slow, and a tree may have 65,536 bones: only the first objects are tested.
    template <class Operation>
    void RequireBoundsError(const Operation& operation)
    {
        if (mProbes == 256)
            return;
        ++mProbes;
        try
        {
            operation();
        }
        catch (const BoundsError&)
        {
            return;
        }
        throw std::logic_error("an index outside throws");
    }

    template <class T>
    void SeeRun(std::span<const T> run)
    {
        for (const std::byte byte : std::as_bytes(run))
            mDigest = mDigest * 31 + std::to_integer<std::uint64_t>(byte);
    }
    template <class T>
    void SeeOne(const T& value)
    {
        SeeRun(std::span<const T>(&value, 1));
    }
    void SeeOne(const std::u16string& text) { SeeRun(std::span<const char16_t>(text)); }
    template <class... T>
    void See(const T&... values)
    {
        (SeeOne(values), ...);
    }

    template <class T, class Visit>
    void WalkList(const Collection<T>& list, const Visit& visit)
    {
        for (const std::int32_t number : {-1, 0, list.Count() + 1})
            RequireBoundsError([&] { static_cast<void>(list.Item(number)); });
        std::int32_t number = 0;
        for (const auto& entry : list)
        {
            Require(entry == list.Item(++number), "number and enumeration lead to one entry");
            visit(entry);
        }
        Require(number == list.Count(), "as many entries as the count says");
    }

    void WalkPart(const Chunk& chunk)
    {
        const Material& material = *chunk.Material;
        See(chunk.Version, chunk.Id, material.Version, material.NumProperties, material.TwoSided,
            material.Opacity, material.SpecularPower, material.Name, material.Ambient, material.Diffuse,
            material.Specular, material.Emissive);
        WalkList(*material.Textures,
                 [this](const auto& texture) { See(texture->TextureType, texture->Name, texture->Amount); });

        Geometry& geometry = *chunk.Geometry;
        See(geometry.Version, geometry.Area, geometry.PrimitiveCount, geometry.MaxInfl,
            geometry.PrimitiveType, geometry.Bone);
        Require(!geometry.BoneObject || (mBones.contains(geometry.BoneObject.get()) &&
                                         geometry.BoneObject->Name == geometry.Bone),
                "the bone is one of the tree, and the one named");
        SeeRun(geometry.FaceNormals->Entries());
        const std::int32_t count = geometry.FaceNormals->Count();
        RequireBoundsError([&] { static_cast<void>(geometry.FaceNormals->Item(0)); });
        RequireBoundsError([&] { static_cast<void>(geometry.FaceNormals->Item(count + 1)); });
        if (count > 0)
            See(geometry.FaceNormals->Item(1), geometry.FaceNormals->Item(count));

        Require(geometry.MaxVertices() == geometry.MaxVertNormal(), "each vertex has its normal");
        WalkStore<Vertex>(
            geometry.Vertices(), geometry.MaxVertices(),
            [&](std::int32_t i, Vertex& v) { return geometry.GetVertex(i, v); },
            [&](std::int32_t i) { geometry.SetVertex(i, {}); });
        WalkStore<Vector>(
            geometry.VertexNormals(), geometry.MaxVertNormal(),
            [&](std::int32_t i, Vector& v) { return geometry.GetVertexNormal(i, v); },
            [&](std::int32_t i) { geometry.SetVertexNormal(i, {}); });
        WalkStore<std::int32_t>(
            geometry.Indices(), geometry.MaxIndex(),
            [&](std::int32_t i, std::int32_t& index)
            {
                index = geometry.GetIndex(i);
                return index != -1 || (i >= 0 && i < geometry.MaxIndex());
            },
            [&](std::int32_t i) { geometry.SetIndex(i, 0); });
    }

    template <class T, class Get, class Set>
    void WalkStore(std::span<const T> elements, std::int32_t count, const Get& get, const Set& set)
    {
        const std::int32_t size = std::max(count, 0);
        Require(elements.size() == static_cast<std::size_t>(size), "as many elements as the count says");
        SeeRun(elements);
        T element{};
        for (const std::int32_t index : {-1, size})
        {
            Require(!get(index, element), "no element outside the count");
            RequireBoundsError([&] { set(index); });
        }
        Require(size == 0 || (get(0, element) && get(size - 1, element)), "elements inside the count");
        See(element);
    }

    template <class AnyBone>
    void WalkTree(const std::shared_ptr<AnyBone>& bone, std::int32_t level)
    {
        Require(mBones.insert(bone.get()).second, "a bone is in one place of the tree");
        Require(level <= 1'024 && mBones.size() <= 65'536, "the tree keeps to its limits");
        See(bone->Name, bone->Version);
        WalkPart(*bone);
        const auto visit = [&](const std::shared_ptr<AnyBone>& child)
        {
            if constexpr (std::is_same_v<AnyBone, Bone>)
                Require(child->Parent() == bone, "a bone's parent is the one that lists it");
            WalkTree(child, level + 1);
        };
        WalkList(*bone->Children(), visit);
    }

    void WalkPart(const Bone& bone) { See(bone.Position, bone.Rotation, bone.ToMatrix()); }

    void WalkPart(BoneAnim& bone)
    {
        const auto frames = bone.Frames();
        const auto size = static_cast<std::int32_t>(frames.size());
        // A hostile table may be long, and is mostly zero.
        SeeRun(frames.first(std::min<std::size_t>(frames.size(), 256)));
        if (size > 0)
            See(bone.GetFrame(0), bone.GetFrame(size - 1));
        for (const std::int32_t slot : {-1, size})
        {
            RequireBoundsError([&] { static_cast<void>(bone.GetFrame(slot)); });
            RequireBoundsError([&] { bone.SetFrame(slot, {}); });
        }
    }

    std::uint64_t mDigest = 0;
    std::int32_t mProbes = 0;
    std::set<const void*> mBones;
};

/// Walks a model, and returns its digest.
/// @throws std::logic_error if the model contradicts itself.
template <class Model>
std::uint64_t Walk(const Model& model)
{
    ModelWalker walker;
    walker.Walk(model);
    return walker.Digest();
}

} // namespace ZLMIM::Testing

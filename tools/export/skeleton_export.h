#pragma once

#include "geometry_export.h"
#include "gltf.h"

#include "tools/common/poses.h"

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/bone.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace ZLMIM::Export
{

/// The skeleton of a mesh as joints, and their animation. Each place of the mesh in the asset has nodes of
/// its own; they share the rest.
class SkeletonExport
{
public:
    SkeletonExport(const Bone& root, Tools::PoseBase base, const Report& report);

    /// The joint of a bone; `std::nullopt` if the bone isn't of this skeleton.
    [[nodiscard]] std::optional<std::size_t> Find(const Bone* bone) const;

    /// Adds a node for each bone, and appends the topmost ones to the children of `parent`.
    void AddJoints(Index parent, Document& document);

    /// Adds a skin with the joints that were added last.
    Index AddSkin(Document& document, const Report& report);

    /// Adds an animation with channels for the bones that have frames. Where the mesh is in several places,
    /// the joints of all of them move. Call it after the last `AddJoints`.
    void AddAnimation(const Anim& anim, const std::u16string& entry, Document& document,
                      const Report& report) const;

private:
    struct Joint
    {
        const Bone* Source = nullptr;
        /// An earlier joint; `std::nullopt` for one that hangs on no other.
        std::optional<std::size_t> Parent;
        std::array<float, 3> Translation = {};
        std::array<float, 4> Rotation = {};
        std::vector<Index> Nodes = {};
    };

    /// The times of frames, and their accessor.
    struct Times
    {
        std::vector<float> Seconds;
        Index Input = 0;
    };

    [[nodiscard]] Index AddInverseBindMatrices(Document& document, const Report& report) const;
    /// Those of one bone, by their numbers in the animation.
    struct Samplers
    {
        Index Translation = 0;
        Index Rotation = 0;
    };

    /// `std::nullopt` if the bone has no frames. `last` is that of the bone before, which most bones share.
    [[nodiscard]] static std::optional<Samplers> AddSamplers(const BoneAnim& bone, Times& last,
                                                             Animation& animation, Document& document,
                                                             const Report& report);

    std::vector<Joint> mJoints;
    std::unordered_map<const Bone*, std::size_t> mNumbers;
    std::optional<Index> mInverseBindMatrices;
};

} // namespace ZLMIM::Export

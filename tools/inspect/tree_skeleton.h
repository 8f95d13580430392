#pragma once

#include "tree.h"
#include "tree_text.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace ZLMIM::Inspect
{

/// Makes the tree of a skeleton, of a mesh or an animation. Levels, children of a bone, and bones in all are
/// limited; the rest is only counted.
template <class Bone>
class SkeletonTree
{
public:
    /// `fill` puts a bone's cells into its node.
    using Fill = void (*)(Node& node, const Bone& bone);

    explicit SkeletonTree(Fill fill) : mFill(fill) {}

    [[nodiscard]] Node ToTree(const std::shared_ptr<Bone>& root)
    {
        Node node{{}, "Skeleton", {}, {}};
        if (root)
            node.Children.push_back(BoneNode(*root, 1));
        node.Cells.push_back({root ? Counted(CountBones(*root), "bone", "bones") : "none"});
        return node;
    }

private:
    static constexpr int kMaxLevels = 16;
    static constexpr int kMaxBones = 250;

    static std::int64_t CountBones(const Bone& bone)
    {
        std::int64_t count = 1;
        if (const auto children = bone.Children())
            count += CountBones(*children, 1);
        return count;
    }

    /// The number of bones from entry `number` on, those below them included.
    template <class List>
    static std::int64_t CountBones(const List& list, std::int32_t number)
    {
        std::int64_t count = 0;
        for (; number <= list.Count(); ++number)
        {
            if (const auto bone = list.Item(number))
                count += CountBones(*bone);
        }
        return count;
    }

    Node BoneNode(const Bone& bone, int level)
    {
        ++mDrawn;
        Node node{"bone", NameText(bone.Name), {}, {}};
        mFill(node, bone);
        const auto children = bone.Children();
        if (!children)
            return node;
        const std::int32_t listed = level < kMaxLevels ? ListedCount(children->Count()) : 0;
        std::int32_t number = 1;
        for (; number <= listed && mDrawn < kMaxBones; ++number)
        {
            if (const auto child = children->Item(number))
                node.Children.push_back(BoneNode(*child, level + 1));
        }
        const std::int64_t hidden = CountBones(*children, number);
        AddMore(node, hidden, hidden == 1 ? "more bone" : "more bones");
        return node;
    }

    Fill mFill;
    int mDrawn = 0;
};

} // namespace ZLMIM::Inspect

#include "tree.h"
#include "tree_skeleton.h"
#include "tree_text.h"

#include <algorithm>

namespace ZLMIM::Inspect
{
namespace
{

void FillBone(Node& node, const BoneAnim& bone)
{
    // The slots that no frame of the file has filled are all zero.
    const auto frames = bone.Frames();
    const auto filled = std::count_if(frames.begin(), frames.end(),
                                      [](const Keyframe& frame) { return frame != Keyframe(); });
    const auto slotCount = static_cast<std::int64_t>(frames.size());
    node.Cells = {
        {Words({Number(filled), "of", CountCell(slotCount, "slot filled", "slots filled").Text}),
         Cell::Align::Right},
        {Words({"version", Number(bone.Version)}), Cell::Align::Right},
    };
}

Cell DurationCell(const Anim& anim)
{
    if (anim.FPS <= 0)
        return {"no duration"};
    return {Decimal(static_cast<float>(anim.FrameCount) / static_cast<float>(anim.FPS)) + " seconds"};
}

} // namespace

Node ToTree(const Anim& anim)
{
    Node node{"animation", "Animation", {}, {}};
    node.Cells = {
        {NameText(anim.Name)},
        {Words({"version", Number(anim.Version)})},
        {Counted(anim.FileSize, "byte", "bytes")},
        {Counted(anim.FrameCount, "frame", "frames")},
        {Number(anim.FPS) + " a second"},
        DurationCell(anim),
        {Words({"scale", Decimal(anim.MetScale)})},
    };
    node.Children.push_back(SkeletonTree<BoneAnim>(FillBone).ToTree(anim.RootBone));
    return node;
}

} // namespace ZLMIM::Inspect

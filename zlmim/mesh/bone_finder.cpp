#include "zlmim/mesh/bone_finder.h"

#include <utility>

namespace ZLMIM
{

BoneFinder::BoneFinder(std::shared_ptr<Bone> root) : mRoot(std::move(root))
{
    // The root stands in no list of its own tree; one is made, so that the walk begins like it goes on.
    auto level1 = std::make_shared<Collection<Bone>>();
    level1->Add(mRoot);
    mPath.push_back({std::move(level1)});
}

std::shared_ptr<Bone> BoneFinder::FindBone(std::u16string_view name)
{
    if (const auto known = mByName.find(name); known != mByName.end())
        return known->second;
    while (auto bone = NextInWalk())
    {
        const bool isFound = bone->Name == name;
        // Keeps the first of several bones of one name.
        mByName.try_emplace(bone->Name, bone);
        if (isFound)
            return bone;
    }
    return nullptr;
}

std::shared_ptr<Bone> BoneFinder::NextInWalk()
{
    while (!mPath.empty())
    {
        Level& level = mPath.back();
        if (!level.children || level.next > level.children->Count())
        {
            mPath.pop_back();
            continue;
        }
        // Counted before it is passed: where a limit stopped the walk, it stops again.
        const auto depth = static_cast<std::int32_t>(mPath.size());
        auto bone = level.children->Item(level.next);
        if (!bone)
        {
            ++level.next;
            continue;
        }
        mLimits.Count(depth);
        ++level.next;
        mPath.push_back({bone->Children()});
        return bone;
    }
    return nullptr;
}

} // namespace ZLMIM

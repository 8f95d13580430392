#include "zlmim/component/classes.h"

#include "zlmim/component/class_tables.h"

namespace ZLMIM::Component
{

std::span<const ClassInfo* const> Classes() noexcept
{
    static constexpr const ClassInfo* kClasses[] = {
        &Interface<Anim>::kInfo,     &Interface<Attachment>::kInfo, &Interface<Chunk>::kInfo,
        &Interface<Material>::kInfo, &Interface<Geometry>::kInfo,   &Interface<Texture>::kInfo,
        &Interface<BoneAnim>::kInfo, &Interface<ZLMModel>::kInfo,   &Interface<MeshEntry>::kInfo,
        &Interface<Mesh>::kInfo,     &Interface<Bone>::kInfo};
    return kClasses;
}

const ClassInfo& CollectionInfo() noexcept { return Interface<Collection<Bone>>::kInfo; }

} // namespace ZLMIM::Component

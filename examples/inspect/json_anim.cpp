#include "json_objects.h"

namespace ZLMIM::Inspect
{
namespace
{

Json BoneAnimToJson(const BoneAnim& bone)
{
    Json json;
    json["Name"] = TextToJson(bone.Name);
    json["Version"] = bone.Version;
    json["Frames"] = RecordsToJson(bone.Frames());
    json["Children"] = ListOf(bone.Children(), BoneAnimToJson);
    return json;
}

} // namespace

Json ToJson(const Anim& anim)
{
    Json json;
    json["ErrorMessage"] = TextToJson(anim.ErrorMessage);
    json["FrameCount"] = anim.FrameCount;
    json["FPS"] = anim.FPS;
    json["Version"] = anim.Version;
    json["MetScale"] = anim.MetScale;
    json["Name"] = TextToJson(anim.Name);
    json["FileSize"] = anim.FileSize;
    json["RootBone"] = OrNull(anim.RootBone, BoneAnimToJson);
    json["FileName"] = TextToJson(anim.FileName);
    return json;
}

} // namespace ZLMIM::Inspect

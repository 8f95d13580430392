#include "json_fields.h"

namespace ZLMIM::Inspect
{
namespace
{

void WriteBone(JsonWriter& json, const BoneAnim& bone)
{
    json.BeginObject();
    json.Key("Name").Text(bone.Name);
    json.Key("Version").Integer(bone.Version);
    json.Key("Frames");
    WriteRecords(json, bone.Frames());
    json.Key("Children");
    WriteList(json, bone.Children(), [&json](const BoneAnim& child) { WriteBone(json, child); });
    json.EndObject();
}

} // namespace

void WriteFields(JsonWriter& json, const Anim& anim)
{
    json.Key("ErrorMessage").Text(anim.ErrorMessage);
    json.Key("FrameCount").Integer(anim.FrameCount);
    json.Key("FPS").Integer(anim.FPS);
    json.Key("Version").Integer(anim.Version);
    json.Key("MetScale").Float(anim.MetScale);
    json.Key("Name").Text(anim.Name);
    json.Key("FileSize").Integer(anim.FileSize);
    json.Key("RootBone");
    WriteOrNull(json, anim.RootBone, [&json](const BoneAnim& root) { WriteBone(json, root); });
    json.Key("FileName").Text(anim.FileName);
}

} // namespace ZLMIM::Inspect

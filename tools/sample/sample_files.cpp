#include "tools/sample/sample_files.h"

#include "tools/sample/shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

namespace Sample
{

using ZLMIM::Keyframe;
using ZLMIM::Matrix;
using ZLMIM::Quaternion;
using ZLMIM::rgbColour;
using ZLMIM::txtype;
using ZLMIM::Vector;
using ZLMIM::Testing::AnimHeader;
using ZLMIM::Testing::MeshHeader;

namespace
{

constexpr Quaternion kUnturned = {0, 0, 0, 1};

/// The doors' distance from the wagon's middle, in metres.
constexpr float kDoorX = 1.38F;

struct TextureEntry
{
    txtype type = txtype::TEX_Diffuse;
    std::string name;
};

void AppendTextures(Bytes& material, const std::vector<TextureEntry>& textures)
{
    material.Long(static_cast<std::int32_t>(textures.size()));
    for (const TextureEntry& texture : textures)
        material.Long(static_cast<std::int32_t>(texture.type)).String(texture.name).Single(1);
}

/// A MATL block in the long form.
Bytes LongMaterial(std::string_view name, const rgbColour& colour, const std::vector<TextureEntry>& textures)
{
    Bytes material;
    material.Long(104).String(name).Long(0).Long(0).Single(1);
    material.Record(colour).Record(colour).Record(rgbColour{0.2F, 0.2F, 0.2F}).Record(rgbColour{});
    AppendTextures(material.Long(20), textures);
    return Bytes().Block("MATL", material);
}

/// A MATL block in the short form, which has no name, no opacity and no emissive colour.
Bytes ShortMaterial(const rgbColour& colour, const std::vector<TextureEntry>& textures)
{
    Bytes material;
    material.Long(101).Long(1);
    material.Record(colour).Record(colour).Record(rgbColour{0.1F, 0.1F, 0.1F});
    AppendTextures(material.Long(5), textures);
    return Bytes().Block("MATL", material);
}

void AppendChunk(Bytes& file, std::int32_t id, const Bytes& material, const Shape& shape,
                 const std::string& bone = {}, std::int32_t version = 201)
{
    Bytes chunk;
    chunk.Long(100).Long(id).Append(material);
    AppendGeometry(chunk, shape, bone, version);
    file.Block("CHNK", chunk);
}

struct AttachmentPoint
{
    std::string name;
    Vector position;
};

void AppendAttachments(Bytes& file, const std::vector<AttachmentPoint>& points)
{
    Bytes attachments;
    attachments.Long(100).Long(static_cast<std::int32_t>(points.size()));
    for (const auto& [name, position] : points)
    {
        const auto& [x, y, z] = position;
        attachments.String(name).Record(Matrix{1, 0, 0, 0, 1, 0, 0, 0, 1, x, y, z});
    }
    file.Block("ATCH", attachments);
}

/// A bone of a mesh, and where it is in a frame.
struct BonePlan
{
    std::string name;
    Vector position;
    std::vector<BonePlan> children;
    /// What it does while the movement goes from 0 to 1: metres that it slides along the y axis, and turns
    /// about the y and the x axis.
    float slide = 0;
    float turn = 0;
    float roll = 0;
};

/// How far the right door is open in the mesh as stored, and how far the left one opens. In metres.
constexpr float kDoorSlide = 1.6F;

BonePlan WagonBones()
{
    const auto door = [](const std::string& side, float x, float y, float slide)
    {
        const BonePlan handle = {"b.r.handle." + side, {x > 0 ? 0.05F : -0.05F, 0.6F, 0}, {}, 0, 0.25F};
        return BonePlan{"b.r.door." + side, {x, y, 1.6F}, {handle}, slide, 0};
    };
    return {"b.r.wagon",
            {},
            {{"b.r.body",
              {0, 0, 0.5F},
              {door("left", -kDoorX, 0, kDoorSlide), door("right", kDoorX, kDoorSlide, -kDoorSlide)}}}};
}

Bytes MeshBone(const BonePlan& bone)
{
    Bytes payload;
    payload.Long(100).String(bone.name).Record(bone.position).Record(kUnturned);
    payload.Long(static_cast<std::int32_t>(bone.children.size()));
    for (const BonePlan& child : bone.children)
        payload.Append(MeshBone(child));
    return Bytes().Block("BONE", payload);
}

Bytes AnimBone(const BonePlan& bone)
{
    Bytes payload;
    payload.Long(100).String(bone.name).Long(static_cast<std::int32_t>(bone.children.size()));
    for (const BonePlan& child : bone.children)
        payload.Append(AnimBone(child));
    return Bytes().Block("BONE", payload);
}

/// The pose of each bone, a bone before its children; `moved` runs from 0 to 1. A bone turns or rolls, not
/// both.
void AppendPoses(Bytes& frame, const BonePlan& bone, float moved)
{
    const auto& [x, y, z] = bone.position;
    const float turn = bone.turn * moved * std::numbers::pi_v<float>;
    const float roll = bone.roll * moved * std::numbers::pi_v<float>;
    frame.Record(Keyframe{{x, y + bone.slide * moved, z},
                          {std::sin(roll), std::sin(turn), 0, std::cos(turn) * std::cos(roll)}});
    for (const BonePlan& child : bone.children)
        AppendPoses(frame, child, moved);
}

constexpr std::int32_t kFrames = 25;

/// An animation in which `moved` gives how far the movement is in a frame.
template <class Moved>
Bytes Animation(std::string_view name, const BonePlan& bones, const Moved& moved)
{
    Bytes file = AnimHeader(name, kFrames);
    file.Block("EVNT", Bytes().Long(0)).Block("SKEL", AnimBone(bones));
    for (std::int32_t i = 0; i < kFrames; ++i)
    {
        Bytes frame = Bytes().Long(0).Long(i);
        AppendPoses(frame, bones, moved(static_cast<float>(i)));
        file.Block("FRAM", frame);
    }
    return file;
}

/// The distance of a bogey's axles from its middle, and their height, in metres.
constexpr float kAxleY = 0.9F;
constexpr float kAxleZ = -0.05F;

BonePlan BogeyBones()
{
    const auto axle = [](const std::string& side, float y) {
        return BonePlan{"b.r.axle." + side, {0, y, kAxleZ}, {}, 0, 0, 1};
    };
    return {"b.r.bogey", {}, {axle("front", kAxleY), axle("back", -kAxleY)}};
}

/// A TGA picture of 64 x 64 pixels. `shade` gives the brightness at a place, of which both coordinates run
/// from 0 to 1, the second upwards. It multiplies the colour of the material.
template <class Shade>
Bytes Picture(const Shade& shade)
{
    constexpr std::int32_t kSide = 64;
    constexpr char kTrueColour = 2;
    constexpr char kBitsPerPixel = 24;
    Bytes file;
    file.Zeros(2).Record(kTrueColour).Zeros(9).Short(kSide).Short(kSide).Record(kBitsPerPixel).Zeros(1);
    for (std::int32_t row = 0; row < kSide; ++row)
    {
        for (std::int32_t column = 0; column < kSide; ++column)
        {
            // Some grain, the same on every system.
            const auto grain = static_cast<float>((row * 7 + column * 31 + row * column * 13) % 17) / 17;
            const float brightness =
                shade((static_cast<float>(column) + 0.5F) / kSide, (static_cast<float>(row) + 0.5F) / kSide) *
                (0.92F + 0.08F * grain);
            file.Text(std::string(3, static_cast<char>(static_cast<unsigned char>(255 * brightness))));
        }
    }
    return file;
}

/// Whether a place is within `width` of a multiple of `step`.
bool IsNear(float place, float step, float width)
{
    return std::abs(place - std::round(place / step) * step) < width;
}

/// Boards along the first coordinate, each of a shade of its own, with gaps between them.
float Boards(float across, int count)
{
    const float boards = across * static_cast<float>(count);
    if (IsNear(boards, 1, 0.06F))
        return 0.45F;
    return 0.82F + 0.18F * std::abs(std::sin(std::floor(boards) * 2.4F));
}

/// A frame around the picture, and a beam from corner to corner.
bool IsInFrame(float x, float y) { return std::min({x, y, 1 - x, 1 - y}) < 0.09F || std::abs(x - y) < 0.06F; }

bool IsInWheelGap(float x, float y)
{
    const float dx = x - 0.5F;
    const float dy = y - 0.5F;
    const float radius = std::hypot(dx, dy);
    constexpr float kSpoke = 2 * std::numbers::pi_v<float> / 6;
    return radius > 0.13F && radius < 0.38F && !IsNear(std::atan2(dy, dx), kSpoke, 0.05F / radius);
}

} // namespace

Bytes WagonMesh()
{
    Bytes file = MeshHeader(4);

    Shape underframe;
    AddBox(underframe, {0, 0, 1}, {2.4F, 9, 0.3F});
    for (const float y : {-4.7F, 4.7F})
    {
        for (const float x : {-0.9F, 0.9F})
        {
            AddCylinder(underframe, 1, {x, y, 1}, 0.4F, 0.1F, 8);
            AddCylinder(underframe, 1, {x, y * 1.05F, 1}, 0.08F, 0.25F, 24);
        }
    }
    AppendChunk(file, 0, ShortMaterial({0.25F, 0.26F, 0.3F}, {{txtype::TEX_Diffuse, "underframe.texture"}}),
                underframe, {}, 200);

    Shape body;
    for (const float y : {-2.9F, 2.9F})
    {
        AddBox(body, {0, y, 2.35F}, {2.6F, 3, 2.4F});
        for (const float rib : {-1.46F, -0.5F, 0.5F, 1.46F})
            AddBox(body, {0, y + rib, 2.35F}, {2.68F, 0.1F, 2.4F});
    }
    AddBox(body, {0, 0, 3.6F}, {2.9F, 9.2F, 0.14F});
    AddBox(body, {0, 0, 3.72F}, {1.9F, 9.2F, 0.1F});
    AppendChunk(file, 1,
                LongMaterial("wagon\\sides.m.gloss", {0.66F, 0.25F, 0.16F},
                             {{txtype::TEX_Diffuse, "textures\\wagon\\planks.texture"},
                              {txtype::TEX_Bump, "textures\\wagon\\planks_bump.texture"}}),
                body, "b.r.body");

    int id = 2;
    for (const float x : {-kDoorX, kDoorX})
    {
        const float y = x > 0 ? kDoorSlide : 0;
        Shape door;
        AddBox(door, {x, y, 2.34F}, {0.06F, 2.8F, 2.34F});
        AddBox(door, {x * 1.04F, y + 0.6F, 2.1F}, {0.06F, 0.1F, 0.5F});
        AppendChunk(
            file, id++,
            LongMaterial("wagon\\doors.m.gloss", {0.8F, 0.42F, 0.22F},
                         {{txtype::TEX_Diffuse, "doors.texture"}, {txtype::TEX_Reflect, "sky.texture"}}),
            door, x < 0 ? "b.r.door.left" : "b.r.door.right");
    }

    file.Block("INFL", Bytes().Zeros(16));
    AppendAttachments(file, {{"a.Bogey0", {0, 3.2F, 0.5F}},
                             {"a.Bogey1", {0, -3.2F, 0.5F}},
                             {"a.Front", {0, 5, 1}},
                             {"a.Back", {0, -5, 1}},
                             {"a.Load", {0, 0, 1.15F}},
                             {"a.Roof", {0, 2.4F, 3.77F}},
                             {"a.Pantograph", {0, -2.4F, 3.77F}}});
    return file.Block("SKEL", Bytes().Long(1).Append(MeshBone(WagonBones())));
}

Bytes WagonAnimation()
{
    constexpr float kHalf = (kFrames - 1) / 2.0F;
    return Animation("doors", WagonBones(), [](float frame) { return 1 - std::abs(frame - kHalf) / kHalf; });
}

Bytes LoadMesh(int sides)
{
    Shape crates;
    AddBox(crates, {-0.4F, 0.5F, 0.4F}, {0.8F, 0.8F, 0.8F});
    AddBox(crates, {0.2F, -0.5F, 0.5F}, {1, 1, 1});
    Shape barrel;
    AddCylinder(barrel, 0, {0.6F, 0.5F, 0.3F}, 0.9F, 0.3F, sides);
    Bytes file = MeshHeader(2);
    AppendChunk(
        file, 0,
        LongMaterial("crates.m.plain", {0.86F, 0.68F, 0.38F}, {{txtype::TEX_Diffuse, "crate.texture"}}),
        crates);
    AppendChunk(file, 1, ShortMaterial({0.2F, 0.42F, 0.56F}, {}), barrel);
    return file;
}

Bytes BogeyMesh()
{
    Shape frame;
    AddBox(frame, {-0.95F, 0, 0.1F}, {0.12F, 2.4F, 0.25F});
    AddBox(frame, {0.95F, 0, 0.1F}, {0.12F, 2.4F, 0.25F});
    AddBox(frame, {0, 0, 0.2F}, {1.9F, 0.5F, 0.2F});
    Bytes file = MeshHeader(3);
    AppendChunk(file, 0, ShortMaterial({0.32F, 0.33F, 0.36F}, {}), frame, "b.r.bogey");
    for (const float y : {kAxleY, -kAxleY})
    {
        Shape wheels;
        for (const float x : {-0.75F, 0.75F})
            AddCylinder(wheels, 0, {x, y, kAxleZ}, 0.13F, 0.45F, 20);
        AddCylinder(wheels, 0, {0, y, kAxleZ}, 1.5F, 0.08F, 8);
        AppendChunk(
            file, y > 0 ? 1 : 2,
            LongMaterial("wheels.m.metal", {0.55F, 0.54F, 0.55F}, {{txtype::TEX_Diffuse, "wheel.texture"}}),
            wheels, y > 0 ? "b.r.axle.front" : "b.r.axle.back");
    }
    return file.Block("SKEL", Bytes().Long(1).Append(MeshBone(BogeyBones())));
}

Bytes BogeyAnimation()
{
    return Animation("wheels", BogeyBones(), [](float frame) { return frame / (kFrames - 1); });
}

Bytes PantographMesh()
{
    Shape bars;
    AddBox(bars, {0, 0, 0.05F}, {1.2F, 1, 0.1F});
    AddBox(bars, {-0.5F, 0, 0.7F}, {0.06F, 0.06F, 1.2F});
    AddBox(bars, {0.5F, 0, 0.7F}, {0.06F, 0.06F, 1.2F});
    AddBox(bars, {0, 0, 1.3F}, {1.8F, 0.25F, 0.06F});
    Bytes file = MeshHeader(1);
    AppendChunk(file, 0, LongMaterial("bars.m.metal", {0.6F, 0.1F, 0.1F}, {}), bars);
    return file;
}

Bytes UnderframePicture()
{
    return Picture([](float x, float y)
                   { return IsNear(x, 0.25F, 0.02F) && IsNear(y, 0.25F, 0.02F) ? 0.6F : 0.95F; });
}

Bytes PlanksPicture()
{
    return Picture([](float, float y) { return Boards(y, 8); });
}

Bytes PlanksBumpPicture()
{
    return Picture([](float, float y) { return IsNear(y, 0.125F, 0.008F) ? 0.0F : 0.5F; });
}

Bytes DoorsPicture()
{
    return Picture([](float x, float y) { return IsInFrame(x, y) ? 0.7F : Boards(x, 6); });
}

Bytes SkyPicture()
{
    return Picture([](float, float y) { return 0.5F + y / 2; });
}

Bytes CratePicture()
{
    return Picture([](float x, float y) { return IsInFrame(x, y) ? 0.98F : Boards(y, 5) * 0.8F; });
}

Bytes WheelPicture()
{
    return Picture([](float x, float y) { return IsInWheelGap(x, y) ? 0.25F : 0.95F; });
}

} // namespace Sample

#include "finding.h"

#include "spelling.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ZLMIM::Validate
{
namespace
{

using enum Severity;

constexpr std::array kCodes = {
    CodeInfo{Code::NotLoaded, "not-loaded", Error, "a file isn't loaded, or not to its end"},
    CodeInfo{Code::AssetNotLoaded, "asset-not-loaded", Error, "a damaged file ends the load of its asset"},
    CodeInfo{Code::ConfigEmpty, "config-empty", Error, "a config.txt has no content"},
    CodeInfo{Code::ConfigNotText, "config-not-text", Error, "a config.txt is binary, or UTF-16"},
    CodeInfo{Code::ConfigUnknown, "config-unknown", Error, "a config.txt has no known key"},
    CodeInfo{Code::ConfigName, "config-name", Error, "a file should be called config.txt"},
    CodeInfo{Code::ConfigUtf8, "config-utf8", Warning, "UTF-8 text, which is read one byte a character"},
    CodeInfo{Code::BraceMissing, "brace-missing", Error, "a block isn't opened or closed"},
    CodeInfo{Code::BraceExtra, "brace-extra", Error, "a } that closes no block"},
    CodeInfo{Code::QuoteOpen, "quote-open", Error, "a quotation mark isn't closed where it should be"},
    CodeInfo{Code::QuoteDoubtful, "quote-doubtful", Warning,
             "perhaps a quotation mark is missing, or one too many"},
    CodeInfo{Code::KeyMisspelt, "key-misspelt", Warning, "a key resembles a known one"},
    CodeInfo{Code::KeyTwice, "key-twice", Warning, "a key is given twice, and only the last counts"},
    CodeInfo{Code::KeyMissing, "key-missing", Warning, "an asset has no username, or no kind"},
    CodeInfo{Code::ValueMissing, "value-missing", Warning, "a key has no value"},
    CodeInfo{Code::MeshTableEmpty, "mesh-table-empty", Error, "a mesh table has no entry"},
    CodeInfo{Code::EntryTwice, "entry-twice", Warning, "two entries of a mesh table have one name"},
    CodeInfo{Code::EntryWithoutMesh, "entry-without-mesh", Error, "an entry of a mesh table has no mesh"},
    CodeInfo{Code::EntryLost, "entry-lost", Error, "a config ends inside an entry, which is then lost"},
    CodeInfo{Code::NoMesh, "no-mesh", Error, "a config loads no mesh, though it or its folder has some"},
    CodeInfo{Code::FileMissing, "file-missing", Error, "a config names a file that doesn't exist"},
    CodeInfo{Code::AttParentUnknown, "att-parent-unknown", Error, "att-parent names no entry above"},
    CodeInfo{Code::AttUnknown, "att-unknown", Error, "att names no attachment point of the att-parent"},
    CodeInfo{Code::KuidMissing, "kuid-missing", Error, "an asset has no kuid, so nothing can refer to it"},
    CodeInfo{Code::KuidMalformed, "kuid-malformed", Error, "a kuid isn't like <kuid:1:2>"},
    CodeInfo{Code::KuidShared, "kuid-shared", Error, "several assets have one kuid"},
    CodeInfo{Code::KuidNotFound, "kuid-not-found", Error, "a reference to an asset that isn't found"},
    CodeInfo{Code::KuidFoundTwice, "kuid-found-twice", Warning, "a reference that fits several assets"},
    CodeInfo{Code::ReferenceEmpty, "reference-empty", Error, "a reference without a kuid"},
    CodeInfo{Code::ReferenceToItself, "reference-to-itself", Error, "an asset refers to itself"},
    CodeInfo{Code::ReferenceCycle, "reference-cycle", Error, "assets refer to each other in a circle"},
    CodeInfo{Code::FileLength, "file-length", Warning, "a file is longer or shorter than its blocks"},
    CodeInfo{Code::MeshEmpty, "mesh-empty", Error, "a mesh has no chunks"},
    CodeInfo{Code::ChunkEmpty, "chunk-empty", Warning, "a chunk has no vertices, or no indices"},
    CodeInfo{Code::MaterialMissing, "material-missing", Warning, "a chunk has no material"},
    CodeInfo{Code::NegativeCount, "negative-count", Error, "a count below zero"},
    CodeInfo{Code::IndexOutside, "index-outside", Error, "an index of a vertex that doesn't exist"},
    CodeInfo{Code::PrimitiveKind, "primitive-kind", Error, "a kind of primitive that doesn't exist"},
    CodeInfo{Code::PrimitiveCount, "primitive-count", Error, "not as many primitives as the indices make"},
    CodeInfo{Code::FaceNormalCount, "face-normal-count", Warning, "not one face normal for each face"},
    CodeInfo{Code::NormalLength, "normal-length", Warning, "a normal isn't of length 1"},
    CodeInfo{Code::NotFinite, "not-finite", Error, "infinite, or not a number"},
    CodeInfo{Code::VertexFar, "vertex-far", Warning, "a vertex is more than 100 km away"},
    CodeInfo{Code::DegenerateTriangle, "degenerate-triangle", Warning, "a triangle without an area"},
    CodeInfo{Code::TriangleTwice, "triangle-twice", Warning, "a triangle is in a chunk twice"},
    CodeInfo{Code::FaceReversed, "face-reversed", Warning, "some triangles are wound against their normals"},
    CodeInfo{Code::FaceNormalReversed, "face-normal-reversed", Warning,
             "face normals point away from the normals of the corners"},
    CodeInfo{Code::MaterialRange, "material-range", Warning,
             "an opacity, colour, or a texture's role or amount, out of range"},
    CodeInfo{Code::TextureMissing, "texture-missing", Warning,
             "no file beside the mesh has a texture's name"},
    CodeInfo{Code::TextureDamaged, "texture-damaged", Error,
             "a texture's file is empty, cut short or damaged"},
    CodeInfo{Code::TextureUnplaced, "texture-unplaced", Warning,
             "a textured chunk has no texture coordinates"},
    CodeInfo{Code::NameTwice, "name-twice", Warning, "two bones or attachment points have one name"},
    CodeInfo{Code::NameMissing, "name-missing", Warning, "a bone or attachment point has no name"},
    CodeInfo{Code::ZeroTransform, "zero-transform", Error,
             "a rotation is all zeros, or a matrix flattens what hangs on it"},
    CodeInfo{Code::RotationLength, "rotation-length", Warning, "a rotation isn't a unit quaternion"},
    CodeInfo{Code::BoneUnknown, "bone-unknown", Error, "a chunk names a bone that doesn't exist"},
    CodeInfo{Code::BoneLetterCase, "bone-letter-case", Error, "a chunk spells a bone in other letter case"},
    CodeInfo{Code::AnimationTree, "animation-tree", Error, "an animation's bones differ from the mesh's"},
    CodeInfo{Code::AnimationRate, "animation-rate", Warning, "an animation has no frames, or no frame rate"},
    CodeInfo{Code::FrameUnfilled, "frame-unfilled", Warning, "slots of an animation that no frame fills"},
};

constexpr bool IsInOrder()
{
    for (std::size_t i = 0; i < kCodes.size(); ++i)
    {
        if (kCodes[i].Code != static_cast<Code>(i))
            return false;
    }
    return kCodes.back().Code == Code::FrameUnfilled;
}
static_assert(IsInOrder());

} // namespace

std::span<const CodeInfo> Codes() { return kCodes; }

const CodeInfo& Info(Code code) { return kCodes.at(static_cast<std::size_t>(code)); }

std::optional<Code> FindCode(std::string_view name)
{
    const auto found = std::find_if(kCodes.begin(), kCodes.end(),
                                    [name](const CodeInfo& info) { return info.Name == name; });
    return found == kCodes.end() ? std::nullopt : std::optional(found->Code);
}

std::string_view Name(Severity severity) { return severity == Error ? "error" : "warning"; }

std::string Text(const Place& place, bool hasLine)
{
    std::string text;
    const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (place.Line > 0 && hasLine)
        add("line " + std::to_string(place.Line));
    if (!place.Entry.empty())
        add("entry " + Quoted(place.Entry));
    if (place.Chunk > 0)
        add("chunk " + std::to_string(place.Chunk));
    if (!place.Detail.empty())
        add(place.Detail);
    return text;
}

} // namespace ZLMIM::Validate

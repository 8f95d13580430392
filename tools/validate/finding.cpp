#include "finding.h"

#include <array>
#include <cstddef>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

using enum Severity;

constexpr std::array kCodes = {
    CodeInfo{Code::NotLoaded, "not-loaded", Error, "a file doesn't load"},
    CodeInfo{Code::AssetNotLoaded, "asset-not-loaded", Error,
             "a file ends the load of the asset that needs it"},
    CodeInfo{Code::FileMissing, "file-missing", Error,
             "a config names a mesh or an animation that isn't there"},
    CodeInfo{Code::EntryWithoutMesh, "entry-without-mesh", Warning, "an entry of a mesh table has no mesh"},
    CodeInfo{Code::EntryLost, "entry-lost", Error, "a config ends inside an entry, which is then left out"},
    CodeInfo{Code::NegativeCount, "negative-count", Error, "fewer than no vertices, indices or primitives"},
    CodeInfo{Code::IndexOutside, "index-outside", Error, "an index of no vertex"},
    CodeInfo{Code::PrimitiveKind, "primitive-kind", Error, "a kind of primitive that doesn't exist"},
    CodeInfo{Code::PrimitiveCount, "primitive-count", Error, "not the primitives that the indices make"},
    CodeInfo{Code::FaceNormalCount, "face-normal-count", Warning, "not one face normal for each face"},
    CodeInfo{Code::NormalLength, "normal-length", Warning,
             "a normal of a face or its vertex isn't of length 1"},
    CodeInfo{Code::NotFinite, "not-finite", Error, "infinite, or not a number"},
    CodeInfo{Code::DegenerateTriangle, "degenerate-triangle", Warning, "a triangle without an area"},
    CodeInfo{Code::TextureMissing, "texture-missing", Warning, "no file of a texture's name beside the mesh"},
    CodeInfo{Code::BoneUnknown, "bone-unknown", Error, "a chunk hangs from a bone that isn't there"},
    CodeInfo{Code::BoneLetterCase, "bone-letter-case", Error, "a bone's name is spelt in other capitals"},
    CodeInfo{Code::AnimationTree, "animation-tree", Error, "an animation's bones aren't those of the mesh"},
    CodeInfo{Code::FrameUnfilled, "frame-unfilled", Warning, "slots of an animation that no frame fills"},
    CodeInfo{Code::AttParentUnknown, "att-parent-unknown", Error, "an att-parent that is no entry above"},
    CodeInfo{Code::AttUnknown, "att-unknown", Error, "an att that is no attachment point of the att-parent"},
    CodeInfo{Code::KuidNotFound, "kuid-not-found", Error, "a reference to an asset that isn't there"},
    CodeInfo{Code::KuidFoundTwice, "kuid-found-twice", Warning, "a reference that several assets answer to"},
};

constexpr bool IsInOrder()
{
    for (std::size_t i = 0; i < kCodes.size(); ++i)
    {
        if (kCodes[i].Code != static_cast<Code>(i))
            return false;
    }
    return kCodes.back().Code == Code::KuidFoundTwice;
}
static_assert(IsInOrder());

} // namespace

std::span<const CodeInfo> Codes() { return kCodes; }

const CodeInfo& Info(Code code) { return kCodes.at(static_cast<std::size_t>(code)); }

std::string_view Name(Severity severity) { return severity == Error ? "error" : "warning"; }

void Report::Add(Code code, std::string place, std::string message)
{
    mFindings.push_back({code, {}, std::move(place), std::move(message)});
}

} // namespace ZLMIM::Validate

#include "bench/hostile.h"
#include "tests/good_files.h"
#include "tests/outcome.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>

namespace Bench
{

using namespace ZLMIM::Testing;

namespace
{

/// Padding after the blocks of a file that reads them again and again: a load's allowance grows with the
/// file's size.
constexpr std::size_t kRoom = std::size_t{4} * 1'048'576;

Hostile File(Hostile::Kind kind, const std::string& name, const std::string& outcome, const Bytes& bytes)
{
    const auto write = [bytes](const std::filesystem::path& folder)
    {
        std::ofstream(folder / "file", std::ios::binary) << bytes.Str();
        return std::string("file");
    };
    return {name, kind, outcome, write};
}

Bytes Chunk(std::string_view tag, const Bytes& block)
{
    return MeshHeader(1).Block("CHNK", Bytes().Long(1).Long(1).Block(tag, block));
}

Bytes Geometry(std::int32_t vertices, std::int32_t indices, std::int32_t faceNormals)
{
    const std::array<std::int32_t, 5> counts = {vertices, 0, indices, faceNormals, 0};
    return Chunk("GEOM", Bytes().Long(200).Zeros(8).Record(counts).Zeros(64));
}

Bytes NamedMaterial(std::int32_t length) { return Chunk("MATL", Bytes().Long(102).Long(length).Zeros(64)); }

std::vector<Hostile> Meshes()
{
    const auto mesh = [](const std::string& name, const std::string& outcome, const Bytes& bytes)
    { return File(Hostile::Kind::Mesh, name, outcome, bytes); };
    const std::string bounds(kBounds);
    const std::string overflow(kOverflow);
    // Each of these blocks follows itself: its size, or the length of a string, leads back to its first byte.
    const auto chunk = MeshHeader(kHighest).Text("CHNK").Long(-8).Zeros(16);
    const auto texture = Bytes().Long(101).Zeros(44).Long(kHighest).Long(0).Long(-12).Zeros(8);
    const auto attachment = MeshHeader(0).Block("ATCH", Bytes().Long(1).Long(kHighest).Long(-52).Zeros(66));
    const auto bone = Bytes().Text("BONE").Long(-8).Zeros(40);
    // The negative length of its name leads back, so its other fields are the 32 bytes before it. The last of
    // them is the number of children, 1, and this child is the block itself.
    const auto ownChild = Bytes().Long(1).Text("BONE").Long(0).Long(1).Long(-48);
    return {
        mesh("chunk after itself", bounds, chunk),
        mesh("chunk after itself, with room", bounds, Bytes(chunk).Zeros(kRoom)),
        mesh("texture after itself, with room", bounds, Chunk("MATL", texture).Zeros(kRoom)),
        mesh("attachment after itself, with room", bounds, Bytes(attachment).Zeros(kRoom)),
        mesh("bone after itself, with room", bounds, MeshWith(MeshBone("r", kHighest, bone)).Zeros(kRoom)),
        mesh("bone in itself", bounds, MeshHeader(0).Block("SKEL", ownChild)),
        mesh("2^31 - 1 children at the end", bounds, MeshWith(MeshBone("r", kHighest))),
        mesh("65,535 children at the end", "true", MeshWith(MeshBone("r", 65'535))),
        mesh("2^31 - 1 vertices", bounds, Geometry(kHighest, 0, 0)),
        mesh("-2^31 vertices", overflow, Geometry(kLowest, 0, 0)),
        mesh("2^31 - 1 indices", bounds, Geometry(0, kHighest, 0)),
        mesh("2^31 - 1 face normals", bounds, Geometry(0, 0, kHighest)),
        mesh("text of 2^31 - 1", overflow, NamedMaterial(kHighest)),
        mesh("text of -2^31", bounds, NamedMaterial(kLowest)),
    };
}

std::vector<Hostile> Animations()
{
    const auto anim = [](const std::string& name, const std::string& outcome, const Bytes& bytes)
    { return File(Hostile::Kind::Animation, name, outcome, bytes); };
    const std::string bounds(kBounds);
    const auto leaf = AnimBone("r");
    const auto bone = Bytes().Text("BONE").Long(-8).Zeros(12);
    // Likewise: its number of children is the size, 1, of the skeleton before it.
    const auto ownChild = Bytes().Text("SKEL").Long(1).Text("BONE").Long(0).Long(1).Long(-20);
    const auto skeleton = [](const Bytes& block)
    { return AnimHeader("n", 0).Block("EVNT", {}).Append(block); };
    return {
        anim("frame after itself", bounds, AnimWith(kHighest / 2'000, leaf).Append(Frame(1, {5}, -44))),
        anim("frame after itself, with room", bounds,
             AnimWith(kHighest / 2'000, leaf).Append(Frame(1, {5}, -44)).Zeros(kRoom)),
        anim("bone after itself, with room", bounds, AnimWith(0, AnimBone("r", kHighest, bone)).Zeros(kRoom)),
        anim("bone in itself", bounds, skeleton(ownChild)),
        anim("2^31 - 1 children at the end", bounds, AnimWith(0, AnimBone("r", kHighest))),
        anim("2^31 - 2 frames", bounds, AnimWith(kHighest - 1, leaf)),
        anim("as many slots as may be", "false", AnimWith(1'198'431, AnimBone("r", 1, leaf)).Zeros(109)),
        anim("65,536 bones and their tables", "false", AnimWith(35, AnimBone("r", 65'535))),
    };
}

} // namespace

std::vector<Hostile> HostileFiles()
{
    auto files = Meshes();
    for (Hostile& animation : Animations())
        files.push_back(std::move(animation));
    return files;
}

} // namespace Bench

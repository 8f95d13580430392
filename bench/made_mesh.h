#pragma once

#include "tests/block_writer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Bench
{

/// A run of equal elements in a file.
struct FileRun
{
    std::size_t offset = 0;
    std::size_t bytes = 0;
    /// Whether it contains 16-bit numbers that are widened to 32 bits.
    bool isWidened = false;
};

/// A generated mesh file, and the positions of its runs.
struct MadeMesh
{
    std::string file;
    std::vector<FileRun> runs;
};

/// Per vertex of each chunk: 20 bytes, 3 indices, a normal, a face normal. The chunks use the names in
/// `bones` in turn; if it is empty, they have no bones.
struct MeshPlan
{
    std::int32_t chunks = 1;
    std::int32_t vertices = 1;
    std::int32_t textures = 0;
    std::int32_t attachments = 0;
    std::vector<std::string> bones = {};
    ZLMIM::Testing::Bytes skeleton = {};
};

[[nodiscard]] MadeMesh MakeMesh(const MeshPlan& plan);

/// Bytes of a chunk per vertex.
inline constexpr std::int32_t kBytesPerVertex = 20 + 3 * 2 + 12 + 12;

} // namespace Bench

#ifndef ZLMIM_TOOLS_PICTURE_SCENE_H
#define ZLMIM_TOOLS_PICTURE_SCENE_H

#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"

#include <array>
#include <cstddef>
#include <glm/glm.hpp>
#include <map>
#include <string>
#include <vector>

namespace ZLMIM::Picture
{

/// A triangle with a surface, its corners finite. Those of one chunk run the same way round, strips included;
/// which way shows the front, the format doesn't tell.
struct Triangle
{
    std::array<glm::vec3, 3> Corners;
    /// The material's diffuse colour, each component from 0 to 1. Opacity, textures and bones have no effect.
    glm::vec3 Colour;
};

/// What an asset looks like: triangles in its own space, in metres. x points to the right, y forward, z up.
struct Scene
{
    std::vector<Triangle> Triangles;
    /// What isn't among them, and how many of each.
    std::map<std::string, std::size_t> LeftOut;
};

/// More triangles than this aren't looked at, nor more bogeys and pantographs than the other.
constexpr std::size_t kMaxTriangles = 4'000'000;
constexpr std::size_t kMaxReferences = 64;

/// The mesh as it stands.
[[nodiscard]] Scene MakeScene(const Mesh& mesh);

/// All entries of the mesh table: each where its attachment puts it, under the place of the entry that it
/// hangs on; one without an attachment at the origin.
///
/// Where a bogey stands, its key doesn't tell. By custom the asset's meshes have an attachment point of the
/// key's name: `bogey-0` stands on `a.bogey0`, the pantograph on `a.pantograph`. One without such a point is
/// left out, and so is what a bogey refers to itself.
[[nodiscard]] Scene MakeScene(const ZLMModel& model);

} // namespace ZLMIM::Picture

#endif

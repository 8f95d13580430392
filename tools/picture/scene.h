#pragma once

#include "image.h"

#include "tools/common/poses.h"

#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/path_resolver.h"

#include <array>
#include <cstddef>
#include <glm/glm.hpp>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZLMIM::Picture
{

/// The appearance of a surface.
struct Surface
{
    /// The material's diffuse colour, each component from 0 to 1.
    glm::vec3 Colour = glm::vec3(1);
    /// From 0 to 1.
    float Opacity = 1;
    /// Null without a texture. The texture's colour times the diffuse one is the surface's.
    std::shared_ptr<const Texture> Diffuse = nullptr;
    /// Null without a texture. Its alpha, or its brightness if it has none, times the opacity is the
    /// surface's.
    std::shared_ptr<const Texture> Transparency = nullptr;

    [[nodiscard]] bool IsOpaque() const { return Opacity >= 1 && !Transparency; }
};

/// A triangle with finite corners. All triangles of a chunk have the same winding, also in strips. The format
/// doesn't define which side is the front.
struct Triangle
{
    std::array<glm::vec3, 3> Corners;
    std::array<glm::vec2, 3> Coordinates = {};
    /// Index in `Scene::Surfaces`.
    std::size_t Surface = 0;
};

/// A line, or a point if both ends are equal.
struct Line
{
    std::array<glm::vec3, 2> Ends;
    std::size_t Surface = 0;
};

/// An asset as triangles and lines, in its own space (see `tools/common/poses.h`).
struct Scene
{
    std::vector<Triangle> Triangles;
    std::vector<Line> Lines;
    std::vector<Picture::Surface> Surfaces;
    /// What was skipped or is wrong: the file, and what it is. Doesn't repeat what `Tools::FindProblems`
    /// reports.
    std::vector<std::string> Problems;
    /// What isn't shown although nothing is wrong with it.
    std::vector<std::string> Notes;
    /// The longest run of its animations that have frames.
    std::optional<Tools::Run> AnimationRun;
    int FramesPerSecond = 0;
};

/// What to show of an asset.
struct SceneRequest
{
    /// Slot of the animations; `std::nullopt` for the meshes as stored.
    std::optional<double> Slot = {};
    Tools::PoseBase Poses = Tools::PoseBase::Parent;
    /// Names of entries, in lower case. If `Only` isn't empty, other entries aren't shown.
    std::set<std::u16string> Only = {};
    std::set<std::u16string> Without = {};
    bool HasTextures = true;

    /// Whether it shows an entry of the asset.
    [[nodiscard]] bool Shows(const std::u16string& entry) const
    {
        return (Only.empty() || Only.contains(entry)) && !Without.contains(entry);
    }
};

/// Limit: further triangles and lines are skipped.
constexpr std::size_t kMaxTriangles = 2'000'000;

/// Textures that have been read, by their files.
using TextureCache = std::map<NativePath, std::shared_ptr<const Texture>>;

class SceneMaker
{
public:
    SceneMaker(const SceneRequest& request, PathResolver& names, TextureCache& textures)
        : mRequest(request), mNames(names), mTextures(textures)
    {
    }

    [[nodiscard]] Scene Make(const Mesh& mesh);

    /// All parts of the asset (see `Tools::Assembly`).
    [[nodiscard]] Scene Make(const ZLMModel& model);

private:
    void Add(const Mesh& mesh, const Anim* anim, const glm::mat4& place);
    void Add(const Chunk& chunk, const Mesh& mesh, const glm::mat4& place);
    void AddTriangles(const Geometry& geometry, const glm::mat4& place);
    void AddLines(const Geometry& geometry, const glm::mat4& place);
    [[nodiscard]] Surface SurfaceOf(const Material& material, const Mesh& mesh);
    [[nodiscard]] std::shared_ptr<const Texture> FindTexture(const Material& material, txtype type,
                                                             const Mesh& mesh);
    /// Counts problems of the current mesh.
    void AddProblem(const char* one, const char* many, std::size_t count = 1);
    /// Adds a line about a file, unless it is there already.
    static void AddLine(std::vector<std::string>& lines, const std::u16string& file, const std::string& what);
    [[nodiscard]] std::size_t Admit(std::size_t count);

    const SceneRequest& mRequest;
    PathResolver& mNames;
    TextureCache& mTextures;
    Scene mScene;
    /// Of the current mesh, by `many`.
    std::map<std::string_view, std::pair<std::string_view, std::size_t>> mCounts;
};

} // namespace ZLMIM::Picture

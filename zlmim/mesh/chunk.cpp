#include "zlmim/mesh/chunk.h"

namespace ZLMIM
{
namespace
{

struct Lists
{
    Collection<Texture> textures;
    Collection<Vector> faceNormals;
};

struct Parts
{
    explicit Parts(const std::shared_ptr<Lists>& lists)
        : material({lists, &lists->textures}), geometry({lists, &lists->faceNormals})
    {
    }

    Material material;
    Geometry geometry;
};

} // namespace

Chunk::Chunk()
{
    const auto parts = std::make_shared<Parts>(std::make_shared<Lists>());
    Material = {parts, &parts->material};
    Geometry = {parts, &parts->geometry};
}

} // namespace ZLMIM

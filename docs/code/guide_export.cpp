#include "places.h"
#include "triangles.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <limits>
#include <memory>

namespace
{

using namespace ZLMIM::Guide;

/// What an exporter would write to its file: how many triangles, and the box that they fill.
class Export
{
public:
    void Add(const ZLMIM::Mesh& mesh, const ZLMIM::Matrix& place)
    {
        if (!mesh.Chunks)
            return;
        for (const auto& chunk : *mesh.Chunks)
        {
            const ZLMIM::Geometry& geometry = *chunk->Geometry;
            const auto vertices = geometry.Vertices();
            for (const Triangle& triangle : Triangles(geometry))
            {
                ++mCount;
                for (const std::int32_t corner : triangle)
                {
                    const ZLMIM::Vertex& vertex = vertices[static_cast<std::size_t>(corner)];
                    Include(Place({vertex.x, vertex.y, vertex.z}, place));
                }
            }
        }
    }

    void Print() const
    {
        std::cout << mCount << " triangles, from " << mLow.x << ' ' << mLow.y << ' ' << mLow.z << " to "
                  << mHigh.x << ' ' << mHigh.y << ' ' << mHigh.z << '\n';
    }

private:
    void Include(const ZLMIM::Vector& point)
    {
        mLow = {std::min(mLow.x, point.x), std::min(mLow.y, point.y), std::min(mLow.z, point.z)};
        mHigh = {std::max(mHigh.x, point.x), std::max(mHigh.y, point.y), std::max(mHigh.z, point.z)};
    }

    static constexpr float kFar = std::numeric_limits<float>::max();

    std::size_t mCount = 0;
    ZLMIM::Vector mLow = {kFar, kFar, kFar};
    ZLMIM::Vector mHigh = {-kFar, -kFar, -kFar};
};

} // namespace

int main()
{
    const auto asset = std::make_shared<ZLMIM::ZLMModel>();
    asset->Load(u"..\\wagon\\config.txt");
    for (const auto& entry : *asset->MeshTable())
    {
        Export triangles;
        triangles.Add(*entry->Mesh, PlaceOf(entry));
        std::cout << ZLMIM::ToUtf8(entry->Name) << ": ";
        triangles.Print();
    }
}

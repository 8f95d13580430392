#include "names.h"
#include "transforms.h"
#include "triangles.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <fstream>
#include <iostream>

namespace
{

using namespace ZLMIM::Guide;

/// Writes the triangles of all entries as one OBJ file.
void WriteObj(const ZLMIM::ZLMModel& asset, std::ostream& obj)
{
    std::int32_t first = 1; // OBJ numbers the vertices of the whole file from 1
    const auto table = asset.MeshTable();
    for (const auto& entry : *table)
    {
        if (!entry->Mesh->Chunks)
            continue;
        const ZLMIM::Matrix transform = EntryTransform(entry);
        obj << "o " << ZLMIM::ToUtf8(entry->Name) << '\n';
        for (const auto& chunk : *entry->Mesh->Chunks)
        {
            const ZLMIM::Geometry& geometry = *chunk->Geometry;
            for (const ZLMIM::Vertex& vertex : geometry.Vertices())
            {
                const auto [x, y, z] = Transform({vertex.x, vertex.y, vertex.z}, transform);
                obj << "v " << x << ' ' << y << ' ' << z << '\n';
            }
            for (const auto& [a, b, c] : Triangles(geometry))
                obj << "f " << first + a << ' ' << first + b << ' ' << first + c << '\n';
            first += static_cast<std::int32_t>(geometry.Vertices().size());
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    std::ofstream obj(argv[2]); // before the working folder changes
    WriteObj(*LoadAsset(argv[1]), obj);
    return obj.flush() ? 0 : 1;
}

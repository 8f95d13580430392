#include "zlmim/mesh/mesh.h"
#include "zlmim/model/text.h"
#include <iostream>

int main()
{
    ZLMIM::Mesh mesh;
    if (!mesh.Load(u"wagon\\body.im"))
    {
        std::cerr << "not loaded: " << ZLMIM::ToUtf8(mesh.ErrorMessage) << '\n';
        return 1;
    }
    for (const auto& chunk : *mesh.Chunks)
        for (const ZLMIM::Vertex& vertex : chunk->Geometry->Vertices())
            std::cout << vertex.x << ' ' << vertex.y << ' ' << vertex.z << '\n';
}

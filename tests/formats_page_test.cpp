#include "zlmim/mesh/mesh.h"

#include <fstream>
#include <gtest/gtest.h>
#include <span>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

/// The bytes of the page's hex dump: each line is their offset, a colon, the bytes, two blanks, a meaning.
std::vector<unsigned char> DumpOfPage()
{
    std::vector<unsigned char> bytes;
    std::ifstream page(ZLMIM_FORMATS_PAGE);
    for (std::string line; std::getline(page, line);)
    {
        if (line.find(": ") != 4 || line.find_first_not_of("0123456789ABCDEF") != 4)
            continue;
        EXPECT_EQ(std::stoul(line, nullptr, 16), bytes.size()) << line;
        std::istringstream pairs(line.substr(6, line.find("  ") - 6));
        for (unsigned value = 0; pairs >> std::hex >> value;)
            bytes.push_back(static_cast<unsigned char>(value));
    }
    return bytes;
}

TEST(FormatsPage, DumpLoadsAsDescribed)
{
    const auto file = DumpOfPage();
    ASSERT_EQ(file.size(), 350U);
    for (const unsigned size : {0x3CU, 0xBDU}) // those of the two blocks that end with the file
        EXPECT_EQ(size + 4 + file[size] + 256U * file[size + 1], 350U);
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(std::as_bytes(std::span(file))));
    EXPECT_EQ(std::tuple(mesh.Version, mesh.ChunkCount), std::tuple(104, 1));
    const auto chunk = mesh.Chunks->Item(1);
    EXPECT_EQ(std::tuple(chunk->Version, chunk->Id), std::tuple(100, 7));
    const auto& m = *chunk->Material;
    EXPECT_EQ(std::tuple(m.Version, m.Name, m.TwoSided, m.Opacity), std::tuple(102, u"m.paint", 1, 0.5F));
    EXPECT_EQ(std::tuple(m.Ambient.b, m.Diffuse), std::tuple(0.25F, rgbColour{1, 0.5F, 0}));
    EXPECT_EQ(std::tuple(m.Emissive, m.SpecularPower), std::tuple(rgbColour{0, 0, 2}, 20.0F));
    const auto t = m.Textures->Item(1);
    EXPECT_EQ(std::tuple(t->TextureType, t->Name, t->Amount), std::tuple(txtype::TEX_Diffuse, u"wood", 1.0F));
    const auto& g = *chunk->Geometry;
    EXPECT_EQ(std::tuple(g.Version, g.PrimitiveType, g.Area), std::tuple(201, PrimFlag::TRIANGLES, 0.5F));
    EXPECT_EQ(std::tuple(g.PrimitiveCount, g.MaxInfl, g.Bone), std::tuple(1, 2, u"arm"));
    EXPECT_EQ(g.Vertices()[2], (Vertex{0, 1, 0, 0, 1}));
    EXPECT_EQ(std::tuple(g.MaxIndex(), g.GetIndex(2), g.VertexNormals()[2].z), std::tuple(3, 2, 1.0F));
    EXPECT_EQ(g.FaceNormals->Item(1), (Vector{0, 0, 1}));
}

} // namespace
} // namespace ZLMIM::Testing

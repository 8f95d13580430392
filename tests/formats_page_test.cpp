#include "zlmim/mesh/mesh.h"

#include <cstddef>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

/// The bytes of the page's hex dump, whose lines are an offset, a colon, bytes, two blanks and a meaning.
std::vector<std::byte> DumpOfPage()
{
    std::ifstream page(ZLMIM_FORMATS_PAGE);
    std::string line;
    while (std::getline(page, line) && !line.starts_with("0000: "))
        ;
    std::vector<std::byte> bytes;
    for (; page && line != "```"; std::getline(page, line))
    {
        EXPECT_EQ(std::stoul(line, nullptr, 16), bytes.size()) << line;
        std::istringstream pairs(line.substr(6, line.find("  ") - 6));
        for (unsigned value = 0; pairs >> std::hex >> value;)
            bytes.push_back(static_cast<std::byte>(value));
    }
    return bytes;
}

TEST(FormatsPage, DumpIsTheMeshThatItTells)
{
    auto file = DumpOfPage();
    ASSERT_EQ(file.size(), 350U);
    // Found only if the chunk's size leads to the end of the dump.
    for (const char c : std::string("ATCH\x08\0\0\0\x64\0\0\0\0\0\0\0", 16))
        file.push_back(static_cast<std::byte>(c));
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(file));
    EXPECT_EQ(std::tuple(mesh.Version, mesh.ChunkCount, mesh.AttVersion), std::tuple(104, 1, 100));
    const auto chunk = mesh.Chunks->Item(1);
    EXPECT_EQ(std::tuple(chunk->Version, chunk->Id), std::tuple(100, 7));

    const Material& material = *chunk->Material;
    EXPECT_EQ(std::tuple(material.Version, material.Name, material.NumProperties, material.TwoSided),
              std::tuple(102, u"m.paint", 0, 1));
    EXPECT_EQ(std::tuple(material.Opacity, material.Ambient, material.Diffuse, material.Specular),
              std::tuple(0.5F, rgbColour{0.25F, 0.25F, 0.25F}, rgbColour{1, 0.5F, 0}, rgbColour{}));
    EXPECT_EQ(std::tuple(material.Emissive, material.SpecularPower), std::tuple(rgbColour{0, 0, 2}, 20.0F));
    ASSERT_EQ(material.Textures->Count(), 1);
    const auto texture = material.Textures->Item(1);
    EXPECT_EQ(std::tuple(texture->TextureType, texture->Name, texture->Amount),
              std::tuple(txtype::TEX_Diffuse, u"wood", 1.0F));

    const Geometry& geometry = *chunk->Geometry;
    EXPECT_EQ(std::tuple(geometry.Version, geometry.PrimitiveType, geometry.Area, geometry.PrimitiveCount),
              std::tuple(201, PrimFlag::TRIANGLES, 0.5F, 1));
    EXPECT_EQ(std::tuple(geometry.MaxInfl, geometry.Bone, geometry.BoneObject),
              std::tuple(2, u"arm", nullptr));
    EXPECT_EQ(std::vector<Vertex>(geometry.Vertices().begin(), geometry.Vertices().end()),
              (std::vector<Vertex>{{0, 0, 0, 0, 0}, {1, 0, 0, 1, 0}, {0, 1, 0, 0, 1}}));
    EXPECT_EQ(std::vector<int>(geometry.Indices().begin(), geometry.Indices().end()), (std::vector{0, 1, 2}));
    EXPECT_EQ(std::vector<Vector>(geometry.VertexNormals().begin(), geometry.VertexNormals().end()),
              (std::vector<Vector>{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}}));
    ASSERT_EQ(geometry.FaceNormals->Count(), 1);
    EXPECT_EQ(geometry.FaceNormals->Item(1), (Vector{0, 0, 1}));
}

} // namespace
} // namespace ZLMIM::Testing

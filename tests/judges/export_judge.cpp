// Compares exported meshes, as Assimp and tinygltf read them, with the mesh files; and writes damaged assets
// to export.

#include "tests/damaged_bytes.h"
#include "tools/sample/sample_files.h"

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"

#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <tiny_gltf.h>
#include <vector>

namespace
{

using ZLMIM::PrimFlag;
using ZLMIM::Vector;

/// The positions of a chunk, bit by bit, and how many points, lines or triangles it has.
struct Shown
{
    std::vector<std::array<std::uint32_t, 3>> Positions;
    std::size_t Shapes = 0;
    bool operator==(const Shown&) const = default;
};

template <class Point>
std::array<std::uint32_t, 3> Bits(const Point& point)
{
    static_assert(sizeof(Point) == 12);
    return std::bit_cast<std::array<std::uint32_t, 3>>(point);
}

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

template <class Object>
bool Loads(Object& object, const std::string& bytes)
try
{
    return object.LoadBytes(std::as_bytes(std::span(bytes)));
}
catch (const std::exception&)
{
    return false;
}

/// How many points, lines or triangles have all their corners among the vertices.
std::size_t WholeShapes(const ZLMIM::Geometry& geometry)
{
    const auto type = static_cast<int>(geometry.PrimitiveType);
    if (type < 1 || type > 6)
        return 0;
    constexpr std::array<std::size_t, 7> kCorners = {0, 1, 2, 2, 3, 3, 3};
    constexpr std::array<std::size_t, 7> kSteps = {0, 1, 2, 1, 3, 1, 1};
    const std::size_t corners = kCorners.at(static_cast<std::size_t>(type));
    const std::size_t step = kSteps.at(static_cast<std::size_t>(type));
    const auto indices = geometry.Indices();
    const auto isVertex = [&](std::size_t i)
    { return static_cast<std::uint16_t>(indices[i]) < geometry.Vertices().size(); };
    std::size_t count = 0;
    for (std::size_t first = 0; first + corners <= indices.size(); first += step)
    {
        bool isWhole = geometry.PrimitiveType != PrimFlag::TRI_FAN || isVertex(0);
        for (std::size_t i = first; i < first + corners; ++i)
            isWhole = isWhole && (isVertex(i) || (geometry.PrimitiveType == PrimFlag::TRI_FAN && i == first));
        count += isWhole ? 1 : 0;
    }
    return count;
}

/// The chunks that an export must show, by their numbers from 1.
std::map<int, Shown> Expected(const ZLMIM::Mesh& mesh)
{
    std::map<int, Shown> chunks;
    int number = 0;
    for (const auto& chunk : *mesh.Chunks)
    {
        ++number;
        Shown shown = {{}, WholeShapes(*chunk->Geometry)};
        bool isFinite = true;
        for (const auto& [x, y, z, u, v] : chunk->Geometry->Vertices())
        {
            shown.Positions.push_back(Bits(Vector{x, y, z}));
            isFinite = isFinite && std::isfinite(x) && std::isfinite(y) && std::isfinite(z) &&
                       std::isfinite(u) && std::isfinite(v);
        }
        if (isFinite && shown.Shapes > 0)
            chunks.emplace(number, std::move(shown));
    }
    return chunks;
}

std::size_t ShapeCount(int mode, std::size_t indices)
{
    switch (mode)
    {
    case TINYGLTF_MODE_POINTS:
        return indices;
    case TINYGLTF_MODE_LINE:
        return indices / 2;
    case TINYGLTF_MODE_LINE_STRIP:
        return indices - 1;
    case TINYGLTF_MODE_TRIANGLES:
        return indices / 3;
    default:
        return indices - 2;
    }
}

struct Read
{
    std::map<int, Shown> Chunks;
    /// The chunks' numbers in the order of the file.
    std::vector<int> Order;
};

Read ByTinyGltf(const std::string& file)
{
    tinygltf::TinyGLTF loader;
    tinygltf::Model model;
    std::string error;
    std::string warning;
    if (!loader.LoadBinaryFromFile(&model, &error, &warning, file) || !error.empty() || !warning.empty())
        throw std::runtime_error("tinygltf: " + error + warning);
    Read read;
    for (const auto& mesh : model.meshes)
    {
        for (const auto& primitive : mesh.primitives)
        {
            const auto accessor = [&](int index) -> const tinygltf::Accessor&
            { return model.accessors.at(static_cast<std::size_t>(index)); };
            const auto& positions = accessor(primitive.attributes.at("POSITION"));
            const auto& view = model.bufferViews.at(static_cast<std::size_t>(positions.bufferView));
            const auto& data = model.buffers.at(static_cast<std::size_t>(view.buffer)).data;
            const auto stride = static_cast<std::size_t>(positions.ByteStride(view));
            Shown shown = {{}, ShapeCount(primitive.mode, accessor(primitive.indices).count)};
            for (std::size_t i = 0; i < positions.count; ++i)
            {
                Vector point;
                std::memcpy(&point, &data.at(view.byteOffset + positions.byteOffset + i * stride),
                            sizeof(point));
                shown.Positions.push_back(Bits(point));
            }
            read.Order.push_back(primitive.extras.Get("chunk").GetNumberAsInt());
            read.Chunks.emplace(read.Order.back(), std::move(shown));
        }
    }
    return read;
}

std::map<int, Shown> ByAssimp(const std::string& file, const std::vector<int>& order)
{
    Assimp::Importer importer;
    const aiScene* const scene = importer.ReadFile(file, 0);
    if (scene == nullptr)
        throw std::runtime_error(std::string("Assimp: ") + importer.GetErrorString());
    if (scene->mNumMeshes != order.size())
        throw std::runtime_error("Assimp reads " + std::to_string(scene->mNumMeshes) + " meshes");
    std::map<int, Shown> chunks;
    for (std::size_t i = 0; i < order.size(); ++i)
    {
        const aiMesh& mesh = *scene->mMeshes[i];
        Shown shown = {{}, mesh.mNumFaces};
        for (const aiVector3D& point : std::span(mesh.mVertices, mesh.mNumVertices))
            shown.Positions.push_back(Bits(point));
        chunks.emplace(order[i], std::move(shown));
    }
    return chunks;
}

void Compare(const std::string& meshFile, const std::string& exported)
{
    ZLMIM::Mesh mesh;
    if (!Loads(mesh, ReadFile(meshFile)))
        throw std::runtime_error("it doesn't load");
    const auto expected = Expected(mesh);
    if (expected.empty() && !std::filesystem::exists(exported))
        return;
    const Read read = ByTinyGltf(exported);
    if (read.Chunks != expected)
        throw std::runtime_error("tinygltf reads other chunks, positions or triangles");
    if (!expected.empty() && ByAssimp(exported, read.Order) != expected)
        throw std::runtime_error("Assimp reads other positions or triangles");
}

/// Writes assets of a mesh that loads though it is damaged, and of an animation that is damaged too.
void WriteDamaged(const std::filesystem::path& folder, std::size_t count)
{
    const std::array meshes = {Sample::WagonMesh().Str(), Sample::BogeyMesh().Str(),
                               Sample::LoadMesh(6).Str(), Sample::PantographMesh().Str()};
    const std::array anims = {Sample::WagonAnimation().Str(), Sample::BogeyAnimation().Str()};
    std::uint32_t seed = 0;
    for (std::size_t written = 0; written < count; ++seed)
    {
        // Several times, so that much of a file that still loads is damaged.
        std::string mesh = meshes.at(written % meshes.size());
        for (std::uint32_t i = 0; i < 3; ++i)
            mesh = ZLMIM::Testing::Damaged(std::move(mesh), 4 * seed + i);
        const std::string anim = ZLMIM::Testing::Damaged(anims.at(written % anims.size()), 4 * seed + 3);
        ZLMIM::Mesh loaded;
        ZLMIM::Anim loadedAnim;
        if (!Loads(loaded, mesh) || !Loads(loadedAnim, anim))
            continue;
        const std::filesystem::path asset = folder / std::to_string(1000 + ++written);
        std::filesystem::create_directories(asset);
        std::ofstream(asset / "config.txt") << "mesh-table {\nm {\nmesh m.im\nanim m.kin\n}\n}\n";
        std::ofstream(asset / "m.im", std::ios::binary) << mesh;
        std::ofstream(asset / "m.kin", std::ios::binary) << anim;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 3 && arguments[0] == "damage")
    {
        WriteDamaged(arguments[1], std::stoul(arguments[2]));
        return 0;
    }
    if (arguments.size() < 3 || arguments[0] != "compare" || arguments.size() % 2 == 0)
    {
        std::cerr << "export_judge damage FOLDER COUNT\nexport_judge compare MESH.im EXPORT.glb...\n";
        return 2;
    }
    int status = 0;
    for (std::size_t i = 1; i < arguments.size(); i += 2)
    {
        try
        {
            Compare(arguments[i], arguments[i + 1]);
        }
        catch (const std::exception& error)
        {
            std::cerr << arguments[i] << ": " << error.what() << '\n';
            status = 1;
        }
    }
    return status;
}

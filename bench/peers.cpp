#include "bench/cases.h"
#include "bench/floor.h"
#include "bench/made_mesh.h"

#include "tools/common/asset.h"
#include "tools/export/exporter.h"
#include "tools/export/gltf_writer.h"
#include "zlmim/mesh/mesh.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#ifdef ZLMIM_HAS_ASSIMP
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#endif
#ifdef ZLMIM_HAS_TINYGLTF
#include <tiny_gltf.h>
#endif
#ifdef ZLMIM_HAS_MESHOPTIMIZER
#include <meshoptimizer.h>
#endif

namespace Bench
{
namespace
{

constexpr std::int32_t kChunks = 48;

/// A file, and where its arrays are.
struct Source
{
    std::string path;
    std::vector<FileRun> runs;
};

double Bytes(const Source& source)
{
    double bytes = 0;
    for (const FileRun& run : source.runs)
        bytes += static_cast<double>(run.bytes);
    return bytes;
}

Side Floor(const Source& source)
{
    return [source]
    {
        std::vector<Array> arrays;
        return Timed([&] { CopyRuns(ReadRawFile(source.path), source.runs, arrays); });
    };
}

std::shared_ptr<ZLMIM::Mesh> Loaded(const std::u16string& name)
{
    auto mesh = std::make_shared<ZLMIM::Mesh>();
    if (!mesh->Load(name))
        throw std::runtime_error("a made-up mesh doesn't load");
    return mesh;
}

/// Exports the mesh, with its coordinates as they are. The arrays are at the end of the file.
Source ExportGlb(const std::u16string& name, const std::string& path)
{
    ZLMIM::PathResolver names;
    ZLMIM::Export::Repairs repairs;
    const auto document =
        ZLMIM::Export::ToGltf(*Loaded(name), {.Up = ZLMIM::Export::UpAxis::Y}, names, repairs);
    Save(document, path);
    Source source = {path, {}};
    std::size_t offset = 0;
    for (const auto& view : document.Views)
    {
        source.runs.push_back({offset, view.Bytes.size()});
        offset += (view.Bytes.size() + 3) / 4 * 4;
    }
    const std::size_t start = std::filesystem::file_size(path) - offset;
    for (FileRun& run : source.runs)
        run.offset += start;
    return source;
}

#ifdef ZLMIM_HAS_ASSIMP
Side ByAssimp(const std::string& path)
{
    return [path]
    {
        Assimp::Importer importer;
        const double seconds = Timed([&] { importer.ReadFile(path, 0); });
        if (!importer.GetScene() || importer.GetScene()->mNumMeshes != unsigned{kChunks})
            throw std::runtime_error("Assimp doesn't read " + path);
        return seconds;
    };
}

/// Writes what Assimp reads from the file in its own binary format, and reads that.
Side ByAssimpsFormat(const std::string& path)
{
    Assimp::Importer importer;
    Assimp::Exporter exporter;
    const aiScene* const scene = importer.ReadFile(path, 0);
    if (!scene || exporter.Export(scene, "assbin", path + ".assbin") != aiReturn_SUCCESS)
        throw std::runtime_error("Assimp doesn't convert " + path);
    return ByAssimp(path + ".assbin");
}
#else
Side ByAssimp(const std::string&) { return nullptr; }
Side ByAssimpsFormat(const std::string&) { return nullptr; }
#endif

#ifdef ZLMIM_HAS_TINYGLTF
Side ByTinyGltf(const std::string& path)
{
    return [path]
    {
        tinygltf::TinyGLTF loader;
        tinygltf::Model model;
        std::string error;
        std::string warning;
        const double seconds = Timed([&] { loader.LoadBinaryFromFile(&model, &error, &warning, path); });
        if (!error.empty() || model.meshes.empty() ||
            model.meshes[0].primitives.size() != std::size_t{kChunks})
            throw std::runtime_error("tinygltf doesn't read " + path + ": " + error);
        return seconds;
    };
}
#else
Side ByTinyGltf(const std::string&) { return nullptr; }
#endif

#ifdef ZLMIM_HAS_MESHOPTIMIZER
/// An array of a compressed file.
struct Packed
{
    std::size_t offset = 0;
    std::size_t bytes = 0;
    std::size_t count = 0;
    /// Bytes of an element.
    std::size_t size = 0;
    bool isIndices = false;
};

/// Appends an array that `encode` writes into a buffer of at most `bound` bytes.
template <class Encode>
void Pack(std::string& file, std::vector<Packed>& arrays, Packed packed, std::size_t bound,
          const Encode& encode)
{
    packed.offset = file.size();
    file.resize(packed.offset + bound);
    packed.bytes = encode(reinterpret_cast<unsigned char*>(file.data()) + packed.offset, bound);
    if (packed.bytes == 0)
        throw std::runtime_error("meshoptimizer doesn't encode an array");
    file.resize(packed.offset + packed.bytes);
    arrays.push_back(packed);
}

/// Writes the arrays of the mesh compressed.
Side ByMeshoptimizer(const TempFolder& folder, const std::u16string& name)
{
    std::string file;
    std::vector<Packed> arrays;
    const auto packRecords = [&](const auto& records)
    {
        constexpr std::size_t kSize = sizeof(records[0]);
        Pack(file, arrays, {.count = records.size(), .size = kSize},
             meshopt_encodeVertexBufferBound(records.size(), kSize),
             [&](unsigned char* buffer, std::size_t bound)
             { return meshopt_encodeVertexBuffer(buffer, bound, records.data(), records.size(), kSize); });
    };
    const auto mesh = Loaded(name);
    for (const auto& chunk : *mesh->Chunks)
    {
        const ZLMIM::Geometry& geometry = *chunk->Geometry;
        packRecords(geometry.Vertices());
        packRecords(geometry.VertexNormals());
        const std::vector<unsigned> indices(geometry.Indices().begin(), geometry.Indices().end());
        Pack(file, arrays, {.count = indices.size(), .size = sizeof(std::uint16_t), .isIndices = true},
             meshopt_encodeIndexBufferBound(indices.size(), geometry.Vertices().size()),
             [&](unsigned char* buffer, std::size_t bound)
             { return meshopt_encodeIndexBuffer(buffer, bound, indices.data(), indices.size()); });
    }
    folder.Write("packed.bin", file);
    return [path = (folder.Path() / "packed.bin").string(), arrays]
    {
        std::vector<Array> made;
        return Timed(
            [&]
            {
                const RawFile packed = ReadRawFile(path);
                for (const Packed& array : arrays)
                {
                    unsigned char* const to = made.emplace_back(NewArray(array.count * array.size)).get();
                    const unsigned char* const from = packed.bytes.get() + array.offset;
                    const int status =
                        array.isIndices
                            ? meshopt_decodeIndexBuffer(to, array.count, array.size, from, array.bytes)
                            : meshopt_decodeVertexBuffer(to, array.count, array.size, from, array.bytes);
                    if (status != 0)
                        throw std::runtime_error("meshoptimizer doesn't decode an array");
                }
            });
    };
}
#else
Side ByMeshoptimizer(const TempFolder&, const std::u16string&) { return nullptr; }
#endif

} // namespace

Measures Peers(const TempFolder& folder)
{
    constexpr std::int32_t kFileSize = 64 * 1'048'576;
    const MadeMesh made = MakeMesh({.chunks = kChunks, .vertices = kFileSize / kChunks / kBytesPerVertex});
    folder.Write("mesh.im", made.file);
    const std::u16string name = folder.Name(u"mesh.im");
    const Source mesh = {folder.Path() / "mesh.im", made.runs};
    const Source glb = ExportGlb(name, folder.Path() / "mesh.glb");
    const auto load = [name]
    {
        std::shared_ptr<ZLMIM::Mesh> kept;
        return Timed([&] { kept = Loaded(name); });
    };
    return {
        {},
        {},
        {{"ZLMIM", "the .im: objects with arrays, also of face normals", Bytes(mesh), load, Floor(mesh)},
         {"tinygltf", "the .glb: JSON to objects, all arrays in one buffer", Bytes(glb), ByTinyGltf(glb.path),
          Floor(glb)},
         {"Assimp", "the .glb: a scene, an object for each face", Bytes(glb), ByAssimp(glb.path), Floor(glb)},
         {"Assimp", "the same scene in its own format, .assbin", Bytes(glb), ByAssimpsFormat(glb.path),
          Floor(glb)},
         {"meshoptimizer", "the same arrays compressed: only decodes them", Bytes(glb),
          ByMeshoptimizer(folder, name), Floor(glb)}}};
}

} // namespace Bench

#include "bench/cases.h"
#include "bench/floor.h"
#include "bench/made_mesh.h"

#include "tools/common/terminal.h"
#include "tools/export/exporter.h"
#include "tools/export/gltf_writer.h"

#include <fstream>
#include <memory>
#include <stdexcept>

namespace Bench
{

/// The floor reads the mesh's file and writes as many bytes. The export may use 4 times their memory.
Measures LargeExport(const TempFolder& folder)
{
    constexpr std::int32_t kChunks = 48;
    constexpr std::int32_t kFileSize = 64 * 1'048'576;
    constexpr std::size_t kMostMemory = std::size_t{4} * kFileSize;
    folder.Write("export.im",
                 MakeMesh({.chunks = kChunks, .vertices = kFileSize / kChunks / kBytesPerVertex}).file);

    const auto library = [name = folder.Name(u"export.im"), output = folder.Path() / "export.glb"]
    {
        const double seconds = Timed(
            [&]
            {
                const auto names = std::make_shared<ZLMIM::PathResolver>();
                ZLMIM::Export::Repairs repairs;
                ZLMIM::Export::Document document;
                {
                    const auto asset = ZLMIM::Tools::LoadAsset({ZLMIM::Tools::Kind::Mesh, name}, names);
                    document = ZLMIM::Export::ToGltf(asset, {}, *names, repairs);
                }
                Save(document, output);
                if (document.Meshes.at(0).Primitives.size() != kChunks)
                    throw std::runtime_error("a made-up mesh isn't exported as it is");
            });
        if (ZLMIM::Tools::PeakMemory() > kMostMemory)
            throw std::runtime_error("the export takes " +
                                     std::to_string(ZLMIM::Tools::PeakMemory() / 1'048'576) + " MiB");
        return seconds;
    };
    const auto floor = [path = folder.Path() / "export.im", output = folder.Path() / "floor.bin"]
    {
        return Timed(
            [&]
            {
                const RawFile file = ReadRawFile(path);
                std::ofstream copy(output, std::ios::binary);
                copy.write(reinterpret_cast<const char*>(file.bytes.get()),
                           static_cast<std::streamsize>(file.size));
                copy.close();
            });
    };
    return {{{"the export of a mesh of 64 MiB", library, floor, 3}}};
}

} // namespace Bench

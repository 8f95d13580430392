#include "bench/cases.h"
#include "bench/made_mesh.h"
#include "zlmim/mesh/mesh.h"

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace Bench
{
namespace
{

/// Runs `bench/python_mesh.py`, which prints its seconds.
double SecondsInPython(const std::string& path)
{
    const std::string command = ZLMIM_PYTHON " '" + path + "'";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(::popen(command.c_str(), "r"), ::pclose);
    double seconds = 0;
    if (!output || std::fscanf(output.get(), "%lf", &seconds) != 1)
        throw std::runtime_error("the program in Python doesn't run");
    return seconds;
}

} // namespace

Measures PythonMesh(const TempFolder& folder)
{
    constexpr std::int32_t kChunks = 48;
    constexpr std::int32_t kFileSize = 64 * 1'048'576;
    folder.Write("large.im",
                 MakeMesh({.chunks = kChunks, .vertices = kFileSize / kChunks / kBytesPerVertex}).file);

    const auto library = [path = (folder.Path() / "large.im").string()] { return SecondsInPython(path); };
    const auto floor = [name = folder.Name(u"large.im")]
    {
        ZLMIM::Mesh mesh;
        return Timed(
            [&]
            {
                if (!mesh.Load(name))
                    throw std::runtime_error("a made-up mesh doesn't load");
            });
    };
    return {{{"the mesh of 64 MiB in Python, with all arrays", library, floor, 1.1}}};
}

} // namespace Bench

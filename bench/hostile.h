#ifndef ZLMIM_BENCH_HOSTILE_H
#define ZLMIM_BENCH_HOSTILE_H

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace Bench
{

/// A file, or a tree of files, that is made to cost much.
struct Hostile
{
    enum class Kind
    {
        Mesh,
        Animation,
        Asset,
    };

    std::string name;
    Kind kind = Kind::Mesh;
    /// How the load ends: "true", "false", "done", or the name of what is raised.
    std::string outcome;
    /// Writes what is loaded into an empty folder, and answers the path of the file to load, from there. The
    /// working folder will be the one that the file lies in.
    std::function<std::string(const std::filesystem::path&)> write;
};

[[nodiscard]] std::vector<Hostile> HostileFiles();
[[nodiscard]] std::vector<Hostile> HostileAssets();

} // namespace Bench

#endif

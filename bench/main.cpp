#include "bench/cases.h"
#include "bench/report.h"
#include "tests/temp_folder.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <functional>
#include <iostream>
#include <malloc.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

using Bench::Case;
using Bench::Measures;

/// What shares generated files, which are written by `make`.
struct Group
{
    std::string name;
    std::function<Measures(const Bench::TempFolder&)> make;
};

std::vector<Group> AllGroups()
{
    return {{"mesh", Bench::LargeMesh},
            {"animation", Bench::LargeAnimation},
            {"export", Bench::LargeExport},
            {"small", Bench::SmallMeshes},
            {"references", Bench::References},
            {"table", Bench::MeshTable},
            {"installation", Bench::Installation},
            {"bones", Bench::BoneNames},
#ifdef ZLMIM_PYTHON
            {"python", Bench::PythonMesh},
#endif
            {"component", Bench::ComponentCalls},
            {"peers", Bench::Peers}};
}

void RunGroup(const Group& group, Bench::Report& report)
{
    const Bench::TempFolder folder;
    const Measures measures = group.make(folder);
    // Memory that is left from writing the files must not help the runs, and the disk must not disturb them.
    ::malloc_trim(0);
    ::sync();
    report.Run(measures);
}

void RunOnce(const Group& group)
{
    const Bench::TempFolder folder;
    for (const Case& benchCase : group.make(folder).cases)
        benchCase.library();
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Measures the library beside the least that any program must do for the same.");
    std::vector<Group> groups = AllGroups();
    std::vector<std::string> chosen;
    chosen.reserve(groups.size());
    int pairs = 15;
    bool isOnce = false;
    for (const Group& group : groups)
        chosen.push_back(group.name);
    app.add_option("GROUP", chosen, "Groups of cases to run")->check(CLI::IsMember(chosen));
    app.add_option("--pairs", pairs, "Pairs of runs that count")->check(CLI::PositiveNumber);
    app.add_flag("--once", isOnce, "Only the library's side, once, in this process: for a profiler");
    CLI11_PARSE(app, argc, argv);
    std::erase_if(groups, [&](const Group& group)
                  { return std::find(chosen.begin(), chosen.end(), group.name) == chosen.end(); });
    // As in a fresh process: otherwise the threshold would rise with the memory that was freed after writing
    // the files.
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    try
    {
        if (isOnce)
        {
            std::for_each(groups.begin(), groups.end(), RunOnce);
            return 0;
        }
        Bench::Report report(pairs);
        for (const Group& group : groups)
            RunGroup(group, report);
        report.Finish();
        return report.IsGood() ? 0 : 1;
    }
    catch (const std::exception& error)
    {
        std::cerr << "bench: " << error.what() << '\n';
        return 2;
    }
}

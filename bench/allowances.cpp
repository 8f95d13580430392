#include "bench/hostile.h"
#include "tests/outcome.h"
#include "tests/temp_folder.h"
#include "zlmim/anim/anim.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <iomanip>
#include <iostream>
#include <malloc.h>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// Loads files that are made to be expensive, each in its own process, and prints their cost and the allowed
// cost. Then loads honest assets, and checks that nothing is missing.

namespace
{

using Bench::Hostile;
using ZLMIM::Testing::OutcomeOf;
using ZLMIM::Testing::TempFolder;

struct Cost
{
    double seconds = 0;
    std::int64_t memory = 0;
    std::array<char, 32> outcome{};
};

std::int64_t PeakMemory()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024;
}

/// Processor time, since other processes on a shared machine don't affect it.
double ProcessorSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// "whole" if every entry has its mesh and animation, and every bogey was found.
std::string Completeness(const ZLMIM::ZLMModel& model, bool hasAnims)
{
    for (const auto& entry : *model.MeshTable())
    {
        if (!entry->Mesh->Attachments || (hasAnims && !entry->anim->RootBone))
            return "entry missing";
    }
    for (const auto& bogey : *model.Bogies)
    {
        if (bogey->kuid().empty() || Completeness(*bogey, false) != "whole")
            return "bogey missing";
    }
    return "whole";
}

std::string Load(const Hostile& hostile, const std::u16string& name)
{
    switch (hostile.kind)
    {
    case Hostile::Kind::Mesh:
    {
        ZLMIM::Mesh mesh;
        return OutcomeOf([&] { return mesh.Load(name); });
    }
    case Hostile::Kind::Animation:
    {
        ZLMIM::Anim anim;
        return OutcomeOf([&] { return anim.Load(name); });
    }
    default:
        try
        {
            const auto model = std::make_shared<ZLMIM::ZLMModel>(hostile.files());
            if (hostile.kind == Hostile::Kind::Asset)
                model->Limits = ZLMIM::kUntrustedLimits;
            const std::string outcome = OutcomeOf(
                [&]
                {
                    model->Load(name);
                    return 0;
                });
            const bool isWhole = hostile.kind == Hostile::Kind::HonestAsset && outcome == "done";
            return isWhole ? Completeness(*model, std::filesystem::exists("anim.kin")) : outcome;
        }
        catch (const ZLMIM::FileSystemError&)
        {
            return "FileSystemError";
        }
    }
}

Cost Measure(const Hostile& hostile, const TempFolder& folder, const std::string& file)
{
    const std::filesystem::path path = folder.Path() / file;
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = ::fork();
    if (child == 0)
    {
        std::filesystem::current_path(path.parent_path());
        const std::u16string name = folder.Name(ZLMIM::FromNativePath(file));
        const std::int64_t before = PeakMemory();
        const double secondsBefore = ProcessorSeconds();
        Cost cost;
        std::string outcome;
        outcome = Load(hostile, name);
        cost.seconds = ProcessorSeconds() - secondsBefore;
        cost.memory = PeakMemory() - before;
        outcome.copy(cost.outcome.data(), cost.outcome.size() - 1);
        std::_Exit(::write(ends[1], &cost, sizeof(cost)) == sizeof(cost) ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    ::close(ends[1]);
    Cost cost;
    const bool isRead = ::read(ends[0], &cost, sizeof(cost)) == sizeof(cost);
    ::close(ends[0]);
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0 || !isRead)
        throw std::runtime_error(hostile.name + ": the load didn't come back");
    return cost;
}

std::int64_t SizeOfFiles(const TempFolder& folder)
{
    std::int64_t size = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path()))
        size += entry.is_regular_file() ? static_cast<std::int64_t>(entry.file_size()) : 0;
    return size;
}

bool RunAndPrint(const Hostile& hostile)
{
    constexpr std::int64_t kMiB = 1'048'576;
    const TempFolder folder;
    const std::string file = hostile.write(folder.Path());
    ::malloc_trim(0);
    const std::int64_t size = SizeOfFiles(folder);
    const Cost cost = Measure(hostile, folder, file);
    // An asset may use up its limit, plus the stack and the heap's overhead.
    constexpr std::int64_t kAssetMemory = ZLMIM::kUntrustedLimits.Memory + 16 * kMiB;
    const bool isFile = hostile.kind == Hostile::Kind::Mesh || hostile.kind == Hostile::Kind::Animation;
    const bool isHonest = hostile.kind == Hostile::Kind::HonestAsset;
    // A file's half second is for the page faults of 64 MiB of frame tables on a slow virtual machine.
    const double allowedSeconds = isFile ? 0.5 + static_cast<double>(size) * 1e-6 : isHonest ? 30 : 10;
    const std::int64_t allowedMemory = isFile     ? 128 * kMiB + 256 * size
                                       : isHonest ? 2'048 * kMiB
                                                  : kAssetMemory;
    const bool holds = cost.seconds <= allowedSeconds && cost.memory <= allowedMemory &&
                       cost.outcome.data() == hostile.outcome;
    std::cout << std::left << std::setw(50) << hostile.name << std::right << std::setw(11) << size << "  "
              << std::fixed << std::setprecision(3) << std::setw(7) << cost.seconds << " of " << std::setw(7)
              << allowedSeconds << " s  " << std::setw(5) << cost.memory / kMiB << " of " << std::setw(5)
              << allowedMemory / kMiB << " MiB  " << cost.outcome.data() << (holds ? "" : "  MISSED")
              << std::endl;
    return holds;
}

} // namespace

int main()
try
{
    bool allHold = true;
    for (const auto& list : {Bench::HostileFiles(), Bench::HostileAssets(), Bench::HonestAssets()})
    {
        for (const Hostile& hostile : list)
            allHold = RunAndPrint(hostile) && allHold;
    }
    return allHold ? EXIT_SUCCESS : EXIT_FAILURE;
}
catch (const std::exception& error)
{
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
}

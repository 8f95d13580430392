#include "judge_file.h"

#include "mesh_geometry.h"
#include "mesh_material.h"
#include "skeleton.h"

#include "examples/text.h"
#include "zlmim/reader/load_budget.h"

#include <cstdint>

namespace ZLMIM::Validate
{
namespace
{

using Examples::Outcome;

/// Why a load answered false, or what it raised.
std::string Reason(const Mesh& mesh, const Outcome& outcome)
{
    if (!outcome.Raised.empty())
        return Examples::Told(outcome);
    if (mesh.Chunks) // so it's one of these that is missing
        return Examples::Printable(mesh.ErrorMessage) + ", behind " + Examples::Number(mesh.Chunks->Count()) +
               " of " + Examples::Counted(mesh.ChunkCount, "chunk", "chunks");
    if (!mesh.ErrorMessage.empty())
        return Examples::Printable(mesh.ErrorMessage);
    return "it is empty, or can't be read";
}

std::string Reason(const Anim& anim, const Outcome& outcome)
{
    if (!outcome.Raised.empty())
        return Examples::Told(outcome);
    if (!anim.ErrorMessage.empty())
        return Examples::Printable(anim.ErrorMessage);
    if (anim.FileSize == 0)
        return "it can't be read";
    if (!anim.RootBone)
        return "it has no EVNT block, or no SKEL block behind it";
    return "it has fewer FRAM blocks than " +
           Examples::Counted(anim.FrameCount, "frame, as it says", "frames, as it says");
}

Report ReportOn(const Mesh& mesh, const Outcome& outcome, const LocatedFile& file, PathResolver& names)
{
    Report report;
    if (!outcome.IsLoaded)
    {
        report.Add(Code::NotLoaded, "", Reason(mesh, outcome));
        return report;
    }
    for (std::int32_t number = 1; const auto& chunk : mesh.Chunks->Entries())
        JudgeGeometry(*chunk->Geometry, ChunkPlace(number++), report);
    JudgeMaterials(mesh, file.Folder(), names, report);
    JudgeSkeleton(mesh, report);
    return report;
}

Report ReportOn(const Anim& anim, const Outcome& outcome)
{
    Report report;
    if (outcome.IsLoaded)
        JudgeFrames(anim, report);
    else
        report.Add(Code::NotLoaded, "", Reason(anim, outcome));
    return report;
}

} // namespace

void JudgeMesh(const Mesh& mesh, const Outcome& outcome, const LocatedFile& file, PathResolver& names,
               JudgedFiles& judged)
{
    if (judged.Claim(file))
        judged.Store(file.Key, ReportOn(mesh, outcome, file, names));
}

void JudgeAnim(const Anim& anim, const Outcome& outcome, const LocatedFile& file, JudgedFiles& judged)
{
    if (judged.Claim(file))
        judged.Store(file.Key, ReportOn(anim, outcome));
}

void JudgeMeshFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   JudgedFiles& judged)
{
    if (!judged.Claim(file))
        return;
    Mesh mesh;
    LoadBudget budget;
    const Outcome outcome = Examples::Attempt([&] { return mesh.Load(name, names, budget); });
    judged.Store(file.Key, ReportOn(mesh, outcome, file, names));
}

void JudgeAnimFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   JudgedFiles& judged)
{
    if (!judged.Claim(file))
        return;
    Anim anim;
    LoadBudget budget;
    const Outcome outcome = Examples::Attempt([&] { return anim.Load(name, names, budget); });
    judged.Store(file.Key, ReportOn(anim, outcome));
}

bool IsLoaded(const Mesh& mesh) { return mesh.Attachments != nullptr; }

Outcome OutcomeOf(const Anim& anim, PathResolver& names)
{
    if (!anim.RootBone || UnfilledSlots(anim).Count() == 0)
        return {anim.RootBone != nullptr, {}, {}};
    // Fewer frames than there should be leave several slots unfilled, but so do frames of one number: another
    // load tells.
    Anim again;
    LoadBudget budget;
    return Examples::Attempt([&] { return again.Load(anim.FileName, names, budget); });
}

} // namespace ZLMIM::Validate

#include "check_file.h"

#include "file_blocks.h"
#include "mesh_geometry.h"
#include "mesh_material.h"
#include "skeleton.h"

#include "zlmim/reader/load_budget.h"

#include <cstdint>
#include <string>

namespace ZLMIM::Validate
{
namespace
{

using Tools::Outcome;

Report ReportOn(const Mesh& mesh, const Outcome& outcome, const LocatedFile& file, PathResolver& names)
{
    Report report;
    if (!outcome.IsLoaded)
    {
        report.Add(Code::NotLoaded, {}, Tools::Failure(mesh, outcome, names));
        return report;
    }
    for (std::int32_t number = 1; const auto& chunk : mesh.Chunks->Entries())
        CheckGeometry(*chunk->Geometry, number++, report);
    CheckMaterials(mesh, file.Folder(), names, report);
    CheckSkeleton(mesh, report);
    if (mesh.ChunkCount < 0)
        report.Add(Code::NegativeCount, {}, "a count of " + std::to_string(mesh.ChunkCount) + " chunks");
    else if (mesh.ChunkCount == 0)
        report.Add(Code::MeshEmpty, {}, "it has no chunks");
    CheckLength(mesh, file.Name, report);
    return report;
}

Report ReportOn(const Anim& anim, const Outcome& outcome, const LocatedFile& file, PathResolver& names)
{
    Report report;
    if (outcome.IsLoaded)
    {
        CheckFrames(anim, report);
        CheckLength(anim, file.Name, report);
    }
    else
        report.Add(Code::NotLoaded, {}, Tools::Failure(anim, outcome, names));
    return report;
}

} // namespace

void CheckMesh(const Mesh& mesh, const Outcome& outcome, const LocatedFile& file, PathResolver& names,
               CheckedFiles& checked)
{
    if (checked.Claim(file))
        checked.Store(file.Key, ReportOn(mesh, outcome, file, names));
}

void CheckAnim(const Anim& anim, const Outcome& outcome, const LocatedFile& file, PathResolver& names,
               CheckedFiles& checked)
{
    if (checked.Claim(file))
        checked.Store(file.Key, ReportOn(anim, outcome, file, names));
}

void CheckMeshFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   CheckedFiles& checked)
{
    if (!checked.Claim(file))
        return;
    Mesh mesh;
    LoadBudget budget;
    const Outcome outcome = Tools::Attempt([&] { return mesh.Load(name, names, budget); });
    checked.Store(file.Key, ReportOn(mesh, outcome, file, names));
}

void CheckAnimFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   CheckedFiles& checked)
{
    if (!checked.Claim(file))
        return;
    Anim anim;
    LoadBudget budget;
    const Outcome outcome = Tools::Attempt([&] { return anim.Load(name, names, budget); });
    checked.Store(file.Key, ReportOn(anim, outcome, file, names));
}

Outcome OutcomeOf(const Anim& anim, PathResolver& names)
{
    if (!anim.RootBone || UnfilledSlots(anim).Count() == 0)
        return {anim.RootBone != nullptr, {}, {}, {}};
    // Missing frames leave several slots unfilled, but so do frames with the same number. Only another load
    // can distinguish them.
    Anim again;
    LoadBudget budget;
    return Tools::Attempt([&] { return again.Load(anim.FileName, names, budget); });
}

} // namespace ZLMIM::Validate

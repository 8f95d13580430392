#include "check_file.h"

#include "file_blocks.h"
#include "mesh_geometry.h"
#include "mesh_material.h"
#include "skeleton.h"

#include <cstdint>
#include <string>

namespace ZLMIM::Validate
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

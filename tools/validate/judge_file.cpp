#include "judge_file.h"

#include "mesh_geometry.h"
#include "mesh_material.h"
#include "skeleton.h"

#include <cstdint>

namespace ZLMIM::Validate
{
namespace
{

using Tools::Outcome;

Report ReportOn(const Mesh& mesh, const Outcome& outcome, const LocatedFile& file, FileNames& names)
{
    Report report;
    if (!outcome.IsLoaded)
    {
        report.Add(Code::NotLoaded, "", Tools::Failure(mesh, outcome, names));
        return report;
    }
    for (std::int32_t number = 1; const auto& chunk : mesh.Chunks->Entries())
        JudgeGeometry(*chunk->Geometry, ChunkPlace(number++), report);
    JudgeMaterials(mesh, file.Folder(), names, report);
    JudgeSkeleton(mesh, report);
    return report;
}

Report ReportOn(const Anim& anim, const Outcome& outcome, FileNames& names)
{
    Report report;
    if (outcome.IsLoaded)
        JudgeFrames(anim, report);
    else
        report.Add(Code::NotLoaded, "", Tools::Failure(anim, outcome, names));
    return report;
}

} // namespace

void JudgeMesh(const Mesh& mesh, const Outcome& outcome, const LocatedFile& file, FileNames& names,
               JudgedFiles& judged)
{
    if (judged.Claim(file))
        judged.Store(file.Key, ReportOn(mesh, outcome, file, names));
}

void JudgeAnim(const Anim& anim, const Outcome& outcome, const LocatedFile& file, FileNames& names,
               JudgedFiles& judged)
{
    if (judged.Claim(file))
        judged.Store(file.Key, ReportOn(anim, outcome, names));
}

void JudgeMeshFile(const std::u16string& name, const LocatedFile& file, FileNames& names, JudgedFiles& judged)
{
    if (!judged.Claim(file))
        return;
    Mesh mesh;
    const Outcome outcome = Tools::Attempt([&] { return mesh.Load(name, names); });
    judged.Store(file.Key, ReportOn(mesh, outcome, file, names));
}

void JudgeAnimFile(const std::u16string& name, const LocatedFile& file, FileNames& names, JudgedFiles& judged)
{
    if (!judged.Claim(file))
        return;
    Anim anim;
    const Outcome outcome = Tools::Attempt([&] { return anim.Load(name, names); });
    judged.Store(file.Key, ReportOn(anim, outcome, names));
}

Outcome OutcomeOf(const Anim& anim, FileNames& names)
{
    if (!anim.RootBone || UnfilledSlots(anim).Count() == 0)
        return {anim.RootBone != nullptr, {}, {}};
    // Fewer frames than there should be leave several slots unfilled, but so do frames of one number: another
    // load tells.
    Anim again;
    return Tools::Attempt([&] { return again.Load(anim.FileName, names); });
}

} // namespace ZLMIM::Validate

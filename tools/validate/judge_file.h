#ifndef VALIDATE_JUDGE_FILE_H
#define VALIDATE_JUDGE_FILE_H

#include "judged_files.h"
#include "located_file.h"

#include "tools/common/asset.h"
#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/path_resolver.h"

#include <string>

namespace ZLMIM::Validate
{

/// Check a mesh or an animation that has been loaded, unless its file has been checked already.
void JudgeMesh(const Mesh& mesh, const Tools::Outcome& outcome, const LocatedFile& file, PathResolver& names,
               JudgedFiles& judged);
void JudgeAnim(const Anim& anim, const Tools::Outcome& outcome, const LocatedFile& file, PathResolver& names,
               JudgedFiles& judged);

/// Load a file and check it, unless it has been checked already.
void JudgeMeshFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   JudgedFiles& judged);
void JudgeAnimFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   JudgedFiles& judged);

/// How an animation's load ended that was part of a model's and threw nothing.
[[nodiscard]] Tools::Outcome OutcomeOf(const Anim& anim, PathResolver& names);

} // namespace ZLMIM::Validate

#endif

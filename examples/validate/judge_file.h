#ifndef VALIDATE_JUDGE_FILE_H
#define VALIDATE_JUDGE_FILE_H

#include "judged_files.h"
#include "located_file.h"

#include "examples/asset.h"
#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/path_resolver.h"

#include <string>

namespace ZLMIM::Validate
{

/// Judge a mesh, or an animation, that a load has filled, if nobody has judged its file yet.
void JudgeMesh(const Mesh& mesh, const Examples::Outcome& outcome, const LocatedFile& file,
               PathResolver& names, JudgedFiles& judged);
void JudgeAnim(const Anim& anim, const Examples::Outcome& outcome, const LocatedFile& file,
               JudgedFiles& judged);

/// Load the file of that name, and judge it, if nobody has judged it yet.
void JudgeMeshFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   JudgedFiles& judged);
void JudgeAnimFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   JudgedFiles& judged);

/// Whether a mesh that a model has loaded was read to its end. Nobody has looked at the answer of its load.
[[nodiscard]] bool IsLoaded(const Mesh& mesh);

/// How the load of an animation ended that a model has loaded, and that raised nothing.
[[nodiscard]] Examples::Outcome OutcomeOf(const Anim& anim, PathResolver& names);

} // namespace ZLMIM::Validate

#endif

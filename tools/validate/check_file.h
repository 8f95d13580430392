#pragma once

#include "checked_files.h"
#include "located_file.h"

#include "tools/common/asset.h"
#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/path_resolver.h"

#include <string>

namespace ZLMIM::Validate
{

/// Check a mesh or an animation that has been loaded, unless its file has been checked already.
void CheckMesh(const Mesh& mesh, const Tools::Outcome& outcome, const LocatedFile& file, PathResolver& names,
               CheckedFiles& checked);
void CheckAnim(const Anim& anim, const Tools::Outcome& outcome, const LocatedFile& file, PathResolver& names,
               CheckedFiles& checked);

/// Load a file and check it, unless it has been checked already.
void CheckMeshFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   CheckedFiles& checked);
void CheckAnimFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
                   CheckedFiles& checked);

/// How an animation's load ended that was part of a model's and threw nothing.
[[nodiscard]] Tools::Outcome OutcomeOf(const Anim& anim, PathResolver& names);

} // namespace ZLMIM::Validate

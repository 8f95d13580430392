#pragma once

#include "finding.h"

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/native_path.h"

namespace ZLMIM::Validate
{

/// Compare the length of a loaded file with the sizes of its blocks. Data after the last block isn't read.
void CheckLength(const Mesh& mesh, const NativePath& file, Report& report);
void CheckLength(const Anim& anim, const NativePath& file, Report& report);

} // namespace ZLMIM::Validate

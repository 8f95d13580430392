#pragma once

#include "tools/common/verb.h"

namespace ZLMIM::Tools
{

/// The verbs of `zlmim`, each from the source of its name, such as `tools/inspect/inspect_verb.cpp`.
[[nodiscard]] Verb InspectVerb();
[[nodiscard]] Verb ValidateVerb();
[[nodiscard]] Verb PictureVerb();
[[nodiscard]] Verb ExportVerb();
/// Only in programs that are built with libjs-three.
[[nodiscard]] Verb ViewVerb();
[[nodiscard]] Verb SampleVerb();

} // namespace ZLMIM::Tools

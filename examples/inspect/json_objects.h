#ifndef INSPECT_JSON_OBJECTS_H
#define INSPECT_JSON_OBJECTS_H

#include "json_values.h"

#include "zlmim/anim/anim.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"

namespace ZLMIM::Inspect
{

/// Every property that a host can read, under the property's name.
[[nodiscard]] Json ToJson(const Mesh& mesh);
[[nodiscard]] Json ToJson(const Anim& anim);
[[nodiscard]] Json ToJson(const ZLMModel& model);

} // namespace ZLMIM::Inspect

#endif

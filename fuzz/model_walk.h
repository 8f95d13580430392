#pragma once

#include "zlmim/config/zlm_model.h"

#include <memory>
#include <string>

namespace ZLMIM::Fuzzing
{

/// Loads two config files into one model, one after the other. After each load, successful or not, visits
/// every public member of the model, its meshes, its animations and the models that it refers to. Also
/// requests missing entries, and writes back every returned reference, which must not create a ring of
/// references. Then releases the model, and gets it from an entry of its mesh table.
/// @throws std::logic_error if the model contradicts itself, or if the second load leaves another model than
/// it would in a new object.
void LoadTwice(const std::shared_ptr<FileSystem>& files, const std::u16string& first,
               const std::u16string& second);

} // namespace ZLMIM::Fuzzing

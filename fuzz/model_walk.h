#ifndef ZLMIM_FUZZ_MODEL_WALK_H
#define ZLMIM_FUZZ_MODEL_WALK_H

#include "zlmim/config/zlm_model.h"

#include <memory>
#include <string>

namespace ZLMIM::Fuzzing
{

/// Loads two config files into one model, one after the other. After each load it visits every public member
/// of the model, however the load ended, with its meshes, its animations and the models that it refers to. It
/// asks for what isn't there as well, and writes back what it was handed out, which must leave no ring of
/// references behind. Then it lets the model go, and asks an entry of its mesh table for it.
/// @throws std::logic_error if the model contradicts itself, or the second load leaves another model than it
/// would have left alone.
void LoadTwice(const std::shared_ptr<FileSystem>& files, const std::u16string& first,
               const std::u16string& second);

} // namespace ZLMIM::Fuzzing

#endif

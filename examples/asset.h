#ifndef ZLMIM_EXAMPLES_ASSET_H
#define ZLMIM_EXAMPLES_ASSET_H

#include "zlmim/anim/anim.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <variant>

namespace ZLMIM::Examples
{

/// How a load ended.
struct Outcome
{
    /// What `Load` answered (a model: true); false if it raised.
    bool IsLoaded = false;
    /// Name of what was raised; empty if nothing was.
    std::string Raised;
    /// The text that came with it.
    std::string What;
};

/// Runs a load, and tells how it ended.
[[nodiscard]] Outcome Attempt(const std::function<bool()>& load);

/// What was raised, and what it said, printable.
[[nodiscard]] std::string Told(const Outcome& outcome);

/// An object of the model, filled as far as its load went.
struct Asset
{
    std::variant<std::shared_ptr<Mesh>, std::shared_ptr<Anim>, std::shared_ptr<ZLMModel>> Object;
    ZLMIM::Examples::Outcome Outcome;
};

/// Loads the file of that name (with backslashes) into the class that its ending asks for, letter case
/// ignored: `.im` a `Mesh`, `.kin` an `Anim`, any other a `ZLMModel`.
[[nodiscard]] Asset LoadAsset(const std::u16string& name);

/// The same for a mesh or an animation with these bytes.
[[nodiscard]] Asset LoadAssetBytes(const std::u16string& name, std::span<const std::byte> bytes);

/// 0 for a load that answered true, else 1.
[[nodiscard]] int ExitStatus(const Outcome& outcome);

} // namespace ZLMIM::Examples

#endif

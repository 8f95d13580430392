#pragma once

#include "tools/common/asset.h"

#include <memory>
#include <string>
#include <vector>

namespace ZLMIM::Tools
{

/// What a problem is about.
enum class ProblemPart
{
    /// The file itself, the config of the model, or a reference that leads nowhere.
    File,
    /// The mesh of an entry.
    Mesh,
    /// The animation of an entry.
    Anim,
    /// What an entry hangs on.
    Place,
};

/// Something that is missing or broken in what was loaded.
struct Problem
{
    ProblemPart Part = ProblemPart::File;
    /// The asset, or the one it refers to, that has the problem; null for a mesh or an animation by itself.
    const ZLMModel* Model = nullptr;
    /// Null if it isn't about an entry.
    const MeshEntry* Entry = nullptr;
    /// Where it is, with ": " at its end: "wagon/config.txt:44: entry \"load\": ".
    std::string Where = {};
    /// What is wrong: "there is no such file".
    std::string What = {};
};

/// The whole problem, for people.
[[nodiscard]] std::string Text(const Problem& problem);

/// What is missing or broken in an asset and in those that it refers to, or in a mesh or an animation. Empty
/// only if everything was loaded and is where its config puts it. A model doesn't keep how its files failed,
/// so those are loaded again.
[[nodiscard]] std::vector<Problem> FindProblems(const Asset& asset, const Input& input,
                                                const std::shared_ptr<PathResolver>& names,
                                                References references = References::Follow);

} // namespace ZLMIM::Tools

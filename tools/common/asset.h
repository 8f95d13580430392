#pragma once

#include "tools/common/asset_files.h"

#include "zlmim/anim/anim.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/path_resolver.h"

#include <functional>
#include <memory>
#include <string>
#include <variant>

namespace ZLMIM::Tools
{

enum class Kind
{
    Model,
    Mesh,
    Anim,
};

/// A file to load: its name in the object model's form.
struct Input
{
    Tools::Kind Kind = Tools::Kind::Model;
    std::u16string Name;
};

/// The kind of a file by its ending, letter case ignored: `.im` a mesh, `.kin` an animation, else a config.
[[nodiscard]] Kind KindOf(std::u16string_view name);

/// The file that a path leads to, or why there is none: a file by its ending (`.im`, `.kin`, `.txt`), a
/// folder by its `config.txt`.
[[nodiscard]] std::variant<Input, std::string> FindInput(const std::u16string& name, PathResolver& names);

/// How a load ended.
struct Outcome
{
    /// What `Load` returned (true for a model); false if it threw.
    bool IsLoaded = false;
    /// The exception's name; empty if it threw nothing.
    std::string Thrown;
    /// The file that the exception is about, in the object model's form; may be empty.
    std::u16string File;
    /// What went wrong, without the file.
    std::string What;
};

/// Runs a load and catches what it throws.
[[nodiscard]] Outcome Attempt(const std::function<bool()>& load);

/// An object of the model, with what its load has read.
struct Asset
{
    std::variant<std::shared_ptr<Mesh>, std::shared_ptr<Anim>, std::shared_ptr<ZLMModel>> Object;
    Tools::Outcome Outcome;
};

/// Loads a file. A config is loaded as if its own folder were the working folder.
[[nodiscard]] Asset LoadAsset(const Input& input, const std::shared_ptr<PathResolver>& names,
                              References references = References::Follow);

/// Loads a name unchanged, relative to the working folder, into the class for its ending.
[[nodiscard]] Asset LoadAsGiven(const std::u16string& name);

/// Why a load failed, for people; empty if it didn't.
[[nodiscard]] std::string Failure(const Mesh& mesh, const Outcome& outcome, PathResolver& names);
[[nodiscard]] std::string Failure(const Anim& anim, const Outcome& outcome, PathResolver& names);
[[nodiscard]] std::string Failure(const ZLMModel& model, const Outcome& outcome, PathResolver& names);

/// Describes what was thrown, for people.
[[nodiscard]] std::string Describe(const Outcome& outcome);

/// Whether the mesh has been read at least up to its skeleton.
[[nodiscard]] bool HasChunks(const Mesh& mesh);

} // namespace ZLMIM::Tools

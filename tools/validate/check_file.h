#pragma once

#include "checked_files.h"
#include "located_file.h"

#include "tools/common/asset.h"
#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/load_budget.h"
#include "zlmim/reader/path_resolver.h"

#include <string>

namespace ZLMIM::Validate
{

/// What is wrong with a file, which was loaded with this outcome.
[[nodiscard]] Report ReportOn(const Mesh& mesh, const Tools::Outcome& outcome, const LocatedFile& file,
                              PathResolver& names);
[[nodiscard]] Report ReportOn(const Anim& anim, const Tools::Outcome& outcome, const LocatedFile& file,
                              PathResolver& names);

/// Checks a mesh or an animation that has been loaded, unless its file has been checked already.
template <class Object>
void CheckLoaded(const Object& object, const Tools::Outcome& outcome, const LocatedFile& file,
                 PathResolver& names, CheckedFiles& checked)
{
    if (checked.Claim(file))
        checked.Store(file.Key, ReportOn(object, outcome, file, names));
}

/// Loads a file into an `Object` and checks it, unless it has been checked already.
template <class Object>
void CheckFile(const std::u16string& name, const LocatedFile& file, PathResolver& names,
               CheckedFiles& checked)
{
    if (!checked.Claim(file))
        return;
    Object object;
    LoadBudget budget;
    const Tools::Outcome outcome = Tools::Attempt([&] { return object.Load(name, names, budget); });
    checked.Store(file.Key, ReportOn(object, outcome, file, names));
}

/// How an animation's load ended that was part of a model's and threw nothing.
[[nodiscard]] Tools::Outcome OutcomeOf(const Anim& anim, PathResolver& names);

} // namespace ZLMIM::Validate

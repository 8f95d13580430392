#pragma once

#include "tools/common/asset_files.h"

#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/attachment.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ZLMIM::Tools
{

/// An entry of a mesh table, or an asset that is referred to, and what it hangs on.
struct Part
{
    /// The entry's name, or the key of the reference.
    std::u16string Name;
    /// Null for a reference.
    std::shared_ptr<const MeshEntry> Entry;
    /// The asset that a reference leads to; for an entry of such an asset also that asset. Null for the
    /// asset's own entries.
    std::shared_ptr<const ZLMModel> Reference = nullptr;
    /// The earlier part that it hangs on; `std::nullopt` for the asset's origin.
    std::optional<std::size_t> Parent = {};
    /// The parent's attachment point; null for its origin.
    std::shared_ptr<const Attachment> Point = nullptr;
};

/// An asset's meshes, each where its attachment puts it, and the bogeys and pantograph.
///
/// A bogey's key doesn't say where the bogey is. By custom the asset's meshes have an attachment point of
/// the key's name: `bogey-0` goes to `a.bogey0`, the pantograph to `a.pantograph`. One without such a point
/// is skipped, and so is what a bogey refers to itself. Of the entries, one without an attachment point is
/// at the origin.
struct Assembly
{
    std::vector<Part> Parts;
    /// What is skipped and why, such as `bogey-0: ...`. Doesn't repeat what `FindProblems` reports.
    std::vector<std::string> Problems;
    /// The bogeys and pantographs without a place or a mesh, which may be as its maker wants it.
    std::vector<std::string> Notes;
};

/// Limit: further bogeys and pantographs are skipped.
constexpr std::size_t kMaxReferences = 64;

/// Whether nothing was loaded into a model: the asset wasn't found, or its config is empty.
[[nodiscard]] bool IsEmpty(const ZLMModel& model);

[[nodiscard]] Assembly Assemble(const ZLMModel& model, References references = References::Follow);

} // namespace ZLMIM::Tools

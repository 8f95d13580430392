#pragma once

#include "block_writer.h"
#include "outcome.h"
#include "temp_folder.h"
#include "zlmim/config/zlm_model.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Testing
{

/// A mesh without chunks and with attachment points of these names.
inline std::string MeshWith(const std::vector<std::string_view>& attachments = {})
{
    auto payload = Bytes().Long(100).Long(static_cast<std::int32_t>(attachments.size()));
    for (const auto name : attachments)
        payload.String(name).Record(Matrix{});
    return MeshHeader(0).Block("ATCH", payload).Str();
}

inline std::string SmallAnim()
{
    const auto bone = Bytes().Block("BONE", Bytes().Long(1).String("b").Long(0));
    return AnimHeader("n", 0).Block("EVNT", Bytes()).Block("SKEL", bone).Str();
}

/// A temporary folder of assets. The assets are in "top/assets", so that searches for references stay inside.
/// While the object is in scope, the working folder is "top/assets/wagon".
class AssetFolder
{
public:
    AssetFolder()
    {
        mFolder.Write("top/assets/wagon/");
        std::filesystem::current_path(mFolder.Path() / "top/assets/wagon");
    }
    AssetFolder(const AssetFolder&) = delete;
    AssetFolder& operator=(const AssetFolder&) = delete;
    ~AssetFolder() { std::filesystem::current_path(mBefore); }

    /// Writes a file; `name` is relative to "top/assets".
    AssetFolder& Write(const std::string& name, std::string_view bytes)
    {
        mFolder.Write("top/assets/" + name, bytes);
        return *this;
    }
    AssetFolder& Wagon(std::string_view config) { return Write("wagon/config.txt", config); }

    [[nodiscard]] std::u16string WagonName() const { return mFolder.Name(u"top\\assets\\wagon\\config.txt"); }

    /// Loads the wagon's config. Returns "", or the name of the error that was thrown, see `OutcomeOf`.
    std::string Load(ZLMModel& model) const
    {
        const std::string outcome = OutcomeOf([&] { model.Load(WagonName()); });
        return outcome == "done" ? "" : outcome;
    }
    /// A new model, loaded.
    /// @throws std::runtime_error if the load throws.
    [[nodiscard]] std::shared_ptr<ZLMModel> Loaded() const
    {
        auto model = std::make_shared<ZLMModel>();
        if (const std::string error = Load(*model); !error.empty())
            throw std::runtime_error(error);
        return model;
    }

private:
    std::filesystem::path mBefore = std::filesystem::current_path();
    TempFolder mFolder;
};

} // namespace ZLMIM::Testing

#include "bench/cases.h"
#include "bench/floor.h"
#include "bench/made_anim.h"
#include "zlmim/anim/anim.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Bench
{
namespace
{

/// Equal animation files that are loaded and kept.
class Anims
{
public:
    /// Writes the files.
    Anims(const TempFolder& folder, const std::string& subfolder, std::size_t count, MadeAnim made)
        : mMade(std::move(made))
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            const std::string entry = subfolder + "/" + std::to_string(i) + ".kin";
            folder.Write(entry, mMade.file);
            mPaths.push_back(folder.Path() / entry);
            mNames.push_back(
                folder.Name(ZLMIM::FromNativeName(subfolder + "\\" + std::to_string(i)) + u".kin"));
        }
    }

    [[nodiscard]] Side Library() const
    {
        return [names = mNames]
        {
            std::vector<std::unique_ptr<ZLMIM::Anim>> anims;
            return Timed(
                [&]
                {
                    for (const auto& name : names)
                    {
                        if (!anims.emplace_back(std::make_unique<ZLMIM::Anim>())->Load(name))
                            throw std::runtime_error("a made-up animation doesn't load");
                    }
                });
        };
    }

    [[nodiscard]] Side Floor(Pages pages = Pages::Faulted) const
    {
        return [paths = mPaths, made = mMade, pages]
        {
            std::vector<Array> tables;
            return Timed(
                [&]
                {
                    for (const auto& path : paths)
                        CopyFrames(ReadRawFile(path, pages), made, tables, pages);
                });
        };
    }

private:
    MadeAnim mMade;
    std::vector<std::u16string> mNames;
    std::vector<std::string> mPaths;
};

} // namespace

Measures LargeAnimation(const TempFolder& folder)
{
    constexpr std::size_t kBones = 100;
    constexpr std::size_t kFrames = 10'000;
    // As many frames in 100 animations, in 10, and in one.
    Growth growth = {"an animation of 100, 1,000 and 10,000 frames", "frame", {}};
    std::size_t times = 100;
    for (Sized& sized : growth.sizes)
    {
        const Anims anims(folder, std::to_string(times), times, MakeAnim(kBones, kFrames / times));
        sized = {kFrames, anims.Library(), anims.Floor()};
        times /= 10;
    }
    const Anims anim(folder, "large", 1, MakeAnim(kBones, kFrames));
    return {{{"an animation of 100 bones x 10,000 frames", anim.Library(), anim.Floor(), 0.85},
             {"the same, beside a floor that prefaults", anim.Library(), anim.Floor(Pages::Prefaulted)}},
            {growth}};
}

} // namespace Bench

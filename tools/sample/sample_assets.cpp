#include "tools/sample/sample_assets.h"

#include "tools/common/save_file.h"
#include "tools/sample/sample_files.h"

#include <string_view>

namespace Sample
{

namespace
{

/// A mesh table of several entries, with an effects block, a level-of-detail list and two kinds of
/// references.
constexpr std::string_view kWagonConfig = R"(kuid <kuid:4711:1001>
kind "traincar"
username "Covered wagon"
author "The sample's author"
zelmar-build 2.9
description "A covered wagon with two sliding doors,
loaded with crates.
It runs on two bogeys."
bogey-0 <kuid:4711:2001>
bogey-1 <kuid:4711:2001>
pantograph <kuid:4711:3001>

mesh-table
{
  default
  {
    mesh body.im
    anim doors.kin
  }
  load
  {
    mesh load/load.lm
    att-parent default
    att a.load
    effects
    {
      shine
      {
        kind reflection
      }
    }
  }
  spare-crate
  {
    mesh load/load_far.im
    att-parent default
    att a.roof
  }
}
)";

constexpr std::string_view kLoadLevels = R"(version 1.0
mesh("0")
{
  name="load_far.im";
}
mesh("1")
{
  name="load_near.im";
}
)";

constexpr std::string_view kBogeyConfig = R"(kuid <KUID:4711:2001>
kind bogey
username "Bogey with two axles"
mesh-table {
  bogey {
    mesh bogey.im
    anim wheels.kin
  }
}
)";

/// In a folder that bears its kuid as a name, and without a mesh table.
constexpr std::string_view kPantographConfig = R"(kuid <kuid:4711:3001>
kind pantograph
username "Pantograph"
asset-filename pantograph
)";

} // namespace

std::map<std::string, std::string> SampleAssets()
{
    return {
        {"assets/wagon/config.txt", std::string(kWagonConfig)},
        {"assets/wagon/body.im", WagonMesh().Str()},
        {"assets/wagon/doors.kin", WagonAnimation().Str()},
        {"assets/wagon/load/load.lm.txt", std::string(kLoadLevels)},
        {"assets/wagon/load/load_near.im", LoadMesh(24).Str()},
        {"assets/wagon/load/load_far.im", LoadMesh(6).Str()},
        {"assets/bogey y/config.txt", std::string(kBogeyConfig)},
        {"assets/bogey y/bogey.im", BogeyMesh().Str()},
        {"assets/bogey y/wheels.kin", BogeyAnimation().Str()},
        {"assets/kuid 4711 3001/config.txt", std::string(kPantographConfig)},
        {"assets/kuid 4711 3001/pantograph.im", PantographMesh().Str()},
    };
}

std::map<std::string, std::string> SamplePictures()
{
    return {
        {"assets/wagon/underframe.tga", UnderframePicture().Str()},
        {"assets/wagon/planks.tga", PlanksPicture().Str()},
        {"assets/wagon/planks_bump.tga", PlanksBumpPicture().Str()},
        {"assets/wagon/doors.tga", DoorsPicture().Str()},
        {"assets/wagon/sky.tga", SkyPicture().Str()},
        {"assets/wagon/load/crate.tga", CratePicture().Str()},
        {"assets/bogey y/wheel.tga", WheelPicture().Str()},
    };
}

void WriteSampleAssets(const std::filesystem::path& folder)
{
    auto files = SampleAssets();
    files.merge(SamplePictures());
    for (const auto& [name, bytes] : files)
        ZLMIM::Tools::SaveFile(folder / name, bytes);
}

} // namespace Sample

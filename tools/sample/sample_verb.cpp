#include "tools/sample/sample_assets.h"
#include "tools/verbs.h"

#include <memory>

namespace ZLMIM::Tools
{

Verb SampleVerb()
{
    const auto folder = std::make_shared<std::string>();
    return {
        "sample",
        "write a small set of sample assets",
        "Writes a covered wagon with its bogeys, pantograph, load, animation and textures, to try the other "
        "verbs with.",
        {{"FOLDER", "", "the folder to write into; created if it doesn't exist", folder.get()}},
        {},
        [folder]
        {
            Sample::WriteSampleAssets(std::u8string(folder->begin(), folder->end()));
            return kGood;
        }};
}

} // namespace ZLMIM::Tools

#include "tools/common/paths.h"
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
        {{"Exit status",
          {"0\tthe files were written", "2\tthe command line is wrong, or a file can't be written"}}},
        [folder]
        {
            if (folder->empty())
                throw UsageError("FOLDER is empty");
            Sample::WriteSampleAssets(FromUtf8Path(*folder));
            return kGood;
        }};
}

} // namespace ZLMIM::Tools

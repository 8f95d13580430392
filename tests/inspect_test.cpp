#include "asset_folder.h"
#include "good_files.h"
#include "json.h"
#include "tools/common/asset.h"
#include "tools/common/json_writer.h"
#include "tools/common/text.h"
#include "tools/common/verb.h"
#include "tools/sample/sample_assets.h"
#include "tree.h"

#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace ZLMIM::Tools
{
namespace
{

using Testing::AssetFolder;

TEST(Inspect, WritesTheShortestFloatsAsJson)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const struct
    {
        float value;
        const char* json;
    } cases[] = {{0, "0.0"},
                 {-0.0F, "-0.0"},
                 {0.1F, "0.1"},
                 {16'777'215, "16777215.0"},
                 {16'777'216, "1.6777216e+07"},
                 {1e-45F, "1e-45"},
                 {3.4028235e38F, "3.4028235e+38"},
                 {kInfinity, "\"inf\""},
                 {-kInfinity, "\"-inf\""},
                 {std::numeric_limits<float>::quiet_NaN(), "\"nan\""}};
    for (const auto& [value, json] : cases)
    {
        std::ostringstream out;
        {
            JsonWriter writer(out, JsonWriter::Form::OneLine);
            writer.Float(value);
        }
        EXPECT_EQ(out.str(), json);
    }
}

TEST(Inspect, FindsTheFileOfAPath)
{
    AssetFolder folder;
    folder.Wagon("kuid <a:1>\n")
        .Write("empty/x.tga", "")
        .Write("wrong/config.txt.txt", "")
        .Write("wagon/a.IM", "");
    PathResolver names;
    const struct
    {
        const char16_t* path;
        const char* why; // the beginning of the message
    } cases[] = {{u".", ""},
                 {u"..\\WAGON", ""},
                 {u"a.im", ""},
                 {u"config.txt", ""},
                 {u"..\\empty", "there is no config.txt in this folder"},
                 {u"..\\wrong", "there is no config.txt in this folder, but a config.txt.txt"},
                 {u"..\\empty\\x.tga", "it is no file that zlmim reads"},
                 {u"none", "there is no such file or folder"}};
    for (const auto& [path, why] : cases)
    {
        const auto input = FindInput(path, names);
        const auto* const found = std::get_if<std::string>(&input);
        EXPECT_TRUE(found ? *why != '\0' && found->starts_with(why) : *why == '\0')
            << (found ? *found : "found");
    }
}

/// The tree of an asset, and how its load ended.
std::string Tree(const std::u16string& path, const Inspect::TreeForm& form = {})
{
    const auto names = std::make_shared<PathResolver>();
    const Input input = std::get<Input>(FindInput(path, *names));
    return Inspect::TreeText(input, LoadAsset(input, names), form, *names);
}

TEST(Inspect, LoadsAnAssetAsInItsOwnFolder)
{
    AssetFolder folder;
    ::Sample::WriteSampleAssets("../..");
    // Names relative to the working folder: of an animation and of a reference, also in a referenced asset.
    folder.Write("bogey y/run.kin", Testing::SmallAnim());
    folder.Write("bogey y/config.txt",
                 "kuid <kuid:4711:2001>\nmesh-table {\nb {\nmesh bogey.im\nanim run.kin\n}\n}\n");
    for (const char* const from : {".", "..", "/"})
    {
        const auto here = std::filesystem::current_path();
        std::filesystem::current_path(from);
        const std::string tree = Tree(FromNativePath(NativePath((here / "").native())));
        std::filesystem::current_path(here);
        EXPECT_NE(tree.find("config.txt: asset, loaded"), std::string::npos) << tree;
        for (const char* const file :
             {"doors.kin 25 frames", "run.kin 0 frames", "pantograph.im 48 triangles"})
            EXPECT_NE(tree.find(file), std::string::npos) << file << " from " << from << '\n' << tree;
    }
}

TEST(Inspect, ShowsWhatIsBrokenAndFitsTheWidth)
{
    AssetFolder folder;
    ::Sample::WriteSampleAssets("../..");
    folder.Write("wagon/load/load_near.im", "JIRF").Write("wagon/doors.kin", "nothing");
    std::string tree = Tree(u".");
    EXPECT_NE(tree.find("load_near.im (damaged or cut short: "), std::string::npos) << tree;
    EXPECT_NE(tree.find("doors.kin (Not a ZL file - no JIRF)"), std::string::npos) << tree;
    EXPECT_EQ(tree.find('\\'), std::string::npos) << tree;
    for (const std::size_t width : {80U, 40U})
        for (const char16_t* const path : {u".", u"body.im", u"..\\bogey y\\bogey.im"})
        {
            std::istringstream lines(Tree(path, {width, true, false}));
            for (std::string line; std::getline(lines, line);)
                EXPECT_LE(Width(line), width) << line;
        }
    EXPECT_NE(Tree(u".", {120, true, false}).find("planks.texture"), std::string::npos);
    EXPECT_NE(Tree(u"body.im").find("centre  0.000"), std::string::npos);
}

TEST(Inspect, ParsesCommandLines)
{
    std::vector<std::string> paths;
    bool flag = false;
    const Verb verb = {
        "verb", "s", "d", {{"PATH", "", "h", &paths}, {"-f,--flag", "", "h", &flag}}, {}, [] { return 0; }};
    const struct
    {
        std::vector<std::string> arguments;
        int status;
    } cases[] = {{{"verb", "a", "b"}, kGood}, {{"verb", "-f", "a"}, kGood},
                 {{"verb"}, kCannotRun},      {{"verb", "--no"}, kCannotRun},
                 {{"other"}, kCannotRun},     {{}, kCannotRun},
                 {{"--help"}, kGood},         {{"verb", "--help"}, kGood},
                 {{"--version"}, kGood}};
    for (auto [arguments, status] : cases)
    {
        SCOPED_TRACE(testing::PrintToString(arguments));
        arguments.insert(arguments.begin(), "zlmim");
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunProgram({verb}, arguments), status);
        const bool isQuiet = testing::internal::GetCapturedStderr().empty();
        static_cast<void>(testing::internal::GetCapturedStdout());
        EXPECT_EQ(isQuiet, status == kGood);
    }
    EXPECT_TRUE(flag);
    EXPECT_EQ(paths, std::vector<std::string>{"a"});
}

} // namespace
} // namespace ZLMIM::Tools

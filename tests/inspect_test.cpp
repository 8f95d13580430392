#include "asset_folder.h"
#include "good_files.h"
#include "json.h"
#include "tools/common/asset.h"
#include "tools/common/json_writer.h"
#include "tools/common/paths.h"
#include "tools/common/text.h"
#include "tools/common/verb.h"
#include "tools/sample/sample_assets.h"
#include "tree.h"

#include <algorithm>
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
                 {u"none", "there is no such file or folder"},
                 {u"", "the path is empty"}};
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
    const Asset asset = LoadAsset(input, names);
    return Inspect::TreeText(input, asset, FindProblems(asset, input, names), form, *names);
}

TEST(Inspect, LoadsAnAssetAsInItsOwnFolder)
{
    AssetFolder folder;
    Sample::WriteSampleAssets("../..");
    // Names relative to the working folder: of an animation and of a reference, also in a referenced asset.
    folder.Write("bogey y/run.kin", Testing::SmallAnim());
    folder.Write("bogey y/config.txt",
                 "kuid <kuid:4711:2001>\nmesh-table {\nb {\nmesh bogey.im\nanim run.kin\n}\n}\n");
    for (const char* const from : {".", "..", "/"})
    {
        const auto here = std::filesystem::current_path();
        std::filesystem::current_path(from);
        const std::string tree = Tree(ToName(here / ""));
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
    Sample::WriteSampleAssets("../..");
    folder.Write("wagon/load/load_near.im", "JIRF").Write("wagon/doors.kin", "nothing");
    std::string tree = Tree(u".");
    EXPECT_NE(tree.find("load_near.im (damaged or cut short: "), std::string::npos) << tree;
    EXPECT_NE(tree.find("doors.kin (Not a ZL file - no JIRF)"), std::string::npos) << tree;
    EXPECT_EQ(tree.find('\\') == std::string::npos, kNativeSeparator == '/') << tree;
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

TEST(Inspect, FindsWhatIsMissingOrBroken)
{
    const std::string bogey = "kuid <b:1>\nmesh-table {\nx {\nmesh t.im\natt-parent y\natt a.p\n}\n}\n";
    const struct
    {
        std::string config;
        std::vector<std::string> problems;
    } cases[] = {
        {"kuid <a:1>\nmesh-table {\na {\nmesh t.im\n}\nb {\nmesh t.im\natt-parent A\natt A.P\n}\n}\n", {}},
        {"", {"config.txt: the config is empty"}},
        {std::string("k\0u\0i\0d\0", 8), {"config.txt: the config isn't text with one byte per character"}},
        {"hello\n", {"config.txt: the config names neither an asset nor a mesh"}},
        {"kuid <a:1>\n\nasset-filename wagon\n", {"config.txt:3: asset-filename: there is no file wagon.im"}},
        // An entry that hangs on one below it, in a table after an entry whose blocks hold look-alikes.
        {"kuid <a:1>\nmesh-table {\na {\nmesh t.im\neffects {\natt-parent q\n}\n}\n}\nmesh-table\n{\n"
         "b {\nmesh t.im\natt-parent c\natt a.p\n}\nc {\nmesh t.im\natt-parent a\natt a.q\n}\n"
         "d {\nmesh t.im\natt-parent a\n}\n}\n",
         {"config.txt:14: entry \"b\": att-parent: no entry \"c\" above it, so it is at the origin",
          "config.txt:20: entry \"c\": att: no attachment point \"a.q\" in entry \"a\", so it is at the "
          "origin",
          "config.txt:24: entry \"d\": it has no att, the attachment point of \"a\", so it is at the "
          "origin"}},
        {"kuid <a:1>\nmesh-table {\na {\nmesh no.im\nanim no.kin\n}\nb {\n}\nc {\nmesh junk.im\n}\n"
         "d {\nmesh empty.im\n}\ne {\nmesh t.im\natt-parent a\natt a.p\n}\n}\n",
         {"config.txt:4: entry \"a\": no.im: there is no such file",
          "config.txt:5: entry \"a\": no.kin: there is no such file",
          "config.txt:7: entry \"b\": it has no mesh",
          "config.txt:10: entry \"c\": junk.im: Not a ZLM IM file - no JIRF",
          "config.txt:13: entry \"d\": empty.im: it is empty",
          "config.txt:18: entry \"e\": att: no attachment point \"a.p\" in entry \"a\", whose mesh isn't "
          "loaded, so it is at the origin"}},
        // The load ends in a mesh that is cut short, and once in a limit.
        {"kuid <a:1>\nmesh-table {\na {\nmesh t.im\n}\nb {\nmesh cut.im\natt-parent a\natt a.p\n}\n}\n",
         {"config.txt:7: entry \"b\": cut.im: damaged or cut short: "}},
        {"kuid <a:1>\nusername \"open", {"config.txt: "}},
        {"kuid <a:1>\nbogey-0 <a:7>\nbogey-1 <A:1>\npantograph\n",
         {"config.txt:2: bogey-0: no asset <a:7> was found",
          "config.txt:3: bogey-1: <A:1> is an asset that this reference is in",
          "config.txt:4: pantograph: it has no kuid"}},
        {"kuid <a:1>\nbogeys {\n}\nbogey-sounds\n\n{\n}\n", {}}, // blocks
        // In an asset that is referred to twice.
        {"kuid <a:1>\nbogey-0 <b:1>\nbogey-1 <b:1>\n",
         {"bogey/config.txt:5: entry \"x\": att-parent: no entry \"y\" above it, so it is at the origin"}},
    };
    for (const auto& [config, expected] : cases)
    {
        SCOPED_TRACE(config);
        AssetFolder folder;
        folder.Wagon(config).Write("wagon/t.im", Testing::MeshWith({"a.p"})).Write("wagon/junk.im", "junk");
        folder.Write("wagon/empty.im", "").Write("wagon/cut.im", Testing::MeshWith({"a.p"}).substr(0, 30));
        folder.Write("bogey/config.txt", bogey).Write("bogey/t.im", Testing::MeshWith());
        const auto names = std::make_shared<PathResolver>();
        const Input input = {Kind::Model, u"config.txt"};
        const Asset asset = LoadAsset(input, names);
        const auto problems = FindProblems(asset, input, names);
        std::vector<std::string> found;
        for (const Problem& problem : problems)
            std::ranges::replace(found.emplace_back(Text(problem)), '\\', '/');
        ASSERT_EQ(found.size(), expected.size()) << testing::PrintToString(found);
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_NE(found[i].find(expected[i]), std::string::npos) << found[i];
        const std::string tree = Inspect::TreeText(input, asset, problems, {.Width = 2000}, *names);
        for (const Problem& problem : problems)
            EXPECT_NE(tree.find(problem.What), std::string::npos) << tree;
    }
}

TEST(Inspect, ParsesCommandLines)
{
    std::vector<std::string> paths;
    bool flag = false;
    std::optional<double> zoom;
    std::optional<std::int64_t> frame;
    const Verb verb = {"verb",
                       "s",
                       "d",
                       {{"PATH", "", "h", &paths},
                        {"-f,--flag", "", "h", &flag},
                        {"--zoom", "N", "h", &zoom},
                        {"--frame", "N", "h", &frame}},
                       {},
                       [] { return 0; }};
    const struct
    {
        std::vector<std::string> arguments;
        int status;
        std::string error = {}; // the beginning of the message
    } cases[] = {
        {{"verb", "a", "b"}, kGood},
        {{"verb", "-f", "a"}, kGood},
        {{"verb", "--zoom=2.5", "a"}, kGood},
        {{"--help"}, kGood},
        {{"verb", "--help"}, kGood},
        {{"help"}, kGood},
        {{"help", "verb"}, kGood},
        {{"--version"}, kGood},
        {{}, kCannotRun, "zlmim: a verb is missing"},
        {{"other"}, kCannotRun, "zlmim: there is no verb 'other'"},
        {{"help", "other"}, kCannotRun, "zlmim: there is no verb 'other'"},
        {{"--no"}, kCannotRun, "zlmim: '--no' is no option of zlmim; a verb comes first"},
        {{"verb"}, kCannotRun, "zlmim verb: PATH is required"},
        {{"verb", "--no", "a"}, kCannotRun, "zlmim verb: The following argument was not expected: --no"},
        {{"verb", "--zoom", "x", "a"}, kCannotRun, "zlmim verb: --zoom: 'x' isn't a number"},
        {{"verb", "--frame=1.5", "a"}, kCannotRun, "zlmim verb: --frame: '1.5' isn't a whole number"},
        {{"verb", "--zoom=1", "--zoom=2", "a"}, kCannotRun, "zlmim verb: --zoom is given more than once"},
        {{"verb", "a", "--zoom"}, kCannotRun, "zlmim verb: --zoom needs a value"},
    };
    for (auto [arguments, status, error] : cases)
    {
        SCOPED_TRACE(testing::PrintToString(arguments));
        arguments.insert(arguments.begin(), "zlmim");
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunProgram({verb}, arguments), status);
        const std::string found = testing::internal::GetCapturedStderr();
        static_cast<void>(testing::internal::GetCapturedStdout());
        EXPECT_EQ(found.empty(), status == kGood);
        EXPECT_TRUE(found.starts_with(error)) << found;
    }
    EXPECT_TRUE(flag);
    EXPECT_EQ(paths, std::vector<std::string>{"a"});
}

} // namespace
} // namespace ZLMIM::Tools

#include "asset_folder.h"
#include "outcome.h"
#include "zlmim/model/text.h"

#include <gtest/gtest.h>

namespace ZLMIM::Testing
{
namespace
{

/// Authors of a model, its bogeys and its pantograph, such as "A(B(C) D|P)"; "-" for an empty model.
std::string Authors(const ZLMModel& model)
{
    std::string authors = model.Author.empty() ? "-" : ToUtf8(model.Author);
    if (model.Bogies->Count() == 0 && !model.Pantograph)
        return authors;
    authors += "(";
    for (const auto& bogey : *model.Bogies)
        authors += (authors.back() == '(' ? "" : " ") + Authors(*bogey);
    return authors + (model.Pantograph ? "|" + Authors(*model.Pantograph) : "") + ")";
}

TEST(FindConfigFile, TriesTheFolderNameThenWalksTwoLevels)
{
    const struct
    {
        const char* name;
        std::string_view config;
        std::string_view authors;
        const char* error = "";
        std::int32_t names = 1;
    } cases[] = {
        {"by folder name, whatever its kuid", "bogey <KUID:1:9>\n", "-(named)"},
        {"by the walk, in order", "bogey <kuid:1:2>\n", "-(B2)"},
        {"folders of the first level", "bogey <kuid:1:3>\n", "-(first)"},
        {"capitals in a reference never match a file", "bogey <KUID:1:2>\n", "-(-)"},
        {"two levels down in the second folder", "bogey <kuid:1:7>\n", "-(second)"},
        {"kuid-table is another key", "bogey <kuid:1:10>\n", "-(table)"},
        {"the first kuid line decides", "bogey <kuid:1:8>\n", "-(-)"},
        {"a third level is too deep", "bogey <kuid:1:4>\n", "-(-)"},
        {"again, and in capitals", "bogey-0 <kuid:1:2>\nbogey-1 <kuid:1:2>\nbogeys <KUID:1:2>\n",
         "-(B2 B2 -)", "", 3},
        {"a missing one is searched for again", "bogey x\nbogey x\n", "-(- -)", "", 2},
        {"a far one, then the first of two passed before", "bogey <kuid:1:3>\nbogey <kuid:1:2>\n",
         "-(first B2)", "", 2},
        {"two that share a third", "bogey <kuid:2:1>\nbogey <kuid:2:2>\n", "-(left(shared) right(shared))",
         "", 2},
        {"the last pantograph", "pantograph <kuid:1:2>\npantograph <kuid:1:3>\npantograph-1 x\n", "-(|first)",
         "", 0},
        {"itself", "kuid <kuid:1:1>\nauthor me\nbogey <kuid:1:1>\n", "me(-)"},
        {"two that name each other", "kuid <kuid:1:1>\nauthor me\nbogey <kuid:1:5>\n", "me(other(-))"},
        {"a failing bogey has a name but no model", "bogey <kuid:1:6>\nauthor late\n", "-", "BoundsError", 1},
        {"a failing pantograph stays", "pantograph <kuid:1:6>\nauthor late\n", "-(|broken)", "BoundsError",
         0},
    };
    AssetFolder folder;
    folder.Write("kuid 1 9/config.txt", "author named\n")
        .Write("kuid 1 2/config.txt/", "") // a folder isn't a config
        .Write("b2/config.txt", "author B2\nKuid <KUID:1:2>\n")
        .Write("B3/config.txt", "author late\nkuid <kuid:1:2>\n")
        .Write("../zz/config.txt", "author first\nkuid \"<kuid:1:3>\"\n")
        .Write("../zz/second/config.txt", "author second\nkuid <kuid:1:7>\n")
        .Write("a10/config.txt", "author table\nkuid-table {\n}\nkuid <kuid:1:10>\n")
        .Write("left/config.txt", "author left\nkuid <kuid:2:1>\nbogey <kuid:2:3>\n")
        .Write("right/config.txt", "author right\nkuid <kuid:2:2>\nbogey <kuid:2:3>\n")
        .Write("shared/config.txt", "author shared\nkuid <kuid:2:3>\n")
        .Write("zz/deep/config.txt", "author deep\nkuid <kuid:1:4>\n")
        .Write("other/config.txt", "author other\nkuid <kuid:1:5>\nbogey <kuid:1:1>\n")
        .Write("a8/config.txt", "kuid none\nkuid <kuid:1:8>\n")
        .Write("broken/config.txt", "author broken\nkuid <kuid:1:6>\nmesh-table\na\nmesh short.im\n}\n}\n")
        .Write("broken/short.im", "JI");
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        folder.Wagon(c.config);
        const auto model = std::make_shared<ZLMModel>();
        EXPECT_EQ(folder.Load(*model), c.error);
        EXPECT_EQ(Authors(*model), c.authors);
        EXPECT_EQ(model->BogieNames->Count(), c.names);
    }
    folder.Wagon("bogey-0 <kuid:1:2>\nbogey-1 <kuid:1:2>\n");
    const auto model = folder.Loaded();
    EXPECT_EQ(model->Bogies->Item(1), model->Bogies->Item(2));
    EXPECT_EQ(model->BogieNames->Item(2), u"bogey-1");

    // The folder name is relative to the working folder, wherever the wagon is.
    folder.Wagon("bogey <kuid:1:9>\n")
        .Write("../far/here/", "")
        .Write("../far/kuid 1 9/config.txt", "author far\n");
    std::filesystem::current_path("../../far/here");
    folder.Load(*model);
    EXPECT_EQ(Authors(*model), "-(far)");
}

TEST(FindConfigFile, FollowsLinks)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:1:2>\nbogey <kuid:1:3>\n").Write("b/", "");
    folder.Write("../../outside/folder/config.txt", "kuid <kuid:1:2>\nauthor folder\n")
        .Write("../../outside/file", "kuid <kuid:1:3>\nauthor file\n");
    std::error_code error;
    std::filesystem::create_directory_symlink("../../outside/folder", "../a", error);
    std::filesystem::create_symlink("../../../outside/file", "../b/config.txt", error);
    if (error)
        GTEST_SKIP() << "no links here";
    const auto model = folder.Loaded();
    EXPECT_EQ(Authors(*model), "-(folder file)");
}

TEST(FindConfigFile, RecognisesAFileBeingReadThroughALink)
{
    AssetFolder folder;
    // The link comes before the wagon's own folder in the walk, and leads to the same file.
    folder.Wagon("kuid <kuid:1:1>\nauthor me\nbogey <kuid:1:1>\n");
    std::error_code error;
    for (const auto* const link : {"../A-link", "../kuid 1 1"})
        std::filesystem::create_directory_symlink("wagon", link, error);
    if (error)
        GTEST_SKIP() << "no links here";
    const auto model = folder.Loaded();
    EXPECT_EQ(Authors(*model), "me(-)");
    model->Load(u"..\\A-LINK\\CONFIG.TXT");
    EXPECT_EQ(Authors(*model), "me(-)");
}

TEST(FindConfigFile, NeedsAFolderToSearch)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:1:2>\nauthor late\n");
    const auto model = std::make_shared<ZLMModel>();
    EXPECT_EQ(OutcomeOf([&] { model->Load(u"config.txt"); }), "FileSystemError 76");
    EXPECT_EQ(model->BogieNames->Count(), 1);
    EXPECT_EQ(model->Bogies->Count(), 0);
}

TEST(FindConfigFile, FollowsAChainToTheGreatestAllowedDepth)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:0>\n");
    for (int i = 0; i < 40; ++i)
    {
        folder.Write("c" + std::to_string(i) + "/config.txt",
                     "kuid <kuid:" + std::to_string(i) + ">\nbogey <kuid:" + std::to_string(i + 1) + ">\n");
    }
    auto model = folder.Loaded();
    int depth = 1;
    for (; model->Bogies->Count() > 0; ++depth)
        model = model->Bogies->Item(1);
    // The 33rd model exists, but is empty.
    EXPECT_EQ(depth, 33);
    EXPECT_EQ(model->kuid(), u"");
}

TEST(DamagedConfig, LoadsOrThrowsPastTheEnd)
{
    const std::string good =
        "kuid <kuid:1:1>\nbogey <kuid:1:2>\ndescription \"a\nb\"\nmesh-table {\na {\nmesh b.im\n"
        "effects {\nx {\n}\n}\n}\nb {\natt-parent a\natt p\nmesh l.lm\n}\n}\n";
    AssetFolder folder;
    folder.Write("b2/config.txt", "kuid <kuid:1:2>\n").Write("wagon/b.im", MeshWith({"p"}));
    folder.Write("wagon/l.lm.txt", "mesh(1)\nname=b.im\n");
    const auto load = [&](const std::string& config)
    {
        folder.Wagon(config);
        const auto model = std::make_shared<ZLMModel>();
        const std::string error = folder.Load(*model);
        EXPECT_TRUE(error.empty() || error == "FileSystemError 62") << config;
        for (const auto& entry : *model->MeshTable())
            EXPECT_EQ(entry->Parent(), model);
    };
    for (std::size_t i = 0; i < good.size(); ++i)
    {
        load(good.substr(0, i));
        for (const char c : {'\0', '"', '{', '}', '\n'})
            load(std::string(good).replace(i, 1, 1, c));
    }
}

} // namespace
} // namespace ZLMIM::Testing

#include "asset_folder.h"
#include "outcome.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/text.h"

#include <gtest/gtest.h>

namespace ZLMIM::Testing
{
namespace
{

/// Entries as "name>parent@attachment", with "+" after the name if the mesh was loaded and "*" if the
/// animation was.
std::string Outline(const ZLMModel& model)
{
    std::string outline;
    for (const auto& entry : *model.MeshTable())
    {
        EXPECT_EQ(entry->Parent().get(), &model);
        outline += (outline.empty() ? "" : " ") + ToUtf8(entry->Name);
        outline += entry->Mesh->Attachments ? "+" : "";
        outline += entry->anim->RootBone ? "*" : "";
        if (entry->AttParent())
            outline += ">" + ToUtf8(entry->AttParent()->Name);
        if (entry->Att)
            outline += "@" + ToUtf8(entry->Att->Name);
    }
    return outline;
}

TEST(MeshTable, HasAnEntryForEachClosingBrace)
{
    const struct
    {
        const char* name;
        std::string_view config;
        std::string_view outline;
        const char* error = "";
        std::u16string kind = u"end"; // from the line after the table
    } cases[] = {
        {"one entry", "mesh-table {\nDefault {\nmesh BODY.IM\n}\n}\nkind end\n", "default+"},
        {"lone braces", "mesh-table\n{\na\n{\nmesh body.im\n}\n{\nb\n{\n}\n}\nkind end\n", "a+ b"},
        {"empty", "mesh-table\n}\nkind end\n", ""},
        {"two tables", "mesh-table\na\n}\n}\nmesh-table\nb\n}\n}\nkind end\n", "a b"},
        {"keys in any order, the last of each is used",
         "mesh-table\na\nmesh body.im\n}\nb\natt A.One\natt-parent x\nmesh no.im\natt-parent A\nmesh "
         "body.im\n}\n}\nkind end\n",
         "a+ b+>a@a.one"},
        {"itself, later, no such attachment, unloaded parent",
         "mesh-table\na\nmesh body.im\natt-parent a\natt a.two\n}\nb\natt-parent c\n}\nc\nmesh "
         "body.im\natt-parent a\natt x\n}\nd\natt-parent b\natt a.one\n}\n}\nkind end\n",
         "a+>a@a.two b c+>a d>b"},
        {"effects are skipped",
         "mesh-table\na\neffects {\nx {\n} y\nmesh no.im\n}\nmesh body.im\n}\n}\nkind end\n", "a+"},
        {"effects with lone braces",
         "mesh-table\na\neffects\n\n{\nx\n{\n}\n}\nmesh body.im\n}\n}\nkind end\n", "a+"},
        {"no entry inherits from the one before",
         "mesh-table\na\nmesh body.im\n}\nb\nmesh body.im\nanim doors.kin\natt-parent a\natt a.one\n}\nc\n"
         "att-parent a\n}\nd\n}\n}\nkind end\n",
         "a+ b+*>a@a.one c>a d"},
        {"effects without any", "mesh-table\na\neffects\n}\nmesh body.im\n}\n}\nkind end\n", "a+"},
        {"a lone brace below effects {", "mesh-table\na\neffects {\n{\n}\n}\nmesh body.im\n}\n}\nkind end\n",
         "a+"},
        {"file ends in an entry", "mesh-table\na\n}\nb\nmesh body.im\n", "a", "", u""},
        {"file ends in effects", "mesh-table\na\n}\nb\neffects\n}", "a", "", u""},
        {"file ends at effects", "mesh-table\na\n}\nb\neffects", "a", "FileSystemError 62", u""},
        {"a mesh that ends too early stays", "mesh-table\na\nmesh short.im\n}\nb\n}\n}\nkind end\n", "a",
         "BoundsError", u""},
        {"a mesh is loaded before its animation",
         "mesh-table\na\nanim doors.kin\nmesh short.im\n}\n}\nkind end\n", "a", "BoundsError", u""},
        {"a foreign mesh stops nothing", "mesh-table\na\nmesh config.txt\n}\nb\n}\n}\nkind end\n", "a b"},
        {"animations are relative to the working folder",
         "mesh-table\na\nanim doors.kin\n}\nb\nanim other\\doors.kin\n}\n}\nkind end\n", "a* b"},
        {"asset-filename only without entries", "mesh-table\na\n}\n}\nasset-filename body\nkind end\n", "a"},
        {"asset-filename after an empty table", "mesh-table\n}\nasset-filename body\nkind end\n", "default+"},
        {"no asset-filename", "kind end\n", ""},
        {"asset-filename without a file", "asset-filename body.im\nkind end\n", ""},
        {"level 1 of a list", "mesh-table\na\nmesh Lod/list.LM\n}\n}\nkind end\n", "a+"},
        {"a list without level 1", "mesh-table\na\nmesh lod/none.lm\n}\n}\nkind end\n", "a"},
        {"no list file", "mesh-table\na\nmesh lod/missing.lm\n}\n}\nkind end\n", "a"},
    };
    AssetFolder folder;
    folder.Write("wagon/body.im", MeshWith({"A.One", "A.Two"}))
        .Write("wagon/.im", MeshWith())
        .Write("wagon/short.im", "JI")
        .Write("wagon/doors.kin", SmallAnim())
        .Write("wagon/lod/Near.im", MeshWith())
        .Write("wagon/lod/list.lm.txt", "name=\"before.im\"\nmesh(\"0\") name=x\nname=far.im\n Mesh(\"1.0\") "
                                        "{\n  LodName=\" Near.im\"; \n")
        .Write("wagon/lod/none.lm.txt", "mesh(2)\nname=near.im\n");
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        folder.Wagon(c.config);
        const auto model = std::make_shared<ZLMModel>();
        EXPECT_EQ(folder.Load(*model), c.error);
        EXPECT_EQ(Outline(*model), c.outline);
        EXPECT_EQ(model->Kind, c.kind);
    }
}

TEST(MeshTable, LoadsTheFoldersAnimationIfNoneIsNamed)
{
    AssetFolder folder;
    folder.Wagon("mesh-table\na\n}\nb\nanim none.kin\n}\n}\n");
    folder.Write("other/config.txt", "mesh-table\na\n}\n}\n");
    const auto model = folder.Loaded();
    EXPECT_EQ(Outline(*model), "a b");
    folder.Write("wagon/Anim.kin", SmallAnim());
    EXPECT_EQ(folder.Load(*model), "");
    EXPECT_EQ(Outline(*model), "a* b");
    model->Load(u"..\\other\\config.txt");
    EXPECT_EQ(model->MeshTable()->Item(1)->anim->FileName, u"");
}

TEST(MeshTable, NamesMeshesInLowerCaseWithBackslashesButNotAnimations)
{
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"mesh Sub/Body.IM", u"../wagon\\sub\\body.im"},
        {"mesh Lod/List.LM", u"../wagon\\lod\\sub/near.im"},
        {"mesh lod/none.lm", u"../wagon\\lod\\"},
        {"mesh lod/missing.lm", u"../wagon\\lod\\missing.lm"},
        {"mesh Body.lm.im", u"../wagon\\body.lm.im"},
        {"anim Sub/Doors.KIN", u"Sub/Doors.KIN"},
    };
    AssetFolder folder;
    folder.Write("wagon/lod/list.lm.txt", "mesh(1)\nname=Sub/Near.im\n").Write("wagon/lod/none.lm.txt", "");
    folder.Write("wagon/body.lm.im.txt", "mesh(1)\nname=wrong.im\n").Write("wagon/Sub/Body.im", MeshWith());
    const auto model = std::make_shared<ZLMModel>();
    for (const auto& [line, name] : cases)
    {
        folder.Wagon("mesh-table\na\n" + std::string(line) + "\n}\n}\n");
        model->Load(u"../Wagon\\config.txt");
        const auto entry = model->MeshTable()->Item(1);
        EXPECT_EQ(entry->Mesh->FileName + entry->anim->FileName, name);
    }
    folder.Wagon("asset-filename Sub/BODY\n");
    model->Load(u"../Wagon\\config.txt");
    EXPECT_EQ(model->MeshTable()->Item(1)->Mesh->FileName, u"../Wagon\\Sub/BODY.im");
}

TEST(ZLMModel, ReadsItsTextsFromTheirKeys)
{
    AssetFolder folder;
    folder.Wagon(
        "\xEF\xBB\xBFKUID \" <KUID:1:2> \"\nauthor A\nAuthor \"B C\"\nusername u\nkind k\nzelmar-build 2.9\n"
        "description \"one\ntwo\"\nauthor-1 x\nother {\nasset-filename f\n}\n"
        "kuid-table {\n}\npantograph none\n");
    const auto model = folder.Loaded();
    EXPECT_EQ(model->kuid(), u"<kuid:1:2>");
    EXPECT_EQ(model->Author, u"B C");
    EXPECT_EQ(model->UserName, u"u");
    EXPECT_EQ(model->Kind, u"k");
    EXPECT_EQ(model->ZLMBuild, u"2.9");
    EXPECT_EQ(model->Description, u"one\r\ntwo");
    EXPECT_EQ(model->AssetFileName, u"f");
    EXPECT_NE(model->Pantograph, nullptr);
    model->Load(u"");
    EXPECT_EQ(model->kuid() + model->Author + model->UserName + model->Kind, u"");
    EXPECT_EQ(model->ZLMBuild + model->Description + model->AssetFileName, u"");
    EXPECT_EQ(model->Pantograph, nullptr);
    model->Author = folder.WagonName();
    model->Load(model->Author); // a property that the load clears
    EXPECT_EQ(model->kuid(), u"<kuid:1:2>");
}

TEST(MeshEntry, SkipsWhatIsMissingInAHostsTable)
{
    const auto model = std::make_shared<ZLMModel>();
    const auto base = std::make_shared<MeshEntry>();
    base->Name = u"base";
    base->Mesh->Attachments = std::make_shared<Collection<Attachment>>();
    base->Mesh->Attachments->Add(nullptr);
    base->Mesh->Attachments->Add(std::make_shared<Attachment>());
    for (const auto& entry : {std::shared_ptr<MeshEntry>(), std::make_shared<MeshEntry>(), base})
        model->MeshTable()->Add(entry);
    const auto loaded = [&](std::u16string attParent)
    {
        auto entry = std::make_shared<MeshEntry>();
        std::u16string att;
        entry->Load(model, u"a", u"", u"", attParent, att);
        entry->SetParent(nullptr); // breaks the cycle
        return entry;
    };
    EXPECT_EQ(loaded(u"")->AttParent(), nullptr) << "an entry without a name isn't the parent of all";
    EXPECT_EQ(loaded(u"Base")->AttParent(), base);
    EXPECT_EQ(loaded(u"base")->Att, base->Mesh->Attachments->Item(2));
    base->Mesh = nullptr;
    EXPECT_EQ(loaded(u"base")->AttParent(), base);
}

TEST(MeshEntry, ChangesNothingUnlessItIsShared)
{
    const auto model = std::make_shared<ZLMModel>();
    MeshEntry entry;
    std::u16string attParent = u"A";
    std::u16string att = u"B";
    EXPECT_THROW(entry.Load(model, u"name", u"", u"", attParent, att), std::bad_weak_ptr);
    EXPECT_EQ(model->MeshTable()->Count(), 0);
    EXPECT_EQ(entry.Name + attParent + att, u"AB");
    EXPECT_EQ(entry.Parent(), nullptr);
}

/// An object that writes `name` to `log` when it is destroyed.
template <class T>
std::shared_ptr<T> Logging(std::string& log, const char* name)
{
    return std::shared_ptr<T>(new T,
                              [&log, name](T* object)
                              {
                                  log += name;
                                  delete object;
                              });
}

TEST(MeshEntryLifetime, ReleasesPropertiesInTheirOrder)
{
    std::string log;
    {
        MeshEntry entry;
        entry.SetParent(Logging<ZLMModel>(log, "Parent "));
        entry.Att = Logging<Attachment>(log, "Att ");
        entry.SetAttParent(Logging<MeshEntry>(log, "AttParent "));
        entry.anim = Logging<Anim>(log, "anim ");
        entry.Mesh = Logging<Mesh>(log, "Mesh ");
    }
    EXPECT_EQ(log, "Mesh anim AttParent Att Parent ");
    log.clear();
    {
        const auto model = std::make_shared<ZLMModel>(Logging<DiskFileSystem>(log, "mFSO "));
        const auto fill = [&]
        {
            model->Pantograph = Logging<ZLMModel>(log, "Pantograph ");
            model->BogieNames = Logging<Collection<std::u16string>>(log, "BogieNames ");
            model->Bogies = Logging<Collection<ZLMModel>>(log, "Bogies ");
            model->SetMeshTable(Logging<Collection<MeshEntry>>(log, "MeshTable "));
        };
        fill();
        model->Load(u"missing");
        EXPECT_EQ(log, "MeshTable Bogies BogieNames Pantograph ");
        fill();
        log.clear();
    }
    EXPECT_EQ(log, "MeshTable Bogies BogieNames Pantograph mFSO ");
}

TEST(MeshEntryLifetime, AnEntryOrItsListKeepsTheModel)
{
    AssetFolder folder;
    folder.Wagon("author A\nmesh-table\na\natt-parent a\n}\nb\natt-parent a\n}\n}\n");
    auto model = folder.Loaded();
    const std::weak_ptr<ZLMModel> alive = model;
    auto old = model->MeshTable()->Item(2);
    folder.Load(*model);
    auto list = model->MeshTable();
    model.reset();
    EXPECT_EQ(old->Parent()->Author, u"A");
    EXPECT_EQ(old->AttParent()->Name, u"a");
    EXPECT_NE(old->Parent()->MeshTable()->Item(2), old);
    old.reset();
    EXPECT_EQ(list->Item(1)->Parent()->MeshTable()->Count(), 2);
    EXPECT_FALSE(alive.expired());
    list.reset();
    EXPECT_TRUE(alive.expired());
}

TEST(MeshEntryLifetime, EachLoadFreesTheEntriesOfTheLoadBefore)
{
    AssetFolder folder;
    folder.Write("wagon/body.im", MeshWith({"p"}));
    folder.Wagon("mesh-table\na\nmesh body.im\natt-parent a\natt p\n}\nb\natt-parent a\n}\n}\nbogey x\n");
    const auto model = std::make_shared<ZLMModel>();
    std::weak_ptr<MeshEntry> entry;
    std::weak_ptr<ZLMModel> bogey;
    for (int i = 0; i < 1'000; ++i)
    {
        ASSERT_EQ(folder.Load(*model), "");
        ASSERT_TRUE(entry.expired() && bogey.expired());
        entry = model->MeshTable()->Item(1)->AttParent();
        bogey = model->Bogies->Item(1);
    }
}

TEST(MeshEntryLifetime, KeepsWhatAHostWrites)
{
    AssetFolder folder;
    folder.Wagon("mesh-table\na\n}\n}\n");
    const auto model = folder.Loaded();
    const auto entry = model->MeshTable()->Item(1);
    auto parent = std::make_shared<ZLMModel>();
    auto attParent = std::make_shared<MeshEntry>();
    auto table = std::make_shared<Collection<MeshEntry>>();
    const std::weak_ptr<ZLMModel> parentAlive = parent;
    const std::weak_ptr<MeshEntry> attParentAlive = attParent;
    entry->SetParent(std::move(parent));
    entry->SetAttParent(std::move(attParent));
    model->SetMeshTable(table);
    EXPECT_FALSE(parentAlive.expired() || attParentAlive.expired());
    EXPECT_EQ(entry->Parent(), parentAlive.lock());
    EXPECT_EQ(entry->AttParent(), attParentAlive.lock());
    EXPECT_EQ(model->MeshTable(), table);
}

TEST(MeshEntryLifetime, ClearingAHostEntrysReferencesFreesTheModel)
{
    auto model = std::make_shared<ZLMModel>();
    const std::weak_ptr<ZLMModel> alive = model;
    auto entry = std::make_shared<MeshEntry>();
    std::u16string attParent = u"MINE";
    std::u16string att;
    entry->Load(model, u"Mine", u"", u"", attParent, att);
    EXPECT_EQ(attParent, u"mine");
    EXPECT_EQ(entry->AttParent(), entry);
    EXPECT_EQ(model->MeshTable()->Item(1), entry);
    model.reset();
    EXPECT_EQ(entry->Parent(), alive.lock());
    entry->SetAttParent(nullptr);
    entry->SetParent(nullptr);
    EXPECT_TRUE(alive.expired());
}

} // namespace
} // namespace ZLMIM::Testing

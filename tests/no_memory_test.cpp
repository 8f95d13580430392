#include "asset_folder.h"
#include "failing_allocations.h"
#include "good_files.h"
#include "model_walker.h"
#include "tools/sample/sample_assets.h"
#include "zlmim/reader/file_cursor.h"
#include "zlmim/reader/load_budget.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <new>
#include <unistd.h>

namespace ZLMIM::Testing
{
namespace
{

/// The contents of an object: digests of its meshes and animations, and the texts that are the same whether
/// or not these loaded.
struct Contents
{
    std::u16string texts;
    std::vector<std::uint64_t> digests;

    bool operator==(const Contents&) const = default;
};

template <class Model>
Contents ContentsOf(const Model& model, Contents contents = {})
{
    contents.digests.push_back(Walk(model));
    return contents;
}

Contents ContentsOf(const ZLMModel& model, Contents contents = {})
{
    contents.texts += model.kuid() + model.Kind + model.UserName + model.Description;
    for (const auto& entry : *model.MeshTable())
    {
        EXPECT_EQ(entry->Parent().get(), &model);
        contents.texts += entry->Name + entry->Mesh->FileName + entry->anim->FileName;
        contents.texts += entry->AttParent() ? entry->AttParent()->Name : u"-";
        contents.digests.push_back(entry->Att ? 1 : 0);
        contents = ContentsOf(*entry->anim, ContentsOf(*entry->Mesh, std::move(contents)));
    }
    const std::int32_t namesAhead = model.BogieNames->Count() - model.Bogies->Count();
    EXPECT_TRUE(namesAhead == 0 || namesAhead == 1) << namesAhead;
    for (const auto& bogey : *model.Bogies)
        contents = ContentsOf(*bogey, std::move(contents));
    return model.Pantograph ? ContentsOf(*model.Pantograph, std::move(contents)) : contents;
}

/// The lowest free descriptor. If it increases, a file was left open.
int NextDescriptor()
{
    const int descriptor = ::open("/", O_RDONLY | O_CLOEXEC);
    ::close(descriptor);
    return descriptor;
}

/// Loads a new object, then the same one again, with the first allocation failing, then the second, and so on
/// until both loads make all their allocations. Returns the outcomes of failed loads in order, without
/// repetitions. A load may succeed, with all contents, although an allocation failed: one in advance. A load
/// makes at most `mostInAdvance` of them.
template <class Asset, class Load>
std::vector<std::string> FailEachAllocation(const Load& load, std::size_t mostInAdvance)
{
    const auto whole = std::make_shared<Asset>();
    const std::string success = OutcomeOf([&] { return load(*whole); });
    const Contents expected = ContentsOf(*whole);
    EXPECT_FALSE(expected.digests.empty());

    std::vector<std::string> outcomes;
    std::size_t toleratedFailures = 0;
    bool haveSucceeded = false;
    for (std::int64_t number = 1; !haveSucceeded && !::testing::Test::HasFailure(); ++number)
    {
        SCOPED_TRACE(number);
        haveSucceeded = true;
        outcomes.reserve(outcomes.size() + 2);
        const std::int64_t outstanding = OutstandingAllocations();
        const int descriptor = NextDescriptor();
        for (auto asset = std::make_shared<Asset>(); const std::string_view state : {"new", "loaded"})
        {
            SCOPED_TRACE(state);
            bool hasFailed = false;
            std::string outcome = "bad_alloc";
            try
            {
                const FailingAllocation failing(number, hasFailed);
                outcome = OutcomeOf([&] { return load(*asset); });
            }
            catch (const std::bad_alloc&)
            {
            }
            haveSucceeded = haveSucceeded && !hasFailed;
            if (outcome != success && (outcomes.empty() || outcomes.back() != outcome))
                outcomes.push_back(outcome);

            const Contents contents = ContentsOf(*asset);
            EXPECT_TRUE(outcome != "true" || contents == expected);
            toleratedFailures += outcome == "true" && hasFailed ? 1 : 0;
            EXPECT_TRUE(outcome != "done" || contents.texts == expected.texts);
            EXPECT_EQ(OutcomeOf([&] { return load(*asset); }), success);
            EXPECT_TRUE(ContentsOf(*asset) == expected);
        }
        EXPECT_EQ(NextDescriptor(), descriptor);
        if (!::testing::Test::HasFailure()) // a recorded failure takes memory itself
        {
            EXPECT_EQ(OutstandingAllocations(), outstanding);
        }
    }
    EXPECT_LE(toleratedFailures, 2 * mostInAdvance) << "in both states";
    return outcomes;
}

/// Does that for the sample's files with that ending, and for one with every block, from disk and from
/// memory.
template <class Asset>
void FailEachAllocationOfFiles(const std::string& ending, const Bytes& everyBlock)
{
    const AssetFolder folder;
    auto files = Sample::SampleAssets();
    files.emplace("every_block" + ending, everyBlock.Str());
    for (const auto& [file, bytes] : files)
    {
        if (!file.ends_with(ending) || ::testing::Test::HasFailure())
            continue;
        SCOPED_TRACE(file);
        std::ofstream("file", std::ios::binary) << bytes;
        constexpr std::u16string_view kName =
            u"..\\WAGON\\file"; // in capitals, so that the folder is searched
        const auto span = std::as_bytes(std::span(bytes));
        for (const bool isOnDisk : {false, true})
        {
            const auto load = [&](Asset& asset)
            {
                if constexpr (requires { asset.BoneCount; })
                    asset.BoneCount = 0; // otherwise it is the sum of all loads
                return isOnDisk ? asset.Load(kName) : asset.LoadBytes(span, kName);
            };
            const std::vector<std::string> expected = {"bad_alloc", "false", "bad_alloc"};
            const std::size_t steps = bytes.size() / 24'576 + 1; // each with up to two allocations in advance
            EXPECT_EQ(FailEachAllocation<Asset>(load, 2 * steps), expected);
        }
    }
}

TEST(NoMemory, EndsALoadOfAMesh) { FailEachAllocationOfFiles<Mesh>(".im", GoodMesh()); }
TEST(NoMemory, EndsALoadOfAnAnimation) { FailEachAllocationOfFiles<Anim>(".kin", GoodAnim()); }

TEST(NoMemory, EndsALoadOfAModelOrLeavesOneOfItsMeshesEmpty)
{
    const AssetFolder folder;
    Sample::WriteSampleAssets("../..");
    const auto load = [](ZLMModel& model) { model.Load(u"..\\WAGON\\config.txt"); };
    for (const std::string& outcome : FailEachAllocation<ZLMModel>(load, 0))
        EXPECT_TRUE(outcome == "bad_alloc" || outcome == "done") << outcome;
}

TEST(NoMemory, KeepsCountAndArrayOfAGeometry)
{
    Geometry geometry;
    geometry.SetMaxVertices(2);
    geometry.SetVertex(1, {1, 2, 3, 4, 5});
    bool hasFailed = false;
    bool hasThrown = false;
    try
    {
        const FailingAllocation failing(1, hasFailed);
        geometry.SetMaxVertices(3);
    }
    catch (const std::bad_alloc&)
    {
        hasThrown = true;
    }
    EXPECT_TRUE(hasFailed && hasThrown);
    Vertex vertex;
    EXPECT_EQ(geometry.MaxVertices(), 2);
    EXPECT_TRUE(geometry.GetVertex(1, vertex));
    EXPECT_EQ(vertex, (Vertex{1, 2, 3, 4, 5}));
}

TEST(NoMemory, EndsALoadOfTheLongestAllowedFile)
{
    const TempFolder folder;
    folder.Write("longest");
    std::filesystem::resize_file(folder.Path() / "longest", 2'147'483'646);
    const std::u16string name = folder.Name(u"longest");
    PathResolver names;
    LoadBudget budget;
    FileCursor cursor(budget);
    std::int32_t fileSize = 0;
    bool hasFailed = true;
    // `fileSize` is set just before the allocation of 2 GiB, which then fails.
    for (std::int64_t number = 1; hasFailed && fileSize == 0; ++number)
    {
        const FailingAllocation failing(number, hasFailed);
        EXPECT_FALSE(cursor.LoadFile(name, names, fileSize));
    }
    EXPECT_EQ(fileSize, 2'147'483'646);
}

} // namespace
} // namespace ZLMIM::Testing

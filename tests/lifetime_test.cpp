#include "asset_folder.h"
#include "good_files.h"
#include "model_walker.h"
#include "sanitized.h"
#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"

#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <pthread.h>
#include <string>
#include <string_view>

namespace ZLMIM::Testing
{
namespace
{

std::shared_ptr<Mesh> LoadedMesh()
{
    auto mesh = std::make_shared<Mesh>();
    EXPECT_TRUE(mesh->LoadBytes(GoodMesh().Span()));
    return mesh;
}

TEST(Lifetime, AnyOneReferenceKeepsTheWholeTree)
{
    constexpr std::string_view kTree = "A(B(D) C)";
    auto mesh = LoadedMesh();
    std::shared_ptr<Bone> leaf = mesh->RootBone->Children()->Item(1)->Children()->Item(1);
    std::shared_ptr<Geometry> geometry = mesh->Chunks->Item(1)->Geometry;
    std::shared_ptr<Collection<Bone>> list = mesh->RootBone->Children();
    const std::weak_ptr<Bone> tree = mesh->RootBone;
    mesh.reset();

    EXPECT_EQ(Outline(*list->Item(2)->Parent()), kTree);
    list.reset();
    EXPECT_EQ(Outline(*leaf->Parent()->Parent()), kTree);
    EXPECT_EQ(leaf->Parent()->Parent()->Parent(), nullptr);
    leaf.reset();
    EXPECT_EQ(geometry->BoneObject->Name, u"D");
    EXPECT_EQ(Outline(*geometry->BoneObject->Parent()->Parent()), kTree);
    EXPECT_FALSE(tree.expired());
    geometry.reset();
    EXPECT_TRUE(tree.expired());
}

TEST(Lifetime, AnAnimationsBonesKeepOnlyTheirChildren)
{
    auto anim = std::make_shared<Anim>();
    ASSERT_TRUE(anim->LoadBytes(GoodAnim().Span()));
    auto list = anim->RootBone->Children();
    const std::weak_ptr<BoneAnim> tree = anim->RootBone;
    anim.reset();
    EXPECT_EQ(list->Item(1)->GetFrame(0), Keyframe{});
    EXPECT_TRUE(tree.expired()) << "a leaf keeps only itself";
}

TEST(Lifetime, ReferencesWithinATreeMakeNoRing)
{
    auto mesh = LoadedMesh();
    const std::weak_ptr<Bone> tree = mesh->RootBone;
    const auto c = mesh->RootBone->Children()->Item(1)->Children()->Item(1).get();
    mesh->RootBone->Children()->Add(mesh->RootBone->Children()->Item(1)->Children()->Item(1));
    c->SetParent(mesh->RootBone);
    c->SetChildren(mesh->RootBone->Children()->Item(2)->Children());
    EXPECT_EQ(mesh->RootBone->Children()->Item(3).get(), c);
    EXPECT_EQ(c->Parent(), mesh->RootBone);
    mesh.reset();
    EXPECT_TRUE(tree.expired());
}

TEST(Lifetime, KeepsWhatAHostWrites)
{
    const auto mesh = LoadedMesh();
    const auto leaf = mesh->RootBone->Children()->Item(2);
    auto parent = std::make_shared<Bone>();
    auto children = std::make_shared<Collection<Bone>>();
    const std::weak_ptr<Bone> parentAlive = parent;
    const std::weak_ptr<Collection<Bone>> childrenAlive = children;
    leaf->SetParent(std::move(parent));
    leaf->SetChildren(std::move(children));
    EXPECT_EQ(leaf->Parent(), parentAlive.lock());
    EXPECT_EQ(leaf->Children(), childrenAlive.lock());
    EXPECT_FALSE(parentAlive.expired() || childrenAlive.expired());
    leaf->SetParent(nullptr);
    leaf->SetChildren(nullptr);
    EXPECT_TRUE(parentAlive.expired() && childrenAlive.expired());

    auto bone = std::make_shared<Bone>();
    const std::weak_ptr<Bone> boneAlive = bone;
    mesh->Chunks->Item(1)->Geometry->BoneObject = bone;
    mesh->RootBone = std::move(bone);
    EXPECT_EQ(mesh->RootBone, boneAlive.lock());
    mesh->RootBone.reset();
    EXPECT_FALSE(boneAlive.expired());
}

/// Loads one good or failing file after another; what a load has replaced must be freed.
template <class Asset>
void LoadAThousandTimes(const Bytes& good)
{
    Asset asset;
    std::weak_ptr<void> former;
    for (int i = 0; i < 1'000; ++i)
    {
        ASSERT_TRUE(asset.LoadBytes(good.Span()));
        ASSERT_TRUE(former.expired());
        former = asset.RootBone;
        EXPECT_FALSE(asset.LoadBytes(Bytes().Text("JUNK").Span()));
    }
}

TEST(Lifetime, ASharedArrayOutlivesItsReplacementAndItsGrowth)
{
    Geometry geometry;
    EXPECT_EQ(geometry.ShareVertices(), nullptr);
    geometry.SetMaxVertices(1);
    const auto vertices = geometry.ShareVertices();
    EXPECT_EQ(vertices, geometry.ShareVertices());
    vertices->x = 5;
    EXPECT_EQ(geometry.Vertices()[0].x, 5);
    geometry.SetMaxVertices(2);
    EXPECT_EQ(vertices->x, 5);
    EXPECT_EQ(geometry.Vertices()[0].x, 0);
    EXPECT_NE(vertices, geometry.ShareVertices());

    geometry.FaceNormals->Add({1, 2, 3});
    const auto normals = geometry.FaceNormals->ShareEntries();
    for (int i = 0; i < 1000; ++i)
        geometry.FaceNormals->Add({4, 5, 6});
    EXPECT_EQ(*normals, Vector({1, 2, 3}));
    EXPECT_EQ(geometry.FaceNormals->Item(1), Vector({1, 2, 3}));

    std::shared_ptr<Keyframe> frames;
    {
        BoneAnim bone;
        bone.InitFrames(3);
        bone.SetFrame(3, {{1, 0, 0}, {}});
        frames = bone.ShareFrames();
        bone.InitFrames(1);
    }
    EXPECT_EQ(frames.get()[3].p.x, 1);
}

TEST(Lifetime, AThousandLoadsKeepOnlyTheLast)
{
    LoadAThousandTimes<Mesh>(GoodMesh());
    LoadAThousandTimes<Anim>(GoodAnim());
}

/// Runs `task` on a thread with the stack that a load may need.
void RunOnSmallStack(std::function<void()> task)
{
#ifdef NDEBUG
    constexpr std::size_t kStackSize = kIsAddressSanitized ? 4'194'304 : 262'144;
#else
    constexpr std::size_t kStackSize = 4'194'304; // the library isn't optimised
#endif
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackSize), 0);
    const auto run = [](void* given) -> void*
    {
        (*static_cast<std::function<void()>*>(given))();
        return nullptr;
    };
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &task), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(Lifetime, TheDeepestTreesInTheDeepestModelsAreLoadedAndFreedOnASmallStack)
{
    constexpr int kModels = 32;
    AssetFolder folder;
    for (int i = 0; i < kModels; ++i)
    {
        const std::string name = i == 0 ? "wagon" : "a" + std::to_string(i);
        folder.Write(name + "/config.txt", "kuid <kuid:" + std::to_string(i) +
                                               ">\nbogey-0 <kuid:" + std::to_string(i + 1) +
                                               ">\nmesh-table\n{\ne\n{\nmesh m.im\nanim a.kin\n}\n}\n");
        folder.Write(name + "/m.im", MeshWith(Chain(MeshBone, kMaxBoneDepth)).Str());
        folder.Write(name + "/a.kin", AnimWith(0, Chain(AnimBone, kMaxBoneDepth)).Str());
    }
    RunOnSmallStack(
        [&]
        {
            int models = 0;
            for (auto model = folder.Loaded(); model && model->MeshTable()->Count() == 1; ++models)
            {
                EXPECT_EQ(model->MeshTable()->Item(1)->Mesh->BoneCount, kMaxBoneDepth);
                EXPECT_TRUE(model->MeshTable()->Item(1)->anim->RootBone);
                model = model->Bogies->Count() == 1 ? model->Bogies->Item(1) : nullptr;
            }
            EXPECT_EQ(models, kModels);
        });
}

} // namespace
} // namespace ZLMIM::Testing

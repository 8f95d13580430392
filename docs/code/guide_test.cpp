#include "poses.h"
#include "transforms.h"
#include "triangles.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/attachment.h"
#include "zlmim/mesh/bone.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace ZLMIM::Guide
{
namespace
{

TEST(Triangles, FollowTheKindOfPrimitive)
{
    const struct
    {
        const char* name;
        PrimFlag type;
        std::vector<std::int32_t> indices;
        std::vector<Triangle> triangles;
    } cases[] = {
        {"list", PrimFlag::TRIANGLES, {0, 1, 2, 2, 1, 3}, {{0, 1, 2}, {2, 1, 3}}},
        {"list with two more indices", PrimFlag::TRIANGLES, {0, 1, 2, 2, 1}, {{0, 1, 2}}},
        {"strip", PrimFlag::TRI_STRIP, {0, 1, 2, 3, 4}, {{0, 1, 2}, {2, 1, 3}, {2, 3, 4}}},
        {"fan", PrimFlag::TRI_FAN, {0, 1, 2, 3, 4}, {{0, 1, 2}, {0, 2, 3}, {0, 3, 4}}},
        {"index past the vertices", PrimFlag::TRI_STRIP, {0, 1, 2, 5, 4, 3, 2}, {{0, 1, 2}, {4, 3, 2}}},
        {"negative index", PrimFlag::TRIANGLES, {0, 1, -1, 0, 1, 2}, {{0, 1, 2}}},
        {"two indices", PrimFlag::TRI_FAN, {0, 1}, {}},
        {"no indices", PrimFlag::TRIANGLES, {}, {}},
        {"lines", PrimFlag::LINES, {0, 1, 1, 2}, {}},
        {"unknown kind", static_cast<PrimFlag>(7), {0, 1, 2}, {}},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Geometry geometry;
        geometry.PrimitiveType = c.type;
        geometry.SetMaxVertices(5);
        geometry.SetMaxIndex(static_cast<std::int32_t>(c.indices.size()));
        for (std::size_t i = 0; i < c.indices.size(); ++i)
            geometry.SetIndex(static_cast<std::int32_t>(i), c.indices[i]);
        EXPECT_EQ(Triangles(geometry), c.triangles);
    }
}

/// A quarter turn from x to y, then a move.
constexpr Matrix kTurned = {0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 20, 30};

TEST(Transforms, ApplyTheFirstMatrixFirst)
{
    const Matrix moved = {1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3};
    EXPECT_EQ(Transform({1, 0, 0}, kTurned), (Vector{10, 21, 30}));
    EXPECT_EQ(Transform({1, 0, 0}, Multiply(moved, kTurned)), (Vector{8, 22, 33}));
    EXPECT_EQ(Transform({1, 0, 0}, Multiply(kTurned, moved)), (Vector{11, 23, 33}));
}

TEST(Transforms, HaveAnInverseUnlessTheyAreFlat)
{
    const Matrix scaled = {2, 0, 0, 0, 0, 4, 0, -8, 0, 1, 2, 3};
    for (const Matrix& matrix : {kTurned, scaled})
    {
        const auto inverse = Inverse(matrix);
        ASSERT_TRUE(inverse);
        EXPECT_EQ(Multiply(matrix, *inverse), kIdentity);
        EXPECT_EQ(Multiply(*inverse, matrix), kIdentity);
    }
    EXPECT_FALSE(Inverse({1, 0, 0, 0, 1, 0, 0, 0, 0, 1, 2, 3}));
}

TEST(Transforms, FollowTheParentsOfAnEntry)
{
    const auto bottom = std::make_shared<MeshEntry>();
    const auto middle = std::make_shared<MeshEntry>();
    const auto top = std::make_shared<MeshEntry>();
    middle->SetAttParent(bottom);
    middle->Att = std::make_shared<Attachment>();
    middle->Att->Matrix = kTurned;
    top->SetAttParent(middle);
    EXPECT_EQ(EntryTransform(bottom), kIdentity);
    EXPECT_EQ(EntryTransform(middle), kTurned);
    EXPECT_EQ(EntryTransform(top), kIdentity); // without an attachment point
    top->Att = std::make_shared<Attachment>();
    top->Att->Matrix = kIdentity;
    EXPECT_EQ(EntryTransform(top), kTurned);

    bottom->SetAttParent(bottom); // an entry that names itself as `att-parent`
    EXPECT_EQ(EntryTransform(top), kTurned);
    bottom->SetAttParent(nullptr);
}

TEST(Poses, MoveAChunkFromItsRestPose)
{
    const auto parent = std::make_shared<Bone>();
    parent->Name = u"parent";
    parent->Position = {1, 0, 0};
    parent->Rotation = {0, 0, 0, 1};
    const auto child = std::make_shared<Bone>();
    child->Name = u"child";
    child->Position = {0, 5, 0};
    child->Rotation = {0, 0, 0, 1};
    child->SetParent(parent);

    // The parent moves by 2 along x, and makes a quarter turn about z, from slot 0 to slot 1. Slot 2 is
    // empty.
    const float half = std::sqrt(0.5F);
    Anim anim;
    anim.FrameCount = 2;
    anim.RootBone = std::make_shared<BoneAnim>();
    anim.RootBone->Name = u"parent";
    anim.RootBone->InitFrames(2);
    anim.RootBone->SetFrame(0, {{1, 0, 0}, {0, 0, 0, 1}});
    const struct
    {
        const char* name;
        std::shared_ptr<Bone> bone;
        float sign; // of the quaternion in slot 1
        float slot;
        Vector point;
        Vector moved;
    } cases[] = {
        {"first slot", parent, 1, 0, {2, 0, 0}, {2, 0, 0}},
        {"second slot", parent, 1, 1, {2, 0, 0}, {3, -1, 0}},
        {"between", parent, 1, 0.5F, {2, 0, 0}, {2 + half, -half, 0}},
        {"between, negated", parent, -1, 0.5F, {2, 0, 0}, {2 + half, -half, 0}},
        {"child", child, 1, 1, {1, 6, 0}, {9, 0, 0}},
        {"empty slot", parent, 1, 2, {2, 0, 0}, {2, 0, 0}},
        {"after the last slot", parent, 1, 7.5F, {2, 0, 0}, {2, 0, 0}},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        anim.RootBone->SetFrame(1, {{3, 0, 0}, {0, 0, c.sign * half, c.sign * half}});
        const Vector moved = Transform(c.point, ChunkMotion(c.bone, anim, c.slot));
        EXPECT_NEAR(moved.x, c.moved.x, 1e-5);
        EXPECT_NEAR(moved.y, c.moved.y, 1e-5);
        EXPECT_NEAR(moved.z, c.moved.z, 1e-5);
    }
}

} // namespace
} // namespace ZLMIM::Guide

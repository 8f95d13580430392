#include "places.h"
#include "triangles.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/attachment.h"
#include "zlmim/mesh/bone.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace ZLMIM::Guide
{
namespace
{

TEST(Triangles, AreWhatTheIndicesOfEachKindDescribe)
{
    const struct
    {
        const char* name;
        PrimFlag type;
        std::vector<std::int32_t> indices;
        std::vector<Triangle> triangles;
    } cases[] = {
        {"list", PrimFlag::TRIANGLES, {0, 1, 2, 2, 1, 3}, {{0, 1, 2}, {2, 1, 3}}},
        {"list with a rest", PrimFlag::TRIANGLES, {0, 1, 2, 2, 1}, {{0, 1, 2}}},
        {"strip", PrimFlag::TRI_STRIP, {0, 1, 2, 3, 4}, {{0, 1, 2}, {2, 1, 3}, {2, 3, 4}}},
        {"fan", PrimFlag::TRI_FAN, {0, 1, 2, 3, 4}, {{0, 1, 2}, {0, 2, 3}, {0, 3, 4}}},
        {"corner past the end", PrimFlag::TRI_STRIP, {0, 1, 2, 5, 4, 3, 2}, {{0, 1, 2}, {4, 3, 2}}},
        {"corner below 0", PrimFlag::TRIANGLES, {0, 1, -1, 0, 1, 2}, {{0, 1, 2}}},
        {"two indices", PrimFlag::TRI_FAN, {0, 1}, {}},
        {"none", PrimFlag::TRIANGLES, {}, {}},
        {"lines", PrimFlag::LINES, {0, 1, 1, 2}, {}},
        {"no kind that is known", static_cast<PrimFlag>(7), {0, 1, 2}, {}},
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

/// A quarter turn that leads x to y and y to -x, then a move.
constexpr Matrix kTurned = {0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 20, 30};

TEST(Places, ComposeFromTheFirstToTheLast)
{
    const Matrix moved = {1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3};
    EXPECT_EQ(Place({1, 0, 0}, kTurned), (Vector{10, 21, 30}));
    EXPECT_EQ(Place({1, 0, 0}, Then(moved, kTurned)), (Vector{8, 22, 33}));
    EXPECT_EQ(Place({1, 0, 0}, Then(kTurned, moved)), (Vector{11, 23, 33}));
}

TEST(Places, FollowTheEntriesThatOneHangsOn)
{
    const auto below = std::make_shared<MeshEntry>();
    const auto middle = std::make_shared<MeshEntry>();
    const auto above = std::make_shared<MeshEntry>();
    middle->SetAttParent(below);
    middle->Att = std::make_shared<Attachment>();
    middle->Att->Matrix = kTurned;
    above->SetAttParent(middle);
    EXPECT_EQ(PlaceOf(below), kUnmoved);
    EXPECT_EQ(PlaceOf(middle), kTurned);
    EXPECT_EQ(PlaceOf(above), kUnmoved); // its parent has no point of the name
    above->Att = std::make_shared<Attachment>();
    above->Att->Matrix = kUnmoved;
    EXPECT_EQ(PlaceOf(above), kTurned);

    below->SetAttParent(below); // as `att-parent` with an entry's own name does
    EXPECT_EQ(PlaceOf(above), kTurned);
    below->SetAttParent(nullptr);
}

} // namespace
} // namespace ZLMIM::Guide

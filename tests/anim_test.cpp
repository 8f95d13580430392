#include "zlmim/anim/anim.h"

#include "good_files.h"
#include "model_walker.h"
#include "outcome.h"

#include <gtest/gtest.h>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

/// The x of the position in each of a bone's slots.
std::vector<float> Slots(const BoneAnim& bone)
{
    std::vector<float> slots;
    for (const Keyframe& keyframe : bone.Frames())
        slots.push_back(keyframe.p.x);
    return slots;
}

TEST(Anim, HoldsEveryFieldOfAGoodFile)
{
    Anim anim;
    EXPECT_EQ(anim.MetScale, 1.0f);
    ASSERT_TRUE(anim.LoadBytes(GoodAnim().Span(), u"Folder\\Run.KIN"));

    EXPECT_EQ(anim.ErrorMessage, u"");
    EXPECT_EQ(anim.FrameCount, 2);
    EXPECT_EQ(anim.FPS, 25);
    EXPECT_EQ(anim.Version, 102);
    EXPECT_EQ(anim.MetScale, 0.5f);
    EXPECT_EQ(anim.Name, u"Run");
    EXPECT_EQ(anim.FileSize, 404);
    EXPECT_EQ(anim.FileName, u"Folder\\Run.KIN");
    EXPECT_EQ(Outline(*anim.RootBone), "A(B(D) C)");

    const auto a = anim.RootBone;
    const auto b = a->Children()->Item(1);
    EXPECT_EQ(a->Version, 100);
    EXPECT_EQ(Slots(*a), (std::vector<float>{0, 11, 21}));
    EXPECT_EQ(Slots(*b), (std::vector<float>{0, 12, 22}));
    EXPECT_EQ(Slots(*b->Children()->Item(1)), (std::vector<float>{0, 13, 23}));
    EXPECT_EQ(Slots(*a->Children()->Item(2)), (std::vector<float>{0, 14, 24}));
    EXPECT_EQ(a->GetFrame(2), (Keyframe{{21, 0, 0}, {0, 0, 0.6f, 0.8f}}));
    EXPECT_EQ(a->GetFrame(0), Keyframe());
}

TEST(AnimHeader, FailsByWhereTheFileEnds)
{
    const auto info = [](std::int32_t size)
    { return Bytes().Text("JIRF....ANIM....").Long(size).Long(7).String("").Long(0).Long(25).Single(3); };
    const auto events = [&](std::int32_t sizeError) { return info(20).Block("EVNT", {}, sizeError); };
    const auto skeleton = Bytes().Append(AnimSkeleton(AnimBone("A")));
    const auto noJirf = u"Not a ZL file - no JIRF";
    const auto noAnim = u"Not a ZLM ANIM file - no ANIM";
    const struct
    {
        const char* name;
        Bytes file;
        const char* outcome;
        const char16_t* message;
        std::int32_t fps; // 25 if the info block was read
    } cases[] = {
        {"empty", Bytes(), "BoundsError", u"", 0},
        {"2 bytes", Bytes().Text("JI"), "BoundsError", u"", 0},
        {"3 bytes", Bytes().Text("JIR"), "false", noJirf, 0},
        {"other letter case", Bytes().Text("JIRf"), "false", noJirf, 0},
        {"signature alone", Bytes().Text("JIRF"), "BoundsError", u"", 0},
        {"10 bytes", Bytes().Text("JIRF....AN"), "BoundsError", u"", 0},
        {"11 bytes", Bytes().Text("JIRF....ANI"), "false", noAnim, 0},
        {"a mesh", Bytes().Text("JIRF....IDXM"), "false", noAnim, 0},
        {"no info block", Bytes().Text("JIRF....ANIM...."), "BoundsError", u"", 0},
        {"info size out of range", info(2'147'483'632), "OverflowError", u"", 25},
        {"info size points before the file", info(-21), "BoundsError", u"", 25},
        {"no events", info(20), "false", u"", 25},
        {"1 byte of a tag", info(20).Text("E"), "BoundsError", u"", 25},
        {"3 bytes of a tag", info(20).Text("EVN"), "false", u"", 25},
        {"skeleton before the events", info(20).Append(skeleton).Block("EVNT", {}), "false", u"", 25},
        {"no size of the events", info(20).Text("EVNT"), "BoundsError", u"", 25},
        {"event size out of range", events(kHighest).Append(skeleton), "OverflowError", u"", 25},
        {"event size points before the file", events(-100).Append(skeleton), "BoundsError", u"", 25},
        {"event size points past the file", events(100).Append(skeleton), "false", u"", 25},
        {"no skeleton", events(0).Append(Frame(0, {1})), "false", u"", 25},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Anim anim;
        EXPECT_EQ(LoadOutcome(anim, c.file.Span()), c.outcome);
        EXPECT_EQ(anim.ErrorMessage, c.message);
        EXPECT_EQ(anim.FPS, c.fps);
        EXPECT_EQ(anim.MetScale, c.fps == 0 ? 1.0f : 3.0f);
        EXPECT_EQ(anim.RootBone, nullptr);
    }
}

TEST(AnimHeader, SizeDecidesWhereTheEventsStart)
{
    const auto skeleton = Bytes().Append(AnimSkeleton(AnimBone("A")));
    const auto extra = AnimHeader("n", 0, 30, 1, 100, 5).Block("EVNT", Bytes().Text("SKEL"));
    // 8 bytes of info: the events start inside the name, and end with the info's last field.
    const auto name = Bytes().Long(8).Text("EVNT").Long(12).Zeros(12);
    const auto inside = Bytes().Text("JIRF....ANIM....").Long(8).Long(100).Append(name);
    const std::pair<Bytes, std::u16string> cases[] = {{extra, u"n"}, {inside, u"EVNT\f"}};
    for (const auto& [header, text] : cases)
    {
        Anim anim;
        ASSERT_TRUE(anim.LoadBytes(Bytes(header).Append(skeleton).Span()));
        EXPECT_EQ(anim.Name, text);
        EXPECT_EQ(Outline(*anim.RootBone), "A");
    }
}

TEST(AnimSkeleton, HasAsManyBonesAsTheCountsSay)
{
    const auto b = AnimBone("B");
    const auto tailed = Bytes().Long(1).String("A").Long(1).Append(b).Text("BONE tail");
    const auto longer = Bytes().Block("BONE", Bytes().Long(1).String("B").Long(0), 4).Zeros(4);
    const struct
    {
        const char* name;
        Bytes root;
        std::string_view tree;
        float lastPose;
    } cases[] = {
        {"negative child count", AnimBone("A", -1, b), "A", 1},
        {"no root block", Bytes().Text("bone"), "", 1},
        {"children without a block", AnimBone("A", 3, b), "A(B  )", 4},
        {"a foreign block", AnimBone("A", 2, Bytes().Block("SKEL", {}).Append(b)), "A( )", 3},
        {"bytes after the last child", Bytes().Block("BONE", tailed), "A(B)", 2},
        {"bytes after the first child", AnimBone("A", 2, Bytes(longer).Append(b)), "A(B B)", 3},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Anim anim;
        ASSERT_TRUE(anim.LoadBytes(AnimWith(1, c.root).Append(Frame(0, {1, 2, 3, 4})).Span()));
        EXPECT_EQ(Outline(*anim.RootBone), c.tree);
        // A bone without a block has its record in each frame, like any other.
        auto last = anim.RootBone;
        while (last->Children()->Count() > 0)
            last = last->Children()->Item(last->Children()->Count());
        EXPECT_EQ(last->GetFrame(0).p.x, c.lastPose);
    }
}

TEST(AnimFrames, AreStoredAtTheirNumbers)
{
    const struct
    {
        const char* name;
        std::int32_t frameCount;
        std::vector<std::int32_t> numbers;
        const char* outcome;
        std::vector<float> slots; // x is the number of the block in the file, from 1
    } cases[] = {
        {"from 0", 2, {0, 1}, "true", {1, 2, 0}},
        {"from 1", 2, {1, 2}, "true", {0, 1, 2}},
        {"in any order", 2, {2, 0}, "true", {2, 0, 1}},
        {"more than are stored together",
         10,
         {9, 8, 7, 6, 5, 4, 3, 2, 1, 0},
         "true",
         {10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}},
        {"twice the same", 2, {1, 1}, "true", {0, 2, 0}},
        {"too high", 2, {1, 3}, "BoundsError", {0, 1, 0}},
        {"negative", 2, {1, -1}, "BoundsError", {0, 1, 0}},
        {"more blocks than declared", 1, {1, 0}, "true", {0, 1}},
        {"fewer blocks than declared", 3, {1, 2}, "false", {0, 1, 2, 0}},
        {"zero declared", 0, {0}, "true", {0}},
        {"a negative count", -1, {0}, "BoundsError", {}},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        auto file = AnimWith(c.frameCount, AnimBone("A"));
        float place = 0;
        for (const std::int32_t number : c.numbers)
            file.Append(Frame(number, {++place}));
        Anim anim;
        EXPECT_EQ(LoadOutcome(anim, file.Span()), c.outcome);
        EXPECT_EQ(anim.ErrorMessage, u"");
        ASSERT_NE(anim.RootBone, nullptr);
        EXPECT_EQ(Slots(*anim.RootBone), c.slots);
    }
}

TEST(AnimFrames, SizeDecidesWhereTheNextStarts)
{
    const auto head = AnimWith(2, AnimBone("A"));
    Anim anim;
    // The first block has no record: its pose is read from the second block, which is then read itself.
    ASSERT_TRUE(anim.LoadBytes(Bytes(head).Append(Frame(0, {})).Append(Frame(2, {7})).Span()));
    EXPECT_EQ(anim.RootBone->GetFrame(0).q.y, 7.0f);
    EXPECT_EQ(anim.RootBone->GetFrame(2).p.x, 7.0f);

    ASSERT_TRUE(anim.LoadBytes(Bytes(head).Append(Frame(0, {1, 9, 9})).Append(Frame(2, {2})).Span()));
    EXPECT_EQ(Slots(*anim.RootBone), (std::vector<float>{1, 0, 2}));
}

TEST(AnimFrames, KeepTheRecordsBeforeAFailure)
{
    const auto tree = AnimBone("A", 2, AnimBone("B").Append(AnimBone("C")));
    const auto file = [&](std::int32_t second) {
        return AnimWith(2, tree).Append(Frame(0, {1, 2, 3})).Append(Frame(second, {4, 5, 6}));
    };
    const struct
    {
        const char* name;
        Bytes file;
        std::size_t cut;
        const char* outcome;
        std::vector<float> a, b, c;
    } cases[] = {
        {"the last byte, which then reads as 0", file(1), 1, "true", {1, 4, 0}, {2, 5, 0}, {3, 6, 0}},
        {"the end of the last pose", file(1), 2, "BoundsError", {1, 4, 0}, {2, 5, 0}, {3, 0, 0}},
        {"all but the first pose", file(1), 56, "BoundsError", {1, 4, 0}, {2, 0, 0}, {3, 0, 0}},
        {"all but the first pose of a slot filled before",
         file(0),
         56,
         "BoundsError",
         {4, 0, 0},
         {2, 0, 0},
         {3, 0, 0}},
        {"the end of the first pose", file(1), 60, "BoundsError", {1, 0, 0}, {2, 0, 0}, {3, 0, 0}},
        {"the whole block", file(1), 100, "false", {1, 0, 0}, {2, 0, 0}, {3, 0, 0}},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Anim anim;
        const auto bytes = c.file.Span().first(c.file.Size() - c.cut);
        EXPECT_EQ(LoadOutcome(anim, bytes), c.outcome);
        const auto children = anim.RootBone->Children();
        EXPECT_EQ(Slots(*anim.RootBone), c.a);
        EXPECT_EQ(Slots(*children->Item(1)), c.b);
        EXPECT_EQ(Slots(*children->Item(2)), c.c);
    }
}

TEST(AnimFrames, FillATreeOfTheHost)
{
    const auto root = std::make_shared<BoneAnim>();
    const auto first = std::make_shared<BoneAnim>();
    const auto last = std::make_shared<BoneAnim>();
    first->SetChildren(nullptr);
    for (const auto& child : {first, std::shared_ptr<BoneAnim>(), last})
        root->Children()->Add(child);
    Anim anim;
    anim.RootBone = root;
    const auto file = AnimHeader("n", 1).Block("EVNT", {}).Append(Frame(0, {1, 2, 3}));
    ASSERT_TRUE(anim.LoadBytes(file.Span()));
    EXPECT_EQ(Slots(*root), (std::vector<float>{1, 0}));
    EXPECT_EQ(Slots(*first), (std::vector<float>{2, 0}));
    EXPECT_EQ(Slots(*last), (std::vector<float>{3, 0}));

    root->Children()->Add(root);
    EXPECT_EQ(LoadOutcome(anim, file.Span()), "BoundsError");
    root->SetChildren(nullptr); // breaks the cycle
}

TEST(Anim, ReplacesWhatALaterFileHas)
{
    Anim anim;
    ASSERT_FALSE(anim.LoadBytes(Bytes().Text("JIRF....IDXM").Span()));
    ASSERT_TRUE(anim.LoadBytes(GoodAnim().Span()));
    EXPECT_EQ(anim.ErrorMessage, u"Not a ZLM ANIM file - no ANIM");

    // Without a skeleton the old tree gets new tables with the new frames.
    const auto old = anim.RootBone;
    const auto frames = AnimHeader("x", 1, 10, 0, 3).Block("EVNT", {}).Append(Frame(0, {1, 2, 3, 4}));
    ASSERT_TRUE(anim.LoadBytes(frames.Span()));
    EXPECT_EQ(anim.RootBone, old);
    EXPECT_EQ(Slots(*old), (std::vector<float>{1, 0}));
    EXPECT_EQ(Slots(*old->Children()->Item(2)), (std::vector<float>{4, 0}));
    EXPECT_EQ(anim.Name, u"x");
    EXPECT_EQ(anim.MetScale, 0.0f);

    ASSERT_TRUE(anim.LoadBytes(AnimWith(0, AnimBone("Z")).Span()));
    EXPECT_EQ(Outline(*anim.RootBone), "Z");
    EXPECT_EQ(Slots(*anim.RootBone), (std::vector<float>{0}));
    EXPECT_EQ(Slots(*old), (std::vector<float>{1, 0}));
}

TEST(BoneAnim, HasOnlyTheSlotsOfItsLastTable)
{
    BoneAnim bone;
    const Keyframe pose{{1, 2, 3}, {4, 5, 6, 7}};
    EXPECT_EQ(ErrorPosition([&] { return bone.GetFrame(0); }), 0);
    EXPECT_EQ(ErrorPosition([&] { bone.SetFrame(0, pose); }), 0);
    bone.InitFrames(1);
    bone.SetFrame(1, pose);
    EXPECT_EQ(bone.GetFrame(0), Keyframe());
    EXPECT_EQ(bone.GetFrame(1), pose);
    EXPECT_EQ(ErrorPosition([&] { return bone.GetFrame(2); }), 2);
    EXPECT_EQ(ErrorPosition([&] { bone.SetFrame(-1, pose); }), -1);
    EXPECT_EQ(ErrorPosition([&] { bone.InitFrames(-1); }), -1);
    EXPECT_EQ(bone.GetFrame(1), pose);
    bone.InitFrames(0);
    EXPECT_EQ(bone.GetFrame(0), Keyframe());
    EXPECT_EQ(ErrorPosition([&] { return bone.GetFrame(1); }), 1);
}

} // namespace
} // namespace ZLMIM::Testing

#include "asset_folder.h"
#include "drawing.h"
#include "good_files.h"
#include "made_assets.h"
#include "scene.h"
#include "sheet.h"
#include "tools/common/poses.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <tuple>
#include <vector>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#include <stb/stb_image.h>

namespace ZLMIM::Picture
{
namespace
{

using namespace ZLMIM::Testing;
using Corners = std::array<glm::vec3, 3>;

constexpr rgbColour kRed = {1, 0, 0};
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

Bytes ChunkOf(PrimFlag kind, const std::vector<Vector>& points, const std::vector<int>& indices,
              const rgbColour& diffuse = kRed)
{
    ChunkPlan plan = {.kind = kind, .primitives = 99, .indices = indices, .diffuse = diffuse}; // 99 is wrong
    for (const auto& [x, y, z] : points)
        plan.vertices.push_back({x, y, z, 0, 0});
    return PlannedChunk(plan);
}

template <class Object>
Scene SceneOf(const Object& object, const SceneRequest& request = {})
{
    PathResolver names;
    TextureCache textures;
    return SceneMaker(request, names, textures).Make(object);
}

Scene SceneOf(const std::vector<Bytes>& chunks)
{
    Mesh mesh;
    EXPECT_TRUE(mesh.LoadBytes(MeshOf(chunks).Span()));
    return SceneOf(mesh);
}

Image DrawFrom(const Scene& scene, const Turn& turn, int width, int height)
{
    Frame frame(turn);
    frame.Include(scene);
    return Draw(scene, frame, width, height).Image;
}

TEST(Picture, MakesTrianglesOfEachPrimitiveType)
{
    const std::vector<Vector> points = {{0, 0, 0}, {1, 1, 0}, {2, 4, 0}, {3, 9, 0}, {4, 16, 0}};
    const struct
    {
        PrimFlag type;
        std::vector<int> indices;
        std::vector<std::array<float, 3>> corners; // by their x
    } cases[] = {
        {PrimFlag::TRIANGLES, {0, 1, 2, 2, 3, 4, 0, 1}, {{0, 1, 2}, {2, 3, 4}}},
        {PrimFlag::TRI_STRIP, {4, 0, 1, 2, 2, 3}, {{4, 0, 1}, {1, 0, 2}}}, // two without a surface
        {PrimFlag::TRI_FAN, {1, 2, 3, 4}, {{1, 2, 3}, {1, 3, 4}}},
        {PrimFlag::TRI_FAN, {1, 2}, {}},
    };
    for (const auto& [type, indices, corners] : cases)
    {
        SCOPED_TRACE(static_cast<int>(type));
        const Scene scene = SceneOf({ChunkOf(type, points, indices, {0.5F, -1, kNan})});
        EXPECT_TRUE(scene.Problems.empty());
        std::vector<std::array<float, 3>> found;
        for (const Triangle& triangle : scene.Triangles)
        {
            const auto& [a, b, c] = triangle.Corners;
            found.push_back({a.x, b.x, c.x});
            EXPECT_EQ(scene.Surfaces[triangle.Surface].Colour, glm::vec3(0.5F, 0, 0));
        }
        EXPECT_EQ(found, corners);
    }
}

TEST(Picture, PlacesAttachedEntries)
{
    const Bytes triangle = ChunkOf(PrimFlag::TRIANGLES, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 2});
    // A quarter turn from x to y, then a move along x.
    const Matrix turn = {0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 0, 0};
    const Matrix enlarge = {2, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 5};
    auto points = Bytes().Long(100).Long(4).String("a.p").Record(turn).String("a.bogey7").Record(turn);
    points.String("a.pantograph").Record(turn).String("a.q").Record(enlarge);
    AssetFolder folder;
    folder.Write("wagon/t.im", MeshHeader(1).Append(triangle).Block("ATCH", points).Str());
    folder.Write("bogey/config.txt", "kuid <k:1>\nasset-filename t\n");
    folder.Write("bogey/t.im", MeshHeader(1).Append(triangle).Str());
    folder.Write("bare/config.txt", "kuid <k:3>\n");
    folder.Wagon("bogey-7 <k:1>\nbogey-8 <k:1>\nbogey-9 <k:3>\npantograph <k:2>\nmesh-table {\n"
                 "a {\nmesh t.im\n}\n"
                 "b {\nmesh t.im\natt-parent a\natt a.p\n}\n"
                 "c {\nmesh t.im\natt-parent b\natt a.q\n}\n"
                 "d {\nmesh t.im\natt-parent d\natt a.p\n}\n"
                 "e {\nmesh t.im\natt-parent d\natt a.p\n}\n"
                 "f {\nmesh nowhere.im\n}\n"
                 "g {\nmesh t.im\natt-parent a\natt a.nowhere\n}\n}\n");
    const auto model = folder.Loaded();
    const Scene scene = SceneOf(*model);
    std::vector<Corners> found;
    for (const Triangle& each : scene.Triangles)
        found.push_back(each.Corners);
    const Corners hung = {{{10, 0, 0}, {10, 1, 0}, {9, 0, 0}}};
    const Corners a = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    const Corners c = {{{10, 0, 5}, {10, 2, 5}, {8, 0, 5}}};
    // a, b and c all have the bogey's attachment point; the first one is used.
    EXPECT_EQ(found, (std::vector<Corners>{a, hung, c, a, hung}));
    EXPECT_EQ(scene.Problems, (std::vector<std::string>{
                                  "entry \"d\" hangs on itself, so it is skipped",
                                  "entry \"e\" is skipped, like \"d\", on which it hangs",
                              }));
    EXPECT_EQ(scene.Notes,
              (std::vector<std::string>{
                  "bogey-8 is skipped: no mesh of the asset has an attachment point \"a.bogey8\"",
                  "bogey-9 is skipped: the asset <k:3> has no mesh",
              }));
    // Entries can be hidden, such as meshes for day or night. Meshes attached to a hidden entry stay in
    // place.
    const Scene shown = SceneOf(*model, {.Only = {u"b", u"c", u"g"}, .Without = {u"b", u"g"}});
    ASSERT_EQ(shown.Triangles.size(), 1U);
    EXPECT_EQ(shown.Triangles[0].Corners, c);
}

TEST(Picture, SkipsWhatCantBeDrawn)
{
    constexpr float kMax = std::numeric_limits<float>::max();
    const std::vector<Vector> points = {
        {0, 0, 0}, {kMax, 0, -kMax}, {-kMax, kMax, 0}, {kNan, 0, 0}, {0, -kMax, 1}};
    Scene scene =
        SceneOf({ChunkOf(PrimFlag::TRIANGLES, points, {0, 1, 2, 0, 1, 3, 0, 1, 5, 0, -1, 2, 1, 2, 4})});
    EXPECT_EQ(scene.Triangles.size(), 2);
    EXPECT_EQ(scene.Problems, (std::vector<std::string>{
                                  "1 triangle is skipped: a corner has infinite or undefined coordinates",
                                  "2 triangles are skipped: indices are of no vertex of the chunk",
                              }));

    scene.Triangles.resize(1000, scene.Triangles[1]);
    for (const Turn& turn : {TurnFrom(0, 0), TurnFrom(270, 0), TurnFromTop(), TurnFrom(53, 26)})
    {
        Frame frame(turn);
        frame.Include(scene);
        const Drawing drawing = Draw(scene, frame, 32, 16);
        EXPECT_NE(drawing.Image.Pixels, std::vector(drawing.Image.Pixels.size(), kBackground));
        EXPECT_GT(drawing.Skipped, 500);
    }
    EXPECT_EQ(DrawFrom({}, TurnFrom(0, 0), 2, 1).Pixels, std::vector(2, kBackground));
}

TEST(Picture, DrawsLinesPointsAndVerticesBeyond15Bits)
{
    const std::vector<Vector> points = {{-1, 0, -1}, {1, 0, 1}, {-1, 0, 1}};
    for (const auto& [type, lines] : {std::pair(PrimFlag::LINES, 1U), std::pair(PrimFlag::LINE_STRIP, 2U),
                                      std::pair(PrimFlag::POINTS, 3U)})
    {
        const Scene scene = SceneOf({ChunkOf(type, points, {0, 1, 2})});
        EXPECT_EQ(scene.Lines.size(), lines);
        const Image image = DrawFrom(scene, TurnFrom(180, 0), 40, 40);
        EXPECT_EQ(image.Pixels[20 * 40 + 20] != kBackground, type != PrimFlag::POINTS);
        EXPECT_NE(image.Pixels[38 * 40 + 2], kBackground); // the first point, to the left and below
    }
    std::vector<Vector> many(40'000, {0, 0, 0});
    many[39'998] = {1, 0, 0};
    many[39'999] = {0, 1, 0};
    EXPECT_EQ(SceneOf({ChunkOf(PrimFlag::TRIANGLES, many, {0, 39'998, 39'999})}).Triangles.size(), 1U);
}

TEST(Picture, DrawsTexturesAndBlendsOpacity)
{
    // A textured square: white on the left, black on the right. A translucent red square covers half of it.
    const auto quad =
        [](float y, float right, float opacity, const rgbColour& diffuse, const std::string& texture)
    {
        ChunkPlan plan = {
            .indices = {0, 1, 2, 0, 2, 3}, .texture = texture, .diffuse = diffuse, .opacity = opacity};
        for (const auto& [x, z] : {std::pair(-1.0F, -1.0F), std::pair(right, -1.0F), std::pair(right, 1.0F),
                                   std::pair(-1.0F, 1.0F)})
            plan.vertices.push_back({x, y, z, (x + 1) / 2, (z + 1) / 2});
        return PlannedChunk(plan);
    };
    const AssetFolder folder;
    const std::string header("\0\0\2\0\0\0\0\0\0\0\0\0\2\0\1\0\30\0", 18);
    std::ofstream("halves.TGA", std::ios::binary) << header << "\xFF\xFF\xFF" << std::string(3, '\0');
    std::ofstream("cut.tga", std::ios::binary).close();
    std::ofstream("m.im", std::ios::binary)
        << MeshOf({quad(0, 1, 1, {1, 1, 1}, "x\\Halves.texture"),
                   quad(-1, 0, 0.5F, {1, 0, 0}, "none.texture"),
                   quad(0, -1, 1, {1, 1, 1}, "cut.texture")}) // without an area
               .Str();
    Mesh mesh;
    ASSERT_TRUE(mesh.Load(u"m.im"));
    const Scene scene = SceneOf(mesh);
    EXPECT_EQ(
        scene.Problems,
        (std::vector<std::string>{
            "m.im: texture \"none.texture\": there is no picture for it beside the mesh, so it is drawn "
            "without",
            "m.im: texture \"cut.texture\": cut.tga is empty, so it is drawn without",
        }));
    const auto colourAt = [](const Image& image, int x)
    { return image.Pixels[static_cast<std::size_t>(20 * 40 + x)]; };
    // Seen from the back, x points to the right. The texture is blurred over its two pixels and repeats.
    const Image back = DrawFrom(scene, TurnFrom(180, 0), 40, 40);
    const glm::u8vec3 white = colourAt(DrawFrom(scene, TurnFrom(0, 0), 40, 40), 29);
    const glm::u8vec3 pink = colourAt(back, 11);
    EXPECT_GT(white.r, 150);
    EXPECT_EQ(white, glm::u8vec3(white.r));
    EXPECT_NEAR(pink.r, white.r, 2);
    EXPECT_NEAR(pink.g, white.r / 2, 2);
    EXPECT_LT(colourAt(back, 29).r, 10);
    EXPECT_GT(colourAt(DrawFrom(SceneOf(mesh, {.HasTextures = false}), TurnFrom(180, 0), 40, 40), 29).r, 150);
}

TEST(Picture, PosesMeshesByTheInverseOfTheRestPose)
{
    // Bone A is at (1, 2, 3), and its child B at (1, 2, 3) relative to A. In frame 1, B has moved by (10, 0,
    // 0).
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(MeshWith(MeshBone("A", 1, MeshBone("B"))).Span()));
    const auto pose = [](float x) { return Bytes().Record(Keyframe{{x, 2, 3}, {0, 0, 0, 1}}); };
    const auto frame = [&](std::int32_t number, float a, float b)
    { return Bytes().Block("FRAM", Bytes().Long(0).Long(number).Append(pose(a)).Append(pose(b))); };
    Anim anim;
    ASSERT_TRUE(anim.LoadBytes(
        AnimWith(2, AnimBone("A", 1, AnimBone("B"))).Append(frame(0, 1, 1)).Append(frame(1, 1, 11)).Span()));
    const auto run = Tools::RunOf(anim);
    EXPECT_EQ(std::pair(run.First, run.Last), std::pair(0, 1));
    const auto bone = mesh.RootBone->Children()->Item(1);
    for (const auto base : {Tools::PoseBase::Parent, Tools::PoseBase::Mesh})
    {
        const Tools::Poses poses(anim, base);
        EXPECT_EQ(poses.Motion(*bone, 0), glm::mat4(1));
        EXPECT_EQ(poses.Motion(*bone, 1)[3], glm::vec4(10, 0, 0, 1));
        EXPECT_EQ(poses.Motion(*bone, 0.5)[3], glm::vec4(5, 0, 0, 1));
        EXPECT_EQ(poses.Motion(*bone, 2), glm::mat4(1)); // an empty slot
    }
    // A bone moves with its parent, unless poses are relative to the mesh.
    ASSERT_TRUE(anim.LoadBytes(AnimWith(1, AnimBone("A", 1, AnimBone("B"))).Append(frame(1, 8, 1)).Span()));
    EXPECT_EQ(Tools::Poses(anim, Tools::PoseBase::Parent).Motion(*bone, 1)[3], glm::vec4(7, 0, 0, 1));
    EXPECT_EQ(Tools::Poses(anim, Tools::PoseBase::Mesh).Motion(*bone, 1), glm::mat4(1));
}

TEST(Picture, WritesAnimationsAndSheets)
{
    const Image dark = {2, 1, {{1, 2, 3}, {4, 5, 6}}};
    const Image bright = {2, 1, {{251, 252, 253}, {254, 255, 0}}};
    const std::string bytes = ToAnimatedPng({dark, bright}, 25);
    std::vector<std::string> tags;
    for (std::size_t at = 8; at + 8 < bytes.size(); at += 12U + static_cast<unsigned char>(bytes[at + 3]))
        tags.push_back(bytes.substr(at + 4, 4));
    EXPECT_EQ(tags, (std::vector<std::string>{"IHDR", "acTL", "fcTL", "IDAT", "fcTL", "fdAT", "IEND"}));
    Sheet sheet(2, 1);
    for (int i = 0; i < 5; ++i)
        sheet.Add(dark, "a name \xC3\xBC that is too long");
    const auto pages = sheet.Pages();
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(std::count(pages[0].Pixels.begin(), pages[0].Pixels.end(), glm::u8vec3(4, 5, 6)), 5);
}

TEST(Picture, ShowsTheNearerTriangle)
{
    // One triangle in the front half and one in the back half. The pixels in the middle show the nearer one.
    const std::vector<Vector> red = {{-2, 1, 0}, {2, 1, 0}, {0, 1, 4}};
    const std::vector<Vector> blue = {{-2, -1, 4}, {2, -1, 4}, {0, -1, 0}};
    const Bytes nearFront = ChunkOf(PrimFlag::TRIANGLES, red, {0, 1, 2});
    const Bytes nearBack = ChunkOf(PrimFlag::TRI_FAN, blue, {0, 1, 2}, {0, 0, 1});
    for (const auto& chunks : {std::vector{nearFront, nearBack}, std::vector{nearBack, nearFront}})
    {
        const Scene scene = SceneOf(chunks);
        const Image front = DrawFrom(scene, TurnFrom(0, 0), 50, 50);
        const Image back = DrawFrom(scene, TurnFrom(180, 0), 50, 50);
        const glm::u8vec3 lit = front.Pixels[25 * 50 + 25];
        EXPECT_GT(lit.r, 180);
        EXPECT_EQ(lit, glm::u8vec3(lit.r, 0, 0));
        EXPECT_EQ(back.Pixels[25 * 50 + 25], glm::u8vec3(0, 0, lit.r));
        EXPECT_EQ(front.Pixels[1250], kBackground);

        const std::string png = ToPng(front);
        int width = 0, height = 0, channels = 0;
        const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
            stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(png.data()), static_cast<int>(png.size()),
                                  &width, &height, &channels, 3),
            &stbi_image_free);
        ASSERT_EQ(std::tuple(width, height, channels), std::tuple(50, 50, 3));
        EXPECT_EQ(std::memcmp(pixels.get(), front.Pixels.data(), front.Pixels.size() * 3), 0);
    }
}

TEST(Picture, ShowsTheRequestedSide)
{
    // A small corner that is to the right, in front and above, and one that is opposite.
    const std::vector<Vector> points = {{1, 1, 1}, {0.5F, 1, 1}, {1, 0.5F, 1}, {1, 1, 0.5F}};
    std::vector<Vector> opposite = points;
    for (Vector& point : opposite)
        point = {-point.x, -point.y, -point.z};
    const std::vector<int> fan = {0, 1, 2, 3, 1};
    const Scene scene = SceneOf(
        {ChunkOf(PrimFlag::TRI_FAN, points, fan), ChunkOf(PrimFlag::TRI_FAN, opposite, fan, {0, 0, 1})});
    constexpr std::size_t kLow = 3, kHigh = 36;
    const struct
    {
        Turn from;
        std::size_t x, y; // of the first triangle, in a picture of 40 x 40
    } cases[] = {
        {TurnFrom(0, 0), kLow, kLow},     {TurnFrom(180, 0), kHigh, kLow}, {TurnFrom(270, 0), kLow, kLow},
        {TurnFrom(90, 0), kHigh, kLow},   {TurnFromTop(), kHigh, kHigh},   {TurnFromBottom(), kHigh, kLow},
        {TurnFrom(180, 90), kHigh, kLow},
    };
    for (const auto& [from, x, y] : cases)
    {
        SCOPED_TRACE(std::to_string(x) + " " + std::to_string(y));
        const Image image = DrawFrom(scene, from, 40, 40);
        EXPECT_GT(image.Pixels[40 * y + x].r, 100);
        EXPECT_EQ(image.Pixels[40 * y + x].b, 0);
        EXPECT_GT(image.Pixels[40 * (39 - y) + 39 - x].b, 100);
        EXPECT_EQ(image.Pixels[40 * (39 - y) + x], kBackground);
    }
}

} // namespace
} // namespace ZLMIM::Picture

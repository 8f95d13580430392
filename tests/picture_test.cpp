#include "asset_folder.h"
#include "drawing.h"
#include "good_files.h"
#include "scene.h"

#include <cstring>
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

Bytes ChunkOf(PrimFlag type, const std::vector<Vector>& points, const std::vector<int>& indices,
              const rgbColour& diffuse = kRed)
{
    const auto material = Bytes().Long(101).Long(0).Record(rgbColour{}).Record(diffuse).Zeros(20);
    Bytes geometry = Bytes().Long(200).Long(static_cast<std::int32_t>(type)).Single(0);
    geometry.Long(static_cast<std::int32_t>(points.size())).Long(99); // a count of primitives that lies
    geometry.Long(static_cast<std::int32_t>(indices.size())).Long(0).Long(0).String("");
    for (const auto& [x, y, z] : points)
        geometry.Record(Vertex{x, y, z, 0, 0});
    for (const int index : indices)
        geometry.Short(index);
    geometry.Zeros(12 * points.size());
    const auto chunk = Bytes().Long(100).Long(0).Block("MATL", material).Block("GEOM", geometry);
    return Bytes().Block("CHNK", chunk);
}

Scene SceneOf(const std::vector<Bytes>& chunks)
{
    Bytes file = MeshHeader(static_cast<std::int32_t>(chunks.size()));
    for (const Bytes& chunk : chunks)
        file.Append(chunk);
    Mesh mesh;
    EXPECT_TRUE(mesh.LoadBytes(file.Span()));
    return MakeScene(mesh);
}

TEST(Picture, MakesTrianglesOfEachKindOfRun)
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
        {PrimFlag::LINE_STRIP, {0, 1, 2}, {}},
    };
    for (const auto& [type, indices, corners] : cases)
    {
        SCOPED_TRACE(static_cast<int>(type));
        const Scene scene = SceneOf({ChunkOf(type, points, indices, {0.5F, -1, kNan})});
        EXPECT_EQ(scene.LeftOut.size(), type == PrimFlag::LINE_STRIP ? 1 : 0);
        std::vector<std::array<float, 3>> found;
        for (const Triangle& triangle : scene.Triangles)
        {
            const auto& [a, b, c] = triangle.Corners;
            found.push_back({a.x, b.x, c.x});
            EXPECT_EQ(triangle.Colour, glm::vec3(0.5F, 0, 0));
        }
        EXPECT_EQ(found, corners);
    }
}

TEST(Picture, PlacesEntriesUnderOneAnother)
{
    const Bytes triangle = ChunkOf(PrimFlag::TRIANGLES, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 2});
    // A quarter turn that takes x to y and y to -x, and a way along x.
    const Matrix turn = {0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 0, 0};
    const Matrix enlarge = {2, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 5};
    auto points = Bytes().Long(100).Long(4).String("a.p").Record(turn).String("a.bogey7").Record(turn);
    points.String("a.pantograph").Record(turn).String("a.q").Record(enlarge);
    AssetFolder folder;
    folder.Write("wagon/t.im", MeshHeader(1).Append(triangle).Block("ATCH", points).Str());
    folder.Write("bogey/config.txt", "kuid <k:1>\nasset-filename t\n");
    folder.Write("bogey/t.im", MeshHeader(1).Append(triangle).Str());
    folder.Wagon("bogey-7 <k:1>\nbogey-8 <k:1>\npantograph <k:2>\nmesh-table {\n"
                 "a {\nmesh t.im\n}\n"
                 "b {\nmesh t.im\natt-parent a\natt a.p\n}\n"
                 "c {\nmesh t.im\natt-parent b\natt a.q\n}\n"
                 "d {\nmesh t.im\natt-parent d\natt a.p\n}\n"
                 "e {\nmesh t.im\natt-parent d\natt a.p\n}\n"
                 "f {\nmesh nowhere.im\n}\n}\n");
    const auto model = std::make_shared<ZLMModel>();
    ASSERT_EQ(folder.Load(*model), "");
    const Scene scene = MakeScene(*model);
    std::vector<Corners> found;
    for (const Triangle& each : scene.Triangles)
        found.push_back(each.Corners);
    const Corners hung = {{{10, 0, 0}, {10, 1, 0}, {9, 0, 0}}};
    const Corners a = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    const Corners c = {{{10, 0, 5}, {10, 2, 5}, {8, 0, 5}}};
    // The bogey's point is there on a, b and c; the first counts.
    EXPECT_EQ(found, (std::vector<Corners>{a, hung, c, hung}));
    EXPECT_EQ(scene.LeftOut, (std::map<std::string, std::size_t>{
                                 {"bogeys and pantographs without a place or a mesh", 2},
                                 {"entries that hang on themselves", 2},
                                 {"meshes that didn't load", 1},
                             }));
}

TEST(Picture, LeavesOutWhatCantBeDrawn)
{
    constexpr float kMax = std::numeric_limits<float>::max();
    const std::vector<Vector> points = {
        {0, 0, 0}, {kMax, 0, -kMax}, {-kMax, kMax, 0}, {kNan, 0, 0}, {0, -kMax, 1}};
    const Scene scene =
        SceneOf({ChunkOf(PrimFlag::TRIANGLES, points, {0, 1, 2, 0, 1, 3, 0, 1, 5, 0, -1, 2, 1, 2, 4})});
    EXPECT_EQ(scene.Triangles.size(), 2);
    EXPECT_EQ(scene.LeftOut.at("triangles with a corner that is nowhere"), 3);

    std::vector<Triangle> triangles = scene.Triangles;
    triangles.resize(1000, triangles[1]);
    for (const Side side : {Side::Front, Side::Left, Side::Top, Side::Corner})
    {
        const Image image = Draw(triangles, side, 32, 16);
        EXPECT_NE(image.Pixels, std::vector(image.Pixels.size(), kBackground));
        EXPECT_GT(image.LeftOut, 500);
    }
    EXPECT_EQ(Draw({}, Side::Front, 2, 1).Pixels, std::vector(2, kBackground));
}

TEST(Picture, ShowsTheNearerTriangle)
{
    // Two across the length of the asset, and the middle of both.
    const std::vector<Vector> red = {{-2, 1, 0}, {2, 1, 0}, {0, 1, 4}};
    const std::vector<Vector> blue = {{-2, -1, 4}, {2, -1, 4}, {0, -1, 0}};
    const Bytes nearFront = ChunkOf(PrimFlag::TRIANGLES, red, {0, 1, 2});
    const Bytes nearBack = ChunkOf(PrimFlag::TRI_FAN, blue, {0, 1, 2}, {0, 0, 1});
    for (const auto& chunks : {std::vector{nearFront, nearBack}, std::vector{nearBack, nearFront}})
    {
        const Scene scene = SceneOf(chunks);
        const Image front = Draw(scene.Triangles, Side::Front, 50, 50);
        const Image back = Draw(scene.Triangles, Side::Back, 50, 50);
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

TEST(Picture, IsSeenFromTheSideThatIsAskedFor)
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
        Side from;
        std::size_t x, y; // where the first one is, in a picture of 40 x 40
    } cases[] = {
        {Side::Front, kLow, kLow},  {Side::Back, kHigh, kLow}, {Side::Left, kLow, kLow},
        {Side::Right, kHigh, kLow}, {Side::Top, kHigh, kHigh}, {Side::Bottom, kHigh, kLow},
    };
    for (const auto& [from, x, y] : cases)
    {
        SCOPED_TRACE(static_cast<int>(from));
        const Image image = Draw(scene.Triangles, from, 40, 40);
        EXPECT_GT(image.Pixels[40 * y + x].r, 100);
        EXPECT_EQ(image.Pixels[40 * y + x].b, 0);
        EXPECT_GT(image.Pixels[40 * (39 - y) + 39 - x].b, 100);
        EXPECT_EQ(image.Pixels[40 * (39 - y) + x], kBackground);
    }
}

} // namespace
} // namespace ZLMIM::Picture

#include "good_files.h"
#include "zlmim/anim/anim.h"
#include "zlmim/anim/bone_anim.h"
#include "zlmim/mesh/attachment.h"
#include "zlmim/mesh/bone.h"
#include "zlmim/mesh/chunk.h"
#include "zlmim/mesh/geometry.h"
#include "zlmim/mesh/material.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/mesh/texture.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace ZLMIM::Testing
{
namespace
{

/// The bits of a signalling NaN. The x87 unit of 32-bit x86 makes them 7FE00001.
constexpr std::int32_t kSignalling = 0x7FA00001;

Bytes Signalling(int count)
{
    Bytes bytes;
    for (int i = 0; i < count; ++i)
        bytes.Long(kSignalling);
    return bytes;
}

template <class T>
T SignallingRecord()
{
    T record;
    std::memcpy(static_cast<void*>(&record), Signalling(sizeof(T) / 4).Str().data(), sizeof(T));
    return record;
}

/// Whether each float in `value` has the bits that the file had. By reference: a copy might change them.
template <class T>
bool IsSignalling(const T& value)
{
    return std::memcmp(&value, Signalling(sizeof(T) / 4).Str().data(), sizeof(T)) == 0;
}

TEST(SignallingNaNs, KeepTheirBitsInAMesh)
{
    auto material = Bytes().Long(102).String("m").Zeros(8).Append(Signalling(13)).Long(0);
    material.Long(1).Long(1).String("t").Append(Signalling(1));
    auto geometry = Bytes().Long(200).Long(4).Append(Signalling(1)).Record(std::array{1, 0, 0, 1, 0});
    geometry.String("").Append(Signalling(11));
    const auto bone = Bytes().Long(100).String("b").Append(Signalling(7)).Long(0);
    const auto chunk = Bytes().Zeros(8).Block("MATL", material).Block("GEOM", geometry);
    const auto point = Bytes().Long(100).Long(1).String("a").Append(Signalling(12));
    auto file = MeshHeader(1).Block("CHNK", chunk).Block("ATCH", point);
    file.Append(MeshSkeleton(Bytes().Block("BONE", bone)));
    Mesh mesh;
    ASSERT_TRUE(mesh.LoadBytes(file.Span()));

    const Material& read = *mesh.Chunks->Item(1)->Material;
    EXPECT_TRUE(IsSignalling(read.Opacity));
    for (const rgbColour* const colour : {&read.Ambient, &read.Diffuse, &read.Specular, &read.Emissive})
        EXPECT_TRUE(IsSignalling(*colour));
    EXPECT_TRUE(IsSignalling(read.Textures->Item(1)->Amount));
    Geometry& points = *mesh.Chunks->Item(1)->Geometry;
    EXPECT_TRUE(IsSignalling(points.Area));
    Vertex vertex;
    Vector normal;
    ASSERT_TRUE(points.GetVertex(0, vertex));
    ASSERT_TRUE(points.GetVertexNormal(0, normal));
    EXPECT_TRUE(IsSignalling(vertex));
    EXPECT_TRUE(IsSignalling(normal));
    EXPECT_TRUE(IsSignalling(points.FaceNormals->Item(1)));
    EXPECT_TRUE(IsSignalling(mesh.Attachments->Item(1)->Matrix));
    EXPECT_TRUE(IsSignalling(mesh.RootBone->Position));
    EXPECT_TRUE(IsSignalling(mesh.RootBone->Rotation));
    mesh.RootBone->Rotation = {};
    const Matrix matrix = mesh.RootBone->ToMatrix();
    for (const float* const field : {&matrix.m41, &matrix.m42, &matrix.m43})
        EXPECT_TRUE(IsSignalling(*field));
}

TEST(SignallingNaNs, KeepTheirBitsInAnAnimation)
{
    const auto frame = [](std::int32_t number, int floats)
    { return Bytes().Block("FRAM", Bytes().Long(0).Long(number).Append(Signalling(floats))); };
    auto file = Bytes().Text("JIRF....ANIM....").Long(21).Long(100).String("n").Long(2).Long(30);
    file.Append(Signalling(1)).Block("EVNT", {}).Append(AnimSkeleton(AnimBone("a", 1, AnimBone("b"))));
    // The second frame is read record by record, since the file ends in it.
    file.Append(frame(1, 14)).Append(frame(2, 7));
    Anim anim;
    EXPECT_THROW(static_cast<void>(anim.LoadBytes(file.Span())), BoundsError);
    EXPECT_TRUE(IsSignalling(anim.MetScale));
    EXPECT_TRUE(IsSignalling(anim.RootBone->GetFrame(1)));
    EXPECT_TRUE(IsSignalling(anim.RootBone->Children()->Item(1)->GetFrame(1)));
    EXPECT_TRUE(IsSignalling(anim.RootBone->GetFrame(2)));
}

TEST(SignallingNaNs, KeepTheirBitsWhenAHostStoresThem)
{
    Collection<Vector> list;
    list.Add(SignallingRecord<Vector>());
    list.Add(list.Entries()[0]);
    list.Add({});
    list.Remove(3);
    EXPECT_TRUE(IsSignalling(list.Item(1)));
    EXPECT_TRUE(IsSignalling(list.Item(2)));
    for (const Vector& record : list)
        EXPECT_TRUE(IsSignalling(record));

    Geometry geometry;
    geometry.SetMaxVertices(1);
    geometry.SetMaxVertNormal(1);
    geometry.SetVertex(0, SignallingRecord<Vertex>());
    geometry.SetVertexNormal(0, SignallingRecord<Vector>());
    EXPECT_TRUE(IsSignalling(geometry.Vertices()[0]));
    EXPECT_TRUE(IsSignalling(geometry.VertexNormals()[0]));

    BoneAnim bone;
    bone.InitFrames(0);
    bone.SetFrame(0, SignallingRecord<Keyframe>());
    EXPECT_TRUE(IsSignalling(bone.Frames()[0]));
    EXPECT_TRUE(IsSignalling(bone.GetFrame(0)));
}

/// `number` rounded to the 24 bits of a float, ties to even.
std::int64_t RoundedToFloat(std::int64_t number)
{
    auto bits = static_cast<std::uint64_t>(std::abs(number));
    const int shift = std::max(static_cast<int>(std::bit_width(bits)) - 24, 0);
    const std::uint64_t unit = std::uint64_t{1} << shift;
    const std::uint64_t rest = bits % unit;
    bits -= rest;
    if (rest * 2 > unit || (rest * 2 == unit && bits / unit % 2 == 1))
        bits += unit;
    return number < 0 ? -static_cast<std::int64_t>(bits) : static_cast<std::int64_t>(bits);
}

TEST(BoneToMatrix, IsExactForRandomRotations)
{
    // Components are multiples of 2^-24, so that all products and sums are whole multiples of 2^-48.
    constexpr std::int64_t kOne = std::int64_t{1} << 48;
    std::mt19937 random(1);
    std::normal_distribution<double> component;
    for (int i = 0; i < 20'000; ++i)
    {
        std::array<double, 4> direction;
        for (double& value : direction)
            value = component(random);
        const auto& [a, b, c, d] = direction;
        const double length = std::sqrt(a * a + b * b + c * c + d * d);
        std::array<std::int64_t, 4> rotation;
        for (std::size_t k = 0; k < 4; ++k)
            rotation[k] = std::llround(direction[k] / length * 0x1p24);
        const auto& [x, y, z, w] = rotation;
        const auto element = [](std::int64_t sum)
        { return std::ldexp(static_cast<float>(RoundedToFloat(sum)), -48); };

        const std::int64_t xz = RoundedToFloat(x * z);
        const std::int64_t xw = RoundedToFloat(x * w);
        const std::int64_t yy = RoundedToFloat(y * y);
        const std::int64_t yz = RoundedToFloat(y * z);
        const std::int64_t yw = RoundedToFloat(y * w);
        const std::int64_t zz = RoundedToFloat(z * z);
        const Matrix expected{
            element(kOne - 2 * (yy + zz)), element(2 * (x * y - z * w)),     element(2 * (xz + yw)),
            element(2 * (x * y + z * w)),  element(kOne - 2 * (x * x + zz)), element(2 * (yz - xw)),
            element(2 * (xz - yw)),        element(2 * (yz + xw)),           element(kOne - 2 * (x * x + yy)),
        };
        const auto number = [](std::int64_t value) { return std::ldexp(static_cast<float>(value), -24); };
        Bone bone;
        bone.Rotation = {number(x), number(y), number(z), number(w)};
        ASSERT_EQ(bone.ToMatrix(), expected) << "rotation " << i;
    }
}

} // namespace
} // namespace ZLMIM::Testing

#include "component_host.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace ZLMIM::Host
{
namespace
{

/// A signalling NaN, which the x87 unit of 32-bit x86 would change.
constexpr std::int32_t kSignalling = 0x7FA00001;

/// A float or a record with nothing but signalling NaNs, in memory: a float that is returned may change.
template <class T>
struct Signalling
{
    Signalling()
    {
        const std::vector<std::int32_t> bits(sizeof(T) / 4, kSignalling);
        std::memcpy(static_cast<void*>(&value), bits.data(), sizeof(T));
    }

    [[nodiscard]] bool IsAt(const void* place) const { return std::memcmp(place, &value, sizeof(T)) == 0; }

    T value;
};

template <class I>
void ExpectKept(std::u16string_view name, HRESULT (STDMETHODCALLTYPE I::*get)(float*),
                HRESULT (STDMETHODCALLTYPE I::*put)(float))
{
    const Signalling<float> sent;
    for (const bool isByName : {false, true})
    {
        SCOPED_TRACE(std::string(name.begin(), name.end()) + (isByName ? " by name" : " by slot"));
        const auto object = New<I>();
        Variant given(LONG{kSignalling});
        given.vt = VT_R4;
        if (isByName)
            EXPECT_EQ(Call(object.Get(), name, DISPATCH_PROPERTYPUT, {&given}), S_OK);
        else
            EXPECT_EQ((object.Get()->*put)(sent.value), S_OK);
        float slot = 0;
        EXPECT_EQ((object.Get()->*get)(&slot), S_OK);
        EXPECT_TRUE(sent.IsAt(&slot));
        Variant read;
        EXPECT_EQ(Call(object.Get(), name, DISPATCH_PROPERTYGET, {}, &read), S_OK);
        EXPECT_TRUE(sent.IsAt(&read.lVal));
    }
}

TEST(ComponentFloats, KeepSignallingNaNs)
{
    ExpectKept(u"Opacity", &_Material::get_Opacity, &_Material::put_Opacity);
    ExpectKept(u"SpecularPower", &_Material::get_SpecularPower, &_Material::put_SpecularPower);
    ExpectKept(u"Area", &_Geometry::get_Area, &_Geometry::put_Area);
    ExpectKept(u"Amount", &_Texture::get_Amount, &_Texture::put_Amount);
    ExpectKept(u"MetScale", &_anim::get_MetScale, &_anim::put_MetScale);
}

TEST(ComponentFloats, KeepSignallingNaNsOfRecords)
{
    const auto bone = New<_Bone>();
    Signalling<Vector> vector;
    ASSERT_EQ(bone->put_Position(&vector.value), S_OK);
    Vector position;
    EXPECT_EQ(bone->get_Position(&position), S_OK);
    EXPECT_TRUE(vector.IsAt(&position));
    position = {};
    Matrix matrix;
    EXPECT_EQ(bone->ToMatrix(&matrix), S_OK);
    EXPECT_TRUE(vector.IsAt(&matrix.m41));
    Variant record;
    ASSERT_EQ(Call(bone.Get(), u"Position", DISPATCH_PROPERTYGET, {}, &record), S_OK);
    EXPECT_TRUE(vector.IsAt(record.pvRecord));
    const auto other = New<_Bone>();
    ASSERT_EQ(Call(other.Get(), u"Position", DISPATCH_PROPERTYPUT, {&record}), S_OK);
    EXPECT_EQ(other->get_Position(&position), S_OK);
    EXPECT_TRUE(vector.IsAt(&position));

    const auto geometry = New<_Geometry>();
    const auto normals = ReadObject(geometry, &_Geometry::get_FaceNormals);
    ASSERT_EQ(Add(normals, record), S_OK);
    Variant one(LONG{1});
    Variant item;
    ASSERT_EQ(normals->Item(&one, &item), S_OK);
    EXPECT_TRUE(vector.IsAt(item.pvRecord));

    Signalling<Vertex> vertex;
    LONG index = 0;
    VARIANT_BOOL isThere = VARIANT_FALSE;
    Vertex readVertex;
    ASSERT_EQ(geometry->put_MaxVertices(1), S_OK);
    ASSERT_EQ(geometry->SetVertex(&index, &vertex.value), S_OK);
    ASSERT_EQ(geometry->GetVertex(&index, &readVertex, &isThere), S_OK);
    EXPECT_TRUE(vertex.IsAt(&readVertex));

    const auto anim = New<_BoneAnim>();
    Signalling<Keyframe> keyframe;
    Keyframe readKeyframe;
    ASSERT_EQ(anim->InitFrames(0), S_OK);
    ASSERT_EQ(anim->SetFrame(0, &keyframe.value), S_OK);
    ASSERT_EQ(anim->GetFrame(0, &readKeyframe), S_OK);
    EXPECT_TRUE(keyframe.IsAt(&readKeyframe));
}

} // namespace
} // namespace ZLMIM::Host

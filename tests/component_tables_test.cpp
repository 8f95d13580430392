#include "component_classes.h"
#include "component_host.h"
#include "zlmim/anim/anim.h"
#include "zlmim/component/classes.h"
#include "zlmim/component/types.h"
#include "zlmim/config/mesh_entry.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <numeric>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace ZLMIM::Host
{
namespace
{

using namespace ZLMIM::Testing;
using Component::ClassInfo;
using Component::Member;
using Component::Parameter;
using Component::Passing;

[[nodiscard]] std::string Text8(const char* text) { return text ? text : ""; }

[[nodiscard]] std::string TextOf(const Parameter& parameter, const std::string& attributes)
{
    return "[" + attributes + "] " + (parameter.isObject ? "_" : "") + parameter.type +
           (parameter.isObject ? "*" : "") + (parameter.passing == Passing::In ? "" : "*") + " " +
           parameter.name;
}

[[nodiscard]] std::string TextOf(const Member& member)
{
    const std::map<WORD, std::string> kinds = {{DISPATCH_METHOD, ""},
                                               {DISPATCH_PROPERTYGET, "get "},
                                               {DISPATCH_PROPERTYPUT, "put "},
                                               {DISPATCH_PROPERTYPUTREF, "putref "}};
    std::string text = kinds.at(member.kind) + member.name + "(";
    const char* separator = "";
    for (const Parameter& parameter : member.Parameters())
    {
        text += separator + TextOf(parameter, parameter.passing == Passing::InOut ? "in, out" : "in");
        separator = ", ";
    }
    return text + (member.result.type ? separator + TextOf(member.result, "out, retval") : "") + ")";
}

TEST(ComponentTables, MatchTheClassesThatHostsKnow)
{
    const auto classes = Component::Classes();
    ASSERT_EQ(classes.size(), std::size(kExpectedClasses));
    for (std::size_t i = 0; i < classes.size(); ++i)
    {
        const ExpectedClass& expected = kExpectedClasses[i];
        const ClassInfo& info = *classes[i];
        SCOPED_TRACE(expected.name);
        EXPECT_STREQ(info.name, expected.name);
        EXPECT_EQ(Component::ToString(info.classId), Component::ToString(expected.classId));
        EXPECT_EQ(Component::ToString(info.Interface().guid), Component::ToString(expected.interfaceId));
        EXPECT_EQ(info.Interface().name, "_" + std::string(expected.name));
        EXPECT_EQ(Text8(info.help), expected.help);
        const auto slots = SlotsOf(expected);
        ASSERT_EQ(info.members.size(), slots.size());
        for (std::size_t slot = 0; slot < slots.size(); ++slot)
        {
            const Member& member = info.members[slot];
            EXPECT_EQ(TextOf(member), slots[slot].text);
            const auto first =
                std::find_if(slots.begin(), slots.end(),
                             [&](const ExpectedSlot& each) { return each.name == slots[slot].name; });
            EXPECT_EQ(member.id, first->id) << member.name;
            EXPECT_EQ(Text8(member.help), HelpOf(expected, member.name)) << member.name;
        }
    }
    const auto& mesh = classes[9]->interfaces;
    ASSERT_EQ(mesh.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
    {
        const GUID& expected = i == 3 ? kExpectedClasses[9].interfaceId : kOlderMeshIds[i];
        EXPECT_EQ(Component::ToString(mesh[i].guid), Component::ToString(expected));
        EXPECT_EQ(mesh[i].name, i == 3 ? "_Mesh" : "Mesh___v" + std::to_string(i));
        EXPECT_EQ(mesh[i].minorVersion, static_cast<int>(i));
    }
}

TEST(ComponentTables, DescribeRecordsAndEnumerations)
{
    std::size_t found = 0;
    for (const auto& expected : kExpectedTypes)
    {
        SCOPED_TRACE(expected.name);
        std::ostringstream parts;
        const auto compare = [&](const auto& type)
        {
            if (std::string(type.name) != expected.name)
                return false;
            ++found;
            EXPECT_EQ(Component::ToString(type.guid), Component::ToString(expected.guid));
            EXPECT_EQ(Text8(type.help), expected.help);
            return true;
        };
        for (const auto* const type : Component::kEnumerationTypes)
        {
            if (!compare(*type))
                continue;
            for (const auto& enumerator : type->enumerators)
                parts << enumerator.name << '=' << enumerator.value << ' ';
        }
        for (const auto* const type : Component::kRecordTypes)
        {
            if (!compare(*type))
                continue;
            EXPECT_EQ(type->size, expected.size);
            std::size_t offset = 0;
            for (const auto& field : type->fields)
            {
                parts << field.name << '=' << offset << ' ';
                offset += std::map<std::string, std::size_t>{
                    {"float", 4}, {"Vector", 12}, {"Quaternion", 16}}[field.type];
            }
            EXPECT_EQ(offset, type->size);
        }
        EXPECT_EQ(parts.str(), expected.parts);
    }
    EXPECT_EQ(found, std::size(kExpectedTypes));
}

/// A property that has a function instead of a member.
template <class Object, class Value>
struct Setter
{
    Object& object;
    void (Object::*set)(Value);
};
template <class Object, class Value> // clang++ 14 needs it
Setter(Object&, void (Object::*)(Value))->Setter<Object, Value>;

/// Writes properties, each a value that no other has: a number from `kFirst + 1` on, as the property's type
/// has it.
class Filler
{
public:
    static constexpr int kFirst = 100;

    template <class... T>
    void operator()(T&&... properties)
    {
        (Write(properties), ...);
    }
    /// The name of an object that was written to a property.
    [[nodiscard]] std::string LabelOf(const void* object) const
    {
        const auto found = mLabels.find(object);
        return found == mLabels.end() ? "none" : found->second;
    }

private:
    template <class T>
    void Write(T& member)
    {
        ++mNumber;
        if constexpr (std::is_same_v<T, std::u16string>)
            member = FromWindows1252("t" + std::to_string(mNumber));
        else if constexpr (std::is_same_v<T, float>)
            member = static_cast<float>(mNumber) + 0.5F;
        else if constexpr (std::is_class_v<T>)
        {
            std::array<float, sizeof(T) / sizeof(float)> fields;
            std::iota(fields.begin(), fields.end(), static_cast<float>(mNumber));
            member = std::bit_cast<T>(fields);
        }
        else
            member = static_cast<T>(mNumber);
    }
    template <class T>
    void Write(std::shared_ptr<T>& member)
    {
        member = std::make_shared<T>();
        mLabels[&member->ComHeader] = "o" + std::to_string(++mNumber);
    }
    template <class Object, class Value>
    void Write(Setter<Object, Value>& property)
    {
        std::remove_cvref_t<Value> value;
        Write(value);
        (property.object.*property.set)(value);
    }

    std::map<const void*, std::string> mLabels;
    int mNumber = kFirst;
};

void Fill(Anim& o, Filler& fill)
{
    fill(o.ErrorMessage, o.FrameCount, o.FPS, o.Version, o.MetScale, o.Name, o.FileSize, o.RootBone,
         o.FileName);
}
void Fill(Attachment& o, Filler& fill) { fill(o.Version, o.Name, o.Matrix); }
void Fill(Chunk& o, Filler& fill) { fill(o.Material, o.Geometry, o.Version, o.Id); }
void Fill(Material& o, Filler& fill)
{
    fill(o.Version, o.NumProperties, o.TwoSided, o.Opacity, o.SpecularPower, o.Textures, o.Name, o.Ambient,
         o.Diffuse, o.Specular, o.Emissive);
}
void Fill(Geometry& o, Filler& fill)
{
    fill(o.Version, o.Area, o.FaceNormals, o.PrimitiveCount, o.MaxInfl, o.PrimitiveType, o.Bone, o.BoneObject,
         Setter{o, &Geometry::SetMaxVertices}, Setter{o, &Geometry::SetMaxVertNormal},
         Setter{o, &Geometry::SetMaxIndex});
}
void Fill(Texture& o, Filler& fill) { fill(o.TextureType, o.Name, o.Amount); }
void Fill(BoneAnim& o, Filler& fill) { fill(Setter{o, &BoneAnim::SetChildren}, o.Name, o.Version); }
void Fill(ZLMModel& o, Filler& fill)
{
    fill(Setter{o, &ZLMModel::SetMeshTable}, o.AssetFileName, o.Author, o.UserName, o.Kind, o.Description,
         o.ZLMBuild, o.Bogies, o.BogieNames, o.Pantograph, Setter{o, &ZLMModel::SetKuid});
}
void Fill(MeshEntry& o, Filler& fill)
{
    fill(o.Mesh, o.anim, o.Name, Setter{o, &MeshEntry::SetAttParent}, o.Att,
         Setter{o, &MeshEntry::SetParent});
}
void Fill(Mesh& o, Filler& fill)
{
    fill(o.ErrorMessage, o.ChunkCount, o.Version, o.FileSize, o.Attachments, o.Chunks, o.RootBone,
         o.AttVersion, o.Polygons, o.FileName, o.BoneCount, o.VertexCount, o.TextureCount);
}
void Fill(Bone& o, Filler& fill)
{
    fill(Setter{o, &Bone::SetChildren}, o.Name, o.Version, Setter{o, &Bone::SetParent}, o.Position,
         o.Rotation);
}

template <class Object>
void FillAs(void* object, Filler& filler)
{
    Fill(*static_cast<Object*>(object), filler);
}

/// In the order of `kExpectedClasses`.
void (*const kFill[])(void*, Filler&) = {&FillAs<Anim>,     &FillAs<Attachment>, &FillAs<Chunk>,
                                         &FillAs<Material>, &FillAs<Geometry>,   &FillAs<Texture>,
                                         &FillAs<BoneAnim>, &FillAs<ZLMModel>,   &FillAs<MeshEntry>,
                                         &FillAs<Mesh>,     &FillAs<Bone>};

/// The bytes that the slot of a property returns.
union Value
{
    LONG number;
    float real;
    BSTR text;
    IUnknown* object;
    float fields[12];
};

/// An object of the module that C++ code can access directly, too.
class TestObject
{
public:
    explicit TestObject(const ClassInfo& info)
    {
        Pointer<IClassFactory> factory;
        EXPECT_EQ(ClassObjects()(info.classId, Component::kIClassFactory, factory.OutAny()), S_OK);
        EXPECT_EQ(factory->CreateInstance(nullptr, Component::kIDispatch, mDispatch.OutAny()), S_OK);
    }
    [[nodiscard]] IDispatch* Get() const { return mDispatch.Get(); }
    [[nodiscard]] void* Object() const { return reinterpret_cast<ComHeader*>(Get())->Self.get(); }

    template <class... A>
    [[nodiscard]] HRESULT Call(int slot, A... arguments) const
    {
        using Function = HRESULT(STDMETHODCALLTYPE*)(void*, A...);
        return (*reinterpret_cast<Function* const*>(Get()))[slot](Get(), arguments...);
    }

private:
    Pointer<IDispatch> mDispatch;
};

[[nodiscard]] std::string FieldsOf(const float* fields, std::size_t count)
{
    std::ostringstream text;
    for (std::size_t i = 0; i < count; ++i)
        text << (i > 0 ? "," : "") << fields[i];
    return text.str();
}

[[nodiscard]] std::size_t FieldCount(const std::string& type)
{
    const auto found = std::find_if(std::begin(kExpectedTypes), std::end(kExpectedTypes),
                                    [&](const auto& each) { return each.isRecord && type == each.name; });
    return found == std::end(kExpectedTypes) ? 0 : found->size / sizeof(float);
}

/// What a host reads from a property of this type, filled with `number`.
[[nodiscard]] std::string ExpectedText(const std::string& type, int number)
{
    std::vector<float> fields(FieldCount(type));
    std::iota(fields.begin(), fields.end(), static_cast<float>(number));
    if (!fields.empty())
        return FieldsOf(fields.data(), fields.size());
    const std::string prefix = type == "BSTR" ? "t" : type.back() == '*' ? "o" : "";
    return prefix + std::to_string(number) + (type == "float" ? ".5" : "");
}

[[nodiscard]] std::string ReadBySlot(const TestObject& object, int slot, const std::string& type,
                                     const Filler& filler)
{
    Value value{};
    EXPECT_EQ(object.Call(slot, &value), S_OK);
    std::ostringstream text;
    if (type == "BSTR")
        text << ToUtf8(Text::Adopt(value.text).Copy());
    else if (type == "float")
        text << value.real;
    else if (type.back() == '*')
        text << filler.LabelOf(Pointer<IUnknown>(value.object).Get());
    else if (const std::size_t count = FieldCount(type); count > 0)
        text << FieldsOf(value.fields, count);
    else
        text << value.number;
    return text.str();
}

[[nodiscard]] std::string ReadByName(const TestObject& object, const ExpectedSlot& slot, const Filler& filler)
{
    Variant value;
    EXPECT_EQ(Host::Call(object.Get(), std::u16string(slot.name.begin(), slot.name.end()),
                         DISPATCH_PROPERTYGET, {}, &value),
              S_OK);
    std::ostringstream text;
    if (value.vt == VT_BSTR)
        text << ToUtf8(Text::Copy(value.bstrVal));
    else if (value.vt == VT_R4)
        text << value.fltVal;
    else if (value.vt == VT_DISPATCH)
        text << filler.LabelOf(value.pdispVal);
    else if (value.vt == VT_RECORD)
        text << FieldsOf(static_cast<const float*>(value.pvRecord), FieldCount(slot.propertyType));
    else if (value.vt == VT_I4)
        text << value.lVal;
    return text.str();
}

void CopyBySlot(const TestObject& from, int get, const TestObject& to, int put, const std::string& type)
{
    Value value{};
    ASSERT_EQ(from.Call(get, &value), S_OK);
    if (type == "BSTR")
    {
        const Text text = Text::Adopt(value.text);
        EXPECT_EQ(to.Call(put, text.Get()), S_OK);
    }
    else if (type.back() == '*')
    {
        const Pointer<IUnknown> object(value.object);
        EXPECT_EQ(to.Call(put, object.Get()), S_OK);
    }
    else if (type == "float")
        EXPECT_EQ(to.Call(put, value.real), S_OK);
    else if (FieldCount(type) > 0)
        EXPECT_EQ(to.Call(put, &value), S_OK);
    else
        EXPECT_EQ(to.Call(put, value.number), S_OK);
}

TEST(ComponentTables, BindEachPropertyToItsOwnMember)
{
    for (std::size_t i = 0; i < std::size(kExpectedClasses); ++i)
    {
        SCOPED_TRACE(kExpectedClasses[i].name);
        const ClassInfo& info = *Component::Classes()[i];
        Filler filler;
        const TestObject filled(info);
        const TestObject bySlot(info);
        const TestObject byName(info);
        kFill[i](filled.Object(), filler);
        const auto slots = SlotsOf(kExpectedClasses[i]);
        int number = Filler::kFirst;
        for (std::size_t slot = 0; slot < slots.size(); ++slot)
        {
            const ExpectedSlot& each = slots[slot];
            if (!each.isGet)
                continue;
            const auto isItsPut = [&](const ExpectedSlot& other)
            { return other.name == each.name && !other.isGet; };
            const auto put = std::find_if(slots.begin(), slots.end(), isItsPut) - slots.begin();
            const int get = static_cast<int>(slot) + 7;
            CopyBySlot(filled, get, bySlot, static_cast<int>(put) + 7, each.propertyType);
            Variant value;
            const std::u16string name(each.name.begin(), each.name.end());
            ASSERT_EQ(Host::Call(filled.Get(), name, DISPATCH_PROPERTYGET, {}, &value), S_OK);
            EXPECT_EQ(Host::Call(byName.Get(), name, DISPATCH_PROPERTYPUT, {&value}), S_OK);
            const std::string expected = ExpectedText(each.propertyType, ++number);
            EXPECT_EQ(ReadByName(filled, each, filler), expected) << each.name;
            for (const TestObject* const object : {&filled, &bySlot, &byName})
                EXPECT_EQ(ReadBySlot(*object, get, each.propertyType, filler), expected) << each.name;
        }
    }
}

} // namespace
} // namespace ZLMIM::Host

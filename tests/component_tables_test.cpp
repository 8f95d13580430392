#include "component_classes.h"
#include "component_host.h"
#include "zlmim/anim/anim.h"
#include "zlmim/component/classes.h"
#include "zlmim/component/registration.h"
#include "zlmim/component/types.h"
#include "zlmim/config/mesh_entry.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>

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

/// Gives names to objects, so that a test recognises them when a host reads them.
class Labels
{
public:
    template <class T>
    std::shared_ptr<T> New(const char* label)
    {
        auto object = std::make_shared<T>();
        mLabels[&object->ComHeader] = label;
        return object;
    }
    [[nodiscard]] std::string Of(const void* object) const
    {
        const auto found = mLabels.find(object);
        return found == mLabels.end() ? "none" : found->second;
    }

private:
    std::map<const void*, std::string> mLabels;
};

/// An object of each class with a different value in each property, and the values that a host reads.
struct FilledClass
{
    void (*fill)(void* object, Labels& labels);
    const char* expected;
};

const FilledClass kFilledClasses[] = {
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<Anim*>(object);
         o.ErrorMessage = u"a";
         o.FrameCount = 2;
         o.FPS = 3;
         o.Version = 4;
         o.MetScale = 5.5F;
         o.Name = u"f";
         o.FileSize = 7;
         o.RootBone = labels.New<BoneAnim>("root");
         o.FileName = u"i";
     },
     "ErrorMessage=a FrameCount=2 FPS=3 Version=4 MetScale=5.5 Name=f FileSize=7 RootBone=root FileName=i "},
    {[](void* object, Labels&)
     {
         auto& o = *static_cast<Attachment*>(object);
         o.Version = 1;
         o.Name = u"b";
         o.Matrix = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
     },
     "Version=1 Name=b Matrix=1,2,3,4,5,6,7,8,9,10,11,12 "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<Chunk*>(object);
         o.Material = labels.New<Material>("material");
         o.Geometry = labels.New<Geometry>("geometry");
         o.Version = 3;
         o.Id = 4;
     },
     "Material=material Geometry=geometry Version=3 Id=4 "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<Material*>(object);
         o.Version = 1;
         o.NumProperties = 2;
         o.TwoSided = 3;
         o.Opacity = 4.5F;
         o.SpecularPower = 5;
         o.Textures = labels.New<Collection<Texture>>("textures");
         o.Name = u"g";
         o.Ambient = {1, 2, 3};
         o.Diffuse = {4, 5, 6};
         o.Specular = {7, 8, 9};
         o.Emissive = {10, 11, 12};
     },
     "Version=1 NumProperties=2 TwoSided=3 Opacity=4.5 SpecularPower=5 Textures=textures Name=g "
     "Ambient=1,2,3 "
     "Diffuse=4,5,6 Specular=7,8,9 Emissive=10,11,12 "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<Geometry*>(object);
         o.Version = 1;
         o.Area = 2.5F;
         o.FaceNormals = labels.New<Collection<Vector>>("normals");
         o.PrimitiveCount = 4;
         o.MaxInfl = 5;
         o.PrimitiveType = static_cast<PrimFlag>(-6);
         o.Bone = u"g";
         o.BoneObject = labels.New<Bone>("bone");
         o.SetMaxVertices(9);
         o.SetMaxVertNormal(10);
         o.SetMaxIndex(11);
     },
     "Version=1 Area=2.5 FaceNormals=normals PrimitiveCount=4 MaxInfl=5 PrimitiveType=-6 Bone=g "
     "BoneObject=bone "
     "MaxVertices=9 MaxVertNormal=10 MaxIndex=11 "},
    {[](void* object, Labels&)
     {
         auto& o = *static_cast<Texture*>(object);
         o.TextureType = static_cast<txtype>(13);
         o.Name = u"b";
         o.Amount = 3.5F;
     },
     "TextureType=13 Name=b Amount=3.5 "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<BoneAnim*>(object);
         o.SetChildren(labels.New<Collection<BoneAnim>>("children"));
         o.Name = u"b";
         o.Version = 3;
     },
     "Children=children Name=b Version=3 "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<ZLMModel*>(object);
         o.SetMeshTable(labels.New<Collection<MeshEntry>>("table"));
         o.AssetFileName = u"b";
         o.Author = u"c";
         o.UserName = u"d";
         o.Kind = u"e";
         o.Description = u"f";
         o.ZLMBuild = u"g";
         o.Bogies = labels.New<Collection<ZLMModel>>("bogies");
         o.BogieNames = labels.New<Collection<std::u16string>>("names");
         o.Pantograph = labels.New<ZLMModel>("pantograph");
         o.SetKuid(u"k");
     },
     "MeshTable=table AssetFileName=b Author=c UserName=d Kind=e Description=f ZLMBuild=g Bogies=bogies "
     "BogieNames=names Pantograph=pantograph kuid=k "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<MeshEntry*>(object);
         o.Mesh = labels.New<Mesh>("mesh");
         o.anim = labels.New<Anim>("anim");
         o.Name = u"c";
         o.SetAttParent(labels.New<MeshEntry>("parent entry"));
         o.Att = labels.New<Attachment>("att");
         o.SetParent(labels.New<ZLMModel>("model"));
     },
     "Mesh=mesh anim=anim Name=c AttParent=parent entry Att=att Parent=model "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<Mesh*>(object);
         o.ErrorMessage = u"a";
         o.ChunkCount = 2;
         o.Version = 3;
         o.FileSize = 4;
         o.Attachments = labels.New<Collection<Attachment>>("attachments");
         o.Chunks = labels.New<Collection<Chunk>>("chunks");
         o.RootBone = labels.New<Bone>("root");
         o.AttVersion = 8;
         o.Polygons = 9;
         o.FileName = u"j";
         o.BoneCount = 11;
         o.VertexCount = 12;
         o.TextureCount = 13;
     },
     "ErrorMessage=a ChunkCount=2 Version=3 FileSize=4 Attachments=attachments Chunks=chunks RootBone=root "
     "AttVersion=8 "
     "Polygons=9 FileName=j BoneCount=11 VertexCount=12 TextureCount=13 "},
    {[](void* object, Labels& labels)
     {
         auto& o = *static_cast<Bone*>(object);
         o.SetChildren(labels.New<Collection<Bone>>("children"));
         o.Name = u"b";
         o.Version = 3;
         o.SetParent(labels.New<Bone>("parent"));
         o.Position = {1, 2, 3};
         o.Rotation = {4, 5, 6, 7};
     },
     "Children=children Name=b Version=3 Parent=parent Position=1,2,3 Rotation=4,5,6,7 "}};

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

[[nodiscard]] std::string ReadBySlot(const TestObject& object, int slot, const std::string& type,
                                     const Labels& labels)
{
    Value value{};
    EXPECT_EQ(object.Call(slot, &value), S_OK);
    std::ostringstream text;
    if (type == "BSTR")
        text << ToUtf8(Text::Adopt(value.text).Copy());
    else if (type == "float")
        text << value.real;
    else if (type.back() == '*')
        text << labels.Of(Pointer<IUnknown>(value.object).Get());
    else if (const std::size_t count = FieldCount(type); count > 0)
        text << FieldsOf(value.fields, count);
    else
        text << value.number;
    return text.str();
}

[[nodiscard]] std::string ReadByName(const TestObject& object, const ExpectedSlot& slot, const Labels& labels)
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
        text << labels.Of(value.pdispVal);
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
        Labels labels;
        const TestObject filled(info);
        const TestObject bySlot(info);
        const TestObject byName(info);
        kFilledClasses[i].fill(filled.Object(), labels);
        const auto slots = SlotsOf(kExpectedClasses[i]);
        std::map<std::string, int> puts;
        for (std::size_t slot = 0; slot < slots.size(); ++slot)
        {
            if (!slots[slot].propertyType.empty() && !slots[slot].isGet)
                puts[slots[slot].name] = static_cast<int>(slot) + 7;
        }
        std::string texts[4];
        for (std::size_t slot = 0; slot < slots.size(); ++slot)
        {
            const ExpectedSlot& each = slots[slot];
            if (!each.isGet)
                continue;
            const int get = static_cast<int>(slot) + 7;
            CopyBySlot(filled, get, bySlot, puts[each.name], each.propertyType);
            Variant value;
            const std::u16string name(each.name.begin(), each.name.end());
            ASSERT_EQ(Host::Call(filled.Get(), name, DISPATCH_PROPERTYGET, {}, &value), S_OK);
            EXPECT_EQ(Host::Call(byName.Get(), name, DISPATCH_PROPERTYPUT, {&value}), S_OK);
            int which = 0;
            for (const std::string& text :
                 {ReadBySlot(filled, get, each.propertyType, labels), ReadByName(filled, each, labels),
                  ReadBySlot(bySlot, get, each.propertyType, labels),
                  ReadBySlot(byName, get, each.propertyType, labels)})
                texts[which++] += each.name + "=" + text + " ";
        }
        for (const std::string& text : texts)
            EXPECT_EQ(text, kFilledClasses[i].expected);
    }
}

using Registry = std::map<std::u16string, std::u16string>;
Registry registry;

[[nodiscard]] std::optional<std::u16string> Look(const std::u16string& key)
{
    const auto found = registry.find(key);
    return found == registry.end() ? std::nullopt : std::optional(found->second);
}

TEST(Registration, WritesAllIdentifiersAndKeepsThoseOfOthers)
{
    const std::u16string collection = u"Interface\\{A4C46780-499F-101B-BB78-00AA00383CBB}";
    const std::u16string library = u"TypeLib\\{C0809775-1978-4774-BA3F-7A1E622C8515}\\14.1";
    const std::u16string module = u"C:\\zlm\\ZLMIMFile.dll";
    const auto keysOf = [](const std::vector<Component::RegistryEntry>& entries)
    {
        std::set<std::u16string> keys;
        for (const auto& entry : entries)
            keys.insert(entry.key);
        return keys;
    };
    registry.clear();
    auto keys = keysOf(Component::EntriesToAdd(module, &Look));
    const auto wide = [](const GUID& guid)
    {
        const std::string text = Component::ToString(guid);
        return u"{" + std::u16string(text.begin(), text.end()) + u"}";
    };
    for (const ExpectedClass& expected : kExpectedClasses)
    {
        const std::string name(expected.name);
        EXPECT_TRUE(keys.contains(u"CLSID\\" + wide(expected.classId) + u"\\InprocServer32")) << name;
        EXPECT_TRUE(keys.contains(u"Interface\\" + wide(expected.interfaceId) + u"\\TypeLib")) << name;
        EXPECT_TRUE(keys.contains(u"ZLMIM." + std::u16string(name.begin(), name.end()) + u"\\CLSID")) << name;
    }
    for (const GUID& older : kOlderMeshIds)
        EXPECT_TRUE(keys.contains(u"Interface\\" + wide(older) + u"\\ProxyStubClsid32"));
    EXPECT_TRUE(keys.contains(collection));
    for (const auto& entry : Component::EntriesToAdd(module, &Look))
        registry[entry.key] = entry.name.empty() && entry.value ? *entry.value : registry[entry.key];
    EXPECT_EQ(keysOf(Component::EntriesToRemove(module, &Look)), keys);
    EXPECT_EQ(registry[library + u"\\HELPDIR"], u"C:\\zlm");

    // The other build is registered too, and another library has the list interface.
    registry[library + (sizeof(void*) == 8 ? u"\\0\\win32" : u"\\0\\win64")] = u"C:\\other\\ZLMIMFile.dll";
    registry[collection + u"\\TypeLib"] = u"{00000000-0000-0000-0000-000000000001}";
    keys = keysOf(Component::EntriesToRemove(module, &Look));
    EXPECT_FALSE(keys.contains(collection));
    EXPECT_FALSE(keys.contains(u"ZLMIM.Mesh\\CLSID"));
    EXPECT_FALSE(keys.contains(library + u"\\FLAGS"));
    EXPECT_TRUE(keys.contains(library + (sizeof(void*) == 8 ? u"\\409\\win64" : u"\\409\\win32")));
    EXPECT_TRUE(keys.contains(u"CLSID\\{5EC8E051-39D2-469F-AD68-CEEC1A0E7729}"));
    EXPECT_FALSE(keysOf(Component::EntriesToAdd(module, &Look)).contains(collection));
}

} // namespace
} // namespace ZLMIM::Host

#include "asset_folder.h"
#include "component_host.h"
#include "good_files.h"
#include "temp_folder.h"
#include "zlmim/component/classes.h"
#include "zlmim/component/com_object.h"
#include "zlmim/config/mesh_entry.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

namespace ZLMIM::Host
{
namespace
{

using namespace ZLMIM::Testing;
using Component::Classes;
using Component::ClassInfo;
using Component::kIClassFactory;
using Component::kIDispatch;
using Component::kIUnknown;
using Component::kNoInterface;

[[nodiscard]] Pointer<IDispatch> NewObject(const ClassInfo& info)
{
    Pointer<IClassFactory> factory;
    EXPECT_EQ(ClassObjects()(info.classId, kIClassFactory, factory.OutAny()), S_OK);
    Pointer<IDispatch> object;
    EXPECT_EQ(factory->CreateInstance(nullptr, info.Interface().guid, object.OutAny()), S_OK);
    return object;
}

TEST(Component, OffersItsIdentifiersAndNoOthers)
{
    for (const ClassInfo* const info : Classes())
    {
        SCOPED_TRACE(info->name);
        const auto object = NewObject(*info);
        Pointer<IUnknown> unknown;
        ASSERT_EQ(object->QueryInterface(kIUnknown, unknown.OutAny()), S_OK);
        for (const ClassInfo* const other : Classes())
        {
            for (const auto& id : other->interfaces)
            {
                Pointer<IUnknown> found;
                EXPECT_EQ(object->QueryInterface(id.guid, found.OutAny()),
                          other == info ? S_OK : E_NOINTERFACE);
                EXPECT_EQ(static_cast<bool>(found), other == info);
            }
        }
        Pointer<IUnknown> again;
        Pointer<IDispatch> dispatch;
        ASSERT_EQ(unknown->QueryInterface(kIDispatch, dispatch.OutAny()), S_OK);
        ASSERT_EQ(dispatch->QueryInterface(kIUnknown, again.OutAny()), S_OK);
        EXPECT_EQ(again.Get(), unknown.Get());
        EXPECT_EQ(object->QueryInterface(kIUnknown, nullptr), E_POINTER);
    }
    void* object = &object;
    EXPECT_EQ(ClassObjects()(kNoInterface, kIClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(ClassObjects()(kClassId<_Mesh>, kIDispatch, &object), E_NOINTERFACE);
    EXPECT_EQ(ClassObjects()(kClassId<_Mesh>, kIClassFactory, nullptr), E_POINTER);
    Pointer<IClassFactory> factory;
    ASSERT_EQ(ClassObjects()(kClassId<_Mesh>, kIClassFactory, factory.OutAny()), S_OK);
    EXPECT_EQ(factory->CreateInstance(factory.Get(), kIUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, kInterfaceId<_Bone>, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST(Component, OneReferenceKeepsTheWholeTree)
{
    const TempFolder folder;
    const Bytes root = MeshBone("a", 1, MeshBone("b", 1, MeshBone("c")));
    folder.Write("m.im", MeshHeader(0).Append(MeshSkeleton(root)).Str());
    auto mesh = New<_Mesh>();
    const Text name(folder.Name(u"m.im"));
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    ASSERT_EQ(mesh->Load(name.Get(), &isLoaded), S_OK);
    EXPECT_EQ(isLoaded, VARIANT_TRUE);
    auto bone = ReadObject(mesh, &_Mesh::get_RootBone);
    const auto again = ReadObject(mesh, &_Mesh::get_RootBone);
    EXPECT_EQ(bone.Get(), again.Get());
    auto leaf = Entry<_Bone>(
        ReadObject(Entry<_Bone>(ReadObject(bone, &_Bone::get_Children), 1), &_Bone::get_Children), 1);
    bone.Reset();
    mesh.Reset();

    EXPECT_EQ(ReadText(leaf, &_Bone::get_Name), u"c");
    const auto top = ReadObject(ReadObject(leaf, &_Bone::get_Parent), &_Bone::get_Parent);
    EXPECT_EQ(top.Get(), again.Get());
    EXPECT_FALSE(IsIdle());
}

TEST(Component, LoadsAnAssetAndReportsFailures)
{
    const TempFolder folder;
    folder.Write("assets/a/config.txt",
                 "kuid <KUID:1:2>\r\nmesh-table\r\n{\r\nbody\r\n{\r\nmesh a.im\r\n}\r\n"
                 "wheel\r\n{\r\nmesh a.im\r\natt-parent BODY\r\natt a.Point\r\n}\r\n}\r\n");
    folder.Write("assets/a/a.im", Testing::MeshWith({"a.point"}));
    folder.Write("assets/open/config.txt", "description \"never closed\r\n");
    folder.Write("short.im", "JIRF");
    auto model = New<_ZLMModel>();
    Text name(folder.Name(u"assets\\a\\config.txt"));
    ASSERT_EQ(model->Load(name.InOut()), S_OK);
    EXPECT_EQ(ReadText(model, &_ZLMModel::get_kuid), u"<kuid:1:2>");
    auto table = ReadObject(model, &_ZLMModel::get_MeshTable);
    EXPECT_EQ(Read<LONG>(table, &_Collection::Count), 2);
    const auto wheel = Entry<_MeshEntry>(table, 2);
    EXPECT_EQ(ReadObject(wheel, &_MeshEntry::get_AttParent).Get(), Entry<_MeshEntry>(table, 1).Get());
    EXPECT_EQ(ReadText(ReadObject(wheel, &_MeshEntry::get_Att), &_Attachment::get_Name), u"a.point");
    // The entry keeps its model alive.
    model.Reset();
    table.Reset();
    EXPECT_EQ(ReadText(ReadObject(wheel, &_MeshEntry::get_Parent), &_ZLMModel::get_kuid), u"<kuid:1:2>");

    const auto mesh = New<_Mesh>();
    VARIANT_BOOL isLoaded = VARIANT_TRUE;
    EXPECT_EQ(mesh->Load(Text(folder.Name(u"short.im")).Get(), &isLoaded), DISP_E_BADINDEX);
    EXPECT_EQ(isLoaded, VARIANT_FALSE);
    EXPECT_EQ(mesh->Load(nullptr, &isLoaded), S_OK);
    EXPECT_EQ(mesh->Load(nullptr, nullptr), E_POINTER);
    model = New<_ZLMModel>();
    Text open(folder.Name(u"assets\\open\\config.txt"));
    EXPECT_EQ(model->Load(open.InOut()), static_cast<HRESULT>(0x800A003E));
    EXPECT_EQ(model->Load(nullptr), E_POINTER);

    const auto entry = New<_MeshEntry>();
    Text empty;
    Text attPar(u"Body");
    Text attName(u"A.POINT");
    _ZLMModel* none = nullptr;
    EXPECT_EQ(
        entry->Load(&none, empty.InOut(), empty.InOut(), empty.InOut(), attPar.InOut(), attName.InOut()),
        E_INVALIDARG);
    EXPECT_EQ(attPar.Copy(), u"body");
    EXPECT_EQ(attName.Copy(), u"a.point");
    _ZLMModel* into = model.Get();
    ASSERT_EQ(entry->putref_Mesh(nullptr), S_OK);
    EXPECT_EQ(
        entry->Load(&into, empty.InOut(), empty.InOut(), empty.InOut(), attPar.InOut(), attName.InOut()),
        E_INVALIDARG);
    EXPECT_EQ(entry->putref_Parent(nullptr), S_OK);
    Variant text(std::u16string_view(u"A"));
    Variant same(std::u16string_view(u"B"));
    VARIANT reference = ReferenceTo(text);
    Variant nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(Call(entry.Get(), u"load", DISPATCH_METHOD, {&nothing, &same, &same, &same, &reference, &same}),
              ScriptError(5));
    EXPECT_EQ(Text::Copy(text.bstrVal), u"a");
    EXPECT_EQ(Text::Copy(same.bstrVal), u"B");
}

TEST(Component, ListsAcceptOnlyTheirTypeAndCountFromOne)
{
    const auto bone = New<_Bone>();
    const auto list = ReadObject(bone, &_Bone::get_Children);
    const auto child = New<_Bone>();
    const auto stranger = New<_Mesh>();
    Variant item(child.Get());
    Variant wrong(stranger.Get());
    Variant nothing(static_cast<IDispatch*>(nullptr));
    Variant number(LONG{2});
    Variant key(std::u16string_view(u"key"));
    Variant omitted;
    EXPECT_EQ(Host::Add(list, item), S_OK);
    EXPECT_EQ(Host::Add(list, nothing), S_OK);
    EXPECT_EQ(Host::Add(list, wrong), E_INVALIDARG);
    EXPECT_EQ(Host::Add(list, number), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(list->Add(&item, &key, &omitted, &omitted), E_INVALIDARG);
    EXPECT_EQ(bone->putref_Parent(reinterpret_cast<_Bone*>(stranger.Get())), E_INVALIDARG);
    EXPECT_EQ(bone->putref_Children(reinterpret_cast<_Collection*>(child.Get())), E_INVALIDARG);

    Variant entry;
    EXPECT_EQ(Call(bone.Get(), u"CHILDREN", DISPATCH_METHOD | DISPATCH_PROPERTYGET, {&number}, &entry), S_OK);
    EXPECT_EQ(entry.vt, VT_DISPATCH);
    EXPECT_EQ(entry.pdispVal, nullptr);
    Variant numeral(std::u16string_view(u"1"));
    EXPECT_EQ(list->Item(&numeral, entry.Out()), E_INVALIDARG);

    EXPECT_EQ(list->Remove(&number), S_OK);
    EXPECT_EQ(list->Remove(&number), DISP_E_BADINDEX);
    EXPECT_EQ(list->Item(&number, entry.Out()), DISP_E_BADINDEX);

    const auto model = New<_ZLMModel>();
    const auto names = ReadObject(model, &_ZLMModel::get_BogieNames);
    VARIANT reference = ReferenceTo(omitted);
    EXPECT_EQ(Host::Add(names, number), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(names->Add(&key, &reference, &omitted, &omitted), S_OK);
    Variant place(LONG{1});
    EXPECT_EQ(names->Item(&place, &place), S_OK);
    EXPECT_EQ(place.vt, VT_BSTR);
    Variant one(LONG{1});
    EXPECT_EQ(names->Item(&one, entry.Out()), S_OK);
    EXPECT_EQ(Text::Copy(entry.bstrVal), u"key");
    EXPECT_EQ(model->putref_Bogies(names.Get()), E_INVALIDARG);
}

/// A list of texts and an enumerator of it.
struct Enumeration
{
    explicit Enumeration(std::initializer_list<std::u16string_view> texts)
        : list(ReadObject(New<_ZLMModel>(), &_ZLMModel::get_BogieNames))
    {
        for (const auto text : texts)
            Add(text);
        Pointer<IUnknown> unknown;
        EXPECT_EQ(list->_NewEnum(unknown.Out()), S_OK);
        EXPECT_EQ(unknown->QueryInterface(Component::kIEnumVariant, enumerator.OutAny()), S_OK);
    }
    void Add(std::u16string_view text) const
    {
        Variant item(text);
        EXPECT_EQ(Host::Add(list, item), S_OK);
    }
    void Remove(LONG number) const
    {
        Variant index(number);
        EXPECT_EQ(list->Remove(&index), S_OK);
    }
    [[nodiscard]] static std::u16string Next(const Pointer<IEnumVARIANT>& from)
    {
        Variant entry;
        return from->Next(1, &entry, nullptr) == S_OK ? Text::Copy(entry.bstrVal) : u"end";
    }

    Pointer<_Collection> list;
    Pointer<IEnumVARIANT> enumerator;
};

TEST(ComponentEnumerator, StopsAtTheEndAndContinuesWithWhatIsAdded)
{
    const Enumeration list({u"a", u"b", u"c"});
    const auto& enumerator = list.enumerator;
    VARIANT entries[3];
    std::memset(static_cast<void*>(entries), 0xAA, sizeof(entries));
    ULONG fetched = 9;
    EXPECT_EQ(enumerator->Next(0, nullptr, &fetched), S_OK);
    EXPECT_EQ(fetched, 0U);
    EXPECT_EQ(enumerator->Next(1, nullptr, &fetched), E_POINTER);
    EXPECT_EQ(enumerator->Next(2, entries, nullptr), E_POINTER);
    EXPECT_EQ(Enumeration::Next(enumerator), u"a");
    Pointer<IEnumVARIANT> clone;
    ASSERT_EQ(enumerator->Clone(clone.Out()), S_OK);
    EXPECT_EQ(enumerator->Clone(nullptr), E_POINTER);
    EXPECT_EQ(enumerator->Next(3, entries, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 2U);
    EXPECT_EQ(entries[2].vt, VT_EMPTY);
    for (VARIANT& entry : entries)
        VariantClear(&entry);
    EXPECT_EQ(enumerator->Next(1, entries, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0U);
    EXPECT_EQ(enumerator->Skip(0), S_OK);
    EXPECT_EQ(enumerator->Skip(1), S_FALSE);
    list.Add(u"d");
    EXPECT_EQ(Enumeration::Next(enumerator), u"d");
    EXPECT_EQ(enumerator->Reset(), S_OK);
    EXPECT_EQ(Enumeration::Next(enumerator), u"a");
    EXPECT_EQ(clone->Skip(2), S_OK);
    EXPECT_EQ(clone->Skip(2), S_FALSE);
    EXPECT_EQ(Enumeration::Next(clone), u"end");
}

TEST(ComponentEnumerator, SkipsNothingIfEntriesAreRemoved)
{
    const Enumeration list({u"a", u"b", u"c", u"d"});
    const Enumeration other({u"x", u"y"});
    EXPECT_EQ(Enumeration::Next(other.enumerator), u"x");
    EXPECT_EQ(Enumeration::Next(list.enumerator), u"a");
    Pointer<IEnumVARIANT> fresh;
    ASSERT_EQ(list.enumerator->Clone(fresh.Out()), S_OK);
    ASSERT_EQ(fresh->Reset(), S_OK);
    list.Remove(1);
    EXPECT_EQ(Enumeration::Next(list.enumerator), u"b");
    list.Remove(2); // c, which the enumerator hasn't returned yet
    EXPECT_EQ(Enumeration::Next(list.enumerator), u"d");
    list.Remove(2);
    list.Remove(1);
    EXPECT_EQ(Enumeration::Next(list.enumerator), u"end");
    EXPECT_EQ(Enumeration::Next(fresh), u"end");
    list.Add(u"e");
    EXPECT_EQ(Enumeration::Next(list.enumerator), u"e");
    EXPECT_EQ(Enumeration::Next(other.enumerator), u"y");
}

TEST(Component, CopiesRecordsAndRejectsBadIndices)
{
    const auto geometry = New<_Geometry>();
    Vertex vertex{1, 2, 3, 4, 5};
    LONG index = 1;
    VARIANT_BOOL isThere = VARIANT_FALSE;
    EXPECT_EQ(geometry->SetVertex(&index, &vertex), DISP_E_BADINDEX);
    EXPECT_EQ(geometry->put_MaxVertices(2), S_OK);
    EXPECT_EQ(geometry->SetVertex(&index, &vertex), S_OK);
    Vertex read;
    EXPECT_EQ(geometry->GetVertex(&index, &read, &isThere), S_OK);
    EXPECT_EQ(isThere, VARIANT_TRUE);
    EXPECT_EQ(read, vertex);
    index = 2;
    EXPECT_EQ(geometry->GetVertex(&index, &read, &isThere), S_OK);
    EXPECT_EQ(isThere, VARIANT_FALSE);
    EXPECT_EQ(geometry->GetVertex(nullptr, &read, &isThere), E_POINTER);
    EXPECT_EQ(geometry->GetVertex(&index, nullptr, &isThere), E_POINTER);

    // By name: copies a record to another property, and rejects a wrong one.
    const auto bone = New<_Bone>();
    Vector position{6, 7, 8};
    ASSERT_EQ(bone->put_Position(&position), S_OK);
    Variant record;
    ASSERT_EQ(Call(bone.Get(), u"position", DISPATCH_PROPERTYGET, {}, record.Out()), S_OK);
    EXPECT_EQ(Call(bone.Get(), u"Rotation", DISPATCH_PROPERTYPUT, {&record}), DISP_E_TYPEMISMATCH);
    const auto normals = ReadObject(geometry, &_Geometry::get_FaceNormals);
    EXPECT_EQ(Host::Add(normals, record), S_OK);
    ASSERT_EQ(geometry->put_MaxVertNormal(1), S_OK);
    Variant zero(0.4F);
    Variant copy;
    ASSERT_EQ(VariantCopy(&copy, &record), S_OK);
    EXPECT_EQ(Call(geometry.Get(), u"SetVertexNormal", DISPATCH_METHOD, {&zero, &record}), S_OK);
    static_cast<Vector*>(copy.pvRecord)->x = 0;
    VARIANT reference = ReferenceTo(copy);
    Variant result;
    EXPECT_EQ(Call(geometry.Get(), u"GetVertexNormal", DISPATCH_METHOD, {&zero, &reference}, &result), S_OK);
    EXPECT_EQ(result.vt, VT_BOOL);
    EXPECT_EQ(result.boolVal, VARIANT_TRUE);
    EXPECT_EQ(*static_cast<Vector*>(copy.pvRecord), position);
}

TEST(Component, ReportsWhenItCanBeUnloaded)
{
    ASSERT_TRUE(IsIdle());
    Pointer<IClassFactory> factory;
    ASSERT_EQ(ClassObjects()(kClassId<_Bone>, kIClassFactory, factory.OutAny()), S_OK);
    EXPECT_FALSE(IsIdle());
    EXPECT_EQ(factory->LockServer(1), S_OK);
    auto bone = New<_Bone>();
    factory.Reset();
    EXPECT_FALSE(IsIdle());
    auto list = ReadObject(bone, &_Bone::get_Children);
    bone.Reset();
    Pointer<IUnknown> enumerator;
    ASSERT_EQ(list->_NewEnum(enumerator.Out()), S_OK);
    list.Reset();
    ASSERT_EQ(ClassObjects()(kClassId<_Bone>, kIClassFactory, factory.OutAny()), S_OK);
    EXPECT_EQ(factory->LockServer(0), S_OK);
    EXPECT_EQ(factory->LockServer(0), E_FAIL);
    factory.Reset();
    EXPECT_FALSE(IsIdle());
    enumerator.Reset();
    EXPECT_TRUE(IsIdle());
}

TEST(Component, RingsOfAHostLiveUntilItBreaksThem)
{
    ComHeader* const header = Component::Classes()[7]->create();
    const std::weak_ptr<void> watched = header->Self;
    Pointer<_ZLMModel> model(reinterpret_cast<_ZLMModel*>(header));
    auto entry = Pointer<_MeshEntry>(reinterpret_cast<_MeshEntry*>(Component::Classes()[8]->create()));
    _ZLMModel* into = model.Get();
    Text texts[5];
    ASSERT_EQ(entry->Load(&into, texts[0].InOut(), texts[1].InOut(), texts[2].InOut(), texts[3].InOut(),
                          texts[4].InOut()),
              S_OK);
    entry.Reset();
    model.Reset();
    // The ring keeps itself alive, but doesn't keep the module loaded.
    const auto held = std::static_pointer_cast<ZLMModel>(watched.lock());
    ASSERT_TRUE(held);
    EXPECT_EQ(Component::LiveCount, 0);
    held->MeshTable()->Item(1)->SetParent(nullptr);
    EXPECT_EQ(watched.use_count(), 1);
}

TEST(Component, LetsTwoThreadsReadOneObject)
{
    const auto mesh = New<_Mesh>();
    const auto chunks = New<_Material>();
    const auto read = [&]
    {
        for (int i = 0; i < 5000; ++i)
        {
            // Both threads create and release the only reference to one list, and to one enumerator each.
            Pointer<_Collection> list;
            ASSERT_EQ(chunks->get_Textures(list.Out()), S_OK);
            LONG count = 1;
            ASSERT_EQ(list->Count(&count), S_OK);
            ASSERT_EQ(count, 0);
            Pointer<IUnknown> enumerator;
            ASSERT_EQ(list->_NewEnum(enumerator.Out()), S_OK);
            Variant name;
            ASSERT_EQ(Call(mesh.Get(), u"FileName", DISPATCH_PROPERTYGET, {}, &name), S_OK);
            ASSERT_EQ(mesh->get_Version(nullptr), E_POINTER);
        }
    };
    std::thread other(read);
    read();
    other.join();
    Pointer<IErrorInfo> error;
    EXPECT_EQ(TakeError(ClassObjects(), error), S_OK);
}

} // namespace
} // namespace ZLMIM::Host

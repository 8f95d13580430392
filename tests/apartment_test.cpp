#include "component_host.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace ZLMIM::Host
{
namespace
{

/// A host that creates the registered classes through the system, in a single-threaded and in a multithreaded
/// apartment. The objects always live in a single-threaded one: in the other case every call is marshalled.
/// Takes a folder of sample assets as its argument.
std::u16string sampleFolder;

class Apartment : public ::testing::TestWithParam<DWORD>
{
protected:
    /// Runs on a thread of its own, since a thread stays in its apartment.
    template <class Action>
    static void Run(const Action& action)
    {
        std::thread thread(
            [&]
            {
                ASSERT_EQ(::CoInitializeEx(nullptr, GetParam()), S_OK);
                action();
                ::CoUninitialize();
            });
        thread.join();
    }
};

[[nodiscard]] std::wstring Wide(std::u16string_view text) { return {text.begin(), text.end()}; }

template <class I>
[[nodiscard]] Pointer<I> CreateAs(std::u16string_view name, const GUID& iid = kInterfaceId<I>)
{
    CLSID id{};
    Pointer<I> object;
    EXPECT_EQ(::CLSIDFromProgID(Wide(u"ZLMIM." + std::u16string(name)).c_str(), &id), S_OK);
    EXPECT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, iid, object.OutAny()), S_OK);
    return object;
}

template <class A, class B>
[[nodiscard]] bool IsSameObject(const Pointer<A>& a, const Pointer<B>& b)
{
    Pointer<IUnknown> first;
    Pointer<IUnknown> second;
    return a && b && a->QueryInterface(Component::kIUnknown, first.OutAny()) == S_OK &&
           b->QueryInterface(Component::kIUnknown, second.OutAny()) == S_OK && first.Get() == second.Get();
}

TEST_P(Apartment, LoadsAnAssetAndWalksIt)
{
    Run(
        []
        {
            const auto model = CreateAs<_ZLMModel>(u"ZLMModel");
            Text name(sampleFolder + u"\\assets\\wagon\\config.txt");
            ASSERT_EQ(model->Load(name.InOut()), S_OK);
            const auto table = ReadObject(model, &_ZLMModel::get_MeshTable);
            const LONG count = Read<LONG>(table, &_Collection::Count);
            EXPECT_GT(count, 1);
            LONG vertices = 0;
            LONG textures = 0;
            for (LONG i = 1; i <= count; ++i)
            {
                const auto entry = Entry<_MeshEntry>(table, i);
                EXPECT_TRUE(IsSameObject(entry, Entry<_MeshEntry>(table, i)));
                EXPECT_TRUE(IsSameObject(ReadObject(entry, &_MeshEntry::get_Parent), model));
                const auto mesh = ReadObject(entry, &_MeshEntry::get_Mesh);
                const auto chunks = ReadObject(mesh, &_Mesh::get_Chunks);
                const LONG chunkCount = Read<LONG>(chunks, &_Collection::Count);
                EXPECT_EQ(Read<LONG>(mesh, &_Mesh::get_ChunkCount), chunkCount);
                for (LONG k = 1; k <= chunkCount; ++k)
                {
                    const auto chunk = Entry<_Chunk>(chunks, k);
                    vertices +=
                        Read<LONG>(ReadObject(chunk, &_Chunk::get_Geometry), &_Geometry::get_MaxVertices);
                    const auto material = ReadObject(chunk, &_Chunk::get_Material);
                    textures +=
                        Read<LONG>(ReadObject(material, &_Material::get_Textures), &_Collection::Count);
                }
            }
            EXPECT_GT(vertices, 0);
            EXPECT_GT(textures, 0);
            Pointer<IUnknown> unknown;
            Pointer<IEnumVARIANT> enumerator;
            ASSERT_EQ(table->_NewEnum(unknown.Out()), S_OK);
            ASSERT_EQ(unknown->QueryInterface(Component::kIEnumVariant, enumerator.OutAny()), S_OK);
            LONG entries = 0;
            ULONG fetched = 0;
            for (Variant entry; enumerator->Next(1, entry.Out(), &fetched) == S_OK; ++entries)
                EXPECT_EQ(entry.vt, VT_DISPATCH);
            EXPECT_EQ(entries, count);
            Variant kuid;
            EXPECT_EQ(Call(model.Get(), u"kuid", DISPATCH_PROPERTYGET, {}, &kuid), S_OK);
            EXPECT_EQ(Text::Copy(kuid.bstrVal), ReadText(model, &_ZLMModel::get_kuid));
        });
}

TEST_P(Apartment, ChangesObjectsAndLists)
{
    Run(
        []
        {
            const auto bone = CreateAs<_Bone>(u"Bone");
            const auto child = CreateAs<_Bone>(u"bone");
            EXPECT_EQ(bone->put_Name(Text(u"r\u00E4").Get()), S_OK);
            EXPECT_EQ(ReadText(bone, &_Bone::get_Name), u"r\u00E4");
            const auto children = ReadObject(bone, &_Bone::get_Children);
            Variant entry(child.Get());
            EXPECT_EQ(Add(children, entry), S_OK);
            EXPECT_EQ(child->putref_Parent(bone.Get()), S_OK);
            EXPECT_TRUE(IsSameObject(ReadObject(child, &_Bone::get_Parent), bone));
            EXPECT_TRUE(IsSameObject(Entry<_Bone>(children, 1), child));
            EXPECT_EQ(child->putref_Parent(nullptr), S_OK);
            EXPECT_FALSE(ReadObject(child, &_Bone::get_Parent));
            Variant one(LONG{1});
            EXPECT_EQ(children->Remove(&one), S_OK);
            EXPECT_EQ(Read<LONG>(children, &_Collection::Count), 0);
            EXPECT_EQ(children->Remove(&one), DISP_E_BADINDEX);

            const auto geometry = CreateAs<_Geometry>(u"Geometry");
            EXPECT_EQ(geometry->put_MaxIndex(3), S_OK);
            LONG place = 2;
            EXPECT_EQ(geometry->SetIndex(&place, 7), S_OK);
            LONG index = 0;
            EXPECT_EQ(geometry->GetIndex(&place, &index), S_OK);
            EXPECT_EQ(index, 7);
            place = 3;
            EXPECT_EQ(geometry->SetIndex(&place, 7), DISP_E_BADINDEX);
            EXPECT_EQ(geometry->put_Area(0.5F), S_OK);
            EXPECT_EQ(Read<float>(geometry, &_Geometry::get_Area), 0.5F);
            EXPECT_EQ(geometry->put_PrimitiveType(static_cast<PrimFlag>(5)), S_OK);
            EXPECT_EQ(static_cast<int>(Read<PrimFlag>(geometry, &_Geometry::get_PrimitiveType)), 5);

            const auto model = CreateAs<_ZLMModel>(u"ZLMModel");
            const auto meshEntry = CreateAs<_MeshEntry>(u"MeshEntry");
            Text texts[3];
            Text attParent(u"BODY");
            Text attName(u"A.Point");
            _ZLMModel* into = model.Get();
            EXPECT_EQ(meshEntry->Load(&into, texts[0].InOut(), texts[1].InOut(), texts[2].InOut(),
                                      attParent.InOut(), attName.InOut()),
                      S_OK);
            EXPECT_EQ(attParent.Copy(), u"body");
            EXPECT_EQ(attName.Copy(), u"a.point");
            EXPECT_EQ(meshEntry->putref_Parent(nullptr), S_OK);
            Variant stranger(geometry.Get());
            EXPECT_EQ(Call(meshEntry.Get(), u"Parent", DISPATCH_PROPERTYPUTREF, {&stranger}), ScriptError(5));
        });
}

TEST_P(Apartment, PassesRecords)
{
    Run(
        []
        {
            const auto bone = CreateAs<_Bone>(u"Bone");
            Vector position{1, 2, 3};
            EXPECT_EQ(bone->put_Position(&position), S_OK);
            Vector read;
            EXPECT_EQ(bone->get_Position(&read), S_OK);
            EXPECT_EQ(read, position);
            if (GetParam() == COINIT_MULTITHREADED)
                return; // Wine doesn't marshal variants that hold records
            Variant record;
            ASSERT_EQ(Call(bone.Get(), u"Position", DISPATCH_PROPERTYGET, {}, &record), S_OK);
            ASSERT_EQ(record.vt, VT_RECORD);
            EXPECT_EQ(*static_cast<Vector*>(record.pvRecord), position);
            const auto normals = ReadObject(CreateAs<_Geometry>(u"Geometry"), &_Geometry::get_FaceNormals);
            EXPECT_EQ(Add(normals, record), S_OK);
            Variant one(LONG{1});
            Variant normal;
            ASSERT_EQ(normals->Item(&one, &normal), S_OK);
            EXPECT_EQ(*static_cast<Vector*>(normal.pvRecord), position);
        });
}

TEST_P(Apartment, OffersTheOlderIdentifiersOfMesh)
{
    Run(
        []
        {
            for (const GUID& older : {Component::ParseGuid("8FEEE349-8D59-450E-87CE-ECA64FC6C4CB"),
                                      Component::ParseGuid("DD46449E-A679-4698-B9EF-B60BD99D5B75"),
                                      Component::ParseGuid("CFFD6A3F-A7C6-4CBC-B3B4-14A0ED3D03D8")})
            {
                const auto mesh = CreateAs<_Mesh>(u"Mesh", older);
                ASSERT_TRUE(mesh);
                VARIANT_BOOL isLoaded = VARIANT_FALSE;
                EXPECT_EQ(mesh->Load(Text(sampleFolder + u"\\assets\\wagon\\body.im").Get(), &isLoaded),
                          S_OK);
                EXPECT_EQ(isLoaded, VARIANT_TRUE);
                const auto chunks = ReadObject(mesh, &_Mesh::get_Chunks);
                EXPECT_GT(Read<LONG>(chunks, &_Collection::Count), 0);
                EXPECT_GT(Read<LONG>(mesh, &_Mesh::get_TextureCount), 0);
                Pointer<_Mesh> present;
                ASSERT_EQ(mesh->QueryInterface(kInterfaceId<_Mesh>, present.OutAny()), S_OK);
                EXPECT_EQ(ReadText(present, &_Mesh::get_FileName), ReadText(mesh, &_Mesh::get_FileName));
            }
        });
}

TEST_P(Apartment, ReportsFailures)
{
    Run(
        []
        {
            const auto mesh = CreateAs<_Mesh>(u"Mesh");
            const Variant name(std::u16string_view(sampleFolder + u"\\overflow.im"));
            VARIANT arguments[] = {name};
            DISPPARAMS parameters{arguments, nullptr, 1, 0};
            EXCEPINFO exception{};
            EXPECT_EQ(mesh->Invoke(IdOf(mesh.Get(), u"Load"), Component::kNoInterface, 0, DISPATCH_METHOD,
                                   &parameters, nullptr, &exception, nullptr),
                      DISP_E_EXCEPTION);
            EXPECT_EQ(exception.scode, ScriptError(6));
            EXPECT_EQ(Text::Adopt(exception.bstrSource).Copy(), u"ZLMIM.Mesh");
            EXPECT_NE(Text::Adopt(exception.bstrDescription).Copy(), u"");
            VARIANT_BOOL isLoaded = VARIANT_TRUE;
            EXPECT_EQ(mesh->Load(name.bstrVal, &isLoaded), DISP_E_OVERFLOW);
            Pointer<ISupportErrorInfo> support;
            EXPECT_EQ(mesh->QueryInterface(Component::kISupportErrorInfo, support.OutAny()), S_OK);
            EXPECT_EQ(support->InterfaceSupportsErrorInfo(kInterfaceId<_Mesh>), S_OK);
        });
}

INSTANTIATE_TEST_SUITE_P(Hosts, Apartment,
                         ::testing::Values(DWORD{COINIT_APARTMENTTHREADED}, DWORD{COINIT_MULTITHREADED}));

} // namespace
} // namespace ZLMIM::Host

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (argc != 2)
        return 2;
    for (const char* c = argv[1]; *c; ++c)
        ZLMIM::Host::sampleFolder += static_cast<unsigned char>(*c);
    return RUN_ALL_TESTS();
}

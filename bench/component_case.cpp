#include "bench/cases.h"
#include "bench/made_mesh.h"
#include "zlmim/component/host.h"
#include "zlmim/mesh/mesh.h"

#include <dlfcn.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Bench
{
namespace
{

using namespace ZLMIM::Host;

void Check(HRESULT status)
{
    if (status != S_OK)
        throw std::runtime_error("a call to the component failed");
}

template <class I>
Pointer<I> New()
{
    static void* const kModule = ::dlopen(ZLMIM_MODULE, RTLD_NOW | RTLD_LOCAL);
    if (!kModule)
        throw std::runtime_error("the component can't be loaded");
    Pointer<I> object;
    Check(Create(reinterpret_cast<GetClassObject>(::dlsym(kModule, "DllGetClassObject")), object));
    return object;
}

DISPID Id(IDispatch* object, std::u16string_view name)
{
    const Text text(name);
    LPOLESTR names[] = {text.Get()};
    DISPID id = DISPID_UNKNOWN;
    Check(object->GetIDsOfNames(ZLMIM::Component::kNoInterface, names, 1, 0, &id));
    return id;
}

/// The floor for a call by slot.
class Virtual
{
public:
    virtual ~Virtual() = default;
    virtual HRESULT Get(LONG* value) = 0;
};
class Number : public Virtual
{
public:
    [[gnu::noinline]] HRESULT Get(LONG* value) override
    {
        *value = 7;
        Keep(value); // hides the call's effect from the compiler
        return S_OK;
    }
};

Side VirtualCalls(int count)
{
    return [count]
    {
        const std::unique_ptr<Virtual> object = std::make_unique<Number>();
        Virtual* called = object.get();
        Keep(&called); // hides the class from the compiler
        return Timed(
            [&]
            {
                LONG sum = 0;
                for (int i = 0; i < count; ++i)
                {
                    LONG value = 0;
                    Check(called->Get(&value));
                    sum += value;
                }
                Keep(&sum);
            });
    };
}

/// Reads all values of a mesh through the classes.
class ByClasses
{
public:
    double Read(const std::u16string& name)
    {
        ZLMIM::Mesh mesh;
        if (!mesh.Load(name))
            throw std::runtime_error("the mesh doesn't load");
        for (const auto& chunk : *mesh.Chunks)
        {
            Take(chunk->Material->Name);
            for (const auto& texture : *chunk->Material->Textures)
                Take(texture->Name);
            const ZLMIM::Geometry& geometry = *chunk->Geometry;
            for (std::int32_t i = 0; i < geometry.MaxVertices(); ++i)
            {
                ZLMIM::Vertex vertex;
                ZLMIM::Vector normal;
                if (geometry.GetVertex(i, vertex) && geometry.GetVertexNormal(i, normal))
                    mSum += vertex.x + normal.x;
            }
            for (std::int32_t i = 0; i < geometry.MaxIndex(); ++i)
                mSum += static_cast<float>(geometry.GetIndex(i));
            for (const auto& normal : *geometry.FaceNormals)
                mSum += normal.x;
        }
        return mSum;
    }

private:
    void Take(const std::u16string& text) { mSum += static_cast<float>(std::u16string(text).size()); }

    double mSum = 0;
};

/// The same through the component.
class ByComponent
{
public:
    double Read(const std::u16string& name)
    {
        const auto mesh = New<_Mesh>();
        VARIANT_BOOL isLoaded = VARIANT_FALSE;
        Check(mesh->Load(Text(name).Get(), &isLoaded));
        const auto chunks = Object(mesh, &_Mesh::get_Chunks);
        for (LONG i = 1; i <= Count(chunks); ++i)
        {
            const auto chunk = Item<_Chunk>(chunks, i);
            const auto material = Object(chunk, &_Chunk::get_Material);
            Take(material, &_Material::get_Name);
            const auto textures = Object(material, &_Material::get_Textures);
            for (LONG k = 1; k <= Count(textures); ++k)
                Take(Item<_Texture>(textures, k), &_Texture::get_Name);
            ReadGeometry(Object(chunk, &_Chunk::get_Geometry));
        }
        return mSum;
    }

private:
    void ReadGeometry(const Pointer<_Geometry>& geometry)
    {
        LONG count = 0;
        Check(geometry->get_MaxVertices(&count));
        for (LONG i = 0; i < count; ++i)
        {
            ZLMIM::Vertex vertex;
            ZLMIM::Vector normal;
            VARIANT_BOOL isThere = VARIANT_FALSE;
            Check(geometry->GetVertex(&i, &vertex, &isThere));
            Check(geometry->GetVertexNormal(&i, &normal, &isThere));
            mSum += vertex.x + normal.x;
        }
        Check(geometry->get_MaxIndex(&count));
        for (LONG i = 0; i < count; ++i)
        {
            LONG index = 0;
            Check(geometry->GetIndex(&i, &index));
            mSum += static_cast<float>(index);
        }
        const auto normals = Object(geometry, &_Geometry::get_FaceNormals);
        Pointer<IUnknown> unknown;
        Pointer<IEnumVARIANT> enumerator;
        Check(normals->_NewEnum(unknown.Out()));
        Check(unknown->QueryInterface(ZLMIM::Component::kIEnumVariant, enumerator.OutAny()));
        for (Variant normal; enumerator->Next(1, normal.Out(), nullptr) == S_OK;)
            mSum += static_cast<const ZLMIM::Vector*>(normal.pvRecord)->x;
    }

    template <class T, class I>
    static Pointer<T> Object(const Pointer<I>& object, HRESULT (I::*get)(T**))
    {
        Pointer<T> value;
        Check((object.Get()->*get)(value.Out()));
        return value;
    }
    static LONG Count(const Pointer<_Collection>& list)
    {
        LONG count = 0;
        Check(list->Count(&count));
        return count;
    }
    template <class I>
    static Pointer<I> Item(const Pointer<_Collection>& list, LONG number)
    {
        Variant index(number);
        Variant item;
        Check(list->Item(&index, item.Out()));
        Pointer<I> object;
        Check(item.pdispVal->QueryInterface(kInterfaceId<I>, object.OutAny()));
        return object;
    }
    template <class I>
    void Take(const Pointer<I>& object, HRESULT (I::*get)(BSTR*))
    {
        Text text;
        Check((object.Get()->*get)(text.Out()));
        mSum += static_cast<float>(SysStringLen(text.Get()));
    }

    double mSum = 0;
};

} // namespace

Measures ComponentCalls(const TempFolder& folder)
{
    constexpr int kCalls = 1'000'000;
    const auto numbers = []
    {
        const auto mesh = New<_Mesh>();
        return Timed(
            [&]
            {
                LONG sum = 0;
                for (int i = 0; i < kCalls; ++i)
                {
                    LONG value = 0;
                    Check(mesh->get_Version(&value));
                    sum += value;
                }
                Keep(&sum);
            });
    };
    const auto objects = []
    {
        const auto chunk = New<_Chunk>();
        return Timed(
            [&]
            {
                for (int i = 0; i < kCalls; ++i)
                {
                    Pointer<_Material> material;
                    Check(chunk->get_Material(material.Out()));
                    Keep(material.Get());
                }
            });
    };

    constexpr LONG kNormals = 1000;
    const auto records = [](bool isByName)
    {
        return [isByName]
        {
            const auto geometry = New<_Geometry>();
            Pointer<_Collection> normals;
            Check(geometry->get_FaceNormals(normals.Out()));
            Pointer<_Bone> bone = New<_Bone>();
            DISPPARAMS none{};
            Variant normal;
            Check(bone->Invoke(Id(bone.Get(), u"Position"), ZLMIM::Component::kNoInterface, 0,
                               DISPATCH_PROPERTYGET, &none, &normal, nullptr, nullptr));
            Variant omitted;
            for (LONG i = 0; i < kNormals; ++i)
                Check(normals->Add(&normal, &omitted, &omitted, &omitted));
            const DISPID item = Id(normals.Get(), u"Item");
            return Timed(
                [&]
                {
                    for (int i = 0; i < kCalls / 10; ++i)
                    {
                        Variant number(LONG{i % kNormals + 1});
                        DISPPARAMS arguments{&number, nullptr, 1, 0};
                        Variant entry;
                        Check(isByName
                                  ? normals->Invoke(item, ZLMIM::Component::kNoInterface, 0, DISPATCH_METHOD,
                                                    &arguments, &entry, nullptr, nullptr)
                                  : normals->Item(&number, &entry));
                        Keep(entry.pvRecord);
                    }
                });
        };
    };

    folder.Write("seen.im", MakeMesh({.chunks = 8, .vertices = 500, .textures = 2}).file);
    const std::u16string name = folder.Name(u"seen.im");
    const auto reading = [name](auto reader)
    {
        return [name, reader]
        {
            static_cast<void>(New<_Mesh>()); // loads the component, as starting the process loads the classes
            return Timed(
                [&]
                {
                    for (int i = 0; i < 20; ++i)
                    {
                        auto fresh = reader;
                        const double sum = fresh.Read(name);
                        Keep(&sum);
                    }
                });
        };
    };
    return {{{"1,000,000 numbers read by slot", numbers, VirtualCalls(kCalls), 3},
             {"1,000,000 objects read by slot", objects, VirtualCalls(kCalls), 40},
             {"100,000 records read by Item, by name", records(true), records(false), 3},
             {"a mesh loaded and read by the component", reading(ByComponent()), reading(ByClasses()), 2}}};
}

} // namespace Bench

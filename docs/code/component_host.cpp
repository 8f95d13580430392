#include "zlmim/component/host.h"

#include <dlfcn.h>
#include <iostream>

using namespace ZLMIM::Host;

int main()
{
    void* const module = dlopen("libZLMIMFile.so", RTLD_NOW); // LoadLibrary and GetProcAddress on Windows
    const auto classes =
        module ? reinterpret_cast<GetClassObject>(dlsym(module, "DllGetClassObject")) : nullptr;
    Pointer<_Mesh> mesh;
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    if (!classes || Create(classes, mesh) != S_OK ||
        mesh->Load(Text(u"wagon\\body.im").Get(), &isLoaded) != S_OK)
        return 1;
    Pointer<_Collection> chunks;
    Variant number(LONG{1}), entry;
    Pointer<_Chunk> chunk;
    Pointer<_Geometry> geometry;
    if (mesh->get_Chunks(chunks.Out()) != S_OK || !chunks || chunks->Item(&number, entry.Out()) != S_OK ||
        entry.pdispVal->QueryInterface(kInterfaceId<_Chunk>, chunk.OutAny()) != S_OK ||
        chunk->get_Geometry(geometry.Out()) != S_OK)
        return 1;
    for (LONG i = 0; i < 3; ++i)
    {
        LONG index = 0;
        ZLMIM::Vertex vertex;
        VARIANT_BOOL isThere = VARIANT_FALSE;
        if (geometry->GetIndex(&i, &index) == S_OK &&
            geometry->GetVertex(&index, &vertex, &isThere) == S_OK && isThere)
            std::cout << vertex.x << ' ' << vertex.y << ' ' << vertex.z << '\n';
    }
}

#include "zlmim/component/host.h"

#include <dlfcn.h>
#include <iostream>
#include <string>

using namespace ZLMIM::Host;

int main()
{
    void* const module = dlopen("libZLMIMFile.so", RTLD_NOW);
    const auto classes =
        module ? reinterpret_cast<GetClassObject>(dlsym(module, "DllGetClassObject")) : nullptr;
    Pointer<_Geometry> geometry;
    if (!classes || Create(classes, geometry) != S_OK)
        return 1;
    LONG place = 0;
    if (geometry->SetIndex(&place, 1) == S_OK)
        return 1;
    Pointer<IErrorInfo> error;
    Text source, description;
    if (TakeError(classes, error) == S_OK && error->GetSource(source.Out()) == S_OK &&
        error->GetDescription(description.Out()) == S_OK)
    {
        const std::u16string text = source.Copy() + u": " + description.Copy();
        std::cout << std::string(text.begin(), text.end()) << '\n'; // this text is ASCII
    }
}

#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <iostream>
#include <memory>
#include <string>

namespace
{

void Print(const ZLMIM::Mesh& mesh)
{
    std::cout << ZLMIM::ToUtf8(mesh.FileName) << ": " << mesh.Polygons << " triangles\n";
}

} // namespace

int main()
{
    const auto asset = std::make_shared<ZLMIM::ZLMModel>();
    asset->Load(u"..\\wagon\\config.txt");
    const auto entry = asset->MeshTable()->Item(2);
    const std::u16string nearName = entry->Mesh->FileName;
    const std::u16string folder = nearName.substr(0, nearName.rfind(u'\\') + 1);
    ZLMIM::Mesh farMesh;
    if (!farMesh.Load(folder + u"load_far.im"))
        return 1;
    Print(*entry->Mesh);
    Print(farMesh);
}

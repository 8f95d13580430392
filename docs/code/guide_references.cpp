#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <iostream>
#include <memory>
#include <string>

namespace
{

using ZLMIM::ToUtf8;

void PrintReference(const std::u16string& key, const ZLMIM::ZLMModel& model)
{
    std::cout << ToUtf8(key) << ": ";
    if (model.kuid().empty() && model.MeshTable()->Count() == 0)
        std::cout << "not found\n";
    else
        std::cout << ToUtf8(model.kuid()) << ' ' << ToUtf8(model.UserName) << '\n';
}

} // namespace

int main()
{
    const auto asset = std::make_shared<ZLMIM::ZLMModel>();
    asset->Load(u"..\\wagon\\config.txt");
    for (std::int32_t i = 1; i <= asset->Bogies->Count(); ++i)
        PrintReference(asset->BogieNames->Item(i), *asset->Bogies->Item(i));
    if (asset->Pantograph)
        PrintReference(u"pantograph", *asset->Pantograph);
    const bool isOneObject = asset->Bogies->Item(1) == asset->Bogies->Item(2);
    std::cout << "one object for both bogies: " << std::boolalpha << isOneObject << '\n';
}

#include "located_file.h"

#include "tools/common/paths.h"

namespace ZLMIM::Validate
{

std::optional<LocatedFile> Locate(std::u16string_view name, FileNames& names)
{
    const FoundFile* const found = names.Find(name);
    if (!found || found->kind != FoundFile::Kind::File)
        return std::nullopt;
    LocatedFile file = {{found->identity, {}}, found->systemName};
    const SystemName folderName = file.Folder();
    if (const FoundFile* const folder = names.Find(folderName.empty() ? u"." : FromSystemPath(folderName)))
        file.Key.Folder = folder->identity;
    return file;
}

std::string QuotedFile(std::u16string_view name) { return "\"" + Tools::ShownFile(name) + "\""; }

} // namespace ZLMIM::Validate

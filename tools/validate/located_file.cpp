#include "located_file.h"

#include "tools/common/paths.h"

namespace ZLMIM::Validate
{

std::optional<LocatedFile> Locate(std::u16string_view name, PathResolver& names)
{
    const FoundFile* const found = names.Find(name);
    if (!found || found->kind != FoundFile::Kind::File)
        return std::nullopt;
    LocatedFile file = {{found->identity, {}}, found->nativePath};
    const NativePath folderName = file.Folder();
    if (const FoundFile* const folder = names.Find(folderName.empty() ? u"." : FromNativePath(folderName)))
        file.Key.Folder = folder->identity;
    return file;
}

std::string QuotedFile(std::u16string_view name) { return "\"" + Tools::ShownFile(name) + "\""; }

} // namespace ZLMIM::Validate

#include "located_file.h"

#include "tools/common/paths.h"

namespace ZLMIM::Validate
{

std::optional<LocatedFile> Locate(std::u16string_view name, PathResolver& names)
{
    const auto found = names.Find(name, FoundFile::Kind::File);
    if (!found)
        return std::nullopt;
    LocatedFile file = {{found->identity, {}}, found->nativePath};
    const NativePath folderName = file.Folder();
    if (const auto folder =
            names.Find(folderName.empty() ? u"." : FromNativePath(folderName), FoundFile::Kind::Folder))
        file.Key.Folder = folder->identity;
    return file;
}

std::string QuotedFile(std::u16string_view name) { return "\"" + Tools::ShownFile(name) + "\""; }

} // namespace ZLMIM::Validate

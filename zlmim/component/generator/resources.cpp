#include "zlmim/component/generator/generate.h"
#include "zlmim/component/generator/names.h"

#include <cctype>
#include <iomanip>
#include <sstream>

namespace ZLMIM::Component
{
namespace
{

constexpr const char* kVersion = R"(1 VERSIONINFO
FILEVERSION 1, 1, 0, 31
PRODUCTVERSION 1, 1, 0, 31
FILEOS 0x40004
FILETYPE 0x2
BEGIN
    BLOCK "StringFileInfo"
    BEGIN
        BLOCK "040904B0"
        BEGIN
            VALUE "FileDescription", "ZLM IM file Functions"
            VALUE "FileVersion", "1.01.0031"
            VALUE "InternalName", "ZLMIMFile"
            VALUE "OLESelfRegister", ""
            VALUE "OriginalFilename", "ZLMIMFile.dll"
            VALUE "ProductName", "ZLMIM"
            VALUE "ProductVersion", "1.01.0031"
        END
    END
    BLOCK "VarFileInfo"
    BEGIN
        VALUE "Translation", 0x409, 1200
    END
END
)";

/// A list of identifiers: the number of bytes that follow, then 16 for each.
[[nodiscard]] std::string IdentifierResource(const ClassInfo& info)
{
    std::ostringstream text;
    text << "\n1 _IID_";
    for (const char* c = info.name; *c; ++c)
        text << static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
    text << "\nBEGIN\n    " << info.interfaces.size() * sizeof(GUID) << "L";
    text << std::uppercase << std::hex << std::setfill('0');
    for (const InterfaceId& interface : info.interfaces)
    {
        const GUID& guid = interface.guid;
        text << ",\n    0x" << std::setw(8) << guid.Data1 << "L, 0x" << std::setw(4) << guid.Data2 << ", 0x"
             << std::setw(4) << guid.Data3;
        for (int i = 0; i < 8; i += 2)
            text << ", 0x" << std::setw(4) << (guid.Data4[i + 1] << 8 | guid.Data4[i]);
    }
    text << "\nEND\n";
    return text.str();
}

} // namespace

std::string GenerateResources()
{
    std::string text = "// Made by zlmim_component_files from the tables of the classes: change those.\n\n"
                       "1 TYPELIB \"ZLMIM.tlb\"\n\n";
    text += kVersion;
    for (const ClassInfo* const info : Classes())
        text += IdentifierResource(*info);
    return text;
}

} // namespace ZLMIM::Component

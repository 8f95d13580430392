#include "zlmim/component/generator/generate.h"

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
FILEOS 0x40004 FILETYPE 0x2 BEGIN
    BLOCK "StringFileInfo" BEGIN
        BLOCK "040904B0" BEGIN
            VALUE "FileDescription", "ZLM IM file Functions"
            VALUE "FileVersion", "1.01.0031"
            VALUE "InternalName", "ZLMIMFile"
            VALUE "OLESelfRegister", ""
            VALUE "OriginalFilename", "ZLMIMFile.dll"
            VALUE "ProductName", "ZLMIM"
            VALUE "ProductVersion", "1.01.0031"
        END
    END
    BLOCK "VarFileInfo" BEGIN
        VALUE "Translation", 0x409, 1200
    END
END
)";

/// A list of identifiers: the number of bytes that follow, then 16 bytes for each.
[[nodiscard]] std::string IdentifierResource(const ClassInfo& info)
{
    std::ostringstream text;
    text << "1 _IID_";
    for (const char* c = info.name; *c; ++c)
        text << static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
    text << " BEGIN " << info.interfaces.size() * sizeof(GUID) << "L";
    text << std::uppercase << std::hex << std::setfill('0');
    for (const InterfaceId& interface : info.interfaces)
    {
        const GUID& guid = interface.guid;
        text << ", 0x" << std::setw(8) << guid.Data1 << "L, 0x" << std::setw(4) << guid.Data2 << ", 0x"
             << std::setw(4) << guid.Data3;
        for (int i = 0; i < 8; i += 2)
            text << ", 0x" << std::setw(4) << (guid.Data4[i + 1] << 8 | guid.Data4[i]);
    }
    text << " END\n";
    return text.str();
}

} // namespace

std::string GenerateResources()
{
    std::string text = std::string("// ") + kGenerated + "\n\n1 TYPELIB \"ZLMIM.tlb\"\n\n";
    text += kVersion + std::string("\n");
    for (const ClassInfo* const info : Classes())
        text += IdentifierResource(*info);
    return text;
}

} // namespace ZLMIM::Component

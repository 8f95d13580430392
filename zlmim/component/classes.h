#pragma once

#include "zlmim/component/class_info.h"

#include <span>

namespace ZLMIM::Component
{

/// The type library.
struct LibraryInfo
{
    const char* name = "ZLMIM";
    const char* module = "ZLMIMFile";
    const char* help = "ZLM IM file Functions";
    GUID guid = ParseGuid("C0809775-1978-4774-BA3F-7A1E622C8515");
    int majorVersion = 20;
    int minorVersion = 1;
    LCID locale = 0x409;
};
inline constexpr LibraryInfo kLibrary{};

/// The classes that hosts can create, in the order of the type library.
[[nodiscard]] std::span<const ClassInfo* const> Classes() noexcept;

/// The interface of lists, which only the classes create.
[[nodiscard]] const ClassInfo& CollectionInfo() noexcept;

} // namespace ZLMIM::Component

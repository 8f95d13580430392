#pragma once

#include <string_view>

namespace ZLMIM::View
{

/// A text that `embed.cmake` took from files.
struct Text
{
    std::string_view Content;
    /// Its SHA-256 in hexadecimal digits.
    std::string_view Hash;
};

/// `page.html`, with `@NAME@` where something is filled in.
extern const Text kPage;
extern const Text kStyle;
/// three.js, its loader and its controls.
extern const Text kLibraries;
/// The page's own scripts.
extern const Text kScripts;

} // namespace ZLMIM::View

#include "page.h"

#include "page_texts.h"

#include "tools/common/base64.h"

#include <charconv>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>

namespace ZLMIM::View
{
namespace
{

/// A hash as the page's policy names it. The browser runs no script and applies no style of another hash.
std::string PolicyHash(const Text& text)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < text.Hash.size(); i += 2)
    {
        unsigned byte = 0;
        constexpr int kHexadecimal = 16;
        std::from_chars(text.Hash.data() + i, text.Hash.data() + i + 2, byte, kHexadecimal);
        bytes += static_cast<char>(byte);
    }
    return "'sha256-" + Tools::Base64(bytes) + "'";
}

/// JSON that doesn't end the element that it is in. Of the characters of JSON, only texts have a `<`.
void WriteJson(std::string_view json, std::ostream& out)
{
    for (std::size_t at = json.find('<'); at != std::string_view::npos; at = json.find('<'))
    {
        out << json.substr(0, at) << "\\u003c";
        json.remove_prefix(at + 1);
    }
    out << json;
}

} // namespace

void WritePage(std::string_view data, std::string_view model, std::ostream& out)
{
    const std::map<std::string_view, std::function<void()>> fill = {
        {"@SCRIPT_HASHES@", [&] { out << PolicyHash(kLibraries) << ' ' << PolicyHash(kScripts); }},
        {"@STYLE_HASH@", [&] { out << PolicyHash(kStyle); }},
        {"@STYLE@", [&] { out << kStyle.Content; }},
        {"@DATA@", [&] { WriteJson(data, out); }},
        {"@MODEL@", [&] { out << Tools::Base64(model); }},
        {"@LIBRARIES@", [&] { out << kLibraries.Content; }},
        {"@SCRIPTS@", [&] { out << kScripts.Content; }},
    };
    std::string_view rest = kPage.Content;
    for (std::size_t at = rest.find('@'); at != std::string_view::npos; at = rest.find('@'))
    {
        const std::size_t size = rest.find('@', at + 1) - at + 1;
        out << rest.substr(0, at);
        fill.at(rest.substr(at, size))();
        rest.remove_prefix(at + size);
    }
    out << rest;
}

} // namespace ZLMIM::View

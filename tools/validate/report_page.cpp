#include "report_page.h"

#include "output.h"

#include "tools/common/base64.h"
#include "tools/common/text.h"

#include <map>
#include <string_view>

namespace ZLMIM::Validate
{
namespace
{

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Findings of zlmim validate</title>
<style>
body { font: 16px/1.5 system-ui, sans-serif; margin: 2rem auto; max-width: 72rem; padding: 0 1rem; color: #223; }
section { border-top: 1px solid #ccd; padding: 1rem 0; display: flow-root; }
section img { float: right; margin: 0 0 1rem 1rem; max-width: 40%; }
h2 { font-size: 1.1rem; margin: 0 0 .5rem; overflow-wrap: anywhere; }
li { margin: .3rem 0; overflow-wrap: anywhere; }
.error { color: #b00020; font-weight: 600; }
.warning { color: #8a5a00; font-weight: 600; }
.place, code { color: #556; }
.good { display: flex; flex-wrap: wrap; gap: 1rem; }
.good figure { margin: 0; width: 15rem; }
.good img { width: 100%; }
figcaption { overflow-wrap: anywhere; }
</style>
</head>
<body>
<h1>Findings of zlmim validate</h1>
)";

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char c : text)
    {
        if (c == '&')
            escaped += "&amp;";
        else if (c == '<')
            escaped += "&lt;";
        else if (c == '>')
            escaped += "&gt;";
        else if (c == '"')
            escaped += "&quot;";
        else
            escaped += c;
    }
    return escaped;
}

std::string Escaped(std::u16string_view text) { return Escaped(Tools::Printable(text)); }

void WritePicture(const std::string& png, std::u16string_view asset, std::ostream& out)
{
    if (!png.empty())
        out << "<img alt=\"Picture of " << Escaped(asset) << "\" src=\"data:image/png;base64,"
            << Tools::Base64(png) << "\">\n";
}

void WriteFinding(const Finding& finding, std::u16string_view asset, std::ostream& out)
{
    const CodeInfo& info = Info(finding.Code);
    out << "<li><span class=\"" << Name(info.Severity) << "\">" << Name(info.Severity) << "</span> ";
    std::string where = finding.File == asset ? std::string() : Escaped(finding.File);
    if (const std::string place = Text(finding.Place); !place.empty())
        where += (where.empty() ? "" : ", ") + Escaped(place);
    if (!where.empty())
        out << "<span class=\"place\">" << where << ":</span> ";
    out << Escaped(finding.Message) << " <code>" << info.Name << "</code></li>\n";
}

} // namespace

void WritePage(const Result& result, const std::vector<std::string>& pictures, std::ostream& out)
{
    std::map<std::u16string, std::vector<const Finding*>> byAsset;
    for (const Finding& finding : result.Findings)
        byAsset[AssetOf(finding.File, result.Configs)].push_back(&finding);
    std::map<std::u16string_view, std::size_t> numbers;
    for (std::size_t i = 0; i < result.Configs.size(); ++i)
        numbers.emplace(result.Configs[i], i);

    out << kHead << "<p>" << Escaped(std::string_view(Summary(result))) << "</p>\n";
    for (const auto& [asset, findings] : byAsset)
    {
        out << "<section>\n";
        if (const auto number = numbers.find(asset); number != numbers.end())
            WritePicture(pictures.at(number->second), asset, out);
        out << "<h2>" << Escaped(asset) << "</h2>\n<ul>\n";
        for (const Finding* const finding : findings)
            WriteFinding(*finding, asset, out);
        out << "</ul>\n</section>\n";
    }
    out << "<section>\n<h2>Assets without findings</h2>\n<div class=\"good\">\n";
    for (std::size_t i = 0; i < result.Configs.size(); ++i)
    {
        const std::u16string& asset = result.Configs[i];
        if (byAsset.contains(asset))
            continue;
        out << "<figure>";
        WritePicture(pictures.at(i), asset, out);
        out << "<figcaption>" << Escaped(asset) << "</figcaption></figure>\n";
    }
    out << "</div>\n</section>\n</body>\n</html>\n";
}

} // namespace ZLMIM::Validate

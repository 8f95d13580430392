#include "output.h"

#include "tools/common/json_writer.h"
#include "tools/common/terminal.h"
#include "tools/common/text.h"

#include "zlmim/model/text.h"
#include "zlmim/reader/native_path.h"

#include <algorithm>
#include <set>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

constexpr auto kSeparator = static_cast<char16_t>(kNativeSeparator);

std::string Severities(const Counts& counts)
{
    return Tools::Counted(static_cast<std::int64_t>(counts.Errors), "error", "errors") + ", " +
           Tools::Counted(static_cast<std::int64_t>(counts.Warnings), "warning", "warnings");
}

} // namespace

std::u16string AssetOf(const std::u16string& file, const std::vector<std::u16string>& configs)
{
    std::u16string folder = file;
    while (!folder.empty())
    {
        const std::size_t end = folder.rfind(kSeparator);
        folder.erase(end == std::u16string::npos ? 0 : end);
        std::u16string config = folder;
        config += folder.empty() ? u"" : std::u16string(1, kSeparator);
        config += u"config.txt";
        if (std::binary_search(configs.begin(), configs.end(), config))
            return config;
    }
    return file;
}

Counts Count(const Result& result)
{
    Counts counts;
    std::set<std::u16string> assets;
    for (const Finding& finding : result.Findings)
    {
        ++(Info(finding.Code).Severity == Severity::Error ? counts.Errors : counts.Warnings);
        std::u16string asset = AssetOf(finding.File, result.Configs);
        if (std::binary_search(result.Configs.begin(), result.Configs.end(), asset))
            assets.insert(std::move(asset));
    }
    counts.Assets = assets.size();
    return counts;
}

std::string Summary(const Result& result)
{
    const Counts counts = Count(result);
    const std::string files = Tools::Counted(static_cast<std::int64_t>(result.Files), "file", "files") +
                              " in " + Tools::Counted(std::ssize(result.Configs), "asset", "assets");
    if (result.Findings.empty())
        return files + ", nothing wrong found";
    return files + ": " + Severities(counts) +
           (result.Configs.size() > 1 && counts.Assets > 0
                ? " in " + Tools::Number(static_cast<std::int64_t>(counts.Assets)) + " of them"
                : "");
}

void WriteText(const Result& result, std::ostream& out, bool isColoured)
{
    for (const Finding& finding : result.Findings)
    {
        const CodeInfo& info = Info(finding.Code);
        const bool isError = info.Severity == Severity::Error;
        out << Tools::Paint(Tools::Printable(finding.File), Tools::Colour::Bold, isColoured) << ": ";
        if (const std::string place = Text(finding.Place); !place.empty())
            out << place << ": ";
        out << Tools::Paint(Name(info.Severity), isError ? Tools::Colour::Red : Tools::Colour::Yellow,
                            isColoured)
            << ": " << finding.Message << ' '
            << Tools::Paint("[" + std::string(info.Name) + "]", Tools::Colour::Faint, isColoured) << '\n';
    }
    out << Summary(result) << '\n';
}

void WriteLines(const Result& result, std::ostream& out)
{
    for (const Finding& finding : result.Findings)
    {
        const CodeInfo& info = Info(finding.Code);
        out << Tools::Printable(finding.File) << ':' << std::max<std::int64_t>(finding.Place.Line, 1) << ": "
            << Name(info.Severity) << ": ";
        if (const std::string place = Text(finding.Place, false); !place.empty())
            out << place << ": ";
        out << finding.Message << " [" << info.Name << "]\n";
    }
}

void WriteJson(const Result& result, std::ostream& out)
{
    const Counts counts = Count(result);
    {
        Tools::JsonWriter json(out, Tools::JsonWriter::Form::Indented);
        json.BeginObject();
        json.Key("files").Integer(static_cast<std::int64_t>(result.Files));
        json.Key("assets").Integer(std::ssize(result.Configs));
        json.Key("errors").Integer(static_cast<std::int64_t>(counts.Errors));
        json.Key("warnings").Integer(static_cast<std::int64_t>(counts.Warnings));
        json.Key("findings").BeginArray();
        for (const Finding& finding : result.Findings)
        {
            const CodeInfo& info = Info(finding.Code);
            const Place& place = finding.Place;
            json.BeginObject();
            json.Key("file").Text(finding.File);
            if (place.Line > 0)
                json.Key("line").Integer(place.Line);
            if (!place.Entry.empty())
                json.Key("entry").Text(place.Entry);
            if (place.Chunk > 0)
                json.Key("chunk").Integer(place.Chunk);
            if (!place.Detail.empty())
                json.Key("place").Text(place.Detail);
            json.Key("severity").Text(Name(info.Severity));
            json.Key("code").Text(info.Name);
            json.Key("message").Text(finding.Message);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
    }
    out << '\n';
}

} // namespace ZLMIM::Validate

#include "output.h"

#include "tools/common/json_writer.h"
#include "tools/common/text.h"

#include "zlmim/model/text.h"

#include <algorithm>

namespace ZLMIM::Validate
{

void WriteText(const Result& result, std::ostream& out)
{
    for (const Finding& finding : result.Findings)
    {
        const CodeInfo& info = Info(finding.Code);
        out << Tools::Printable(finding.File) << ": ";
        if (!finding.Place.empty())
            out << finding.Place << ": ";
        out << Name(info.Severity) << ": " << finding.Message << " [" << info.Name << "]\n";
    }
}

void WriteJson(const Result& result, std::ostream& out)
{
    const auto errors =
        std::count_if(result.Findings.begin(), result.Findings.end(),
                      [](const Finding& finding) { return Info(finding.Code).Severity == Severity::Error; });
    {
        Tools::JsonWriter json(out, Tools::JsonWriter::Form::Indented);
        json.BeginObject();
        json.Key("files").Integer(static_cast<std::int64_t>(result.Files));
        json.Key("errors").Integer(errors);
        json.Key("warnings").Integer(std::ssize(result.Findings) - errors);
        json.Key("findings").BeginArray();
        for (const Finding& finding : result.Findings)
        {
            const CodeInfo& info = Info(finding.Code);
            json.BeginObject();
            json.Key("file").Text(finding.File);
            json.Key("place").Text(finding.Place);
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

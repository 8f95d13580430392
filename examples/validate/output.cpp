#include "output.h"

#include "examples/text.h"
#include "zlmim/model/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace ZLMIM::Validate
{

void WriteText(const Result& result, std::ostream& out)
{
    for (const Finding& finding : result.Findings)
    {
        const CodeInfo& info = Info(finding.Code);
        out << Examples::Printable(finding.File) << ": ";
        if (!finding.Place.empty())
            out << finding.Place << ": ";
        out << Name(info.Severity) << ": " << finding.Message << " [" << info.Name << "]\n";
    }
}

void WriteJson(const Result& result, std::ostream& out)
{
    using Json = nlohmann::ordered_json;
    const auto errors =
        std::count_if(result.Findings.begin(), result.Findings.end(),
                      [](const Finding& finding) { return Info(finding.Code).Severity == Severity::Error; });
    Json findings = Json::array();
    for (const Finding& finding : result.Findings)
    {
        const CodeInfo& info = Info(finding.Code);
        findings.push_back({{"file", ToUtf8(finding.File)},
                            {"place", finding.Place},
                            {"severity", Name(info.Severity)},
                            {"code", info.Name},
                            {"message", finding.Message}});
    }
    const Json json = {{"files", result.Files},
                       {"errors", errors},
                       {"warnings", std::ssize(result.Findings) - errors},
                       {"findings", std::move(findings)}};
    out << json.dump(2, ' ', true) << '\n';
}

} // namespace ZLMIM::Validate

#ifndef ZLMIM_TESTS_VALIDATE_FINDINGS_H
#define ZLMIM_TESTS_VALIDATE_FINDINGS_H

#include "validate.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace ZLMIM::Testing
{

using Lines = std::vector<std::string>;

/// The findings for these paths, "file: place: code" each, with slashes.
inline Lines Found(const Lines& paths, bool isRecursive = false, unsigned threads = 2)
{
    Lines lines;
    for (const auto& finding : Validate::Validate({paths, isRecursive, threads, {}}).Findings)
    {
        std::string file = ToUtf8(finding.File);
        std::replace(file.begin(), file.end(), '\\', '/');
        lines.push_back(file + ": " + Text(finding.Place) + ": " + std::string(Info(finding.Code).Name));
    }
    return lines;
}

/// `findings`, each after `prefix` unless it names its file, with a slash.
inline Lines InFull(const std::string& prefix, Lines findings)
{
    for (std::string& finding : findings)
        finding.insert(0, finding.find('/') == std::string::npos ? prefix : "");
    return findings;
}

} // namespace ZLMIM::Testing

#endif

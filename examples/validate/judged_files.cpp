#include "judged_files.h"

#include <algorithm>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

bool IsBetter(const NativePath& name, const NativePath& other)
{
    return name.size() != other.size() ? name.size() < other.size() : name < other;
}

} // namespace

bool JudgedFiles::Claim(const LocatedFile& file)
{
    const std::lock_guard lock(mMutex);
    const auto [known, isNew] = mFiles.try_emplace(file.Key);
    if (isNew || IsBetter(file.Name, known->second.Name))
        known->second.Name = file.Name;
    return isNew;
}

void JudgedFiles::Store(const FileKey& file, Report report)
{
    const std::lock_guard lock(mMutex);
    mFiles.at(file).Report = std::move(report);
}

std::size_t JudgedFiles::Count() const
{
    const std::lock_guard lock(mMutex);
    return mFiles.size();
}

std::vector<Finding> JudgedFiles::Findings() const
{
    const std::lock_guard lock(mMutex);
    std::vector<Finding> findings;
    for (const auto& [key, file] : mFiles)
    {
        if (file.Report.Findings().empty())
            continue;
        const std::u16string shown = ShownName(file.Name);
        for (Finding finding : file.Report.Findings())
        {
            finding.File = shown;
            findings.push_back(std::move(finding));
        }
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.File < b.File; });
    return findings;
}

} // namespace ZLMIM::Validate

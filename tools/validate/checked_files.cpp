#include "checked_files.h"

#include "spelling.h"

#include "tools/common/paths.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

bool IsShorter(const NativePath& name, const NativePath& other)
{
    return name.size() != other.size() ? name.size() < other.size() : name < other;
}

} // namespace

bool CheckedFiles::Claim(const LocatedFile& file)
{
    const std::lock_guard lock(mMutex);
    const auto [known, isNew] = mFiles.try_emplace(file.Key);
    if (isNew || IsShorter(file.Name, known->second.Name))
        known->second.Name = file.Name;
    return isNew;
}

void CheckedFiles::Store(const FileKey& file, Report report)
{
    const std::lock_guard lock(mMutex);
    mFiles.at(file).Report = std::move(report);
}

void CheckedFiles::NoteKuid(const std::u16string& kuid, const LocatedFile& file, std::int64_t line)
{
    const std::lock_guard lock(mMutex);
    mKuids[kuid].push_back({file.Key, line});
}

void CheckedFiles::AddSharedKuids()
{
    const std::lock_guard lock(mMutex);
    for (auto& [kuid, owners] : mKuids)
    {
        if (owners.size() < 2)
            continue;
        const auto nameOf = [this](const Owner& owner)
        { return Tools::ShownName(mFiles.at(owner.File).Name); };
        std::sort(owners.begin(), owners.end(),
                  [&](const Owner& a, const Owner& b) { return nameOf(a) < nameOf(b); });
        std::string message = Quoted(kuid) + " is also the kuid of ";
        constexpr std::size_t kMostNamed = 8;
        for (std::size_t i = 1; i < std::min(owners.size(), kMostNamed); ++i)
            message += (i > 1 ? ", " : "") + Quoted(nameOf(owners[i]));
        if (owners.size() > kMostNamed)
            message += " and " + std::to_string(owners.size() - kMostNamed) + " more";
        mFiles.at(owners[0].File).Report.Add(Code::KuidShared, {owners[0].Line}, message);
    }
    for (auto& [key, file] : mFiles)
        std::erase_if(file.Report.Findings(),
                      [this](const Finding& finding)
                      {
                          const auto owners = mKuids.find(finding.Kuid);
                          return finding.Code == Code::KuidFoundTwice && owners != mKuids.end() &&
                                 owners->second.size() > 1;
                      });
}

void CheckedFiles::NoteReference(const LocatedFile& from, const LocatedFile& to, Place place)
{
    const std::lock_guard lock(mMutex);
    mReferences[from.Key].push_back({to.Key, std::move(place)});
}

void CheckedFiles::AddCircles()
{
    const std::lock_guard lock(mMutex);
    std::vector<FileKey> starts;
    for (const auto& [file, references] : mReferences)
        starts.push_back(file);
    // In the order of names, so that the same circle is always reported in the same file.
    std::sort(starts.begin(), starts.end(),
              [this](const FileKey& a, const FileKey& b) { return mFiles.at(a).Name < mFiles.at(b).Name; });

    enum class State
    {
        OnPath,
        Done,
    };
    std::map<FileKey, State> states;
    struct Step
    {
        FileKey File;
        std::size_t Next = 0;
    };
    for (const FileKey& start : starts)
    {
        std::vector<Step> path;
        if (states.try_emplace(start, State::OnPath).second)
            path.push_back({start});
        while (!path.empty())
        {
            Step& step = path.back();
            const auto references = mReferences.find(step.File);
            if (references == mReferences.end() || step.Next == references->second.size())
            {
                states.at(step.File) = State::Done;
                path.pop_back();
                continue;
            }
            const auto& reference = references->second[step.Next++];
            const auto& to = reference.To;
            const auto [state, isNew] = states.try_emplace(to, State::OnPath);
            if (isNew)
                path.push_back({to});
            else if (state->second == State::OnPath)
                mFiles.at(step.File).Report.Add(
                    Code::ReferenceCycle, reference.Place,
                    "that asset refers back to this one, in a circle of " +
                        std::to_string((path.end() - std::find_if(path.begin(), path.end(),
                                                                  [&to](const Step& other) {
                                                                      return !(other.File < to) &&
                                                                             !(to < other.File);
                                                                  }))) +
                        " assets");
        }
    }
}

std::size_t CheckedFiles::Count() const
{
    const std::lock_guard lock(mMutex);
    return mFiles.size();
}

std::vector<Finding> CheckedFiles::Findings() const
{
    const std::lock_guard lock(mMutex);
    std::vector<Finding> findings;
    for (const auto& [key, file] : mFiles)
    {
        if (file.Report.Findings().empty())
            continue;
        const std::u16string shown = Tools::ShownName(file.Name);
        for (Finding finding : file.Report.Findings())
        {
            finding.File = shown;
            findings.push_back(std::move(finding));
        }
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b)
                     { return std::tie(a.File, a.Place.Line) < std::tie(b.File, b.Place.Line); });
    return findings;
}

} // namespace ZLMIM::Validate

#include "validate.h"

#include "check_asset.h"
#include "check_file.h"
#include "checked_files.h"
#include "subjects.h"

#include "tools/common/parallel.h"
#include "tools/common/paths.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

/// The work of one call of `Validate`.
class Run
{
public:
    explicit Run(const Request& request)
        : mRequest(request),
          mThreads(request.Threads > 0 ? request.Threads : std::max(std::thread::hardware_concurrency(), 1U))
    {
        for (unsigned i = 0; i < mThreads; ++i)
            mNames.push_back(std::make_shared<PathResolver>());
    }

    Result Check()
    {
        Subjects subjects = FindSubjects(mRequest.Paths, mRequest.IsRecursive, *mNames[0]);
        mAll = subjects.Files.size();
        const auto others = std::stable_partition(subjects.Files.begin(), subjects.Files.end(),
                                                  [](const Tools::Input& subject)
                                                  { return subject.Kind == Tools::Kind::Model; });
        // Assets first: they load their own files, and only those that no asset needs are left.
        std::vector<std::u16string> configs;
        std::transform(subjects.Files.begin(), others, std::back_inserter(configs),
                       [](Tools::Input& subject) { return std::move(subject.Name); });
        configs = CheckAssets(configs, true);
        while (!configs.empty())
            configs = CheckAssets(configs, false);
        CheckOthers({others, subjects.Files.end()});

        mChecked.AddCircles();
        if (mRequest.IsRecursive)
            mChecked.AddSharedKuids();
        Result result = {mChecked.Findings(), mChecked.Count(), {}};
        result.Findings.insert(result.Findings.end(), std::make_move_iterator(subjects.Findings.begin()),
                               std::make_move_iterator(subjects.Findings.end()));
        std::stable_sort(result.Findings.begin(), result.Findings.end(),
                         [](const Finding& a, const Finding& b) { return a.File < b.File; });
        std::erase_if(result.Findings,
                      [this](const Finding& finding)
                      {
                          return mRequest.Ignored.contains(finding.Code) ||
                                 (!mRequest.Only.empty() && !mRequest.Only.contains(finding.Code));
                      });
        std::sort(mConfigs.begin(), mConfigs.end());
        result.Configs = std::move(mConfigs);
        return result;
    }

private:
    /// Returns the configs of the assets that those refer to.
    std::vector<std::u16string> CheckAssets(const std::vector<std::u16string>& configs, bool isProgress)
    {
        std::vector<std::vector<std::u16string>> references(configs.size());
        Tools::ForEach(configs.size(), mThreads,
                       [&](std::size_t index, std::size_t worker)
                       {
                           const auto file = Locate(configs[index], *mNames[worker]);
                           if (file && mChecked.Claim(*file))
                           {
                               references[index] =
                                   CheckAsset(configs[index], *file, mNames[worker], mChecked, mSearch);
                               const std::lock_guard lock(mMutex);
                               mConfigs.push_back(Tools::ShownName(file->Name));
                           }
                           if (isProgress)
                               Progress();
                       });
        std::vector<std::u16string> all;
        for (auto& some : references)
            all.insert(all.end(), std::make_move_iterator(some.begin()), std::make_move_iterator(some.end()));
        return all;
    }

    void CheckOthers(const std::vector<Tools::Input>& subjects)
    {
        Tools::ForEach(subjects.size(), mThreads,
                       [&](std::size_t index, std::size_t worker)
                       {
                           const Tools::Input& subject = subjects[index];
                           PathResolver& names = *mNames[worker];
                           const auto file = Locate(subject.Name, names);
                           if (file && subject.Kind == Tools::Kind::Mesh)
                               CheckFile<Mesh>(subject.Name, *file, names, mChecked);
                           else if (file)
                               CheckFile<Anim>(subject.Name, *file, names, mChecked);
                           Progress();
                       });
    }

    void Progress()
    {
        const std::lock_guard lock(mMutex);
        ++mDone;
        if (mRequest.OnProgress)
            mRequest.OnProgress(mDone, mAll);
    }

    const Request& mRequest;
    unsigned mThreads;
    /// One for each worker. They cache the folders that they have listed.
    std::vector<std::shared_ptr<PathResolver>> mNames;
    CheckedFiles mChecked;
    KuidSearch mSearch;
    std::mutex mMutex;
    std::vector<std::u16string> mConfigs;
    std::size_t mDone = 0;
    std::size_t mAll = 0;
};

} // namespace

Result Validate(const Request& request) { return Run(request).Check(); }

} // namespace ZLMIM::Validate

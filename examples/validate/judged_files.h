#ifndef VALIDATE_JUDGED_FILES_H
#define VALIDATE_JUDGED_FILES_H

#include "finding.h"
#include "located_file.h"

#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// What has been found in which file of a run. Several threads may use it at once.
class JudgedFiles
{
public:
    /// Whether nobody has claimed the file before: then it's the caller's to judge.
    [[nodiscard]] bool Claim(const LocatedFile& file);

    /// What was found in a file that has been claimed.
    void Store(const FileKey& file, Report report);

    [[nodiscard]] std::size_t Count() const;

    /// All findings, sorted by the names of their files, each file's in the order of its report. Of several
    /// names by which a file was reached it bears the shortest, whoever came first.
    [[nodiscard]] std::vector<Finding> Findings() const;

private:
    struct File
    {
        NativePath Name;
        Validate::Report Report;
    };

    mutable std::mutex mMutex;
    std::map<FileKey, File> mFiles;
};

} // namespace ZLMIM::Validate

#endif

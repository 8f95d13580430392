#pragma once

#include "finding.h"
#include "located_file.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// The findings of a run, file by file. Several threads may use it at once.
class CheckedFiles
{
public:
    /// Returns true to the first caller only, who then has to check the file.
    [[nodiscard]] bool Claim(const LocatedFile& file);

    /// Stores the findings of a file that has been claimed.
    void Store(const FileKey& file, Report report);

    /// Remembers that an asset, whose config is `file`, has a kuid.
    void NoteKuid(const std::u16string& kuid, const LocatedFile& file, std::int64_t line);

    /// Adds a finding for each kuid that several assets have, and removes those of references to them.
    void AddSharedKuids();

    /// Remembers that an asset refers to another one.
    void NoteReference(const LocatedFile& from, const LocatedFile& to, Place place);

    /// Adds a finding for each circle of references.
    void AddCircles();

    [[nodiscard]] std::size_t Count() const;

    /// All findings, sorted by file, then by line. A file that was reached by several names has the shortest.
    [[nodiscard]] std::vector<Finding> Findings() const;

private:
    struct File
    {
        NativePath Name;
        Validate::Report Report;
    };

    struct Owner
    {
        FileKey File;
        std::int64_t Line;
    };

    struct Reference
    {
        FileKey To;
        Validate::Place Place;
    };

    mutable std::mutex mMutex;
    std::map<FileKey, std::vector<Reference>> mReferences;
    std::map<std::u16string, std::vector<Owner>> mKuids;
    std::map<FileKey, File> mFiles;
};

} // namespace ZLMIM::Validate

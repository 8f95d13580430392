#ifndef VALIDATE_SUBJECTS_H
#define VALIDATE_SUBJECTS_H

#include "finding.h"

#include "zlmim/reader/path_resolver.h"

#include <string>
#include <vector>

namespace ZLMIM::Validate
{

enum class SubjectKind
{
    Asset,
    Mesh,
    Anim,
};

/// A file that is to be judged: its name in the object model's form.
struct Subject
{
    SubjectKind Kind = SubjectKind::Asset;
    std::u16string Name;
};

struct Subjects
{
    std::vector<Subject> Files;
    /// About paths that lead to nothing, with their files.
    std::vector<Finding> Findings;
};

/// The files that paths from a command line lead to, in their order: a file by its ending (`.im`, `.kin`,
/// else a config); a folder by the `config.txt` in it, or, if all folders are to be walked, by all files of
/// the three kinds in it and below, sorted. Links to folders aren't followed below the path itself. What
/// isn't there, or can't be read, becomes a finding.
[[nodiscard]] Subjects FindSubjects(const std::vector<std::string>& paths, bool isRecursive,
                                    PathResolver& names);

} // namespace ZLMIM::Validate

#endif

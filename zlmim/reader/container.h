#pragma once

#include "zlmim/model/errors.h"
#include "zlmim/reader/file_cursor.h"

#include <string>
#include <string_view>

namespace ZLMIM
{

/// The JIRF container, the start of every mesh and animation file:
///
///     offset  0  the signature "JIRF"
///     offset  8  the kind of file: "IDXM" for a mesh, "ANIM" for an animation
///     offset 16  the info block, without a tag: its size, then the fields of that kind of file
///
/// The bytes between these are ignored.
/// \ingroup inside
namespace Container
{

/// Moves to the info block of a file of that kind. For another file, returns false, and writes `noSignature`
/// or `otherKind` to `error`.
[[nodiscard]] inline bool FindInfo(FileCursor& cursor, std::string_view kind, std::u16string& error,
                                   const char16_t* noSignature, const char16_t* otherKind)
{
    cursor.Pos = 0;
    const bool hasSignature = cursor.MatchTag("JIRF");
    cursor.Pos = 8;
    if (hasSignature && cursor.MatchTag(kind))
    {
        cursor.Pos = 16;
        return true;
    }
    error = hasSignature ? otherKind : noSignature;
    return false;
}

/// Runs one load with a cursor of its own. `readFile` reads the file, and `parse` reads its blocks. Either
/// returns false to end the load. Adds the file's name to errors.
template <class ReadFile, class Parse>
[[nodiscard]] bool Load(const std::u16string& fileName, LoadBudget& budget, const ReadFile& readFile,
                        const Parse& parse)
{
    return NameFileInErrors(fileName,
                            [&]
                            {
                                FileCursor cursor(budget);
                                if (!readFile(cursor))
                                    return false;
                                cursor.PrefaultObjects();
                                return parse(cursor);
                            });
}

} // namespace Container

} // namespace ZLMIM

#ifndef VALIDATE_FINDING_H
#define VALIDATE_FINDING_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{

enum class Severity
{
    /// Nothing is lost by it, or it may be meant.
    Warning,
    /// Something isn't loaded, drawn or moved as the file says.
    Error,
};

/// The kinds of findings, in the order of their table.
enum class Code
{
    NotLoaded,
    AssetNotLoaded,
    FileMissing,
    EntryWithoutMesh,
    EntryLost,
    NegativeCount,
    IndexOutside,
    PrimitiveKind,
    PrimitiveCount,
    FaceNormalCount,
    NormalLength,
    NotFinite,
    DegenerateTriangle,
    TextureMissing,
    BoneUnknown,
    BoneLetterCase,
    AnimationTree,
    FrameUnfilled,
    AttParentUnknown,
    AttUnknown,
    KuidNotFound,
    KuidFoundTwice,
};

struct CodeInfo
{
    Validate::Code Code;
    /// Stays the same from version to version.
    std::string_view Name;
    Validate::Severity Severity;
    std::string_view Meaning;
};

/// All codes: the one place that says what each is called, and how bad it is.
[[nodiscard]] std::span<const CodeInfo> Codes();

[[nodiscard]] const CodeInfo& Info(Code code);

[[nodiscard]] std::string_view Name(Severity severity);

/// Something to tell about one file.
struct Finding
{
    Validate::Code Code;
    /// Empty until the findings of all files are put together.
    std::u16string File;
    /// Where in the file; empty for the file as a whole. Chunks, textures, bones and face normals count from
    /// 1, as do lines; vertices, normals, indices, triangles and slots from 0.
    std::string Place;
    /// Printable UTF-8, on one line.
    std::string Message;
};

/// What is found in one file, in the order in which it's looked at.
class Report
{
public:
    void Add(Code code, std::string place, std::string message);

    [[nodiscard]] const std::vector<Finding>& Findings() const noexcept { return mFindings; }

private:
    std::vector<Finding> mFindings;
};

} // namespace ZLMIM::Validate

#endif

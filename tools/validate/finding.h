#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{

enum class Severity
{
    /// Nothing is lost by it, or it may be intended.
    Warning,
    /// Something isn't loaded, drawn or moved as the file says.
    Error,
};

/// The kinds of findings, in the order of their table.
enum class Code
{
    NotLoaded,
    AssetNotLoaded,
    ConfigEmpty,
    ConfigNotText,
    ConfigUnknown,
    ConfigName,
    ConfigUtf8,
    BraceMissing,
    BraceExtra,
    QuoteOpen,
    QuoteDoubtful,
    KeyMisspelt,
    KeyTwice,
    KeyMissing,
    ValueMissing,
    MeshTableEmpty,
    EntryTwice,
    EntryWithoutMesh,
    EntryLost,
    NoMesh,
    FileMissing,
    AttParentUnknown,
    AttUnknown,
    KuidMissing,
    KuidMalformed,
    KuidShared,
    KuidNotFound,
    KuidFoundTwice,
    ReferenceEmpty,
    ReferenceToItself,
    ReferenceCycle,
    FileLength,
    MeshEmpty,
    ChunkEmpty,
    MaterialMissing,
    NegativeCount,
    IndexOutside,
    PrimitiveKind,
    PrimitiveCount,
    FaceNormalCount,
    NormalLength,
    NotFinite,
    VertexFar,
    DegenerateTriangle,
    TriangleTwice,
    FaceReversed,
    FaceNormalReversed,
    MaterialRange,
    TextureMissing,
    TextureDamaged,
    TextureUnplaced,
    NameTwice,
    NameMissing,
    ZeroTransform,
    RotationLength,
    BoneUnknown,
    BoneLetterCase,
    AnimationTree,
    AnimationRate,
    FrameUnfilled,
};

struct CodeInfo
{
    Validate::Code Code;
    /// Stays the same from version to version.
    std::string_view Name;
    Validate::Severity Severity;
    std::string_view Meaning;
};

/// All codes with their names and severities.
[[nodiscard]] std::span<const CodeInfo> Codes();

[[nodiscard]] const CodeInfo& Info(Code code);

/// The code with that name.
[[nodiscard]] std::optional<Code> FindCode(std::string_view name);

[[nodiscard]] std::string_view Name(Severity severity);

/// A place in a file. All fields are empty for the file as a whole.
struct Place
{
    /// From 1; 0 for no line.
    std::int64_t Line = 0;
    /// Entry of the mesh table.
    std::u16string Entry = {};
    /// From 1; 0 for no chunk.
    std::int32_t Chunk = 0;
    /// Such as `index 17`. Textures, bones, attachment points and face normals count from 1; vertices,
    /// normals, indices, triangles and slots from 0. Printable UTF-8.
    std::string Detail = {};
};

/// "line 3, entry "load"", "chunk 2, index 17"; without the line if `hasLine` is false.
[[nodiscard]] std::string Text(const Place& place, bool hasLine = true);

/// Something that is wrong with a file.
struct Finding
{
    Validate::Code Code = Code::NotLoaded;
    /// Empty until the findings of all files are put together.
    std::u16string File;
    Validate::Place Place;
    /// Printable UTF-8, on one line.
    std::string Message;
    /// The kuid that it is about, for those about several assets with one.
    std::u16string Kuid = {};
};

/// What is found in one file.
class Report
{
public:
    void Add(Code code, Place place, std::string message)
    {
        mFindings.push_back({code, {}, std::move(place), std::move(message)});
    }

    [[nodiscard]] std::vector<Finding>& Findings() noexcept { return mFindings; }
    [[nodiscard]] const std::vector<Finding>& Findings() const noexcept { return mFindings; }

private:
    std::vector<Finding> mFindings;
};

} // namespace ZLMIM::Validate

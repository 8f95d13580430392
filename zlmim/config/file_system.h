#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM
{

/// A text file that is open for reading line by line, one character per byte. Closed with the object.
/// \ingroup files
class TextStream
{
public:
    virtual ~TextStream() = default;

    /// True when no further line can be read.
    [[nodiscard]] virtual bool AtEndOfStream() = 0;
    /// The next line without its end.
    /// @throws FileSystemError 62 at the end of the stream, 57 on a read error.
    [[nodiscard]] virtual std::u16string ReadLine() = 0;
    /// Appends the next part of the line to `line`, and returns true if that completes the line. A stream
    /// that overrides this lets its reader stop in a line of any length, or drop unneeded parts of it. By
    /// default a line is one part.
    /// @throws FileSystemError 62 at the end of the stream, 57 on a read error.
    [[nodiscard]] virtual bool ReadPiece(std::u16string& line)
    {
        line += ReadLine();
        return true;
    }
    /// Closes the file before the object is destroyed. Afterwards there is no further line.
    virtual void Close() = 0;
};

/// A folder. The objects that it returns may outlive it.
/// \ingroup files
class Folder
{
public:
    virtual ~Folder() = default;

    /// True for the top folder of a volume, which has no parent.
    [[nodiscard]] virtual bool IsRootFolder() const = 0;
    /// The enclosing folder; called for non-root folders only.
    [[nodiscard]] virtual std::shared_ptr<Folder> ParentFolder() const = 0;
    /// The direct child folders; never null. Their order decides which of two matches is found first.
    [[nodiscard]] virtual std::vector<std::shared_ptr<Folder>> SubFolders() const = 0;
    /// Full path with backslashes, without a trailing one. So a root folder's path may be empty.
    [[nodiscard]] virtual std::u16string Path() const = 0;
    /// Opens the file of that name in this folder as a stream at its first line; null if there is no such
    /// file. The same as `FileExists` and `OpenTextFile` with `Path`, a backslash and the name.
    /// @throws FileSystemError 57 read error, 70 no permission.
    [[nodiscard]] virtual std::unique_ptr<TextStream> OpenTextFile(std::u16string_view name) const = 0;
};

/// The service through which a `ZLMModel` reads all files except meshes and animations. A host that keeps its
/// files elsewhere implements its own service, in place of `DiskFileSystem`.
///
/// Paths have backslashes, and may be relative to the working folder. Results are never null unless the
/// comment says so. Errors have numbers (`FileSystemError::Code`). `ZLMModel::Load` passes on unchanged
/// whatever a service throws.
/// \ingroup files
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    /// Whether a file exists at that path; false for an empty path.
    /// @throws FileSystemError 57 if the system is out of file descriptors or memory.
    [[nodiscard]] virtual bool FileExists(const std::u16string& path) = 0;
    /// Opens the file as a stream at its first line.
    /// @throws FileSystemError 53 no such file, 57 read error, 70 no permission.
    [[nodiscard]] virtual std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) = 0;
    /// The folder at a path, normally with a trailing backslash.
    /// @throws FileSystemError 76 no such folder, also for an empty path.
    [[nodiscard]] virtual std::shared_ptr<Folder> GetFolder(const std::u16string& path) = 0;
    /// Returns the same text for all paths to one existing file (relative or not, by a link, in another
    /// letter case), and different texts for different files. A model uses it to recognise a reference back
    /// to an open file. Called after `FileExists` returned true.
    [[nodiscard]] virtual std::u16string FileIdentity(const std::u16string& path) = 0;
    /// The folder, with a trailing backslash, for names that a config gives relative to the working folder:
    /// animations, and the first place searched for a reference. The argument is the config's own folder.
    /// The default is empty: the process's working folder.
    [[nodiscard]] virtual std::u16string WorkingFolder(const std::u16string& /*configFolder*/) { return {}; }
};

} // namespace ZLMIM

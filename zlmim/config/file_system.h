#ifndef ZLMIM_CONFIG_FILE_SYSTEM_H
#define ZLMIM_CONFIG_FILE_SYSTEM_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM
{

/// A text file, open for reading line by line, one character a byte. Closed with the object.
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
    /// Appends the next part of the line to `line`, and returns true if that completes it. A stream that
    /// overrides this lets its reader stop, or drop what it doesn't need, in a line of any length. By default
    /// a line is one part.
    /// @throws FileSystemError 62 at the end of the stream, 57 on a read error.
    [[nodiscard]] virtual bool ReadPiece(std::u16string& line)
    {
        line += ReadLine();
        return true;
    }
    /// Closes the file before the object goes. Then there is no further line.
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
    /// The enclosing folder; asked of non-root folders only.
    [[nodiscard]] virtual std::shared_ptr<Folder> ParentFolder() const = 0;
    /// The direct child folders, never null. Their order decides which of two matching ones is found first.
    [[nodiscard]] virtual std::vector<std::shared_ptr<Folder>> SubFolders() const = 0;
    /// Full path with backslashes, without a trailing one; so a root folder's may be empty.
    [[nodiscard]] virtual std::u16string Path() const = 0;
    /// The file of that name in this folder as a stream at its first line; null if there is none. The same as
    /// `FileExists` and `OpenTextFile` with `Path`, a backslash and the name.
    /// @throws FileSystemError 57 read error, 70 no permission.
    [[nodiscard]] virtual std::unique_ptr<TextStream> OpenTextFile(std::u16string_view name) const = 0;
};

/// The service through which a `ZLMModel` reads all files but its meshes and animations. A host that keeps
/// its files elsewhere writes a service of its own, in place of `DiskFileSystem`.
///
/// Paths have backslashes, and may be relative to the working folder. Results aren't null except where the
/// comment says so. Errors are given by their numbers (`FileSystemError::Code`); whatever a service throws
/// passes through `ZLMModel::Load` unchanged. \ingroup files
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    /// Whether there is a file of that path; false for an empty path.
    /// @throws FileSystemError 57 if the system is out of file descriptors or memory.
    [[nodiscard]] virtual bool FileExists(const std::u16string& path) = 0;
    /// The file as a stream at its first line.
    /// @throws FileSystemError 53 no such file, 57 read error, 70 no permission.
    [[nodiscard]] virtual std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) = 0;
    /// The folder at a path, normally with a trailing backslash.
    /// @throws FileSystemError 76 no such folder, also for an empty path.
    [[nodiscard]] virtual std::shared_ptr<Folder> GetFolder(const std::u16string& path) = 0;
    /// The same text for all paths to one existing file (relative or not, by a link, in another letter case),
    /// and for no other file. A model recognises by it a reference back to a file that is open. Called after
    /// `FileExists` returned true.
    [[nodiscard]] virtual std::u16string FileIdentity(const std::u16string& path) = 0;
    /// The folder, with its trailing backslash, from which the names count that a config gives relative to
    /// the working folder: animations, and the first place where a reference is looked for. `configFolder` is
    /// the config's own. Empty, the default, for the process's working folder.
    [[nodiscard]] virtual std::u16string WorkingFolder(const std::u16string& configFolder)
    {
        static_cast<void>(configFolder);
        return {};
    }
};

} // namespace ZLMIM

#endif

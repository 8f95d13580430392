#ifndef ZLMIM_CONFIG_FILE_SYSTEM_H
#define ZLMIM_CONFIG_FILE_SYSTEM_H

#include <functional>
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
    /// Closes the file before the object goes. Then there is no further line.
    virtual void Close() = 0;
};

/// A folder. What it gives may outlive it.
/// \ingroup files
class Folder
{
public:
    virtual ~Folder() = default;

    /// True for the top folder of a volume, which has no parent.
    [[nodiscard]] virtual bool IsRootFolder() const = 0;
    /// The enclosing folder; asked of non-root folders only.
    [[nodiscard]] virtual std::shared_ptr<Folder> ParentFolder() const = 0;
    /// The direct child folders, none of them null. Their order decides which of two matching ones is found
    /// first.
    [[nodiscard]] virtual std::vector<std::shared_ptr<Folder>> SubFolders() const = 0;
    /// Full path with backslashes, without a trailing one; so a root folder's may be empty.
    [[nodiscard]] virtual std::u16string Path() const = 0;
};

/// The service through which a `ZLMModel` reaches the disk for all but its meshes and animations. It only
/// reads. A host that keeps its files elsewhere puts a service of its own in the place of `DiskFileSystem`.
///
/// Paths have backslashes, and may be relative to the working folder. No answer is null but where that is
/// told. The errors are named by their numbers (`FileSystemError::Code`); whatever else a service raises
/// passes through `ZLMModel::Load` all the same. \ingroup files
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    /// Whether a file stands there; false for an empty path.
    [[nodiscard]] virtual bool FileExists(const std::u16string& path) = 0;
    /// The file as a stream at its first line.
    /// @throws FileSystemError 53 no such file, 57 read error, 70 no permission.
    [[nodiscard]] virtual std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) = 0;
    /// The file of that name in a folder that this service has given; nullptr where none stands. `FileExists`
    /// and `OpenTextFile` in one, for a service that has a faster way.
    /// @throws FileSystemError 57 read error, 70 no permission.
    [[nodiscard]] virtual std::unique_ptr<TextStream> OpenIfExists(const Folder& folder,
                                                                   std::u16string_view name)
    {
        const std::u16string path = (folder.Path() += u'\\') += name;
        if (!FileExists(path))
            return nullptr;
        return OpenTextFile(path);
    }
    /// The folder at a path, normally with a trailing backslash.
    /// @throws FileSystemError 76 no such folder, also for an empty path.
    [[nodiscard]] virtual std::shared_ptr<Folder> GetFolder(const std::u16string& path) = 0;
    /// The same text for all paths to one existing file (relative or not, by a link, in another letter case),
    /// and for no other file. It tells references that lead back to a file that is being read; asked after
    /// `FileExists` has said yes.
    [[nodiscard]] virtual std::u16string FileIdentity(const std::u16string& path) = 0;
    /// Prefix, with its trailing backslash, of names that count from the working folder: relative names of
    /// animations, and the first place where a reference is looked for. Empty for the process's own.
    [[nodiscard]] virtual std::u16string WorkingFolder() { return {}; }
};

/// Makes the service object that a model takes for one load; never null. A model asks for one when it is
/// made, and again whenever it is loaded, and holds it until the next or its end. \ingroup files
using FileSystemMaker = std::function<std::shared_ptr<FileSystem>()>;

} // namespace ZLMIM

#endif

#pragma once

#include "zlmim/config/file_system.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace ZLMIM::Fuzzing
{

/// Serves files from memory. Its folders are those in the files' names, and the working folder. Letter case
/// doesn't matter; subfolders are sorted by their lower-case names. Slashes are treated as backslashes, and
/// "." and ".." as on a disk. Create it by `std::make_shared`: its folders and streams keep it alive.
class MemoryFileSystem : public FileSystem, public std::enable_shared_from_this<MemoryFileSystem>
{
public:
    /// `workingFolder` is an absolute path. Relative paths start there.
    explicit MemoryFileSystem(std::u16string_view workingFolder);

    /// Adds a file, or replaces it. An unreadable file exists, but opening it throws error 70. A name that
    /// ends in a separator adds only a folder.
    void Add(std::u16string_view path, std::string bytes, bool isReadable = true);

    [[nodiscard]] bool FileExists(const std::u16string& path) override;
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override;
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override;
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override;

private:
    class OpenFolder;
    class Stream;

    struct File
    {
        std::string bytes;
        bool isReadable = true;
    };
    struct Node
    {
        Node* parent = nullptr; // null only for the root
        std::u16string name;
        // Keyed by names in lower case.
        std::map<std::u16string, Node*, std::less<>> folders;
        std::map<std::u16string, File, std::less<>> files;
    };

    /// `owner` keeps the file's bytes.
    [[nodiscard]] static std::unique_ptr<TextStream>
    Open(const File& file, const std::shared_ptr<const void>& owner, const std::u16string& path);
    [[nodiscard]] static std::u16string PathOf(const Node& node);
    /// The folder where a walk along a path starts.
    Node* StartOf(std::u16string_view path);
    /// The folder that a part of a path, in lower case, leads to; null if it doesn't exist.
    [[nodiscard]] static Node* Step(Node& from, std::u16string_view part);
    /// The folder of a path in lower case; null if it doesn't exist.
    Node* FindFolder(std::u16string_view path);
    const File* FindFile(std::u16string_view path);
    Node* MakeFolder(std::u16string_view path);

    std::deque<Node> mNodes; // the root first
    Node* mWorkingFolder;
};

} // namespace ZLMIM::Fuzzing

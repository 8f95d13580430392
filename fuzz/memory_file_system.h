#ifndef ZLMIM_FUZZ_MEMORY_FILE_SYSTEM_H
#define ZLMIM_FUZZ_MEMORY_FILE_SYSTEM_H

#include "zlmim/config/file_system.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace ZLMIM::Fuzzing
{

/// Serves files from memory. There are the folders that its files' names tell, and the working folder. Letter
/// case doesn't matter; subfolders come in the order of their lower-case names. Slashes count as backslashes,
/// and "." and ".." mean what they mean on a disk. Made by `std::make_shared`: its folders and streams hold
/// it.
class MemoryFileSystem : public FileSystem, public std::enable_shared_from_this<MemoryFileSystem>
{
public:
    /// `workingFolder` is an absolute path, and what relative ones count from.
    explicit MemoryFileSystem(std::u16string_view workingFolder);

    /// Adds a file, or replaces it. One that isn't readable exists, but raises error 70 when it's opened. A
    /// name that ends in a separator adds a folder alone.
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
        Node* parent = nullptr; // none for the root alone
        std::u16string name;
        // By names in lower case.
        std::map<std::u16string, Node*, std::less<>> folders;
        std::map<std::u16string, File, std::less<>> files;
    };

    /// `owner` keeps the file's bytes.
    [[nodiscard]] static std::unique_ptr<TextStream>
    Open(const File& file, const std::shared_ptr<const void>& owner, const std::u16string& path);
    [[nodiscard]] static std::u16string PathOf(const Node& node);
    /// Where a walk along a path starts.
    Node* StartOf(std::u16string_view path);
    /// The folder that a part of a path, in lower case, leads to; none if there is none.
    [[nodiscard]] static Node* Step(Node& from, std::u16string_view part);
    /// The folder of a path in lower case; none if there is none.
    Node* FindFolder(std::u16string_view path);
    const File* FindFile(std::u16string_view path);
    Node* MakeFolder(std::u16string_view path);

    std::deque<Node> mNodes; // the root first
    Node* mWorkingFolder;
};

} // namespace ZLMIM::Fuzzing

#endif

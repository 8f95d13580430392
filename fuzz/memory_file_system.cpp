#include "fuzz/memory_file_system.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace ZLMIM::Fuzzing
{
namespace
{

constexpr std::u16string_view kSeparators = u"\\/";

/// Removes the first part of a path, up to the first separator, and returns it.
std::u16string_view TakePart(std::u16string_view& path)
{
    const std::size_t length = std::min(path.find_first_of(kSeparators), path.size());
    const auto part = path.substr(0, length);
    path.remove_prefix(std::min(length + 1, path.size()));
    return part;
}

/// A path up to and including its last separator, and the name after it.
std::pair<std::u16string_view, std::u16string_view> SplitOffName(std::u16string_view path)
{
    const std::size_t separator = path.find_last_of(kSeparators);
    const std::size_t length = separator == std::u16string_view::npos ? 0 : separator + 1;
    return {path.substr(0, length), path.substr(length)};
}

} // namespace

class MemoryFileSystem::OpenFolder : public Folder
{
public:
    explicit OpenFolder(std::shared_ptr<const Node> node) : mNode(std::move(node)) {}

    [[nodiscard]] bool IsRootFolder() const override { return !mNode->parent; }
    [[nodiscard]] std::shared_ptr<Folder> ParentFolder() const override { return Open(mNode->parent); }
    [[nodiscard]] std::vector<std::shared_ptr<Folder>> SubFolders() const override
    {
        std::vector<std::shared_ptr<Folder>> folders;
        for (const auto& [name, node] : mNode->folders)
            folders.push_back(Open(node));
        return folders;
    }
    [[nodiscard]] std::u16string Path() const override { return PathOf(*mNode); }
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(std::u16string_view name) const override;

private:
    [[nodiscard]] std::shared_ptr<Folder> Open(const Node* node) const
    {
        return std::make_shared<OpenFolder>(std::shared_ptr<const Node>(mNode, node));
    }

    std::shared_ptr<const Node> mNode;
};

class MemoryFileSystem::Stream : public TextStream
{
public:
    Stream(std::shared_ptr<const std::string> bytes, std::u16string path)
        : mBytes(std::move(bytes)), mRest(*mBytes), mPath(std::move(path))
    {
    }

    [[nodiscard]] bool AtEndOfStream() override { return mRest.empty(); }
    [[nodiscard]] std::u16string ReadLine() override
    {
        if (mRest.empty())
            throw FileSystemError(FileSystemError::Code::PastEnd, mPath);
        const std::size_t length = std::min(mRest.find_first_of("\r\n"), mRest.size());
        auto line = FromWindows1252(mRest.substr(0, length));
        mRest.remove_prefix(length);
        mRest.remove_prefix(mRest.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, mRest.size()));
        return line;
    }
    void Close() override { mRest = {}; }

private:
    std::shared_ptr<const std::string> mBytes;
    std::string_view mRest;
    std::u16string mPath;
};

MemoryFileSystem::MemoryFileSystem(std::u16string_view workingFolder)
    : mNodes(1), mWorkingFolder(&mNodes.front())
{
    mWorkingFolder = MakeFolder(workingFolder);
}

void MemoryFileSystem::Add(std::u16string_view path, std::string bytes, bool isReadable)
{
    const auto [folder, name] = SplitOffName(path);
    Node& node = *MakeFolder(folder);
    if (!name.empty())
        node.files.insert_or_assign(LowerCase(name), File{std::move(bytes), isReadable});
}

bool MemoryFileSystem::FileExists(const std::u16string& path) { return FindFile(path); }

std::unique_ptr<TextStream> MemoryFileSystem::Open(const File& file, const std::shared_ptr<const void>& owner,
                                                   const std::u16string& path)
{
    if (!file.isReadable)
        throw FileSystemError(FileSystemError::Code::NoPermission, path);
    return std::make_unique<Stream>(std::shared_ptr<const std::string>(owner, &file.bytes), path);
}

std::unique_ptr<TextStream> MemoryFileSystem::OpenFolder::OpenTextFile(std::u16string_view name) const
{
    const auto file = mNode->files.find(LowerCase(name));
    if (file == mNode->files.end())
        return nullptr;
    return MemoryFileSystem::Open(file->second, mNode, (Path() += u'\\') += name);
}

std::unique_ptr<TextStream> MemoryFileSystem::OpenTextFile(const std::u16string& path)
{
    const File* const file = FindFile(path);
    if (!file)
        throw FileSystemError(FileSystemError::Code::NoSuchFile, path);
    return Open(*file, shared_from_this(), path);
}

std::shared_ptr<Folder> MemoryFileSystem::GetFolder(const std::u16string& path)
{
    const Node* const node = path.empty() ? nullptr : FindFolder(LowerCase(path));
    if (!node)
        throw FileSystemError(FileSystemError::Code::NoSuchFolder, path);
    return std::make_shared<OpenFolder>(std::shared_ptr<const Node>(shared_from_this(), node));
}

std::u16string MemoryFileSystem::FileIdentity(const std::u16string& path)
{
    if (!FindFile(path))
        return path;
    const std::u16string lowerPath = LowerCase(path);
    const auto [folder, name] = SplitOffName(lowerPath);
    return LowerCase(PathOf(*FindFolder(folder))) + u"\\" + std::u16string(name);
}

std::u16string MemoryFileSystem::PathOf(const Node& node)
{
    std::u16string path;
    for (const Node* part = &node; part->parent; part = part->parent)
        path.insert(0, part->name).insert(path.begin(), u'\\');
    return path;
}

MemoryFileSystem::Node* MemoryFileSystem::StartOf(std::u16string_view path)
{
    const bool isAbsolute = !path.empty() && kSeparators.find(path.front()) != std::u16string_view::npos;
    return isAbsolute ? &mNodes.front() : mWorkingFolder;
}

MemoryFileSystem::Node* MemoryFileSystem::Step(Node& from, std::u16string_view part)
{
    if (part.empty() || part == u".")
        return &from;
    if (part == u"..")
        return from.parent ? from.parent : &from;
    const auto child = from.folders.find(part);
    return child == from.folders.end() ? nullptr : child->second;
}

MemoryFileSystem::Node* MemoryFileSystem::FindFolder(std::u16string_view path)
{
    Node* node = StartOf(path);
    while (node && !path.empty())
        node = Step(*node, TakePart(path));
    return node;
}

const MemoryFileSystem::File* MemoryFileSystem::FindFile(std::u16string_view path)
{
    const std::u16string lowerPath = LowerCase(path);
    const auto [folder, name] = SplitOffName(lowerPath);
    const Node* const node = name.empty() ? nullptr : FindFolder(folder);
    if (!node)
        return nullptr;
    const auto file = node->files.find(name);
    return file == node->files.end() ? nullptr : &file->second;
}

MemoryFileSystem::Node* MemoryFileSystem::MakeFolder(std::u16string_view path)
{
    Node* node = StartOf(path);
    while (!path.empty())
    {
        const auto part = TakePart(path);
        const std::u16string lowerPart = LowerCase(part);
        Node* next = Step(*node, lowerPart);
        if (!next)
        {
            next = &mNodes.emplace_back();
            next->parent = node;
            next->name = part;
            node->folders.emplace(lowerPart, next);
        }
        node = next;
    }
    return node;
}

} // namespace ZLMIM::Fuzzing

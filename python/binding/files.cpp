#include "files.h"

#include "casters.h"

#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/errors.h"

#include <optional>
#include <utility>
#include <vector>

namespace ZLMIM::Python
{
namespace
{

/// An object of Python's that the library's objects keep. Calls it, and lets go of it, with the interpreter
/// locked, since both happen in loads, on any thread.
class Held
{
public:
    explicit Held(py::object object)
        : mObject(new py::object(std::move(object)),
                  [](const py::object* kept)
                  {
                      const py::gil_scoped_acquire locked;
                      delete kept; // NOLINT(cppcoreguidelines-owning-memory): what the pointer is for
                  })
    {
    }

    [[nodiscard]] const py::object& operator*() const { return *mObject; }

    template <class Result, class... Arguments>
    Result Call(const char* method, const Arguments&... arguments) const
    {
        const py::gil_scoped_acquire locked;
        return mObject->attr(method)(arguments...).template cast<Result>();
    }

    template <class... Arguments>
    [[nodiscard]] Held CallForObject(const char* method, const Arguments&... arguments) const
    {
        const py::gil_scoped_acquire locked;
        return Held(mObject->attr(method)(arguments...));
    }

private:
    std::shared_ptr<const py::object> mObject;
};

/// Lines from any iterable of `str`.
class Lines final : public TextStream
{
public:
    explicit Lines(Held lines) : mLines(std::move(lines)), mIterator(mLines.CallForObject("__iter__")) {}
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;
    ~Lines() override
    {
        const py::gil_scoped_acquire locked;
        try
        {
            Close();
        }
        catch (py::error_already_set& error)
        {
            error.discard_as_unraisable("closing a text stream");
        }
    }

    [[nodiscard]] bool AtEndOfStream() override
    {
        const py::gil_scoped_acquire locked;
        if (!mNext && !mIsClosed)
        {
            const auto line = py::reinterpret_steal<py::object>(PyIter_Next((*mIterator).ptr()));
            if (line)
                mNext = line.cast<std::u16string>();
            else if (PyErr_Occurred())
                throw py::error_already_set();
        }
        return !mNext;
    }

    [[nodiscard]] std::u16string ReadLine() override
    {
        if (AtEndOfStream())
            throw FileSystemError(FileSystemError::Code::PastEnd, {});
        std::u16string line = *std::exchange(mNext, std::nullopt);
        if (line.ends_with(u'\n'))
            line.pop_back();
        if (line.ends_with(u'\r'))
            line.pop_back();
        return line;
    }

    void Close() override
    {
        const py::gil_scoped_acquire locked;
        mNext.reset();
        if (!std::exchange(mIsClosed, true) && py::hasattr(*mLines, "close"))
            (*mLines).attr("close")();
    }

private:
    Held mLines;
    Held mIterator;
    std::optional<std::u16string> mNext;
    bool mIsClosed = false;
};

class HostFolder final : public Folder
{
public:
    HostFolder(Held files, Held folder) : mFiles(std::move(files)), mFolder(std::move(folder)) {}

    [[nodiscard]] bool IsRootFolder() const override { return mFolder.Call<bool>("is_root_folder"); }

    [[nodiscard]] std::shared_ptr<Folder> ParentFolder() const override
    {
        return std::make_shared<HostFolder>(mFiles, mFolder.CallForObject("parent_folder"));
    }

    [[nodiscard]] std::vector<std::shared_ptr<Folder>> SubFolders() const override
    {
        const py::gil_scoped_acquire locked;
        std::vector<std::shared_ptr<Folder>> folders;
        for (const py::handle folder : (*mFolder).attr("sub_folders")())
            folders.push_back(
                std::make_shared<HostFolder>(mFiles, Held(py::reinterpret_borrow<py::object>(folder))));
        return folders;
    }

    [[nodiscard]] std::u16string Path() const override { return mFolder.Call<Python::Path>("path").name; }

    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(std::u16string_view name) const override
    {
        const Python::Path path{(Path() += u'\\') += name};
        if (!mFiles.Call<bool>("file_exists", path))
            return nullptr;
        return std::make_unique<Lines>(mFiles.CallForObject("open_text_file", path));
    }

private:
    Held mFiles;
    Held mFolder;
};

class HostFileSystem final : public FileSystem
{
public:
    explicit HostFileSystem(Held files) : mFiles(std::move(files)) {}

    [[nodiscard]] bool FileExists(const std::u16string& path) override
    {
        return mFiles.Call<bool>("file_exists", Path{path});
    }

    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override
    {
        return std::make_unique<Lines>(mFiles.CallForObject("open_text_file", Path{path}));
    }

    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override
    {
        return std::make_shared<HostFolder>(mFiles, mFiles.CallForObject("get_folder", Path{path}));
    }

    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override
    {
        return mFiles.Call<std::u16string>("file_identity", Path{path});
    }

    [[nodiscard]] std::u16string WorkingFolder(const std::u16string& configFolder) override
    {
        return mFiles.Call<Path>("working_folder", Path{configFolder}).name;
    }

private:
    Held mFiles;
};

class DiskOfAsset final : public FileSystem
{
public:
    [[nodiscard]] bool FileExists(const std::u16string& path) override { return mDisk.FileExists(path); }

    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override
    {
        return mDisk.OpenTextFile(path);
    }

    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override
    {
        return mDisk.GetFolder(path);
    }

    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override
    {
        return mDisk.FileIdentity(path);
    }

    [[nodiscard]] std::u16string WorkingFolder(const std::u16string& configFolder) override
    {
        return configFolder;
    }

private:
    DiskFileSystem mDisk{std::make_shared<PathResolver>()};
};

} // namespace

std::shared_ptr<FileSystem> HostFiles(const py::object& files)
{
    return std::make_shared<HostFileSystem>(Held(files));
}

std::shared_ptr<FileSystem> AssetFiles() { return std::make_shared<DiskOfAsset>(); }

} // namespace ZLMIM::Python

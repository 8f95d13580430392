#include "tools/common/asset.h"

#include "tools/common/paths.h"
#include "tools/common/text.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/load_budget.h"

#include <cerrno>
#include <exception>
#include <filesystem>
#include <fstream>
#include <new>
#include <system_error>

namespace ZLMIM::Tools
{
namespace
{

template <class Object, class Load>
Asset Fill(std::shared_ptr<Object> object, Load load)
{
    Outcome outcome = Attempt([&] { return load(*object); });
    return {std::move(object), std::move(outcome)};
}

/// Why a load returned false without an `ErrorMessage`.
std::string FileProblem(std::u16string_view name, PathResolver& names)
{
    const auto found = names.Find(name, FoundFile::Kind::File);
    if (!found)
        return names.Find(name, FoundFile::Kind::Folder)  ? "it is a folder"
               : names.Find(name, FoundFile::Kind::Other) ? "it isn't a regular file"
                                                          : "there is no such file";
    const std::filesystem::path path = ToPath(found->nativePath);
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(path, failure);
    if (!failure && size == 0)
        return "it is empty";
    if (!failure && size > std::uintmax_t{kMaxFileSize})
        return "it is longer than 2 GB";
    errno = 0;
    if (failure || std::ifstream(path, std::ios::binary).get() == std::ifstream::traits_type::eof())
        return "it can't be read: " +
               (failure ? failure : std::error_code(errno, std::generic_category())).message();
    return "there is no memory for " + Bytes(size);
}

/// The text of an error without its beginning, which names the file.
std::string WithoutFile(std::string_view what, const std::u16string& file)
{
    const std::string beginning = ToUtf8(file) + ": ";
    return std::string(what.starts_with(beginning) ? what.substr(beginning.size()) : what);
}

std::string NoMemory(std::int64_t fileSize)
{
    return "there is no memory for " + Bytes(static_cast<std::uint64_t>(fileSize));
}

} // namespace

Kind KindOf(std::u16string_view name)
{
    const std::u16string lowerName = LowerCase(name);
    if (lowerName.ends_with(u".im"))
        return Kind::Mesh;
    return lowerName.ends_with(u".kin") ? Kind::Anim : Kind::Model;
}

std::variant<Input, std::string> FindInput(const std::u16string& name, PathResolver& names)
{
    if (name.empty())
        return "the path is empty";
    if (names.Find(name, FoundFile::Kind::File))
    {
        const std::u16string lowerName = LowerCase(name);
        const Kind kind = KindOf(name);
        if (kind == Kind::Model && lowerName.ends_with(u".lm.txt"))
            return "it is a list of levels of detail; give the mesh (.im) or the asset's config.txt";
        if (kind == Kind::Model && !lowerName.ends_with(u".txt"))
            return "it is no file that zlmim reads: a mesh (.im), an animation (.kin) or a config.txt";
        return Input{kind, name};
    }
    if (!names.Find(name, FoundFile::Kind::Folder))
        return names.Find(name, FoundFile::Kind::Other) ? "it is neither a file nor a folder"
                                                        : "there is no such file or folder";
    const std::u16string folder = name.ends_with(u'\\') ? name : name + u"\\";
    const std::u16string config = folder + u"config.txt";
    if (names.Find(config, FoundFile::Kind::File))
        return Input{Kind::Model, config};
    if (names.Find(config + u".txt", FoundFile::Kind::File))
        return "there is no config.txt in this folder, but a config.txt.txt: its name has one ending too "
               "many";
    return "there is no config.txt in this folder";
}

Outcome Attempt(const std::function<bool()>& load)
try
{
    return {load(), {}, {}, {}};
}
catch (const BoundsError& error)
{
    return {false, "BoundsError", error.File(), WithoutFile(error.what(), error.File())};
}
catch (const OverflowError& error)
{
    return {false, "OverflowError", error.File(), WithoutFile(error.what(), error.File())};
}
catch (const FileSystemError& error)
{
    return {false, "FileSystemError", error.Path(), WithoutFile(error.what(), error.Path())};
}
catch (const std::bad_alloc& error)
{
    return {false, "OutOfMemory", {}, error.what()};
}
catch (const std::exception& error)
{
    return {false, "failure", {}, error.what()};
}

Asset LoadAsset(const Input& input, const std::shared_ptr<PathResolver>& names, References references)
{
    LoadBudget budget;
    if (input.Kind == Kind::Mesh)
        return Fill(std::make_shared<Mesh>(),
                    [&](Mesh& mesh) { return mesh.Load(input.Name, *names, budget); });
    if (input.Kind == Kind::Anim)
        return Fill(std::make_shared<Anim>(),
                    [&](Anim& anim) { return anim.Load(input.Name, *names, budget); });
    // A config's name needs a folder in which the search for references starts.
    const std::u16string name = FolderOf(input.Name) + std::u16string(BaseName(input.Name));
    auto files = std::make_shared<AssetFiles>(name, names, references);
    return Fill(std::make_shared<ZLMModel>(std::move(files)),
                [&](ZLMModel& model)
                {
                    model.Load(name);
                    return true;
                });
}

Asset LoadAsGiven(const std::u16string& name)
{
    if (KindOf(name) == Kind::Mesh)
        return Fill(std::make_shared<Mesh>(), [&](Mesh& mesh) { return mesh.Load(name); });
    if (KindOf(name) == Kind::Anim)
        return Fill(std::make_shared<Anim>(), [&](Anim& anim) { return anim.Load(name); });
    return Fill(std::make_shared<ZLMModel>(),
                [&](ZLMModel& model)
                {
                    model.Load(name);
                    return true;
                });
}

std::string Describe(const Outcome& outcome)
{
    const auto utf8 = FromUtf8(outcome.What);
    const std::string what = Printable(utf8 ? *utf8 : FromWindows1252(outcome.What));
    if (outcome.Thrown == "BoundsError")
        return "damaged or cut short: " + what;
    if (outcome.Thrown == "OverflowError")
        return "damaged, a size or count is out of range: " + what;
    if (outcome.Thrown == "OutOfMemory")
        return "there is no memory for it";
    return what;
}

std::string Failure(const Mesh& mesh, const Outcome& outcome, PathResolver& names)
{
    if (outcome.IsLoaded)
        return {};
    if (outcome.Thrown == "OutOfMemory")
        return NoMemory(mesh.FileSize);
    if (!outcome.Thrown.empty())
        return Describe(outcome);
    if (mesh.Chunks) // the chunks were begun, so one is missing
        return Printable(mesh.ErrorMessage) + ", after " + Number(mesh.Chunks->Count()) + " of " +
               Counted(mesh.ChunkCount, "chunk", "chunks");
    return mesh.ErrorMessage.empty() ? FileProblem(mesh.FileName, names) : Printable(mesh.ErrorMessage);
}

std::string Failure(const Anim& anim, const Outcome& outcome, PathResolver& names)
{
    if (outcome.IsLoaded)
        return {};
    if (outcome.Thrown == "OutOfMemory")
        return NoMemory(anim.FileSize);
    if (outcome.Thrown == "BoundsError" && anim.FileSize == 0)
        return "it is empty";
    if (!outcome.Thrown.empty())
        return Describe(outcome);
    if (!anim.ErrorMessage.empty())
        return Printable(anim.ErrorMessage);
    if (anim.FileSize == 0)
        return FileProblem(anim.FileName, names);
    if (!anim.RootBone)
        return "damaged: it has no EVNT block, or no SKEL block after it";
    return "cut short: it has fewer frames than the " + Number(anim.FrameCount) + " that it announces";
}

std::string Failure(const ZLMModel& model, const Outcome& outcome, PathResolver&)
{
    if (outcome.IsLoaded)
        return {};
    const auto table = model.MeshTable();
    const auto last = table && table->Count() > 0 ? table->Item(table->Count()) : nullptr;
    if (outcome.Thrown == "OutOfMemory" && last && last->Mesh)
        return ShownFile(last->Mesh->FileName) + ": " + NoMemory(last->Mesh->FileSize);
    return (outcome.File.empty() ? "" : ShownFile(outcome.File) + ": ") + Describe(outcome);
}

bool HasChunks(const Mesh& mesh) { return mesh.Attachments != nullptr; }

} // namespace ZLMIM::Tools

#include "examples/asset.h"

#include "examples/text.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <exception>
#include <new>

namespace ZLMIM::Examples
{
namespace
{

template <class Object, class Load>
Asset Fill(Load load)
{
    auto object = std::make_shared<Object>();
    Outcome outcome = Attempt([&] { return load(*object); });
    return {std::move(object), std::move(outcome)};
}

bool IsMesh(const std::u16string& name) { return LowerCase(name).ends_with(u".im"); }

bool IsAnim(const std::u16string& name) { return LowerCase(name).ends_with(u".kin"); }

} // namespace

Outcome Attempt(const std::function<bool()>& load)
try
{
    return {load(), {}, {}};
}
catch (const BoundsError& error)
{
    return {false, "BoundsError", error.what()};
}
catch (const OverflowError& error)
{
    return {false, "OverflowError", error.what()};
}
catch (const FileSystemError& error)
{
    return {false, "FileSystemError", error.what()};
}
catch (const std::bad_alloc& error)
{
    return {false, "OutOfMemory", error.what()};
}
catch (const std::exception& error)
{
    return {false, "failure", error.what()};
}

std::string Told(const Outcome& outcome)
{
    const auto text = FromUtf8(outcome.What);
    return outcome.Raised + ": " + Printable(text ? *text : FromWindows1252(outcome.What));
}

Asset LoadAsset(const std::u16string& name)
{
    if (IsMesh(name))
        return Fill<Mesh>([&name](Mesh& mesh) { return mesh.Load(name); });
    if (IsAnim(name))
        return Fill<Anim>([&name](Anim& anim) { return anim.Load(name); });
    return Fill<ZLMModel>(
        [&name](ZLMModel& model)
        {
            model.Load(name);
            return true;
        });
}

Asset LoadAssetBytes(const std::u16string& name, std::span<const std::byte> bytes)
{
    if (IsMesh(name))
        return Fill<Mesh>([&](Mesh& mesh) { return mesh.LoadBytes(bytes, name); });
    return Fill<Anim>([&](Anim& anim) { return anim.LoadBytes(bytes, name); });
}

int ExitStatus(const Outcome& outcome) { return outcome.IsLoaded ? 0 : 1; }

} // namespace ZLMIM::Examples

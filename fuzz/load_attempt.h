#ifndef ZLMIM_FUZZ_LOAD_ATTEMPT_H
#define ZLMIM_FUZZ_LOAD_ATTEMPT_H

#include "tests/model_walker.h"
#include "zlmim/model/errors.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace ZLMIM::Fuzzing
{

/// Makes an attempt to load, which may fail in the ways that loads fail. Whatever else it raises is a
/// finding: it leaves the target, which ends the run.
template <class Load>
void Attempt(const Load& load)
try
{
    load();
}
catch (const BoundsError&)
{
}
catch (const OverflowError&)
{
}
catch (const FileSystemError&)
{
}

/// A file's bytes go into a `Mesh` or an `Anim`, then their first half goes into the same object.
template <class Model>
void LoadTwice(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    Model model;
    for (const auto part : {bytes, bytes.first(size / 2)})
    {
        Attempt([&] { static_cast<void>(model.LoadBytes(part)); });
        Testing::Walk(model);
    }
}

inline std::string Text(const std::uint8_t* data, std::size_t size) { return {data, data + size}; }

} // namespace ZLMIM::Fuzzing

#endif

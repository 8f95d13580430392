#pragma once

#include "tests/model_walker.h"
#include "zlmim/model/errors.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace ZLMIM::Fuzzing
{

/// Tries to load, and catches the errors that loads may throw. Any other error is a finding: it leaves the
/// target, and ends the run.
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

/// Loads a file's bytes into a `Mesh` or an `Anim`, then their first half into the same object.
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

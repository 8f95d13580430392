#ifndef ZLMIM_MODEL_COM_HEADER_H
#define ZLMIM_MODEL_COM_HEADER_H

#include <atomic>
#include <cstdint>
#include <memory>

namespace ZLMIM
{

/// Function table and reference count for component hosts, embedded in each object so that it has one address
/// for all hosts. Used by `zlmim/component` only; a program that calls the classes directly pays 32 bytes an
/// object for it. A copy of an object starts with a header of its own.
/// \ingroup inside
class ComHeader
{
public:
    ComHeader() = default;
    /// A header that no host has seen.
    ComHeader(const ComHeader&) noexcept {}
    /// Keeps this header and its hosts.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp)
    ComHeader& operator=(const ComHeader&) noexcept { return *this; }
    ~ComHeader() = default;

    /// The class's function table, which a host's pointer to the object points at; null while no host holds
    /// the object.
    const void* Functions = nullptr;
    /// References held by hosts. `AddReference` and `Release` in `zlmim/component` also use it as a lock on
    /// the other two.
    std::atomic<std::uint32_t> References = 0;
    /// The object itself while a host holds it.
    std::shared_ptr<void> Self;
};

} // namespace ZLMIM

#endif

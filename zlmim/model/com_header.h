#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

namespace ZLMIM
{

/// Function table and reference count for component hosts, embedded in each object so that it has one address
/// for all hosts. Used by `zlmim/component` only. It costs 32 bytes per object, also in a program that calls
/// the classes directly. A copy of an object starts with a new header.
/// \ingroup inside
class ComHeader
{
public:
    ComHeader() = default;
    /// A new header, unknown to any host.
    ComHeader(const ComHeader&) noexcept {}
    /// Keeps this header and its hosts.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp)
    ComHeader& operator=(const ComHeader&) noexcept { return *this; }
    ~ComHeader() = default;

    /// The class's function table, which a host's pointer to the object points to. Null while no host holds
    /// the object.
    const void* Functions = nullptr;
    /// References held by hosts. `AddReference` and `Release` in `zlmim/component` also use it as a lock for
    /// the other two members.
    std::atomic<std::uint32_t> References = 0;
    /// The object itself while a host holds it.
    std::shared_ptr<void> Self;
};

} // namespace ZLMIM

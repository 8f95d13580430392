#ifndef ZLMIM_MODEL_FACADE_H
#define ZLMIM_MODEL_FACADE_H

#include <atomic>
#include <cstdint>
#include <memory>

namespace ZLMIM
{

/// The face that an object shows to a host of another language, kept inside the object, so that one object
/// has one face wherever it is met. Only `zlmim/component` looks into it: it costs a program that calls the
/// classes directly 32 bytes an object.
///
/// A copy of an object is an object of its own: its face begins anew.
/// \ingroup inside
class Facade
{
public:
    Facade() = default;
    /// A face that no host has seen yet.
    Facade(const Facade&) noexcept {}
    /// Takes nothing over, and leaves this face to its hosts.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp)
    Facade& operator=(const Facade&) noexcept { return *this; }
    ~Facade() = default;

    /// What a host's pointer to the object points at: the table of its functions, none while no host holds
    /// it.
    const void* Functions = nullptr;
    /// Counted references of hosts.
    std::atomic<std::uint32_t> References = 0;
    /// The object itself, as long as a host holds it.
    std::shared_ptr<void> Self;
};

} // namespace ZLMIM

#endif

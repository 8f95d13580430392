#ifndef ZLMIM_CONFIG_LOAD_CHAIN_H
#define ZLMIM_CONFIG_LOAD_CHAIN_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ZLMIM
{

/// Models that may be nested in one another by references, the outermost counted.
inline constexpr std::size_t kMaxModelDepth = 32;

/// Models that one outermost load may make, itself counted.
inline constexpr std::int32_t kMaxModels = 4'096;

/// The config files that are being read at one time, one by a reference of the other, and the models that
/// have been made since the outermost. Keeps references from going round in circles.
class LoadChain
{
public:
    /// A file is being read, as long as this lives.
    class Link
    {
    public:
        Link(LoadChain& chain, std::u16string fileIdentity);
        Link(const Link&) = delete;
        Link& operator=(const Link&) = delete;
        ~Link();

    private:
        LoadChain& mChain;
    };

    /// Counts one more model. Whether it may load the file of that identity, below those that are being read.
    [[nodiscard]] bool Admit(const std::u16string& fileIdentity);

private:
    std::vector<std::u16string> mFiles;
    std::int32_t mModels = 1;
};

} // namespace ZLMIM

#endif

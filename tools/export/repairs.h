#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM::Export
{

/// What an export has changed or skipped, since glTF forbids it.
class Repairs
{
public:
    /// `file` is a name in the object model's form. `chunk` counts from 1; 0 if it isn't about a chunk.
    void Add(const std::u16string& file, const std::string& what, std::size_t chunk = 0);

    /// A line for each file and kind of repair: "body.im: chunk 3: what".
    [[nodiscard]] std::vector<std::string> Lines() const;

private:
    struct Places
    {
        /// The first few.
        std::vector<std::size_t> Chunks;
        std::size_t Count = 0;
    };

    std::map<std::pair<std::u16string, std::string>, Places> mPlaces;
};

} // namespace ZLMIM::Export

#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/reader/file.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace ZLMIM
{

/// The lines of a file, read in pieces of 4 KiB: most readers need only its beginning.
/// \ingroup inside
class DiskTextStream : public TextStream
{
public:
    /// Takes over `file`, and reads on from its position.
    explicit DiskTextStream(File file) : mFile(std::move(file)) {}

    [[nodiscard]] bool AtEndOfStream() override;
    [[nodiscard]] std::u16string ReadLine() override;
    [[nodiscard]] bool ReadPiece(std::u16string& line) override;
    void Close() override;

private:
    bool Fill();

    File mFile;
    /// Bytes read so far.
    std::int64_t mRead = 0;
    std::array<char, 4096> mBuffer;
    std::size_t mNext = 0;
    std::size_t mEnd = 0;
};

} // namespace ZLMIM

#pragma once

#include "finding.h"

#include "zlmim/config/file_system.h"
#include "zlmim/reader/native_path.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{

/// A config's lines, in memory.
class ConfigText : public TextStream
{
public:
    /// `bytes` is the whole file.
    explicit ConfigText(std::string_view bytes);

    [[nodiscard]] bool AtEndOfStream() override { return mNext == mLines.size(); }
    [[nodiscard]] std::u16string ReadLine() override;
    void Close() override { mNext = mLines.size(); }

    /// The number, from 1, of the line that comes next.
    [[nodiscard]] std::int64_t NextNumber() const noexcept { return static_cast<std::int64_t>(mNext) + 1; }
    [[nodiscard]] std::int64_t LineCount() const noexcept { return std::ssize(mLines); }
    /// The line with that number.
    [[nodiscard]] const std::u16string& Line(std::int64_t number) const
    {
        return mLines.at(static_cast<std::size_t>(number - 1));
    }

private:
    std::vector<std::u16string> mLines;
    std::size_t mNext = 0;
};

/// The bytes of a config.
/// @throws std::system_error if it can't be read.
[[nodiscard]] std::string ReadBytes(const NativePath& file);

/// Checks whether a file is text of the format at all: not empty, binary or in another encoding. Returns
/// false if it makes no sense to look further.
[[nodiscard]] bool CheckEncoding(std::string_view bytes, Report& report);

} // namespace ZLMIM::Validate

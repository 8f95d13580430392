#ifndef VALIDATE_WORDS_H
#define VALIDATE_WORDS_H

#include "zlmim/model/records.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{

/// A name from a file, printable and in quotation marks.
[[nodiscard]] std::string Quoted(std::u16string_view name);

/// The number of letters by which two names differ: left out, added, changed, or swapped with the next. Stops
/// counting above 2.
[[nodiscard]] int LettersApart(std::u16string_view a, std::u16string_view b);

/// `; did you mean "a.load"?` with the candidate that resembles `name` most, or "" if no candidate does.
/// Letter case is ignored.
[[nodiscard]] std::string DidYouMean(std::u16string_view name, const std::vector<std::u16string>& candidates);

/// Counts the things that share one finding, and remembers the first.
class Tally
{
public:
    void Note(std::int64_t number) noexcept
    {
        if (mCount++ == 0)
            mFirst = number;
    }

    [[nodiscard]] std::int64_t First() const noexcept { return mFirst; }
    [[nodiscard]] std::int64_t Count() const noexcept { return mCount; }

    /// "", or " (and 12 more)" to follow the message about the first.
    [[nodiscard]] std::string AndMore() const;

private:
    std::int64_t mFirst = 0;
    std::int64_t mCount = 0;
};

/// False for infinite numbers and NaN, whose product with 0 isn't 0.
template <class... Floats>
[[nodiscard]] bool AreFinite(Floats... numbers) noexcept
{
    return ((numbers * 0) + ...) == 0;
}

[[nodiscard]] inline bool AreFinite(const Vector& v) noexcept { return AreFinite(v.x, v.y, v.z); }
[[nodiscard]] inline bool AreFinite(const Quaternion& q) noexcept { return AreFinite(q.x, q.y, q.z, q.w); }
[[nodiscard]] inline bool AreFinite(const Vertex& v) noexcept { return AreFinite(v.x, v.y, v.z, v.u, v.v); }
[[nodiscard]] inline bool AreFinite(const rgbColour& c) noexcept { return AreFinite(c.r, c.g, c.b); }
[[nodiscard]] inline bool AreFinite(const Keyframe& k) noexcept { return AreFinite(k.p) && AreFinite(k.q); }
[[nodiscard]] inline bool AreFinite(const Matrix& m) noexcept
{
    return AreFinite(m.m11, m.m12, m.m13, m.m21, m.m22, m.m23, m.m31, m.m32, m.m33, m.m41, m.m42, m.m43);
}

} // namespace ZLMIM::Validate

#endif

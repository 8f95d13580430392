#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string_view>

namespace ZLMIM::Tools
{

/// Writes JSON to a stream as it is called, so that the document is never in memory as a whole.
class JsonWriter
{
public:
    enum class Form : bool
    {
        OneLine,
        Indented,
    };

    JsonWriter(std::ostream& out, Form form);
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;
    ~JsonWriter();

    void BeginObject();
    void EndObject();
    void BeginArray();
    void EndArray();

    /// `name` must need no escapes.
    JsonWriter& Key(std::string_view name);

    void Null();
    void Boolean(bool value);
    void Integer(std::int64_t value);
    /// Uses the fewest digits that are read back as the same 32-bit float. A value that JSON has no number
    /// for is written as the string "nan", "inf" or "-inf".
    void Float(float value);
    void Text(std::string_view utf8);
    void Text(std::u16string_view text);

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace ZLMIM::Tools

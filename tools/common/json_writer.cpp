// The only source that compiles RapidJSON.
#include "tools/common/json_writer.h"

#include "zlmim/model/text.h"

#include <rapidjson/prettywriter.h>

#include <array>
#include <charconv>
#include <cmath>
#include <ostream>
#include <string>

namespace ZLMIM::Tools
{
namespace
{

/// RapidJSON writes character by character; this passes them on in large pieces.
class BufferedOutput
{
public:
    using Ch = char;

    explicit BufferedOutput(std::ostream& out) : mOut(out) {}
    BufferedOutput(const BufferedOutput&) = delete;
    BufferedOutput& operator=(const BufferedOutput&) = delete;
    ~BufferedOutput() { Flush(); }

    void Put(char c)
    {
        if (mSize == mBuffer.size())
            Flush();
        mBuffer[mSize++] = c;
    }
    void Flush()
    {
        mOut.write(mBuffer.data(), static_cast<std::streamsize>(mSize));
        mSize = 0;
    }

private:
    std::ostream& mOut;
    std::array<char, 65'536> mBuffer;
    std::size_t mSize = 0;
};

/// A finite float. RapidJSON would print the digits of a double.
std::string_view Digits(float value, std::array<char, 32>& buffer)
{
    // Below this limit, plain notation is shortest. Above it, plain notation would have more digits than
    // needed.
    constexpr float kExponentFrom = 16'777'216;
    char* const end = buffer.data() + buffer.size();
    char* last = std::abs(value) < kExponentFrom
                     ? std::to_chars(buffer.data(), end, value).ptr
                     : std::to_chars(buffer.data(), end, value, std::chars_format::scientific).ptr;
    if (std::string_view(buffer.data(), last).find_first_of(".e") == std::string_view::npos)
    {
        *last++ = '.'; // so that readers take it for a float
        *last++ = '0';
    }
    return {buffer.data(), last};
}

} // namespace

class JsonWriter::Impl
{
public:
    Impl(std::ostream& out, Form form) : mBuffer(out), mOneLine(mBuffer), mIndented(mBuffer), mForm(form)
    {
        mIndented.SetIndent(' ', 2);
    }

    /// Calls `write` with the writer of the chosen form.
    template <class Write>
    void With(Write write)
    {
        static_cast<void>(mForm == Form::OneLine ? write(mOneLine) : write(mIndented));
    }

private:
    BufferedOutput mBuffer;
    rapidjson::Writer<BufferedOutput> mOneLine;
    rapidjson::PrettyWriter<BufferedOutput> mIndented;
    Form mForm;
};

JsonWriter::JsonWriter(std::ostream& out, Form form) : mImpl(std::make_unique<Impl>(out, form)) {}

JsonWriter::~JsonWriter() = default;

void JsonWriter::BeginObject()
{
    mImpl->With([](auto& writer) { return writer.StartObject(); });
}

void JsonWriter::EndObject()
{
    mImpl->With([](auto& writer) { return writer.EndObject(); });
}

void JsonWriter::BeginArray()
{
    mImpl->With([](auto& writer) { return writer.StartArray(); });
}

void JsonWriter::EndArray()
{
    mImpl->With([](auto& writer) { return writer.EndArray(); });
}

JsonWriter& JsonWriter::Key(std::string_view name)
{
    Text(name);
    return *this;
}

void JsonWriter::Null()
{
    mImpl->With([](auto& writer) { return writer.Null(); });
}

void JsonWriter::Boolean(bool value)
{
    mImpl->With([&](auto& writer) { return writer.Bool(value); });
}

void JsonWriter::Integer(std::int64_t value)
{
    mImpl->With([&](auto& writer) { return writer.Int64(value); });
}

void JsonWriter::Float(float value)
{
    if (!std::isfinite(value))
        return Text(std::string_view(std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf"));
    std::array<char, 32> buffer;
    const std::string_view digits = Digits(value, buffer);
    mImpl->With([&](auto& writer)
                { return writer.RawValue(digits.data(), digits.size(), rapidjson::kNumberType); });
}

void JsonWriter::Text(std::string_view utf8)
{
    const auto size = static_cast<rapidjson::SizeType>(utf8.size());
    mImpl->With([&](auto& writer) { return writer.String(utf8.data(), size); });
}

void JsonWriter::Text(std::u16string_view text) { Text(std::string_view(ToUtf8(text))); }

} // namespace ZLMIM::Tools

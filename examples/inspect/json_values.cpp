#include "json_values.h"

#include "zlmim/model/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <utility>
#include <vector>

namespace ZLMIM::Inspect
{
namespace
{

template <class Number, class... Form>
std::string_view Digits(std::array<char, 32>& buffer, Number number, Form... form)
{
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, form...);
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

/// Collects the text and hands it on in large pieces.
class Dumper
{
public:
    explicit Dumper(std::ostream& out) : mOut(out) {}

    void Value(const Json& json)
    {
        switch (json.type())
        {
        case Json::value_t::object:
            Object(json.get_ref<const Json::object_t&>());
            break;
        case Json::value_t::array:
            Array(json.size(), [&](std::size_t i) { Value(json[i]); });
            break;
        case Json::value_t::number_float:
            Float(json.get<float>());
            break;
        case Json::value_t::number_integer:
            Integer(json.get<std::int64_t>());
            break;
        case Json::value_t::binary:
            Binary(json.get_binary());
            break;
        default:
            mText += json.dump();
        }
    }

    void Flush()
    {
        mOut.write(mText.data(), static_cast<std::streamsize>(mText.size()));
        mText.clear();
    }

private:
    void Object(const Json::object_t& object)
    {
        char before = '{';
        for (const auto& [key, value] : object)
        {
            mText.append(1, before).append(1, '"').append(key).append("\":"); // no key needs an escape
            Value(value);
            before = ',';
        }
        mText += '}';
    }

    /// An array of `count` elements, each of which `write(index)` writes.
    template <class Write>
    void Array(std::size_t count, Write write)
    {
        constexpr std::size_t kPiece = 65'536;
        mText += '[';
        for (std::size_t i = 0; i < count; ++i)
        {
            if (i != 0)
                mText += ',';
            write(i);
            if (mText.size() >= kPiece)
                Flush();
        }
        mText += ']';
    }

    void Binary(const Json::binary_t& binary)
    {
        if (!binary.has_subtype())
            return Floats(std::as_bytes(std::span(binary)));
        std::span<const std::byte> elements;
        std::memcpy(&elements, binary.data(), sizeof(std::span<const std::byte>));
        if (const auto floatCount = static_cast<std::size_t>(binary.subtype()); floatCount == 0)
            Integers(elements);
        else
            Records(elements, floatCount * sizeof(float));
    }

    void Records(std::span<const std::byte> records, std::size_t size)
    {
        Array(records.size() / size, [&](std::size_t i) { Floats(records.subspan(i * size, size)); });
    }

    void Floats(std::span<const std::byte> floats)
    {
        Array(floats.size() / sizeof(float), [&](std::size_t i) { Float(At<float>(floats, i)); });
    }

    void Integers(std::span<const std::byte> integers)
    {
        Array(integers.size() / sizeof(std::int32_t),
              [&](std::size_t i) { Integer(At<std::int32_t>(integers, i)); });
    }

    template <class Number>
    static Number At(std::span<const std::byte> numbers, std::size_t index)
    {
        Number number = 0;
        std::memcpy(&number, numbers.data() + index * sizeof(number), sizeof(number));
        return number;
    }

    void Integer(std::int64_t value)
    {
        std::array<char, 32> buffer;
        mText += Digits(buffer, value);
    }

    void Float(float value)
    {
        if (!std::isfinite(value))
        {
            mText += std::isnan(value) ? "\"nan\"" : value > 0 ? "\"inf\"" : "\"-inf\"";
            return;
        }
        if (value == 0)
        {
            mText += std::signbit(value) ? "-0.0" : "0.0"; // a quick way for slots that no frame has filled
            return;
        }
        // Below this the digits of a whole number are the fewest for its float. From here on only the form
        // with an exponent has no more digits than needed.
        constexpr float kWholeNumbersEnd = 16'777'216;
        std::array<char, 32> buffer;
        const std::string_view digits = std::abs(value) < kWholeNumbersEnd
                                            ? Digits(buffer, value)
                                            : Digits(buffer, value, std::chars_format::scientific);
        mText += digits;
        if (digits.find_first_of(".e") == std::string_view::npos)
            mText += ".0"; // so that a reader takes it for what it is
    }

    std::ostream& mOut;
    std::string mText;
};

std::vector<std::uint8_t> BytesOf(std::span<const std::byte> bytes)
{
    const auto* const first = reinterpret_cast<const std::uint8_t*>(bytes.data());
    return {first, first + bytes.size()};
}

} // namespace

void Dump(const Json& json, std::ostream& out)
{
    Dumper dumper(out);
    dumper.Value(json);
    dumper.Flush();
}

Json TextToJson(std::u16string_view text) { return ToUtf8(text); }

Json FloatsToJson(std::span<const std::byte> floats) { return Json::binary(BytesOf(floats)); }

Json ElementsToJson(std::span<const std::byte> elements, Element element)
{
    return Json::binary(BytesOf(std::as_bytes(std::span(&elements, 1))), static_cast<std::uint8_t>(element));
}

} // namespace ZLMIM::Inspect

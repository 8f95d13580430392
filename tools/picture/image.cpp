// The only source that compiles stb.
#include "image.h"

#include "tools/common/paths.h"

#include <algorithm>
#include <boost/crc.hpp>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <stdexcept>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_NO_STDIO
#define STBI_ONLY_TGA
#define STBI_ONLY_BMP
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_MAX_DIMENSIONS 16384
#include <stb/stb_image.h>
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_easy_font.h>
#include <stb/stb_image_write.h>

namespace ZLMIM::Picture
{
namespace
{

constexpr std::size_t kMaxTextureFile = 64 * 1'024 * 1'024;
constexpr std::int64_t kMaxTexturePixels = 64 * 1'024 * 1'024;

/// A number with its highest byte first.
std::string BigEndian(std::uint32_t number, int bytes = 4)
{
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(number >> shift & 0xFF);
    return text;
}

std::uint32_t NumberAt(std::string_view bytes, std::size_t position)
{
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(position, 4))
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

std::string PngBlock(std::string_view tag, std::string_view payload)
{
    std::string content(tag);
    content += payload;
    boost::crc_32_type sum;
    sum.process_bytes(content.data(), content.size());
    return BigEndian(static_cast<std::uint32_t>(payload.size())) + content + BigEndian(sum.checksum());
}

std::string ToPng(int width, int height, int channels, const void* pixels)
{
    std::string bytes;
    const auto append = [](void* context, void* data, int size)
    {
        static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                                   static_cast<std::size_t>(size));
    };
    if (stbi_write_png_to_func(append, &bytes, width, height, channels, pixels, 0) == 0)
        throw std::runtime_error("there isn't enough memory for the picture");
    return bytes;
}

/// The payload of the blocks with that tag, one after another.
std::string PngPayload(std::string_view png, std::string_view tag)
{
    constexpr std::size_t kSignature = 8;
    std::string payload;
    for (std::size_t position = kSignature; position + 12 <= png.size();)
    {
        const std::size_t size = NumberAt(png, position);
        if (png.substr(position + 4, 4) == tag)
            payload += png.substr(position + 8, size);
        position += 12 + size;
    }
    return payload;
}

} // namespace

glm::vec4 Texture::At(glm::dvec2 uv) const
{
    if (!std::isfinite(uv.x) || !std::isfinite(uv.y))
        return glm::vec4(1);
    // Between the centres of four pixels.
    const double x = (uv.x - std::floor(uv.x)) * Width - 0.5;
    const double y = (1 - (uv.y - std::floor(uv.y))) * Height - 0.5;
    const auto column = static_cast<int>(std::floor(x));
    const auto row = static_cast<int>(std::floor(y));
    const auto pixel = [&](int atColumn, int atRow)
    {
        const int i = (atRow + Height) % Height * Width + (atColumn + Width) % Width;
        return glm::vec4(Pixels[static_cast<std::size_t>(i)]);
    };
    const auto right = static_cast<float>(x - column);
    const auto down = static_cast<float>(y - row);
    return glm::mix(glm::mix(pixel(column, row), pixel(column + 1, row), right),
                    glm::mix(pixel(column, row + 1), pixel(column + 1, row + 1), right), down) /
           255.0F;
}

std::optional<Texture> ReadTexture(const NativePath& file)
{
    std::ifstream stream(Tools::ToPath(file), std::ios::binary);
    std::string bytes;
    stream.seekg(0, std::ios::end);
    const auto size = static_cast<std::int64_t>(stream.tellg());
    if (!stream || size <= 0 || static_cast<std::size_t>(size) > kMaxTextureFile)
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(size));
    stream.seekg(0);
    stream.read(bytes.data(), static_cast<std::streamsize>(size));
    const auto* const data = reinterpret_cast<const stbi_uc*>(bytes.data());
    const auto length = static_cast<int>(bytes.size());
    Texture texture;
    int channels = 0;
    if (stbi_info_from_memory(data, length, &texture.Width, &texture.Height, &channels) == 0 ||
        std::int64_t{texture.Width} * texture.Height > kMaxTexturePixels)
        return std::nullopt;
    stbi_uc* const pixels =
        stbi_load_from_memory(data, length, &texture.Width, &texture.Height, &channels, STBI_rgb_alpha);
    if (!pixels)
        return std::nullopt;
    texture.Pixels.resize(static_cast<std::size_t>(texture.Width) * static_cast<std::size_t>(texture.Height));
    static_assert(sizeof(glm::u8vec4) == 4);
    std::memcpy(texture.Pixels.data(), pixels, texture.Pixels.size() * sizeof(glm::u8vec4));
    stbi_image_free(pixels);
    texture.HasAlpha = channels == STBI_rgb_alpha || channels == STBI_grey_alpha;
    return texture;
}

std::string ToPng(const Image& image)
{
    static_assert(sizeof(glm::u8vec3) == 3);
    return ToPng(image.Width, image.Height, 3, image.Pixels.data());
}

std::string ToPng(const Texture& texture)
{
    if (texture.HasAlpha)
        return ToPng(texture.Width, texture.Height, 4, texture.Pixels.data());
    Image image = {texture.Width, texture.Height, {}};
    image.Pixels.reserve(texture.Pixels.size());
    for (const glm::u8vec4& pixel : texture.Pixels)
        image.Pixels.emplace_back(pixel);
    return ToPng(image);
}

std::string ToAnimatedPng(const std::vector<Image>& images, int framesPerSecond)
{
    std::string bytes;
    std::uint32_t sequence = 0;
    for (const Image& image : images)
    {
        const std::string png = ToPng(image);
        if (sequence == 0)
            bytes = png.substr(0, 8) + PngBlock("IHDR", PngPayload(png, "IHDR")) +
                    PngBlock("acTL", BigEndian(static_cast<std::uint32_t>(images.size())) + BigEndian(0));
        // Size, offset, delay as a fraction, and no blending with the frame before.
        std::string control = BigEndian(sequence++) + BigEndian(static_cast<std::uint32_t>(image.Width)) +
                              BigEndian(static_cast<std::uint32_t>(image.Height)) + BigEndian(0) +
                              BigEndian(0) + BigEndian(1, 2) +
                              BigEndian(static_cast<std::uint32_t>(std::clamp(framesPerSecond, 1, 1'000)), 2);
        control.append(2, '\0');
        bytes += PngBlock("fcTL", control);
        const std::string pixels = PngPayload(png, "IDAT");
        bytes += sequence == 1 ? PngBlock("IDAT", pixels) : PngBlock("fdAT", BigEndian(sequence++) + pixels);
    }
    return bytes + PngBlock("IEND", "");
}

void Paste(Image& image, const Image& part, int x, int y)
{
    const int width = std::min(part.Width, image.Width - x);
    for (int row = 0; row < std::min(part.Height, image.Height - y); ++row)
        std::copy_n(part.Pixels.begin() + std::ptrdiff_t{row} * part.Width, width,
                    image.Pixels.begin() + std::ptrdiff_t{y + row} * image.Width + x);
}

void Write(Image& image, std::string_view text, int x, int y, int width)
{
    constexpr glm::u8vec3 kInk = {40, 44, 52};
    std::string ascii;
    for (const char c : text)
        if ((c & 0xC0) != 0x80) // not the second byte of a character
            ascii += c >= ' ' && c < 0x7F ? c : '?';
    while (!ascii.empty() && stb_easy_font_width(ascii.data()) > width)
        ascii.pop_back();
    struct Corner
    {
        float X, Y, Z;
        unsigned char Colour[4];
    };
    // The font needs at most 270 bytes per character, 16 per corner.
    std::vector<Corner> corners(ascii.size() * 68);
    const int quads = stb_easy_font_print(0, 0, ascii.data(), nullptr, corners.data(),
                                          static_cast<int>(corners.size() * sizeof(Corner)));
    for (int i = 0; i < quads; ++i)
    {
        const Corner& low = corners[static_cast<std::size_t>(4 * i)];
        const Corner& high = corners[static_cast<std::size_t>(4 * i + 2)];
        for (int row = y + static_cast<int>(low.Y);
             row < std::min(y + static_cast<int>(high.Y), image.Height); ++row)
            for (int column = x + static_cast<int>(low.X);
                 column < std::min(x + static_cast<int>(high.X), image.Width); ++column)
                image.Pixels[static_cast<std::size_t>(row * image.Width + column)] = kInk;
    }
}

} // namespace ZLMIM::Picture

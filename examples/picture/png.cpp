#include "drawing.h"

#include <png.h>
#include <stdexcept>

namespace ZLMIM::Picture
{

std::string ToPng(const Image& image)
{
    static_assert(sizeof(glm::u8vec3) == 3);
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    png.format = PNG_FORMAT_RGB;
    png.width = static_cast<png_uint_32>(image.Width);
    png.height = static_cast<png_uint_32>(image.Height);
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(png);
    std::string bytes(size, '\0');
    if (png_image_write_to_memory(&png, bytes.data(), &size, 0, image.Pixels.data(), 0, nullptr) == 0)
        throw std::runtime_error(png.message);
    bytes.resize(size);
    return bytes;
}

} // namespace ZLMIM::Picture

// The only source that compiles stb.
#include "drawing.h"

#include <stdexcept>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace ZLMIM::Picture
{

std::string ToPng(const Image& image)
{
    static_assert(sizeof(glm::u8vec3) == 3);
    std::string bytes;
    const auto append = [](void* context, void* data, int size)
    {
        static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                                   static_cast<std::size_t>(size));
    };
    if (stbi_write_png_to_func(append, &bytes, image.Width, image.Height, 3, image.Pixels.data(), 0) == 0)
        throw std::runtime_error("the picture can't be encoded");
    return bytes;
}

} // namespace ZLMIM::Picture

#ifndef ZLMIM_MODEL_ENUMERATIONS_H
#define ZLMIM_MODEL_ENUMERATIONS_H

#include <cstdint>

namespace ZLMIM
{

/// The kind of primitive that the indices of a `Geometry` describe. A property of this type holds whatever
/// number the file has, named here or not.
enum class PrimFlag : std::int32_t
{
    NONE = 0,
    POINTS = 1,
    LINES = 2,
    LINE_STRIP = 3,
    TRIANGLES = 4,
    TRI_STRIP = 5,
    TRI_FAN = 6,
};

/// The role of a texture in its material. A property of this type holds whatever number the file has, named
/// here or not. `TEX_NumtypeS` closes the list: its value is the number of roles before it.
enum class txtype : std::int32_t
{
    TEX_Ambient = 0,
    TEX_Diffuse = 1,
    TEX_Specular = 2,
    TEX_Shine = 3,
    TEX_Shinestrength = 4,
    TEX_Selfillum = 5,
    TEX_Opacity = 6,
    TEX_Filtercolor = 7,
    TEX_Bump = 8,
    TEX_Reflect = 9,
    TEX_Refract = 10,
    TEX_Displacement = 11,
    TEX_NumtypeS = 12,
};

} // namespace ZLMIM

#endif

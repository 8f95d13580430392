#pragma once

#include <cstdint>

namespace ZLMIM
{

/// The kind of primitive that the indices of a `Geometry` describe. A property of this type may hold any
/// number that a file has, named here or not.
/// \ingroup records
enum class PrimFlag : std::int32_t
{
    NONE = 0,       ///< Not specified.
    POINTS = 1,     ///< A point for each index.
    LINES = 2,      ///< A line for each two indices.
    LINE_STRIP = 3, ///< One line through all.
    TRIANGLES = 4,  ///< A triangle for each three indices.
    TRI_STRIP = 5,  ///< Each index from the third on makes a triangle with the two before it.
    TRI_FAN = 6,    ///< Each index from the third on makes a triangle with the one before it and the first.
};

/// The role of a texture in its material. A property of this type may hold any number that a file has, named
/// here or not.
/// \ingroup records
enum class txtype : std::int32_t
{
    TEX_Ambient = 0,       ///< Ambient colour.
    TEX_Diffuse = 1,       ///< Diffuse colour.
    TEX_Specular = 2,      ///< Colour of highlights.
    TEX_Shine = 3,         ///< Size of highlights.
    TEX_Shinestrength = 4, ///< Strength of highlights.
    TEX_Selfillum = 5,     ///< Self-illumination.
    TEX_Opacity = 6,       ///< Opacity.
    TEX_Filtercolor = 7,   ///< Colour of transmitted light.
    TEX_Bump = 8,          ///< Bump map.
    TEX_Reflect = 9,       ///< Reflection.
    TEX_Refract = 10,      ///< Refraction.
    TEX_Displacement = 11, ///< Displacement of the surface.
    TEX_NumtypeS = 12,     ///< Not a role: the number of roles above.
};

} // namespace ZLMIM

"""Enumerations and records."""

from __future__ import annotations

import enum
from typing import Any, NamedTuple, Optional, TypeVar

import numpy as np
import numpy.typing as npt

_Record = TypeVar("_Record", bound="tuple[float, ...]")


class _OpenEnum(enum.IntEnum):
    """An enumeration whose properties may hold any 32-bit number that a file has, named or not."""

    @classmethod
    def _missing_(cls, value: object) -> Optional[_OpenEnum]:
        if not isinstance(value, int) or not -(2**31) <= value < 2**31:
            return None
        member = int.__new__(cls, value)
        member._name_ = str(int(value))
        member._value_ = int(value)
        return member

    def __reduce_ex__(self, protocol: Any) -> tuple[Any, ...]:
        return type(self), (int(self),)


class PrimFlag(_OpenEnum):
    """The kind of primitive that the indices of a Geometry describe."""

    NONE = 0  #: Not specified.
    POINTS = 1  #: A point for each index.
    LINES = 2  #: A line for each two indices.
    LINE_STRIP = 3  #: One line through all.
    TRIANGLES = 4  #: A triangle for each three indices.
    TRI_STRIP = 5  #: Each index from the third on makes a triangle with the two before it.
    TRI_FAN = 6  #: Each index from the third on makes a triangle with the one before it and the first.


class TextureType(_OpenEnum):
    """The role of a texture in its material."""

    AMBIENT = 0  #: Ambient colour.
    DIFFUSE = 1  #: Diffuse colour.
    SPECULAR = 2  #: Colour of highlights.
    SHINE = 3  #: Size of highlights.
    SHINESTRENGTH = 4  #: Strength of highlights.
    SELFILLUM = 5  #: Self-illumination.
    OPACITY = 6  #: Opacity.
    FILTERCOLOR = 7  #: Colour of transmitted light.
    BUMP = 8  #: Bump map.
    REFLECT = 9  #: Reflection.
    REFRACT = 10  #: Refraction.
    DISPLACEMENT = 11  #: Displacement of the surface.
    NUMTYPES = 12  #: Not a role: the number of roles above.


class FileErrorCode(_OpenEnum):
    """The cause of a FileSystemError."""

    NO_SUCH_FILE = 53  #: There is no such file.
    READ_ERROR = 57  #: The file can't be read.
    PAST_END = 62  #: Read past the last line, for example to close a quotation.
    NO_PERMISSION = 70  #: The file may not be read.
    NO_SUCH_FOLDER = 76  #: There is no such folder, or the name is empty.


def _as_array(record: type[_Record]) -> type[_Record]:
    """Lets numpy make an array of the record's fields."""

    def array(self: _Record, dtype: Any = None) -> npt.NDArray[Any]:
        return np.array(tuple(self), dtype or np.float32)

    setattr(record, "__array__", array)
    return record


@_as_array
class Vector(NamedTuple):
    """Three coordinates, 32-bit floats. numpy.array makes float32 of shape (3,) of it."""

    x: float = 0.0
    y: float = 0.0
    z: float = 0.0


@_as_array
class Quaternion(NamedTuple):
    """A rotation; need not be of unit length. numpy.array makes float32 of shape (4,) of it."""

    x: float = 0.0
    y: float = 0.0
    z: float = 0.0
    w: float = 0.0


@_as_array
class Colour(NamedTuple):
    """Red, green and blue, usually 0 to 1. numpy.array makes float32 of shape (3,) of it."""

    r: float = 0.0
    g: float = 0.0
    b: float = 0.0

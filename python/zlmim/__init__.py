"""Reads the 3D assets of the ZLM railway simulator: meshes, animations and asset descriptions.

    asset = zlmim.load_asset("assets/wagon")
    for entry in asset.mesh_table:
        for chunk in entry.mesh.chunks:
            print(entry.name, chunk.material.name, chunk.geometry.vertices.shape)

load_asset, load_mesh and load_anim load files. Arrays are numpy views on the loaded objects, without copies.
"""

from __future__ import annotations

import collections.abc as _abc
import errno as _errno
import os as _os
from typing import Optional, Type, TypedDict, TypeVar, Union

from zlmim import _zlmim
from zlmim._errors import BoundsError, FileSystemError, LoadError, OverflowError
from zlmim._files import FileSystem, Folder
from zlmim._records import Colour, FileErrorCode, PrimFlag, Quaternion, TextureType, Vector
from zlmim._zlmim import (
    Anim,
    Attachment,
    AttachmentList,
    Bone,
    BoneAnim,
    BoneAnimList,
    BoneList,
    Chunk,
    ChunkList,
    Geometry,
    LoadLimits,
    Material,
    Mesh,
    MeshEntry,
    MeshEntryList,
    ModelList,
    TextList,
    Texture,
    TextureList,
    ZLMModel,
)

__all__ = [
    "Anim",
    "Attachment",
    "AttachmentList",
    "Bone",
    "BoneAnim",
    "BoneAnimList",
    "BoneList",
    "BoundsError",
    "Chunk",
    "ChunkList",
    "Colour",
    "FileErrorCode",
    "FileSystem",
    "FileSystemError",
    "Folder",
    "Geometry",
    "LoadError",
    "LoadLimits",
    "Material",
    "Mesh",
    "MeshEntry",
    "MeshEntryList",
    "ModelList",
    "OverflowError",
    "PrimFlag",
    "Quaternion",
    "TextList",
    "Texture",
    "TextureList",
    "TextureType",
    "UNTRUSTED_LIMITS",
    "Vector",
    "ZLMModel",
    "load_anim",
    "load_asset",
    "load_mesh",
]

_Path = Union[str, bytes, "_os.PathLike[str]", "_os.PathLike[bytes]"]


class _Limits(TypedDict):
    memory: int
    work: int


UNTRUSTED_LIMITS: _Limits = {"memory": _zlmim._UNTRUSTED_LIMITS[0], "work": _zlmim._UNTRUSTED_LIMITS[1]}
"""For files from people whom you don't trust: load_asset(path, **UNTRUSTED_LIMITS)."""

_DEFAULT_LIMITS = LoadLimits()


def load_mesh(
    path: _Path, *, memory: int = _DEFAULT_LIMITS.memory, work: int = _DEFAULT_LIMITS.work
) -> Mesh:
    """Loads a mesh file (.im).

    memory (bytes of objects) and work (about a nanosecond each) limit the cost. Raises LoadError if the file is
    missing, unreadable or no mesh; BoundsError, OverflowError or MemoryError as Mesh.load.
    """
    mesh = Mesh()
    if not mesh.load(path, memory=memory, work=work):
        raise _load_error(path, mesh)
    return mesh


def load_anim(
    path: _Path, *, memory: int = _DEFAULT_LIMITS.memory, work: int = _DEFAULT_LIMITS.work
) -> Anim:
    """Loads an animation file (.kin). Limits and errors are those of load_mesh."""
    anim = Anim()
    if not anim.load(path, memory=memory, work=work):
        raise _load_error(path, anim)
    return anim


def load_asset(
    path: _Path,
    *,
    files: Optional[FileSystem] = None,
    memory: int = _DEFAULT_LIMITS.memory,
    work: int = _DEFAULT_LIMITS.work,
) -> ZLMModel:
    """Loads an asset, a config.txt or its folder, with the meshes, animations and assets that it names.

    Names in the config file are relative to its own folder, whatever the working folder is. files reads the
    config files, if they aren't on the disk. memory (bytes of objects) and work (about a nanosecond each) limit
    the cost.

    Raises LoadError if there is no such file or no config.txt in the folder; BoundsError, OverflowError,
    FileSystemError or MemoryError as ZLMModel.load. A mesh, an animation or a reference that is missing raises
    nothing: that mesh has no chunks, that model is empty.
    """
    name = _os.fsdecode(path)
    for config in (name, _os.path.join(name, "config.txt")):
        if _is_file(config) if files is None else files.file_exists(config):
            break
    else:
        raise LoadError(_errno.ENOENT, "No such file, and no folder with a config.txt", name)
    model = _zlmim._asset_model() if files is None else ZLMModel(files)
    model.limits = LoadLimits(memory=memory, work=work)
    # References are searched from the folder in its name.
    model.load(config if _os.path.dirname(config) else _os.path.join(_os.curdir, config))
    return model


def _is_file(path: _Path) -> bool:
    found = _zlmim._find(path)
    return found is not None and found[0]


def _load_error(path: _Path, partial: Union[Mesh, Anim]) -> LoadError:
    """Why a load returned False."""
    name = _os.fsdecode(path)
    found = _zlmim._find(path)
    if found is None:
        return LoadError(_errno.ENOENT, _os.strerror(_errno.ENOENT), name, partial)
    is_file, spelling = found
    if not is_file:
        return LoadError(_errno.EINVAL, "Not a regular file", name, partial)
    try:
        with open(spelling, "rb") as file:
            is_empty = not file.read(1)
    except OSError as error:
        return LoadError(error.errno or _errno.EIO, error.strerror or "Unreadable", name, partial)
    return _content_error(name, partial, is_empty)


def _content_error(name: str, partial: Union[Mesh, Anim], is_empty: bool) -> LoadError:
    text = partial.error_message
    if not text and is_empty:
        text = "It is empty"
    elif not text and isinstance(partial, Anim) and partial.file_size:
        text = "It has no events, no skeleton, or fewer frames than it declares"
    elif not text:
        text = "It is too large"
    return LoadError(_errno.EINVAL, text, name, partial)


_Loadable = TypeVar("_Loadable", Mesh, Anim)


def _from_bytes(cls: Type[_Loadable], data: _zlmim._Buffer, name: _Path = "") -> _Loadable:
    """Loads a file's content: bytes or any other contiguous buffer. name becomes file_name and isn't opened.

    Raises LoadError where load_bytes returns False, and whatever load_bytes raises.
    """
    loaded = cls()
    if not loaded.load_bytes(data, name):
        raise _content_error(_os.fsdecode(name), loaded, loaded.file_size == 0)
    return loaded


for _class in (Mesh, Anim):
    setattr(_class, "from_bytes", classmethod(_from_bytes))
for _name, _class in list(vars(_zlmim).items()):
    if isinstance(_class, type):
        _class.__module__ = __name__
    if _name.endswith("List"):
        _abc.Sequence.register(_class)
        for _method in ("__iter__", "__contains__", "__reversed__", "index", "count"):
            setattr(_class, _method, getattr(_abc.Sequence, _method))
del _class, _name, _method

# Types of the classes in C++. What they mean is in their docstrings: help(zlmim.Geometry).
from mmap import mmap
from os import PathLike
from typing import Any, Optional, Sequence, Tuple, TypeVar, Union, overload

import numpy as np
import numpy.typing as npt

from zlmim._files import FileSystem
from zlmim._records import Colour, PrimFlag, Quaternion, TextureType, Vector

_Path = Union[str, bytes, PathLike[str], PathLike[bytes]]
_Buffer = Union[bytes, bytearray, memoryview, mmap, npt.NDArray[Any]]
_Entry = TypeVar("_Entry")

_UNTRUSTED_LIMITS: Tuple[int, int]

def _asset_model() -> ZLMModel: ...
def _find(path: _Path) -> Optional[Tuple[bool, str]]: ...

class _List(Sequence[_Entry]):
    def __init__(self) -> None: ...
    def __len__(self) -> int: ...
    @overload
    def __getitem__(self, index: int) -> _Entry: ...
    @overload
    def __getitem__(self, index: slice) -> list[_Entry]: ...
    def __delitem__(self, index: int) -> None: ...
    def append(self, entry: _Entry) -> None: ...

class AttachmentList(_List[Attachment]): ...
class BoneAnimList(_List[BoneAnim]): ...
class BoneList(_List[Bone]): ...
class ChunkList(_List[Chunk]): ...
class MeshEntryList(_List[MeshEntry]): ...
class ModelList(_List[ZLMModel]): ...
class TextList(_List[str]): ...
class TextureList(_List[Texture]): ...

class Texture:
    texture_type: TextureType
    name: str
    amount: float

class Material:
    version: int
    num_properties: int
    two_sided: int
    opacity: float
    specular_power: float
    textures: TextureList
    name: str
    ambient: Colour
    diffuse: Colour
    specular: Colour
    emissive: Colour

class Attachment:
    version: int
    name: str
    matrix: npt.NDArray[np.float32]

class Bone:
    children: BoneList
    name: str
    version: int
    parent: Optional[Bone]
    position: Vector
    rotation: Quaternion
    def to_matrix(self) -> npt.NDArray[np.float32]: ...

class Geometry:
    version: int
    area: float
    face_normals: npt.NDArray[np.float32]
    primitive_count: int
    max_infl: int
    primitive_type: PrimFlag
    bone: str
    bone_object: Optional[Bone]
    max_vertices: int
    max_vert_normal: int
    max_index: int
    vertices: npt.NDArray[np.float32]
    vertex_normals: npt.NDArray[np.float32]
    indices: npt.NDArray[np.int32]

class Chunk:
    material: Material
    geometry: Geometry
    version: int
    id: int

class Mesh:
    error_message: str
    chunk_count: int
    version: int
    file_size: int
    attachments: Optional[AttachmentList]
    chunks: Optional[ChunkList]
    root_bone: Optional[Bone]
    att_version: int
    polygons: int
    file_name: str
    bone_count: int
    vertex_count: int
    texture_count: int
    def load(self, path: _Path, *, memory: int = ..., work: int = ...) -> bool: ...
    def load_bytes(self, data: _Buffer, name: _Path = "") -> bool: ...
    @classmethod
    def from_bytes(cls, data: _Buffer, name: _Path = "") -> Mesh: ...

class BoneAnim:
    children: BoneAnimList
    name: str
    version: int
    frames: npt.NDArray[np.float32]
    def init_frames(self, highest: int) -> None: ...

class Anim:
    error_message: str
    frame_count: int
    fps: int
    version: int
    met_scale: float
    name: str
    file_size: int
    root_bone: Optional[BoneAnim]
    file_name: str
    def load(self, path: _Path, *, memory: int = ..., work: int = ...) -> bool: ...
    def load_bytes(self, data: _Buffer, name: _Path = "") -> bool: ...
    @classmethod
    def from_bytes(cls, data: _Buffer, name: _Path = "") -> Anim: ...

class LoadLimits:
    def __init__(self, *, memory: int = ..., work: int = ...) -> None: ...
    memory: int
    work: int

class MeshEntry:
    mesh: Mesh
    anim: Anim
    name: str
    att_parent: Optional[MeshEntry]
    att: Optional[Attachment]
    parent: Optional[ZLMModel]
    def load(
        self,
        model: ZLMModel,
        name: str,
        mesh_file: _Path,
        anim_file: _Path = "",
        att_parent: str = "",
        att_name: str = "",
    ) -> None: ...

class ZLMModel:
    def __init__(self, files: Optional[FileSystem] = None) -> None: ...
    mesh_table: MeshEntryList
    asset_file_name: str
    author: str
    user_name: str
    kind: str
    description: str
    zlm_build: str
    bogies: ModelList
    bogie_names: TextList
    pantograph: Optional[ZLMModel]
    kuid: str
    limits: LoadLimits
    def load(self, path: _Path) -> None: ...

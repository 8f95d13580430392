"""A program of a user's, for mypy in strict mode. It is run, too."""

import sys
from pathlib import Path
from typing import List, Optional

import numpy as np
import numpy.typing as npt

import zlmim


def bone_names(bone: Optional[zlmim.Bone]) -> List[str]:
    if bone is None:
        return []
    return [bone.name, *(name for child in bone.children for name in bone_names(child))]


def lowest(mesh: zlmim.Mesh) -> npt.NDArray[np.float32]:
    points = [chunk.geometry.vertices[:, :3] for chunk in mesh.chunks or ()]
    return np.vstack(points).min(axis=0)  # type: ignore[no-any-return]


def main(folder: Path) -> int:
    asset: zlmim.ZLMModel = zlmim.load_asset(folder, **zlmim.UNTRUSTED_LIMITS)
    for entry in asset.mesh_table:
        names: List[str] = bone_names(entry.mesh.root_bone)
        print(entry.name, names, lowest(entry.mesh))
    first: zlmim.MeshEntry = asset.mesh_table[0]
    rest: List[zlmim.MeshEntry] = asset.mesh_table[1:]
    if first.anim.root_bone is not None:
        frames: npt.NDArray[np.float32] = first.anim.root_bone.frames
        print(frames.shape)
    for other in rest:
        if other.att is not None:
            other.att.matrix = np.zeros((4, 3), np.float32)
    try:
        zlmim.Mesh.from_bytes(b"")
    except zlmim.LoadError as error:
        reason: str = error.file
        assert isinstance(error.partial, zlmim.Mesh) and reason == ""
    bone = zlmim.Bone()
    bone.position = zlmim.Vector(1, 2, 3)
    x: float = bone.position.x
    kind: zlmim.PrimFlag = zlmim.PrimFlag(17)
    return int(x) - 1 + (kind != 17)


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1])))

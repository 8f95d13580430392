"""What `zlmim inspect --json --as-given` prints of an object, read from its properties in Python."""

import collections.abc
import os
import re

import numpy as np

import zlmim

FIELDS = {
    zlmim.Anim: "ErrorMessage FrameCount FPS Version MetScale Name FileSize RootBone FileName",
    zlmim.Attachment: "Version Name Matrix",
    zlmim.Bone: "Name Version Position Rotation ToMatrix ParentOk Children",
    zlmim.BoneAnim: "Name Version Frames Children",
    zlmim.Chunk: "Material Geometry Version Id",
    zlmim.Geometry: "Version Area FaceNormals PrimitiveCount MaxInfl PrimitiveType Bone BoneObject MaxVertices "
    "MaxVertNormal MaxIndex Vertices VertexNormals Indices",
    zlmim.Material: "Version NumProperties TwoSided Opacity SpecularPower Textures Name Ambient Diffuse Specular Emissive",
    zlmim.Mesh: "ErrorMessage ChunkCount Version FileSize Attachments Chunks RootBone AttVersion Polygons FileName "
    "BoneCount VertexCount TextureCount",
    zlmim.MeshEntry: "Name ParentOk AttParent Att Mesh anim",
    zlmim.Texture: "TextureType Name Amount",
    zlmim.ZLMModel: "AssetFileName Author UserName Kind Description ZLMBuild kuid MeshTable Bogies BogieNames Pantograph",
}


def load(path):
    """The object of the class that the file's ending asks for, and how its load ended."""
    ending = os.fspath(path).lower()
    kind = zlmim.Mesh if ending.endswith(".im") else zlmim.Anim if ending.endswith(".kin") else zlmim.ZLMModel
    loaded = kind()
    try:
        outcome = loaded.load(path)
    except (zlmim.BoundsError, zlmim.OverflowError, zlmim.FileSystemError) as error:
        assert error.partial is loaded
        outcome = type(error).__name__
    except MemoryError:
        outcome = "OutOfMemory"
    return {"Load": True if outcome is None else outcome, **read(loaded)}


def read(value, *above):
    """What is printed of a value. `above` are the objects that it is in, the nearest first."""
    if type(value) in FIELDS:
        return {key: field(value, key, above) for key in FIELDS[type(value)].split()}
    if isinstance(value, (zlmim.Vector, zlmim.Quaternion, zlmim.Colour)):
        return np.asarray(value)
    if isinstance(value, collections.abc.Sequence) and not isinstance(value, str):
        return [read(entry, *above) for entry in value]
    return value


def field(of, key, above):
    if key == "ParentOk":
        return of.parent is (above[0] if isinstance(above[0], (zlmim.Bone, zlmim.ZLMModel)) else None)
    if key == "BoneObject":  # above a geometry are its chunk and its mesh
        return of.bone_object and _place(of.bone_object, _bones(above[1].root_bone))
    if key == "AttParent":
        return _place(of.att_parent, above[0].mesh_table)
    if key == "Att":
        return _place(of.att, of.att_parent and of.att_parent.mesh.attachments)
    if key == "Bogies":
        firsts = [of.bogies.index(bogie) for bogie in of.bogies]
        return [
            read(of.bogies[place], of, *above) if place == first else {"SameAs": first + 1}
            for place, first in enumerate(firsts)
        ]
    # ErrorMessage is error_message, ZLMBuild zlm_build.
    value = getattr(of, re.sub("(?<=[a-z])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", key).lower())
    return read(value() if key == "ToMatrix" else value, of, *above)


def _bones(bone):
    return [] if bone is None else [bone, *(below for child in bone.children for below in _bones(child))]


def _place(wanted, entries):
    return entries.index(wanted) + 1 if wanted is not None and entries is not None and wanted in entries else None


def _name(path):
    """A file's name with the system's separators."""
    return path.replace("\\", os.sep)


def differences(printed, read, path=""):
    """Where the JSON that the program printed and the values in Python differ."""
    if isinstance(read, dict):
        if not isinstance(printed, dict) or list(printed) != list(read):
            yield f"{path}: {printed!r:.200} isn't {read!r:.200}"
            return
        for key in read:
            expected = _name(printed[key]) if key == "FileName" else printed[key]
            yield from differences(expected, read[key], f"{path}.{key}")
    elif isinstance(read, list):
        if not isinstance(printed, list) or len(printed) != len(read):
            yield f"{path}: {printed!r:.200} isn't {read!r:.200}"
            return
        for place, (p, r) in enumerate(zip(printed, read)):
            yield from differences(p, r, f"{path}[{place}]")
    elif isinstance(read, (np.ndarray, float)):
        expected = _array(printed, np.asarray(read, np.float32 if isinstance(read, float) else None))
        if expected is None:
            yield f"{path}: {printed!r:.200} isn't {read!r:.200}"
    elif printed != read or isinstance(printed, bool) != isinstance(read, bool):
        yield f"{path}: {printed!r} isn't {read!r}"


def _array(printed, read):
    """The printed numbers as an array, if all their bits are those of `read`; nan has one form in print."""
    if read.dtype == np.int32:
        expected = np.array(printed, np.int32).reshape(-1)
        return expected if np.array_equal(expected, read) else None
    expected = np.array(printed, object).reshape(-1).astype(np.float64).astype(np.float32)
    read = read.reshape(-1)
    if expected.shape != read.shape:
        return None
    same = (expected.view(np.uint32) == read.view(np.uint32)) | (np.isnan(expected) & np.isnan(read))
    return expected if same.all() else None

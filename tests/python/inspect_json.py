"""What `zlmim inspect --json --as-given` prints of an object, read from its properties in Python."""

import os

import numpy as np

import zlmim


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
    read = {zlmim.Mesh: mesh, zlmim.Anim: anim, zlmim.ZLMModel: model}[kind]
    return {"Load": True if outcome is None else outcome, **read(loaded)}


def _name(path):
    """A file's name with the system's separators."""
    return path.replace("\\", os.sep)


def _each(read, entries, *arguments):
    return None if entries is None else [None if e is None else read(e, *arguments) for e in entries]


def _or_none(read, value, *arguments):
    return None if value is None else read(value, *arguments)


def _place(wanted, entries):
    return entries.index(wanted) + 1 if wanted is not None and entries is not None and wanted in entries else None


def mesh(m):
    bones = []

    def number(bone):
        bones.append(bone)
        for child in bone.children:
            number(child)

    if m.root_bone is not None:
        number(m.root_bone)
    return {
        "ErrorMessage": m.error_message,
        "ChunkCount": m.chunk_count,
        "Version": m.version,
        "FileSize": m.file_size,
        "Attachments": _each(attachment, m.attachments),
        "Chunks": _each(chunk, m.chunks, bones),
        "RootBone": _or_none(bone, m.root_bone, None),
        "AttVersion": m.att_version,
        "Polygons": m.polygons,
        "FileName": m.file_name,
        "BoneCount": m.bone_count,
        "VertexCount": m.vertex_count,
        "TextureCount": m.texture_count,
    }


def attachment(a):
    return {"Version": a.version, "Name": a.name, "Matrix": a.matrix.reshape(12)}


def chunk(c, bones):
    return {
        "Material": material(c.material),
        "Geometry": geometry(c.geometry, bones),
        "Version": c.version,
        "Id": c.id,
    }


def material(m):
    return {
        "Version": m.version,
        "NumProperties": m.num_properties,
        "TwoSided": m.two_sided,
        "Opacity": m.opacity,
        "SpecularPower": m.specular_power,
        "Textures": [
            {"TextureType": t.texture_type, "Name": t.name, "Amount": t.amount} for t in m.textures
        ],
        "Name": m.name,
        **{
            name: np.asarray(colour)
            for name, colour in zip(
                ("Ambient", "Diffuse", "Specular", "Emissive"), (m.ambient, m.diffuse, m.specular, m.emissive)
            )
        },
    }


def geometry(g, bones):
    return {
        "Version": g.version,
        "Area": g.area,
        "FaceNormals": g.face_normals,
        "PrimitiveCount": g.primitive_count,
        "MaxInfl": g.max_infl,
        "PrimitiveType": g.primitive_type,
        "Bone": g.bone,
        "BoneObject": _place(g.bone_object, bones),
        "MaxVertices": g.max_vertices,
        "MaxVertNormal": g.max_vert_normal,
        "MaxIndex": g.max_index,
        "Vertices": g.vertices,
        "VertexNormals": g.vertex_normals,
        "Indices": g.indices,
    }


def bone(b, above):
    return {
        "Name": b.name,
        "Version": b.version,
        "Position": np.asarray(b.position),
        "Rotation": np.asarray(b.rotation),
        "ToMatrix": b.to_matrix().reshape(12),
        "ParentOk": b.parent is above,
        "Children": _each(bone, b.children, b),
    }


def anim(a):
    return {
        "ErrorMessage": a.error_message,
        "FrameCount": a.frame_count,
        "FPS": a.fps,
        "Version": a.version,
        "MetScale": a.met_scale,
        "Name": a.name,
        "FileSize": a.file_size,
        "RootBone": _or_none(bone_anim, a.root_bone),
        "FileName": a.file_name,
    }


def bone_anim(b):
    return {
        "Name": b.name,
        "Version": b.version,
        "Frames": b.frames,
        "Children": _each(bone_anim, b.children),
    }


def model(m):
    def bogie(place, found):
        first = m.bogies.index(found)
        return model(found) if first == place else {"SameAs": first + 1}

    return {
        "AssetFileName": m.asset_file_name,
        "Author": m.author,
        "UserName": m.user_name,
        "Kind": m.kind,
        "Description": m.description,
        "ZLMBuild": m.zlm_build,
        "kuid": m.kuid,
        "MeshTable": _each(entry, m.mesh_table, m),
        "Bogies": [bogie(place, found) for place, found in enumerate(m.bogies)],
        "BogieNames": list(m.bogie_names),
        "Pantograph": _or_none(model, m.pantograph),
    }


def entry(e, of):
    attachments = e.att_parent.mesh.attachments if e.att_parent is not None else None
    return {
        "Name": e.name,
        "ParentOk": e.parent is of,
        "AttParent": _place(e.att_parent, of.mesh_table),
        "Att": _place(e.att, attachments),
        "Mesh": mesh(e.mesh),
        "anim": anim(e.anim),
    }


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

"""Arrays are views that own their memory, and records are values."""

import gc

import numpy as np
import pytest

import zlmim

ARRAYS = {
    "vertices": ("max_vertices", np.float32, 5),
    "vertex_normals": ("max_vert_normal", np.float32, 3),
    "indices": ("max_index", np.int32, None),
}


def rows(count, kind, columns):
    shape = (count,) if columns is None else (count, columns)
    return np.arange(np.prod(shape)).reshape(shape).astype(kind)


@pytest.mark.parametrize("name", ARRAYS)
def test_view_of_a_geometry(name):
    count, kind, columns = ARRAYS[name]
    geometry = zlmim.Geometry()
    assert getattr(geometry, name).shape == rows(0, kind, columns).shape
    content = rows(4, kind, columns)
    setattr(geometry, name, content)
    view = getattr(geometry, name)
    assert view.dtype == kind and np.array_equal(view, content) and getattr(geometry, count) == 4
    assert not np.shares_memory(view, content)

    view[1] = 7
    assert np.shares_memory(view, getattr(geometry, name))
    assert np.all(getattr(geometry, name)[1] == 7)

    # A new count makes a new array, and the view keeps the old one.
    setattr(geometry, count, 3)
    assert not getattr(geometry, name).any() and np.all(view[1] == 7)
    setattr(geometry, name, getattr(geometry, name)[:2])
    assert len(getattr(geometry, name)) == 2
    setattr(geometry, count, -5)
    assert getattr(geometry, count) == -5 and len(getattr(geometry, name)) == 0
    del geometry
    gc.collect()
    assert np.all(view[1] == 7)


@pytest.mark.parametrize("given", [np.zeros((4, 4)), np.zeros(5), [[1, 2]], 3])
def test_an_array_of_another_shape(given):
    geometry = zlmim.Geometry()
    geometry.vertices = np.ones((2, 5))
    with pytest.raises(ValueError):
        geometry.vertices = given
    assert geometry.vertices.sum() == 10


def test_kinds_of_arrays():
    geometry = zlmim.Geometry()
    geometry.indices = [0, 1, -2]
    assert geometry.indices.tolist() == [0, 1, -2]
    geometry.indices = []
    assert geometry.max_index == 0
    with pytest.raises(TypeError):
        geometry.indices = [0.5]
    geometry.vertices = np.asfortranarray(np.arange(10).reshape(2, 5))
    assert geometry.vertices.tolist() == [[0, 1, 2, 3, 4], [5, 6, 7, 8, 9]]


def test_face_normals(wagon):
    geometry = zlmim.load_mesh(wagon / "body.im").chunks[0].geometry
    old = geometry.face_normals
    copy = old.copy()
    assert old.shape[1] == 3 and len(old) > 0
    geometry.face_normals = np.vstack([old, [[1, 2, 3]]])
    assert len(geometry.face_normals) == len(old) + 1
    assert geometry.face_normals[-1].tolist() == [1, 2, 3]
    assert np.array_equal(old, copy)


def test_matrices(wagon):
    mesh = zlmim.load_mesh(wagon / "body.im")
    attachment = next(a for a in mesh.attachments if a.name == "a.load")
    matrix = attachment.matrix
    assert matrix.shape == (4, 3) and matrix.dtype == np.float32
    matrix[3] = 1, 2, 3
    assert attachment.matrix[3].tolist() == [1, 2, 3]
    attachment.matrix = np.arange(12).reshape(4, 3)
    assert matrix[0].tolist() == [0, 1, 2]
    for wrong in (np.zeros((3, 4)), [], 0):
        with pytest.raises(ValueError):
            attachment.matrix = wrong
    del mesh, attachment
    gc.collect()
    assert matrix.sum() == 66


def test_to_matrix():
    bone = zlmim.Bone()
    bone.rotation = zlmim.Quaternion(0, 0, 1, 0)
    bone.position = 1, 2, 3
    assert bone.to_matrix().tolist() == [[-1, 0, 0], [0, -1, 0], [0, 0, 1], [1, 2, 3]]


def test_frames_outlive_a_later_load(wagon):
    anim = zlmim.load_anim(wagon / "doors.kin")
    bone = anim.root_bone.children[0]
    frames = bone.frames
    copy = frames.copy()
    assert frames.shape == (anim.frame_count + 1, 7)
    for _ in range(3):
        bone.init_frames(5000)
        assert bone.frames.shape == (5001, 7)
    assert anim.load(wagon / "doors.kin")
    anim.root_bone = None
    gc.collect()
    assert np.array_equal(frames, copy)
    bone.frames = copy[::2]
    assert np.array_equal(bone.frames, copy[::2])
    for wrong in (lambda: bone.init_frames(-1), lambda: setattr(bone, "frames", np.zeros((0, 7)))):
        with pytest.raises(zlmim.BoundsError) as error:
            wrong()
        assert error.value.position == -1 and error.value.partial is None
    assert np.array_equal(bone.frames, copy[::2])


def test_frames_of_a_kept_tree(wagon):
    """A file without a skeleton reads its frames into the old tree: new tables under old views."""
    content = (wagon / "doors.kin").read_bytes()
    anim = zlmim.Anim.from_bytes(content)
    views = [anim.root_bone.frames, *(child.frames for child in anim.root_bone.children)]
    copies = [view.copy() for view in views]
    start = content.index(b"SKEL")
    size = int.from_bytes(content[start + 4 : start + 8], "little")
    for end in (start + 8 + size, start + 4 + size):  # the size counts itself or doesn't
        try:
            anim.load_bytes(content[:start] + content[end:])
        except (zlmim.BoundsError, zlmim.OverflowError):
            pass
    assert not np.shares_memory(anim.root_bone.frames, views[0])
    assert all(np.array_equal(view, copy) for view, copy in zip(views, copies))


def test_records_are_values():
    bone = zlmim.Bone()
    bone.position = zlmim.Vector(1, 2, 0.1)
    assert bone.position == zlmim.Vector(1, 2, np.float32(0.1)) != zlmim.Vector(1, 2, 0.1)
    assert repr(zlmim.Vector(1, 2, 3)) == "Vector(x=1, y=2, z=3)"
    with pytest.raises(AttributeError):
        bone.position.x = 5
    bone.position = np.arange(3)
    assert np.array(bone.position).dtype == np.float32
    assert (np.asarray(bone.position) + 1).tolist() == [1, 2, 3]
    for wrong in ((1, 2), (1, 2, 3, 4), "123", None, (1, 2, "3")):
        with pytest.raises(TypeError):
            bone.position = wrong
    material = zlmim.Material()
    material.diffuse = zlmim.Colour(r=1)
    assert (material.diffuse.r, material.diffuse.b) == (1, 0)
    assert bone.rotation == (0, 0, 0, 0) == zlmim.Quaternion()

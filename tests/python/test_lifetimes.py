"""Kept parts keep what they need, dropped ones are freed, and an object is one object while it is kept."""

import gc
import resource

import numpy as np
import pytest

import zlmim


def memory():
    """MiB in use now."""
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * resource.getpagesize() / 2**20


def bones_of(bone):
    return [bone, *(below for child in bone.children for below in bones_of(child))]


def test_one_bone_keeps_its_tree(wagon):
    mesh = zlmim.load_mesh(wagon / "body.im")
    names = [bone.name for bone in bones_of(mesh.root_bone)]
    leaf = bones_of(mesh.root_bone)[-1]
    assert len(names) > 1
    mesh.load(wagon / "load" / "load_near.im")
    del mesh
    gc.collect()
    root = leaf
    while root.parent is not None:
        root = root.parent
    assert [bone.name for bone in bones_of(root)] == names and bones_of(root)[-1] is leaf
    children = root.children
    del root, leaf
    gc.collect()
    assert children[0].parent.name == names[0]


def test_a_chunk_keeps_its_bone(wagon):
    bound = [c.geometry for c in zlmim.load_mesh(wagon / "body.im").chunks if c.geometry.bone_object]
    gc.collect()
    assert bound and all(g.bone_object.parent.children[-1].name for g in bound)


def test_one_entry_keeps_its_model(wagon):
    entry = zlmim.load_asset(wagon).mesh_table[2]
    gc.collect()
    assert entry.parent.user_name == "Covered wagon"
    assert entry.parent.mesh_table[2] is entry
    assert entry.att_parent is entry.parent.mesh_table[0]
    assert entry.att in list(entry.att_parent.mesh.attachments)
    table = entry.parent.mesh_table
    del entry
    gc.collect()
    assert table[0].parent.pantograph.mesh_table[0].mesh.polygons == 48
    # The model gets a new table, and the old entries stay with their holders.
    old, model = table[0], table[0].parent
    model.load(wagon / "config.txt")
    del model
    gc.collect()
    assert old.parent.mesh_table[0] is not old and old.name == "default" == table[0].name


def test_an_entry_of_a_table_may_be_loaded_again(wagon):
    asset = zlmim.load_asset(wagon)
    entry = asset.mesh_table[1]
    entry.load(asset, "Again", wagon / "body.im", att_parent="DEFAULT", att_name="A.ROOF")
    assert asset.mesh_table[-1] is entry and entry.name == "again" and entry.att.name == "a.roof"
    with pytest.raises(ValueError):
        entry.load(None, "x", wagon / "body.im")


def test_one_object_is_one_object(wagon):
    asset = zlmim.load_asset(wagon)
    entry = asset.mesh_table[0]
    assert asset.mesh_table is asset.mesh_table and entry.mesh is entry.mesh
    assert entry.mesh.chunks[0].geometry is entry.mesh.chunks[0].geometry
    entry.mesh.chunks[0].material.name = "kept"
    gc.collect()
    assert entry.mesh.chunks[0].material.name == "kept"


def test_a_leaf_of_an_animation_keeps_only_itself():
    before = memory()
    leaves = []
    for _ in range(30):
        root = zlmim.BoneAnim()
        root.init_frames(2**20 - 1)
        root.frames[:] = 1
        root.children.append(zlmim.BoneAnim())
        leaves.append(root.children[0])
    assert memory() - before < 28 * 10  # each table has 28 MiB


def make_ring():
    """A bone that is its own child and parent, and keeps 16 MiB."""
    bone = zlmim.Bone()
    bone.children.append(bone)
    bone.parent = bone
    animated = zlmim.BoneAnim()
    animated.children.append(animated)
    animated.frames = np.ones((600_000, 7))
    return bone, animated


def test_rings_are_freed_once_they_are_untied():
    before = memory()
    for _ in range(20):
        bone, animated = make_ring()
        del animated.children[0]
        bone.parent = None
        del bone.children[0]
        del bone, animated
        gc.collect()
    assert memory() - before < 16 * 10


def test_a_ring_of_an_entry_and_a_model(wagon):
    before = memory()
    for _ in range(20):
        model, entry = zlmim.ZLMModel(), zlmim.MeshEntry()
        entry.load(model, "Own", wagon / "body.im", wagon / "doors.kin", "own", "a.load")
        assert entry.parent is model and model.mesh_table[0] is entry is entry.att_parent
        assert entry.att is entry.mesh.attachments[entry.mesh.attachments.index(entry.att)]
        entry.mesh.chunks[0].geometry.vertices = np.ones((2**20, 5))
        frames = entry.anim.root_bone.frames
        entry.parent = entry.att_parent = None
        del model, entry
        gc.collect()
        assert frames.shape == (26, 7)
    assert memory() - before < 20 * 10


def test_a_ring_that_stays_tied_does_no_harm():
    make_ring()
    gc.collect()


def test_subclasses_of_python_are_collected(wagon):
    class Named(zlmim.Mesh):
        pass

    before = memory()
    for _ in range(20):
        mesh = Named()
        mesh.load(wagon / "body.im")
        mesh.itself = mesh
        mesh.chunks[0].geometry.vertices = np.ones((2**20, 5))
        del mesh
        gc.collect()
    assert memory() - before < 20 * 10


def test_views_survive_everything_else(wagon):
    asset = zlmim.load_asset(wagon)
    views, copies = [], []
    for entry in asset.mesh_table:
        for chunk in entry.mesh.chunks:
            geometry = chunk.geometry
            views += [geometry.vertices, geometry.vertex_normals, geometry.indices, geometry.face_normals]
        views += [attachment.matrix for attachment in entry.mesh.attachments or ()]
        if entry.anim.root_bone:
            views += [entry.anim.root_bone.frames]
    copies = [view.copy() for view in views]
    del asset, entry, chunk, geometry
    gc.collect()
    filler = [np.full(copy.shape, 7, copy.dtype) for copy in copies for _ in range(3)]
    assert all(np.array_equal(view, copy) for view, copy in zip(views, copies)) and filler

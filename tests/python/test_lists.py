"""Lists are sequences, enumerations take any number, texts keep every character."""

import collections.abc
import pickle

import pytest

import zlmim


def test_a_list_is_a_sequence(wagon):
    chunks = zlmim.load_mesh(wagon / "body.im").chunks
    every = list(chunks)
    assert isinstance(chunks, collections.abc.Sequence) and len(chunks) == len(every) == 4
    assert chunks[-1] is every[3] and chunks[1:3] == every[1:3] and chunks[::-1] == every[::-1]
    assert list(reversed(chunks)) == every[::-1]
    assert every[2] in chunks and chunks.index(every[2]) == 2 and chunks.count(every[2]) == 1
    assert zlmim.Chunk() not in chunks
    for index in (4, -5, 2**31, 2**40):
        with pytest.raises(IndexError):
            chunks[index]
        with pytest.raises(IndexError):
            del chunks[index]
    chunks.append(every[0])
    del chunks[1]
    assert list(chunks) == [every[0], every[2], every[3], every[0]]
    with pytest.raises(TypeError):
        chunks.append(zlmim.Material())


def test_every_list_can_be_made():
    made = {
        zlmim.AttachmentList: zlmim.Attachment,
        zlmim.BoneAnimList: zlmim.BoneAnim,
        zlmim.BoneList: zlmim.Bone,
        zlmim.ChunkList: zlmim.Chunk,
        zlmim.MeshEntryList: zlmim.MeshEntry,
        zlmim.ModelList: zlmim.ZLMModel,
        zlmim.TextList: str,
        zlmim.TextureList: zlmim.Texture,
    }
    for kind, entry in made.items():
        entries, one = kind(), entry()
        entries.append(one)
        assert list(entries) == [one]


def test_lists_are_writable():
    bone, child, children = zlmim.Bone(), zlmim.Bone(), zlmim.BoneList()
    children.append(child)
    bone.children = children
    assert bone.children is children and bone.children[0] is child and child.parent is None
    mesh = zlmim.Mesh()
    assert mesh.chunks is None
    mesh.chunks = zlmim.ChunkList()
    assert len(mesh.chunks) == 0
    mesh.chunks = None
    assert mesh.chunks is None


def test_enumerations_take_any_number():
    texture = zlmim.Texture()
    texture.texture_type = zlmim.TextureType.BUMP
    assert texture.texture_type is zlmim.TextureType.BUMP == 8
    for number in (-1, 99, 2**31 - 1, -(2**31)):
        texture.texture_type = number
        assert texture.texture_type == number and isinstance(texture.texture_type, zlmim.TextureType)
        assert pickle.loads(pickle.dumps(texture.texture_type)) == number
    for wrong in (2**31, "BUMP", 1.5, None):
        with pytest.raises(TypeError):
            texture.texture_type = wrong
    with pytest.raises(ValueError):
        zlmim.PrimFlag(2**31)
    assert texture.texture_type == -(2**31)


@pytest.mark.parametrize("text", ["", "Wägen €", "\ufeffa", "\ufffe", "\U0001f682", "\ud800", "a\0b"])
def test_text_keeps_every_character(text):
    material = zlmim.Material()
    material.name = text
    assert material.name == text
    names = zlmim.TextList()
    names.append(text)
    assert text in names


def test_numbers_are_32_bits():
    mesh = zlmim.Mesh()
    mesh.version = -(2**31)
    assert mesh.version == -(2**31)
    for wrong in (2**31, 1.5, "1"):
        with pytest.raises(TypeError):
            mesh.version = wrong


def test_kuid_is_normalised():
    model = zlmim.ZLMModel()
    model.kuid = "  <KUID:1:2> "
    assert model.kuid == "<kuid:1:2>"


def test_every_property_has_a_docstring():
    for name in zlmim.__all__:
        kind = getattr(zlmim, name)
        if isinstance(kind, type):
            assert kind.__doc__ and kind.__module__ in ("zlmim", "zlmim._errors", "zlmim._files", "zlmim._records")
            for member, value in vars(kind).items():
                if isinstance(value, property):
                    assert value.__doc__, f"{name}.{member}"
    assert "float32, shape (n, 5)" in zlmim.Geometry.vertices.__doc__

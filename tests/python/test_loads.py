"""What a load returns, raises and leaves."""

import errno
import mmap
import os
import pathlib
import threading
import time

import pytest

import zlmim


def test_an_asset_by_its_folder_or_its_file(wagon, monkeypatch):
    for path in (wagon, str(wagon), os.fsencode(wagon), wagon / "config.txt", f"{wagon}\\CONFIG.TXT"):
        asset = zlmim.load_asset(path)
        assert asset.user_name == "Covered wagon"
        # All names count from the asset's folder.
        assert asset.mesh_table[0].anim.frame_count == 25
        assert asset.bogies[0].kuid == "<kuid:4711:2001>" and asset.bogies[0] is asset.bogies[1]
        assert asset.pantograph.mesh_table[0].mesh.polygons == 48
    monkeypatch.chdir(wagon)
    assert zlmim.load_asset("config.txt").bogies[0].kuid == "<kuid:4711:2001>"
    assert zlmim.load_asset(".").bogies[0].kuid == "<kuid:4711:2001>"


def test_names_have_the_systems_separators(wagon):
    mesh = zlmim.load_mesh(wagon / "BODY.IM")
    assert mesh.file_name == str(wagon / "BODY.IM")
    mesh.file_name = pathlib.Path("a") / "b"
    assert mesh.file_name == os.path.join("a", "b")
    entry = zlmim.load_asset(wagon).mesh_table[1]
    assert os.path.samefile(entry.mesh.file_name, wagon / "load" / "load_near.im")


@pytest.mark.parametrize("load", [zlmim.load_mesh, zlmim.load_anim])
def test_nothing_to_load(load, wagon, tmp_path):
    other = "body.im" if load is zlmim.load_anim else "doors.kin"
    for path, number in ((tmp_path / "none", errno.ENOENT), (tmp_path, errno.EINVAL), (wagon / other, errno.EINVAL)):
        with pytest.raises(zlmim.LoadError) as error:
            load(path)
        assert isinstance(error.value, OSError)
        assert error.value.errno == number
        assert error.value.filename == error.value.file == error.value.partial.file_name == str(path)
    assert error.value.strerror.startswith("Not a ZL")
    assert type(error.value.partial)().load(tmp_path / "none") is False


def test_an_asset_that_is_missing(tmp_path):
    for path in (tmp_path, tmp_path / "none"):
        with pytest.raises(zlmim.LoadError) as error:
            zlmim.load_asset(path)
        assert (error.value.errno, error.value.filename, error.value.partial) == (errno.ENOENT, str(path), None)
    model = zlmim.ZLMModel()
    model.load(tmp_path / "none")
    assert len(model.mesh_table) == 0


def test_empty_and_cut_files(wagon, tmp_path):
    (tmp_path / "a.im").write_bytes(b"")
    with pytest.raises(zlmim.LoadError, match="empty"):
        zlmim.load_mesh(tmp_path / "a.im")
    (tmp_path / "a.im").write_bytes((wagon / "body.im").read_bytes()[:60000])
    with pytest.raises(zlmim.BoundsError) as error:
        zlmim.load_mesh(tmp_path / "A.im")
    assert isinstance(error.value, IndexError)
    assert error.value.file == str(tmp_path / "A.im") and error.value.position == 60001
    assert error.value.partial.chunk_count == 4 and len(error.value.partial.chunks) > 0
    assert str(error.value).startswith(f"{tmp_path}/A.im: ")
    (tmp_path / "a.kin").write_bytes((wagon / "doors.kin").read_bytes()[:-60])
    with pytest.raises((zlmim.LoadError, zlmim.BoundsError)) as error:
        zlmim.load_anim(tmp_path / "a.kin")
    assert error.value.partial.root_bone.frames[2].any()


def test_a_size_out_of_range(wagon):
    content = bytearray((wagon / "body.im").read_bytes())
    place = content.index(b"GEOM")
    content[place + 4 : place + 8] = b"\xff\xff\xff\x7f"
    with pytest.raises(zlmim.OverflowError) as error:
        zlmim.Mesh.from_bytes(content, "a/b.im")
    assert error.value.sum > 2**31 - 1 and error.value.file == "a/b.im"
    assert isinstance(error.value, OverflowError) and error.value.partial.file_size == len(content)


def test_a_reference_in_a_bare_name(own_assets, monkeypatch):
    monkeypatch.chdir(own_assets / "bogey y")
    pathlib.Path("config.txt").write_text("author me\nbogey-0 <kuid:1:2>\n")
    model = zlmim.ZLMModel()
    with pytest.raises(zlmim.FileSystemError) as error:
        model.load("config.txt")
    assert error.value.number is zlmim.FileErrorCode.NO_SUCH_FOLDER and isinstance(error.value, OSError)
    assert error.value.errno == errno.ENOENT
    assert error.value.partial is model and model.author == "me"


def test_from_bytes(wagon):
    path = wagon / "body.im"
    content = path.read_bytes()
    with open(path, "rb") as file, mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
        for data in (content, bytearray(content), memoryview(content), mapped):
            mesh = zlmim.Mesh.from_bytes(data, name=path)
            assert mesh.vertex_count == 1688 and mesh.file_name == str(path)
    assert zlmim.Anim.from_bytes((wagon / "doors.kin").read_bytes()).frame_count == 25
    for data, text in ((b"", "empty"), (b"JIRF, or not", "IDXM")):
        with pytest.raises(zlmim.LoadError, match=text) as error:
            zlmim.Mesh.from_bytes(data, "a")
        assert error.value.filename == "a"
    with pytest.raises(BufferError):
        zlmim.Mesh().load_bytes(memoryview(content)[::2])
    for wrong in ("text", None, 5):
        with pytest.raises(TypeError):
            zlmim.Mesh().load_bytes(wrong)


def test_limits(wagon):
    for load, path in ((zlmim.load_mesh, "body.im"), (zlmim.load_anim, "doors.kin"), (zlmim.load_asset, "")):
        assert load(wagon / path, **zlmim.UNTRUSTED_LIMITS)
        for limit in ("memory", "work"):
            with pytest.raises((zlmim.BoundsError, zlmim.LoadError)):
                load(wagon / path, **{limit: 1000})
    model = zlmim.ZLMModel()
    model.limits.work = 10
    assert model.limits.work == 10 and model.limits.memory == 2**32
    with pytest.raises(zlmim.BoundsError):
        model.load(wagon / "config.txt")


def test_wrong_paths():
    for load in (zlmim.load_mesh, zlmim.load_asset):
        for wrong in (None, 5, b"a".join):
            with pytest.raises(TypeError):
                load(wrong)
    with pytest.raises(ValueError):
        zlmim.load_mesh("a\0b")


def test_names_that_are_not_utf8(wagon, tmp_path):
    path = os.path.join(os.fsencode(tmp_path), b"w\xe4gen.im")
    with open(path, "wb") as file:
        file.write((wagon / "body.im").read_bytes())
    for name in (path, os.fsdecode(path), tmp_path / "WÄGEN.im"):
        assert zlmim.load_mesh(name).chunk_count == 4


def test_other_threads_run_during_a_load(tmp_path, wagon):
    """Main counts while a thread loads; with the interpreter locked, it couldn't in the middle of the load."""
    content = b"".join([(wagon / "body.im").read_bytes()] + [bytes(96 << 20)])
    moments = []

    def load():
        before = time.perf_counter()
        zlmim.Mesh().load_bytes(content)
        moments.extend((before, time.perf_counter()))

    thread = threading.Thread(target=load)
    ticks = []
    thread.start()
    while thread.is_alive():
        ticks.append(time.perf_counter())
    start, end = moments
    middle = [tick for tick in ticks if start + (end - start) / 4 < tick < end - (end - start) / 4]
    assert middle


def test_two_threads_load_at_once(wagon):
    kuids = []

    def load():
        for _ in range(20):
            asset = zlmim.load_asset(wagon)
            kuids.append(sum(len(c.geometry.vertices) for e in asset.mesh_table for c in e.mesh.chunks))

    threads = [threading.Thread(target=load) for _ in range(2)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert len(kuids) == 40 and len(set(kuids)) == 1

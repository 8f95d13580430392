"""A file system in Python."""

import gc
import os
import weakref

import pytest

import zlmim


class MemoryFolder(zlmim.Folder):
    def __init__(self, files, path):
        self.files, self.name = files, path

    def is_root_folder(self):
        return self.name == ""

    def parent_folder(self):
        return MemoryFolder(self.files, self.name.rpartition("/")[0])

    def sub_folders(self):
        start = f"{self.name}/"
        names = {path[len(start) :].split("/")[0] for path in self.files.texts if path.startswith(start)}
        return [MemoryFolder(self.files, start + name) for name in sorted(names) if "." not in name]

    def path(self):
        return self.name


class MemoryFiles(zlmim.FileSystem):
    """Config files in a dictionary, by their paths from the root."""

    def __init__(self, texts):
        self.texts = texts
        self.opened = []
        self.closed = 0

    def path(self, path):
        return os.path.normpath(os.path.join("/", path))

    def file_exists(self, path):
        return self.path(path) in self.texts

    def open_text_file(self, path):
        self.opened.append(path)
        lines = self.texts[self.path(path)]

        class Lines(list):
            def close(this):
                self.closed += 1

        return Lines(lines.splitlines(keepends=True)) if isinstance(lines, str) else lines

    def get_folder(self, path):
        return MemoryFolder(self, self.path(path).rstrip("/"))

    def file_identity(self, path):
        return self.path(path)


CONFIGS = {
    "/assets/wagon/config.txt": 'kuid <kuid:1:1>\r\nusername "Wägon"\nbogey-0 <kuid:1:2>\npantograph <kuid:1:3>\n'
    'bogey-1 <kuid:1:2>\ndescription "a\nb"\nbogey-2 <kuid:9:9>\n',
    "/assets/kuid 1 2/config.txt": "kuid <kuid:1:2>\nauthor direct",
    "/assets/elsewhere/config.txt": "kuid <kuid:1:3>\nauthor found\nbogey <kuid:1:1>",
}


def test_references_in_memory():
    files = MemoryFiles(CONFIGS)
    asset = zlmim.load_asset("/assets/wagon", files=files)
    assert asset.user_name == "Wägon" and asset.description == "a\r\nb"
    assert [b.author for b in asset.bogies] == ["direct", "direct", ""]
    assert asset.pantograph.author == "found"
    # A reference back to an open file isn't found.
    assert asset.pantograph.bogies[0].kuid == ""
    assert set(map(files.path, files.opened)) == set(CONFIGS)
    assert files.closed == len(files.opened)
    with pytest.raises(zlmim.LoadError):
        zlmim.load_asset("/assets/none", files=files)


def test_lines_from_a_generator():
    files = MemoryFiles({"/a/config.txt": (line for line in ["author me", "kind wagon\n"])})
    model = zlmim.ZLMModel(files)
    model.load("/a/config.txt")
    assert (model.author, model.kind) == ("me", "wagon")
    files.texts = {"/a/config.txt": 'author me\nkind "wagon'}
    with pytest.raises(zlmim.FileSystemError) as error:
        model.load("/a/config.txt")
    assert error.value.number is zlmim.FileErrorCode.PAST_END
    assert error.value.partial is model and model.author == "me"


class Failure(Exception):
    pass


def failing_lines():
    yield "author me"
    raise Failure


@pytest.mark.parametrize("method", ["file_exists", "open_text_file", "file_identity", "get_folder", "working_folder"])
def test_what_a_method_raises_passes_unchanged(method, monkeypatch):
    files = MemoryFiles(CONFIGS)
    failure = Failure()

    def fail(*_):
        raise failure

    monkeypatch.setattr(files, method, fail)
    with pytest.raises(Failure) as error:
        zlmim.ZLMModel(files).load("/assets/wagon/config.txt")
    assert error.value is failure


@pytest.mark.parametrize("method", ["open_text_file", "file_identity", "get_folder", "working_folder"])
def test_a_method_that_returns_something_else(method, monkeypatch):
    files = MemoryFiles(CONFIGS)
    for wrong in (None, 5):
        monkeypatch.setattr(files, method, lambda *_: wrong)
        with pytest.raises((TypeError, AttributeError, RuntimeError)):
            zlmim.ZLMModel(files).load("/assets/wagon/config.txt")


def test_what_lines_raise_passes_unchanged():
    model = zlmim.ZLMModel(MemoryFiles({"/a": failing_lines()}))
    with pytest.raises(Failure):
        model.load("/a")
    assert model.author == "me"
    for wrong in (["author", 5], 5, None):
        with pytest.raises((TypeError, AttributeError, RuntimeError)):
            zlmim.ZLMModel(MemoryFiles({"/a": wrong})).load("/a")


def test_a_file_system_lives_as_long_as_its_models():
    files = MemoryFiles(CONFIGS)
    model = zlmim.ZLMModel(files)
    model.load("/assets/wagon/config.txt")
    alive = weakref.ref(files)
    bogie = model.bogies[0]
    del files, model
    gc.collect()
    assert alive() is not None
    bogie.load("/assets/wagon/config.txt")
    assert bogie.user_name == "Wägon"
    del bogie
    gc.collect()
    assert alive() is None


def test_a_ring_through_a_file_system_is_untied_by_hand():
    files = MemoryFiles(CONFIGS)
    files.model = zlmim.ZLMModel(files)
    files.model.load("/assets/wagon/config.txt")
    alive = weakref.ref(files)
    del files
    gc.collect()
    alive().model = None
    gc.collect()
    assert alive() is None

"""Every property that the program prints is read through Python, and is the same."""

import json
import random
import subprocess

import inspect_json
from conftest import PROGRAM

DAMAGED_FILES = 1000


def compare(paths):
    """Returns the outcomes of the loads."""
    printed = subprocess.run([PROGRAM, "inspect", "--json", "--as-given", *paths], capture_output=True)
    assert printed.stderr == b""
    lines = printed.stdout.splitlines()
    assert len(lines) == len(paths)
    outcomes = []
    for path, line in zip(paths, lines):
        document = json.loads(line)
        found = list(inspect_json.differences(document, inspect_json.load(path)))
        assert not found, f"{path}: {found}"
        outcomes.append(document["Load"])
    return outcomes


def test_samples(samples, wagon, monkeypatch):
    monkeypatch.chdir(wagon)
    paths = sorted(p for p in samples.rglob("*") if p.suffix in (".im", ".kin") or p.name == "config.txt")
    assert len(paths) >= 8
    assert set(compare([*paths, wagon / "missing.txt"])) == {True}


def damage(content, rng):
    content = bytearray(content)
    for _ in range(rng.randrange(1, 4)):
        place = rng.randrange(len(content) or 1)
        kind = rng.randrange(6)
        if kind == 0:
            del content[place:]
        elif kind == 1:
            del content[place : place + rng.randrange(1, 40)]
        elif kind == 2:
            content[place:place] = rng.randbytes(rng.randrange(1, 9))
        elif kind == 3:
            number = rng.choice((-(2**31), -1, 0, 1, 2, 100, 2**31 - 1))
            content[place : place + 4] = number.to_bytes(4, "little", signed=True)
        elif kind == 4:
            content[place : place + 1] = bytes([rng.randrange(256)])
        else:  # most of a file is arrays, most of what can go wrong is at its start
            place = rng.randrange(min(len(content), 300) or 1)
            content[place : place + 1] = bytes([rng.randrange(256)])
    return content


def test_damaged_files(own_assets, monkeypatch):
    rng = random.Random(20260117)
    wagon = own_assets / "wagon"
    monkeypatch.chdir(wagon)
    originals = [
        *3 * sorted(own_assets.rglob("*.kin")),
        *sorted(own_assets.rglob("*.im")),
        *3 * sorted(own_assets.rglob("config.txt")),
    ]
    paths = []
    for number in range(DAMAGED_FILES):
        original = rng.choice(originals)
        path = original.with_name(f"damaged{number}{original.suffix}")
        path.write_bytes(damage(original.read_bytes(), rng))
        paths.append(path)
    outcomes = compare(paths)
    assert {True, False, "BoundsError", "FileSystemError"} <= set(outcomes)
    assert outcomes.count(True) < DAMAGED_FILES * 3 / 4

"""The sample assets, written by the program that ZLMIM_PROGRAM names; zlmim is on PYTHONPATH."""

import os
import pathlib
import shutil
import subprocess

import pytest

PROGRAM = os.environ["ZLMIM_PROGRAM"]


@pytest.fixture(scope="session")
def samples(tmp_path_factory):
    folder = tmp_path_factory.mktemp("sample")
    subprocess.run([PROGRAM, "sample", folder], check=True, stdout=subprocess.DEVNULL)
    return folder / "assets"


@pytest.fixture
def wagon(samples):
    return samples / "wagon"


@pytest.fixture
def own_assets(samples, tmp_path):
    """A copy that a test may change."""
    return pathlib.Path(shutil.copytree(samples, tmp_path / "assets"))

"""A file system of a program's own."""

from __future__ import annotations

import abc
from typing import Iterable


class Folder(abc.ABC):
    """A folder of a FileSystem. Paths are `str` with the system's separators."""

    @abc.abstractmethod
    def is_root_folder(self) -> bool:
        """True for the top folder, which has no parent."""

    @abc.abstractmethod
    def parent_folder(self) -> Folder:
        """The enclosing folder; called for other folders than the top one only."""

    @abc.abstractmethod
    def sub_folders(self) -> Iterable[Folder]:
        """The folders in it. Their order decides which of two matches is found first."""

    @abc.abstractmethod
    def path(self) -> str:
        """Full path without a separator at its end; so that of a root may be empty."""


class FileSystem(abc.ABC):
    """The service through which a ZLMModel reads all files but meshes and animations.

    Paths are `str` with the system's separators, and may contain `..`. They may be relative to the working
    folder. A load passes on unchanged what a method raises. Methods are called on the thread that loads.
    """

    @abc.abstractmethod
    def file_exists(self, path: str) -> bool:
        """Whether there is a file at that path; False for an empty path."""

    @abc.abstractmethod
    def open_text_file(self, path: str) -> Iterable[str]:
        """The lines of an existing file, with or without their ends: an open file, a list, a generator.

        Files of the simulator are in the encoding cp1252. If the result has a method close, it is called.
        """

    @abc.abstractmethod
    def get_folder(self, path: str) -> Folder:
        """The folder at a path, which normally ends in a separator."""

    @abc.abstractmethod
    def file_identity(self, path: str) -> str:
        """The same text for all paths to one existing file, and different texts for different files."""

    def working_folder(self, config_folder: str) -> str:
        """The folder that names of animations and references are relative to, with a separator at its end.

        config_folder is the folder of the config file that is loaded, and the default. An empty text is the
        working folder of the process.
        """
        return config_folder

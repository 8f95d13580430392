"""What a load raises. Each error has the file that it is about, and the object as far as it was loaded."""

from __future__ import annotations

import builtins
import errno
from typing import TYPE_CHECKING, Optional, Union

from zlmim._records import FileErrorCode

if TYPE_CHECKING:
    from zlmim._zlmim import Anim, Mesh, MeshEntry, ZLMModel

    Partial = Union[Anim, Mesh, MeshEntry, ZLMModel]


class LoadError(OSError):
    """load_mesh, load_anim, load_asset or from_bytes found no file, or one that isn't what it should be."""

    partial: Optional[Partial]
    """The object as far as it was loaded; None if nothing was."""

    def __init__(self, number: int, text: str, file: str, partial: Optional[Partial] = None) -> None:
        super().__init__(number, text, file)
        self.partial = partial

    @property
    def file(self) -> str:
        """The name of the file."""
        return str(self.filename)


class BoundsError(IndexError):
    """An index or a read outside the data, or an exceeded limit."""

    def __init__(self, text: str, position: int, file: str = "", partial: Optional[Partial] = None) -> None:
        super().__init__(text)
        self.position = position
        """The first index outside the data: a byte of the file, a slot, an element; or the limit."""
        self.file = file
        """The name of the file as it was given to the load; empty outside a load."""
        self.partial = partial
        """The object as far as it was loaded; None outside a load."""


class OverflowError(builtins.OverflowError):
    """A read position or a total outside the 32-bit signed range."""

    def __init__(self, text: str, sum: int, file: str = "", partial: Optional[Partial] = None) -> None:
        super().__init__(text)
        self.sum = sum
        """The exact sum."""
        self.file = file
        """The name of the file as it was given to the load; empty outside a load."""
        self.partial = partial
        """The object as far as it was loaded; None outside a load."""


_ERRNO = {
    FileErrorCode.NO_SUCH_FILE: errno.ENOENT,
    FileErrorCode.NO_PERMISSION: errno.EACCES,
    FileErrorCode.NO_SUCH_FOLDER: errno.ENOENT,
}


class FileSystemError(OSError):
    """The file system couldn't do what was requested. A FileSystem of your own may raise it, too."""

    def __init__(self, number: int, file: str, partial: Optional[Partial] = None) -> None:
        self.number = FileErrorCode(number)
        """The cause, more exactly than by errno."""
        super().__init__(_ERRNO.get(self.number, errno.EIO), self.number.name.replace("_", " ").lower(), file)
        self.partial = partial
        """The object as far as it was loaded; None outside a load."""

    @property
    def file(self) -> str:
        """The path as it was given."""
        return str(self.filename)

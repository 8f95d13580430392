"""Runs the programs of docs/python.md in the working folder. A block of text after one is what it prints."""

import contextlib
import difflib
import io
import pathlib
import re
import sys

page = pathlib.Path(__file__).parent.parent / "python.md"
blocks = re.findall(r"^```python\n(.*?)^```\n(?:\n```text\n(.*?)^```\n)?", page.read_text(), re.DOTALL | re.MULTILINE)
assert len(blocks) >= 7
failures = 0
for number, (program, expected) in enumerate(blocks, 1):
    printed = io.StringIO()
    with contextlib.redirect_stdout(printed):
        exec(compile(program, f"{page.name}, program {number}", "exec"), {"__name__": "__main__"})
    if printed.getvalue() != expected:
        failures += 1
        sys.stderr.writelines(
            difflib.unified_diff(
                expected.splitlines(True), printed.getvalue().splitlines(True), "the page", f"program {number}"
            )
        )
sys.exit(failures != 0)

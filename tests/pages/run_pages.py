#!/usr/bin/env python3
"""Runs what README.md and docs/ show, as a reader would who follows a page from its top.

- A block after a line that ends in "`NAME`:" is the file of that name, in code page 1250;
  in UTF-8 if it is a script of a session, "NAME.session".
- A block of `sh` is commands. Each has to end with 0, or with N where a comment "# exit code N" follows it.
- A block of `console` is commands, each after "$ ", and what the terminal shows then. `echo $?` shows the exit code.

A page begins in an empty directory that has a copy of examples/ and, where a release is built, the example driver;
`kqcfg` is the one of this build.

Usage: run_pages.py SOURCES BUILD"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import fences

SIMULATOR = "examples/simulator"


class Reader:
    """Somebody at a terminal, who stays in the directory to which a command has changed."""

    def __init__(self, directory, build):
        self.directory = directory
        self.status = 0
        self.state = directory / ".directory"
        self.environment = dict(os.environ, PATH=f"{build / 'tools'}:{os.environ['PATH']}", LC_ALL="C.UTF-8")

    def run(self, command):
        script = f"(exit {self.status})\n{command}\nstatus=$?; pwd >'{self.state}'; exit $status"
        result = subprocess.run(["bash", "-c", script], cwd=self.directory, env=self.environment, timeout=60, text=True,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        self.directory = pathlib.Path(self.state.read_text(encoding="utf-8").strip())
        self.status = result.returncode
        return result.stdout


def whole_commands(lines):
    """Lines put together to commands that the shell can run by themselves, each with the index of its first line."""
    command, first = "", 0
    for index, line in enumerate(lines):
        first = first if command else index
        command += line + "\n"
        complete = subprocess.run(["bash", "-n", "-c", command], stderr=subprocess.DEVNULL, check=False).returncode == 0
        if complete and not line.endswith("\\"):
            yield first, command
            command = ""
    if command:
        yield first, command


def run_commands(block, reader):
    for index, command in whole_commands(block.lines):
        expected = re.search(r"# exit code (\d)", command)
        shown = reader.run(command)
        if reader.status != int(expected[1] if expected else 0):
            yield index, f"{command}ended with {reader.status}:\n{shown}"


def run_console(block, reader):
    starts = [index for index, line in enumerate(block.lines) if line.startswith("$ ")]
    for index, end in zip(starts, [*starts[1:], len(block.lines)]):
        expected = "".join(line + "\n" for line in block.lines[index + 1:end])
        shown = reader.run(block.lines[index][2:])
        if shown != expected:
            yield index, f"{block.lines[index]}\nshows\n{shown}and the page says\n{expected}"


def failures_of_block(block, reader):
    """Yields each failure of a block with the index of its line."""
    name = re.search(r"`([\w.]+)`:$", block.before)
    if block.language == "console":
        yield from run_console(block, reader)
    elif block.language == "sh":
        yield from run_commands(block, reader)
    elif name:
        encoding = "utf-8" if name[1].endswith(".session") else "cp1250"
        (reader.directory / name[1]).write_bytes(block.text.encode(encoding))


def failures_of_page(page, root, build):
    """Yields each failure of a page with its line."""
    with tempfile.TemporaryDirectory() as scratch:
        directory = pathlib.Path(scratch)
        shutil.copytree(root / "examples", directory / "examples")
        shutil.copytree(build / SIMULATOR, directory / "build/release" / SIMULATOR,
                        ignore=shutil.ignore_patterns("CMakeFiles"))
        reader = Reader(directory, build)
        for block in fences.read_blocks(page):
            yield from ((block.line + index, text) for index, text in failures_of_block(block, reader))


def main():
    root, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    failed = False
    for page in fences.pages_of(root):
        for line, text in failures_of_page(page, root, build):
            print(f"{page}:{line}: {text}")
            failed = True
    return 1 if failed else 0


sys.exit(main())

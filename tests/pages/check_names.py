#!/usr/bin/env python3
"""Fails if README.md or docs/ names what isn't there: the target of a link, a source file, a member of a class.

Usage: check_names.py SOURCES"""
import pathlib
import re
import sys

import fences

FOLDERS = ["configurator", "driver", "examples", "model", "platform", "scanner", "template", "tests", "tools"]
LINK = re.compile(r"\]\(([^)#:]+)(?:#[^)]*)?\)")
SOURCE_FILE = re.compile(rf"`((?:{'|'.join(FOLDERS)})/[a-z0-9_/]+\.(?:h|cpp|py|txt))`")
MEMBER = re.compile(r"`(?:kq_\w+::)?([CT][A-Z]\w+)::(\w+)`")


def words_of_code(root):
    words = set()
    for folder in FOLDERS:
        for path in [*root.glob(f"{folder}/**/*.h"), *root.glob(f"{folder}/**/*.cpp")]:
            words.update(re.findall(r"\w+", path.read_text(encoding="utf-8")))
    return words


def missing_names(line, page, root, words):
    yield from (target for target in LINK.findall(line) if not (page.parent / target).exists())
    yield from (name for name in SOURCE_FILE.findall(line) if not (root / name).exists())
    yield from ("::".join(member) for member in MEMBER.findall(line) if not words.issuperset(member))


root = pathlib.Path(sys.argv[1])
words = words_of_code(root)
failed = False
for page in fences.pages_of(root):
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        for name in missing_names(line, page, root, words):
            print(f"{page}:{number}: there is no {name}")
            failed = True
sys.exit(failed)

#!/usr/bin/env python3
"""Compiles every C and C++ block of README.md and docs/ against the public headers, without making code.

A block with an #include is a whole source file. One without is a fragment: it comes after an #include of the headers
that its language has, and statements, as opposed to definitions, are wrapped in a function.

Usage: compile_snippets.py SOURCES PUBLIC_HEADERS COMPILER"""
import pathlib
import re
import subprocess
import sys

import fences

LANGUAGES = {
    "c": (["-x", "c", "-std=c11"], ["string.h", "driver/kq_driver.h"]),
    "cpp": (["-x", "c++", "-std=c++20"],
            ["iostream", "string", "configurator/kq_cfg.h", "driver/kq_drv.h", "driver/value_scalars.h",
             "platform/base/code_page.h", "platform/os/modules.h", "scanner/par_scanner.h"]),
}
DEFINITION = re.compile(r"(?!(?:if|for|while|switch|else|do)\b)"
                        r"(?:class|struct|enum|namespace|static|extern|typedef|using|KQ_\w+|[\w:<>*& ]+ [\w:*&]+\(.*\{)")


def source_of(block, headers):
    """The block as a source file whose error messages name the line of the page."""
    position = f'#line {block.line} "{block.page}"\n'
    if "#include" in block.text:
        return position + block.text
    preamble = "".join(f"#include <{header}>\n" for header in headers)
    if any(DEFINITION.match(line) for line in block.lines):
        return preamble + position + block.text
    return preamble + "void Fragment(void);\nvoid Fragment(void) {\n" + position + block.text + "}\n"


def main():
    root, public_headers, compiler = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    compiled = failed = 0
    for page in fences.pages_of(root):
        for block in fences.read_blocks(page):
            if block.language not in LANGUAGES:
                continue
            options, headers = LANGUAGES[block.language]
            result = subprocess.run(
                [compiler, *options, "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Wno-unused-parameter",
                 "-Wno-unused-function", "-Werror", "-I", public_headers, "-"],
                input=source_of(block, headers), text=True, check=False)
            compiled += 1
            failed += result.returncode != 0
    print(f"{compiled} blocks compiled, {failed} failed")
    return 1 if failed or not compiled else 0


sys.exit(main())

#!/usr/bin/env python3
"""Fails if a folder includes what it mustn't know. Takes the root of the sources. docs/architecture.md
explains the order of the folders."""
import pathlib
import re
import sys

# Each folder with the folders it may include beside its own. What takes pictures drives the window as tests do.
PLATFORM = ["platform/base", "platform/os", "platform/view"]
BELOW_MODEL = [*PLATFORM, "scanner", "driver", "template/language", "driver/channels"]
ALLOWED = {
    "platform/base": [],
    "platform/os": ["platform/base"],
    "platform/view": ["platform/base"],
    "scanner": PLATFORM,
    "driver": [*PLATFORM, "scanner"],
    "template/language": [*PLATFORM, "scanner"],
    "driver/channels": [*PLATFORM, "scanner", "driver", "template/language"],
    "model": BELOW_MODEL,
    "template": [*BELOW_MODEL, "model"],
    "configurator": [*BELOW_MODEL, "model", "template"],
    "desktop/peers": ["platform/base", "platform/view"],
    "desktop/kqconf": ["desktop/peers", *PLATFORM, "template/language", "configurator"],
    "desktop/shots": ["desktop/kqconf", "tests/desktop"],
    "tools": [*PLATFORM, "template/language", "scanner", "driver", "driver/channels", "configurator"],
}
# Single files that reach further: the one that compiles templates for the model, and the header of all driver access.
EXCEPTIONS = {("model/sheet_data_templates.cpp", "template"), ("driver/kq_drv.h", "driver/channels")}



def folder_of(name):
    """The innermost of the folders that holds a file; the file's own folder where it is none of them."""
    matching = [folder for folder in ALLOWED if name.startswith(folder + "/")]
    return max(matching, key=len, default=name.rpartition("/")[0])


root = pathlib.Path(sys.argv[1])
failures = 0
for top in sorted({folder.split("/")[0] for folder in ALLOWED}):
    for path in sorted(root.glob(f"{top}/**/*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        name = path.relative_to(root).as_posix()
        folder = folder_of(name)
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = re.match(r'\s*#\s*include\s+"([^"]+)/', line)
            if not match:
                continue
            target = folder_of(match[1] + "/")
            if target != folder and target not in ALLOWED[folder] and (name, target) not in EXCEPTIONS:
                print(f"{name}:{number}: {folder} may not include {target}")
                failures += 1
sys.exit(failures != 0)

"""Fails for a file under src that includes from a folder its own one may not use.

A folder may use those that its CMakeLists.txt links, and what those may use. All folders share one
include path, so the compiler itself lets a header in from anywhere.
"""

import pathlib
import re
import sys

source = pathlib.Path(sys.argv[1])
folders = {path.parent.name: path for path in source.glob("*/CMakeLists.txt")}
links = {
    name: set(re.findall(r"\btirlo_(\w+)", path.read_text())) & set(folders)
    for name, path in folders.items()
}


def allowed(folder):
    reached, open_ends = {folder}, [folder]
    while open_ends:
        new = links[open_ends.pop()] - reached
        reached |= new
        open_ends += new
    return reached


wrong = []
checked = 0
for name in folders:
    permitted = allowed(name)
    for path in sorted((source / name).rglob("*")):
        if path.suffix not in {".cpp", ".h"}:
            continue
        for number, line in enumerate(path.read_text().splitlines(), 1):
            included = re.match(r'#include "(\w+)/', line)
            if included and included[1] in folders:
                checked += 1
                if included[1] not in permitted:
                    wrong.append(f"{path.relative_to(source)}:{number}: {line}")

for line in wrong:
    print(line)
if not checked:
    print("no include was found")
sys.exit(bool(wrong) or not checked)

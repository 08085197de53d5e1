"""Fails for a file under src that includes from a library its own one may not use.

A library is a folder with a CMakeLists.txt; it may use those that this links, and what those may use;
all of them are built before it. All share one include path, so the compiler itself lets a header in
from anywhere.
"""

import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1])
source = root / "src"


def lines(path):
    return path.read_text(encoding="utf-8").splitlines()


def commands(path):
    return " ".join(line.split("#")[0] for line in lines(path))


order = re.findall(r"add_subdirectory\(src/([\w/]+)\)", commands(root / "CMakeLists.txt"))
by_target = {folder.split("/")[-1]: folder for folder in order}


def library_of(path):
    """The innermost library that a path under src lies in, or None."""
    fitting = [folder for folder in order if pathlib.PurePath(path).is_relative_to(folder)]
    return max(fitting, key=len, default=None)


reach = {}
wrong = []
checked = 0
for folder in order:
    linked = {by_target[target] for target in
              re.findall(r"\btirlo_(\w+)", commands(source / folder / "CMakeLists.txt"))
              if target in by_target}
    for above in linked - set(reach) - {folder}:
        wrong.append(f"src/{folder} links {above}, which stands above it")
    reach[folder] = {folder}.union(*(reach.get(below, set()) for below in linked))
    for path in sorted((source / folder).rglob("*")):
        if path.suffix not in {".cpp", ".h"} or library_of(path.relative_to(source)) != folder:
            continue
        for number, line in enumerate(lines(path), 1):
            included = re.match(r'#include "([\w./]+/[\w.]+)"', line)
            if not included:
                continue
            beside = path.parent / included[1]
            target = beside.relative_to(source) if beside.exists() else included[1]
            library = None if ".." in included[1] else library_of(target)
            checked += 1
            if library not in reach[folder]:
                wrong.append(f"{path.relative_to(root)}:{number}: {line}")

for line in wrong:
    print(line)
if not checked:
    print("no include was found")
sys.exit(bool(wrong) or not checked)

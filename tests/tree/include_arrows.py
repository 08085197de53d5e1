"""Fails for a file under src that includes from a folder its own one may not use.

A folder may use those that its CMakeLists.txt links, and what those may use; all of them are built
before it. All folders share one include path, so the compiler itself lets a header in from anywhere.
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


order = re.findall(r"add_subdirectory\(src/(\w+)\)", commands(root / "CMakeLists.txt"))
reach = {}
wrong = []
checked = 0
for name in order:
    linked = set(re.findall(r"\btirlo_(\w+)", commands(source / name / "CMakeLists.txt")))
    for above in linked & set(order) - set(reach) - {name}:
        wrong.append(f"src/{name} links {above}, which stands above it")
    reach[name] = {name}.union(*(reach.get(below, set()) for below in linked))
    for path in sorted((source / name).rglob("*")):
        if path.suffix not in {".cpp", ".h"}:
            continue
        for number, line in enumerate(lines(path), 1):
            included = re.match(r'#include "([\w.]+)/', line)
            if included and (included[1] in order or included[1] == ".."):
                checked += 1
                if included[1] not in reach[name]:
                    wrong.append(f"{path.relative_to(root)}:{number}: {line}")

for line in wrong:
    print(line)
if not checked:
    print("no include was found")
sys.exit(bool(wrong) or not checked)

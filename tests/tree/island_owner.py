"""Fails for a file under src, but outside src/island, that writes the island's mode or view.

The store lets nobody but IslandWriter change them; this keeps it so, and the writer where it is.
"""

import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1])
store = "src/core/AppState.h"
own = {"src/core/AppState.cpp", "src/core/Settings.cpp"}
owned = {"mode": "IslandMode", "view": "IslandView"}
target = r"(?:mode|view)(?:\.setValue\(|\s*=(?!=))"
write = re.compile(rf"\bIslandWriter\b|\b(?:m_)?state(?:\.|->){target}")
inside = re.compile(rf"^\s*(?:this->)?{target}")

wrong = []
checked = 0
for path in sorted((root / "src").rglob("*")):
    name = path.relative_to(root).as_posix()
    if path.suffix not in {".cpp", ".h"} or name == store or name.startswith("src/island/"):
        continue
    checked += 1
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if write.search(line) or (name in own and inside.search(line)):
            wrong.append(f"{name}:{number}: {line.strip()}")

declared = (root / store).read_text(encoding="utf-8")
for field, kind in owned.items():
    if not re.search(rf"OwnedProperty<{kind}, IslandWriter> {field}\b", declared):
        wrong.append(f"{store}: {field} is no property of the island's")

for line in wrong:
    print(line)
sys.exit(bool(wrong) or not checked)

"""Fails for a file, command or name that the documents tell of and that is not there.

Looked at are links, the words of command lines, and what stands between backticks: paths, and names
of our types.
"""

import json
import pathlib
import re
import sys

root, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
wrong = []
checked = 0
presets = json.loads((root / "CMakePresets.json").read_text(encoding="utf-8"))
presets = {preset["name"] for preset in presets["configurePresets"]}
tops = {path.name for path in root.iterdir()}
sources = [path for folder in ("src", "tests", "tools", "benchmarks")
           for path in (root / folder).rglob("*") if path.is_file()]
stems = {path.stem for path in sources}
code = "\n".join(path.read_text(encoding="utf-8") for path in sources
                 if path.suffix in {".h", ".cpp", ".py", ".cmake"} or path.name == "CMakeLists.txt")
words = set(re.findall(r"\w+", code))


def exists(path):
    """A path of the tree, of a build of it, or of a source without its ending."""
    path = path.rstrip("/")
    if path.startswith("build/"):
        _, preset, *inner = path.split("/", 2)
        if preset == build.name:
            return not inner or (build / inner[0]).exists()
        # Of another build there may be none here; its folders are those of the tree.
        return preset in ("found", "pictures") or (preset in presets and (root / inner[0]).parent.exists())
    return any(list(base.parent.glob(base.name + ending)) for base in (root / path, root / "src" / path)
               for ending in ("", ".h", ".cpp"))


def check(page, text, fine):
    global checked
    checked += 1
    if not fine:
        wrong.append(f"{page.relative_to(root)}: {text} is not there")


for page in [*root.glob("*.md"), *(root / "docs").glob("*.md")]:
    text = page.read_text(encoding="utf-8")
    for link in re.findall(r"\]\(([^):]+)\)", text):
        check(page, link, (page.parent / link).exists())

    blocks = re.findall(r"^```sh\n(.*?)^```", text, re.MULTILINE | re.DOTALL)
    prose = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
    spans = re.findall(r"`([^`\n]+)`", prose)
    for command in [*"\n".join(blocks).splitlines(), *spans]:
        command = re.sub(r"\s#.*", "", command)
        for word in re.findall(r"(?:^|[\s=])(?:\./)?([\w.+-]+(?:/[\w.+-]+)*/?)(?=\s|$)", command):
            is_path = "/" in word and word.split("/")[0] in tops | {p.name for p in (root / "src").iterdir()}
            if is_path or command.startswith(f"./{word}"):
                check(page, word, exists(word))
    for option in re.findall(r"\./(run|test) (--[\w-]+)", text):
        check(page, " ".join(option), option[1] in (root / option[0]).read_text(encoding="utf-8"))
    for span in spans:
        if re.fullmatch(r"[A-Z]\w*[a-z]\w*", span):
            check(page, span, span in words or span in stems)

print("\n".join(wrong) or f"{checked} mentions are true")
sys.exit(bool(wrong) or checked < 40)

"""Fails for a library or program that the build or the scripts ask for and tools/setup does not bring.

Which package a thing is in, and what that brings along, is asked of dpkg: a machine that has grown
packages over time finds all kinds of things that a new one lacks. Fails as well where tools/setup and
docs/dependencies.md name different packages.
"""

import functools
import pathlib
import re
import subprocess
import sys

root = pathlib.Path(sys.argv[1])
wrong = []
checked = 0


def printed(*command):
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    return done.stdout if done.returncode == 0 else ""


def read(path):
    return path.read_text(encoding="utf-8")


# The packages, and what they bring along.

dependencies = {}
essential = set()
for line in printed("dpkg-query", "-W", "-f",
                    "${Package}\t${Essential}\t${Provides}\t${Pre-Depends}, ${Depends}\n").splitlines():
    package, is_essential, provides, needs = line.split("\t")
    if is_essential == "yes":
        essential.add(package)
    dependencies[package] = set(re.findall(r"[a-z0-9][a-z0-9+.-]+", re.sub(r"\(.*?\)|:\w+", "", needs)))
    for provided in re.findall(r"[a-z0-9][a-z0-9+.-]+", re.sub(r"\(.*?\)", "", provides)):
        dependencies.setdefault(provided, set()).add(package)


def with_dependencies(packages):
    found, left = set(), set(packages)
    while left:
        package = left.pop()
        found.add(package)
        left |= dependencies.get(package, set()) - found
    return found


setup = read(root / "tools/setup")
lists = dict(re.findall(r"^(\w+)=\(\n(.*?)^\)", setup, re.MULTILINE | re.DOTALL))


def packages_of(name):
    words = set(lists[name].split())
    inner = {word for word in words if word.startswith('"')}
    return (words - inner).union(*(packages_of(word[3:-5]) for word in inner))


base = with_dependencies(essential | {"apt"})
groups = {
    "program": packages_of("program"),
    "display": packages_of("program") | packages_of("display"),
    "demo": packages_of("program") | packages_of("demo"),
    "tests": packages_of("tests"),
    "tidy": packages_of("program") | packages_of("tidy"),
}
brought = {name: base | with_dependencies(packages) for name, packages in groups.items()}


def group_of(path):
    name = str(path.relative_to(root))
    if name.startswith(("tools/fresh-machine", "tools/desktop-kinds")):
        return None  # says itself what it needs, of developers alone
    if name in ("run", "tools/setup", "tools/build", "CMakeLists.txt") or name.startswith(("src/", "cmake/")):
        return "program"
    if name == "tools/tidy":
        return "tidy"
    if name in ("tools/stage", "tools/desktops", "tools/with-pictures"):
        return "display"
    return "demo" if name.startswith(("tools/demo/", "tests/e2e/kit/")) else "tests"


@functools.cache
def package_with(path):
    for name in {path, path.resolve(), pathlib.Path(str(path).removeprefix("/usr"))}:
        owners = [line for line in printed("dpkg", "-S", str(name)).splitlines()
                  if not line.startswith("diversion ")]
        if owners:
            return owners[0].split(":")[0]
    return None


def demand(where, thing, file):
    global checked
    group = group_of(where)
    if group is None:
        return
    checked += 1
    package = package_with(file) if file else None
    if package is None:
        wrong.append(f"{where.relative_to(root)} asks for {thing}, which no package here has")
    elif package not in brought[group]:
        wrong.append(f"{where.relative_to(root)} asks for {thing}, so tools/setup needs {package} in {group}")


def first(*patterns):
    return next((file for pattern in patterns for file in sorted(pathlib.Path("/usr").glob(pattern))), None)


def program(name):
    return first(f"bin/{name}", f"sbin/{name}")


# What CMake asks for.

for path in [root / "CMakeLists.txt", *(root / "cmake").glob("*.cmake"),
             *(file for folder in ("src", "tests", "tools", "benchmarks")
               for file in (root / folder).rglob("CMakeLists.txt"))]:
    text = re.sub(r"#.*", "", read(path))
    for name, rest in re.findall(r"find_package\((\w+)([^)]*)\)", text):
        if name == "PkgConfig":
            demand(path, name, program("pkg-config"))
        elif name != "Threads":
            components = rest.partition("COMPONENTS")[2].split() or [""]
            for part in components:
                demand(path, name + part, first(f"lib/*/cmake/{name}{part}/{name}{part}Config.cmake"))
    for modules in re.findall(r"pkg_check_modules\(\w+ REQUIRED IMPORTED_TARGET ([^)]*)\)", text):
        for module in modules.split():
            demand(path, module, first(f"lib/*/pkgconfig/{module}.pc", f"share/pkgconfig/{module}.pc"))
    for name in re.findall(r"find_program\(\w+ ([\w.+-]+)", text):
        demand(path, name, program(name))
    if "GTest::gmock" in text:
        demand(path, "GTest::gmock", first("include/gmock/gmock.h"))

presets = root / "CMakePresets.json"
for name in re.findall(r'"CMAKE_CXX_COMPILER": "([^"]+)"', read(presets)):
    demand(presets, name, program(name))
demand(root / "CMakeLists.txt", "a compiler", program("g++"))
demand(root / "CMakeLists.txt", "Ninja", program("ninja"))

# What scripts run: words in the place of a command, shell's own and our functions apart.

BEFORE = (r"(?:^|[|;&(!]|\bthen|\bdo|\bif|\bwhile|\buntil|\belse)\s*"
          r"(?:(?:exec|command -v|become|become_part|setsid|xargs|timeout \S+|within \S+)\s+)*")
# Whoever is root needs no sudo.
NOT_PROGRAMS = set(printed("bash", "-c", "compgen -bk").split()) | {"sudo"}

scripts = [path for path in [root / "run", root / "test", *(root / ".ci").iterdir(),
                             *(file for folder in ("tools", "tests", "benchmarks")
                               for file in (root / folder).rglob("*") if file.is_file())]
           if path.suffix in ("", ".sh", ".py") and read(path).startswith("#!")]
for path in scripts:
    text = read(path)
    interpreter = re.match(r"#!(?:/usr/bin/env )?(?:\S*/)?(\S+)", text)[1]
    demand(path, interpreter, program(interpreter))
    if interpreter not in ("sh", "bash"):
        continue
    own = set(re.findall(r"^(\w+)\(\)", text, re.MULTILINE))
    code = re.sub(r"^\w+=\(\n.*?^\)", "", text, flags=re.MULTILINE | re.DOTALL)
    code = re.sub(r"(^|\s)#.*", "", code)
    for name in re.findall(BEFORE + r"([a-zA-Z][\w.+-]*)(?=[\s)]|$)(?!\s*\))", code, re.MULTILINE):
        if name not in NOT_PROGRAMS | own and program(name):
            demand(path, name, program(name))

# What our own programs start.

for folder in ("src", "tests", "tools", "benchmarks"):
    for path in (root / folder).rglob("*.[ch]*"):
        for name in re.findall(
                r'(?:execute|start|startDetached|setProgram|findExecutable|runs?)\(\s*(?:QStringLiteral\()?"([\w.+-]+)"',
                read(path)):
            if program(name):
                demand(path, name, program(name))

# What is told about them.

told = set(re.findall(r"^\| `([^`]+)` \|", read(root / "docs/dependencies.md"), re.MULTILINE))
listed = set().union(*groups.values())
wrong += [f"docs/dependencies.md does not tell why {name} is needed" for name in sorted(listed - told)]
wrong += [f"docs/dependencies.md tells of {name}, which tools/setup has not" for name in sorted(told - listed)]

print("\n".join(wrong) or f"{checked} demands are met by {len(listed)} packages")
sys.exit(bool(wrong) or checked < 40)

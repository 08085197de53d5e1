"""What a user of the stage's desktop sees and does: controls, clicks, keys and pictures."""

import ctypes
import subprocess
import time
from typing import NamedTuple

SHOWING = 25  # ATSPI_STATE_SHOWING
SCREEN = 0  # ATSPI_COORD_TYPE_SCREEN
# A button of a request acts only once its card has been seen.
SEEN_SECONDS = 1.2


class Control(NamedTuple):
    """One control as the accessibility bus tells of it; its place is in screen pixels."""

    role: str
    name: str
    content: str
    x: int
    y: int
    width: int
    height: int

    @property
    def middle(self):
        return self.x + self.width // 2, self.y + self.height // 2


class Rect(ctypes.Structure):
    _fields_ = [(name, ctypes.c_int) for name in ("x", "y", "width", "height")]


def library():
    atspi = ctypes.CDLL("libatspi.so.0")
    pointers = {
        "atspi_get_desktop": [ctypes.c_int],
        "atspi_accessible_get_child_at_index": [ctypes.c_void_p, ctypes.c_int, ctypes.c_void_p],
        "atspi_accessible_get_name": [ctypes.c_void_p, ctypes.c_void_p],
        "atspi_accessible_get_role_name": [ctypes.c_void_p, ctypes.c_void_p],
        "atspi_accessible_get_state_set": [ctypes.c_void_p],
        "atspi_accessible_get_text_iface": [ctypes.c_void_p],
        "atspi_accessible_get_component_iface": [ctypes.c_void_p],
        "atspi_text_get_text": [ctypes.c_void_p, ctypes.c_int, ctypes.c_int, ctypes.c_void_p],
    }
    for name, arguments in pointers.items():
        function = getattr(atspi, name)
        function.restype, function.argtypes = ctypes.c_void_p, arguments
    integers = {
        "atspi_accessible_get_child_count": [ctypes.c_void_p, ctypes.c_void_p],
        "atspi_accessible_get_process_id": [ctypes.c_void_p, ctypes.c_void_p],
        "atspi_state_set_contains": [ctypes.c_void_p, ctypes.c_int],
        "atspi_text_get_character_count": [ctypes.c_void_p, ctypes.c_void_p],
        "atspi_accessible_clear_cache": [ctypes.c_void_p],
    }
    for name, arguments in integers.items():
        getattr(atspi, name).argtypes = arguments
    extents = atspi.atspi_component_get_extents
    extents.restype = ctypes.POINTER(Rect)
    extents.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_void_p]
    atspi.atspi_init()
    return atspi


class Screen:
    """The controls of one program, and the hands of its user."""

    def __init__(self, process_id):
        self.process_id = process_id
        self.atspi = library()

    def children(self, node):
        for index in range(self.atspi.atspi_accessible_get_child_count(node, None)):
            child = self.atspi.atspi_accessible_get_child_at_index(node, index, None)
            if child:
                self.atspi.atspi_accessible_clear_cache(child)
                yield child

    def text(self, pointer):
        return ctypes.string_at(pointer).decode(errors="replace") if pointer else ""

    def control(self, node):
        component = self.atspi.atspi_accessible_get_component_iface(node)
        place = self.atspi.atspi_component_get_extents(component, SCREEN, None) if component else None
        box = place.contents if place else Rect()
        text = self.atspi.atspi_accessible_get_text_iface(node)
        length = self.atspi.atspi_text_get_character_count(text, None) if text else 0
        content = self.atspi.atspi_text_get_text(text, 0, min(length, 10000), None) if length > 0 else None
        return Control(
            self.text(self.atspi.atspi_accessible_get_role_name(node, None)),
            self.text(self.atspi.atspi_accessible_get_name(node, None)),
            self.text(content),
            box.x, box.y, box.width, box.height,
        )

    def controls(self):
        """Each control on show of the program, parents first."""
        desktop = self.atspi.atspi_get_desktop(0)
        self.atspi.atspi_accessible_clear_cache(desktop)
        # The program itself is never "showing"; its windows are.
        waiting = [window for application in self.children(desktop)
                   if self.atspi.atspi_accessible_get_process_id(application, None) == self.process_id
                   for window in self.children(application)]
        while waiting:
            node = waiting.pop(0)
            states = self.atspi.atspi_accessible_get_state_set(node)
            if not self.atspi.atspi_state_set_contains(states, SHOWING):
                continue
            yield self.control(node)
            waiting[:0] = self.children(node)

    def words(self):
        """All that the program says now, one control a line."""
        lines = []
        for control in self.controls():
            said = " ".join(filter(None, (control.name, control.content)))
            if said:
                lines.append(f"{control.role}: {said}")
        return lines

    def wait(self, condition, seconds, what):
        end = time.monotonic() + seconds
        while not (found := condition()):
            if time.monotonic() > end:
                raise TimeoutError(f"{what} did not come within {seconds} s")
            time.sleep(0.05)
        return found

    def find(self, name):
        for control in self.controls():
            if control.name == name and control.width > 0:
                return control
        return None

    def says(self, words):
        return any(words in line for line in self.words())

    def wait_for(self, words, seconds=20):
        return self.wait(lambda: self.says(words), seconds, f"“{words}” on the island")

    def wait_gone(self, words, seconds=20):
        return self.wait(lambda: not self.says(words), seconds, f"the end of “{words}”")

    def click(self, name, seconds=20):
        """Clicks the control once it has stood still for long enough to be seen."""
        place, since = None, time.monotonic()

        def at_rest():
            nonlocal place, since
            found = self.find(name)
            if found is None or found.middle != place:
                place, since = found and found.middle, time.monotonic()
            return place and time.monotonic() - since > SEEN_SECONDS

        self.wait(at_rest, seconds, f"the button “{name}”")
        self.click_at(*place)

    def click_at(self, x, y):
        run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def move(self, x, y):
        run("xdotool", "mousemove", str(x), str(y))

    def wheel(self):
        run("xdotool", "click", "5")

    def keys(self, *names):
        run("xdotool", "key", *names)

    def type(self, text):
        run("xdotool", "type", "--delay", "20", text)

    def picture(self, path):
        """Keeps a picture of the screen's upper part."""
        run("import", "-window", "root", "-crop", "860x620+210+0", "+repage", str(path))


def run(*command):
    subprocess.run(command, check=True, timeout=20)

#!/usr/bin/python3
"""Contract: a screen reader that walks the main window over the desktop's accessibility bus
finds a name to speak on every control a player can reach (the answer fields and the score
table by their labels or names), the four levels as radio buttons, the shortcut of each menu
command that has one, and Sound On and Sound Off as a pair: one checked, and choosing the
other checks it alone."""
import os
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from screen_capture import main_window, running, x_server  # noqa: E402

CONTROL_ROLES = {"push button", "radio button", "check box", "text", "table", "list"}
LEVELS = {"Easy", "Medium", "Hard", "Very Hard"}
SHORTCUTS = {"Quit": "Ctrl+Q", "Undo": "Ctrl+Z", "Cut": "Ctrl+X", "Copy": "Ctrl+C",
             "Paste": "Ctrl+V", "Select All": "Ctrl+A"}
# The controls without a caption, by the names they are spoken by.
NAMED = {"Sub Answer 1": "text", "Sub Answer 2": "text", "Answer": "text", "High Scores": "table"}


def descendants(node):
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is not None:
            yield child
            yield from descendants(child)


def shortcut_of(item):
    try:
        actions = item.queryAction()
    except NotImplementedError:
        return ""
    return actions.getKeyBinding(0) if actions.nActions else ""


def sound_checks(menu_items):
    import pyatspi
    return tuple(menu_items[name].getState().contains(pyatspi.STATE_CHECKED)
                 for name in ("Sound On", "Sound Off"))


def problems_of(application):
    import pyatspi
    nodes = list(descendants(application))
    named = {}
    for node in nodes:
        role = node.getRoleName()
        if role in CONTROL_ROLES and not node.name.strip():
            at = node.queryComponent().getExtents(pyatspi.WINDOW_COORDS)
            yield f"the {role} at ({at.x}, {at.y}) in its window has no accessible name"
        if node.name in LEVELS and role != "radio button":
            yield f"the level '{node.name}' is a {role}, not a radio button"
        named.setdefault(node.name, role)
    for name, role in NAMED.items():
        if named.get(name) != role:
            yield f"no {role} is named '{name}'"
    menu_items = {node.name: node for node in nodes if node.getRoleName() == "menu item"}
    for command, keys in SHORTCUTS.items():
        if command not in menu_items or keys not in shortcut_of(menu_items[command]):
            yield f"the menu command '{command}' does not show {keys}"
    # Sound is on by default; choosing Sound Off as a screen reader does moves the check.
    if sound_checks(menu_items) != (True, False):
        yield f"Sound On and Sound Off are checked {sound_checks(menu_items)} at start"
    menu_items["Sound Off"].queryAction().doAction(0)
    if sound_checks(menu_items) != (False, True):
        yield f"Sound On and Sound Off are checked {sound_checks(menu_items)} after Sound Off"


def examine(game):
    """Runs inside a session bus of its own, which ends with this process."""
    bus = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
    try:
        with x_server() as display, \
             running([game], display, {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}) as program:
            main_window(display, program)
            import pyatspi  # connects to the accessibility bus as it loads
            desktop = pyatspi.Registry.getDesktop(0)
            games = [app for app in descendants(desktop) if app.getRoleName() == "application"
                     and app.get_process_id() == program.pid]
            if not games:
                return ["the game is not on the accessibility bus"]
            return list(problems_of(games[0]))
    finally:
        bus.terminate()
        bus.wait()


def main(game):
    if os.environ.get("CORVALTA_IN_SESSION_BUS") != "1":
        env = dict(os.environ, CORVALTA_IN_SESSION_BUS="1")
        return subprocess.run(["dbus-run-session", "--", sys.executable, __file__, game],
                              env=env, check=False).returncode
    problems = examine(game)
    for problem in problems:
        print("FAIL:", problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))

#!/usr/bin/python3
"""Contract: a screen reader that walks the main window over the desktop's accessibility bus
finds a name to speak on every control a player can reach, the four levels as radio buttons,
and the shortcut of each menu command that has one."""
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


def place_of(node):
    import pyatspi
    extents = node.queryComponent().getExtents(pyatspi.WINDOW_COORDS)
    return f"({extents.x}, {extents.y})"


def problems_of(application):
    nodes = list(descendants(application))
    for node in nodes:
        role = node.getRoleName()
        if role in CONTROL_ROLES and not node.name.strip():
            yield f"the {role} at {place_of(node)} in its window has no accessible name"
        if node.name in LEVELS and role != "radio button":
            yield f"the level '{node.name}' is a {role}, not a radio button"
    menu_items = {node.name: node for node in nodes if node.getRoleName() == "menu item"}
    for command, keys in SHORTCUTS.items():
        if command not in menu_items or keys not in shortcut_of(menu_items[command]):
            yield f"the menu command '{command}' does not show {keys}"


def inspect(game):
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
    problems = inspect(game)
    for problem in problems:
        print("FAIL:", problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))

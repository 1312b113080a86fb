"""Start a program on an X server of its own and photograph its main window once it is painted."""
import contextlib
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

WINDOW_TITLE = "Corvalta"
# Only a guard against a hang: a window that never appears fails the run after this long.
PATIENCE_SECONDS = 120


class Image:
    """A picture as 8-bit RGB rows, read from a binary PPM."""

    def __init__(self, ppm: bytes):
        fields = re.match(rb"P6\s+(\d+)\s+(\d+)\s+(\d+)\s", ppm)
        if not fields or fields.group(3) != b"255":
            raise ValueError("not an 8-bit binary PPM")
        self.width, self.height = int(fields.group(1)), int(fields.group(2))
        self.ppm = ppm
        self.pixels = ppm[fields.end():]

    def pixel(self, x: int, y: int) -> tuple:
        at = 3 * (y * self.width + x)
        return tuple(self.pixels[at:at + 3])

    def colour_count(self) -> int:
        return len({self.pixels[i:i + 3] for i in range(0, len(self.pixels), 3)})

    def write_png(self, path) -> None:
        pathlib.Path(path).parent.mkdir(parents=True, exist_ok=True)
        with open(path, "wb") as out:
            subprocess.run(["pnmtopng"], input=self.ppm, stdout=out, check=True)


@contextlib.contextmanager
def x_server(prefix=()):
    """An Xvfb on a free display number, started through PREFIX (a chroot, say); yields the
    display name and stops it by its PID."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        [*prefix, "Xvfb", "-displayfd", str(write_end), "-screen", "0", "1600x1000x24",
         "-nolisten", "tcp", "-noreset"],
        pass_fds=(write_end,), stderr=subprocess.DEVNULL)
    os.close(write_end)
    try:
        with os.fdopen(read_end) as announced:
            number = announced.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        yield f":{number}"
    finally:
        server.terminate()
        server.wait()


@contextlib.contextmanager
def running(command, display, extra_env=None):
    """COMMAND on DISPLAY with a home and configuration folder of its own, as a desktop starts
    it; stopped by its PID when the block ends."""
    with tempfile.TemporaryDirectory() as home:
        env = {k: v for k, v in os.environ.items() if k != "QT_QPA_PLATFORM"}
        # Qt's X11 start-up hands strndup an unterminated buffer with its length, which is
        # correct C but what ASan's strict string checks abort on.
        if "ASAN_OPTIONS" in env:
            env["ASAN_OPTIONS"] += ":strict_string_checks=0"
        runtime = os.path.join(home, "runtime")
        os.mkdir(runtime, 0o700)
        env.update(DISPLAY=display, HOME=home, XDG_CONFIG_HOME=os.path.join(home, ".config"),
                   XDG_RUNTIME_DIR=runtime)
        env.update(extra_env or {})
        log = open(os.path.join(home, "output.log"), "w+")
        program = subprocess.Popen(command, env=env, stdout=log, stderr=subprocess.STDOUT)
        try:
            yield program
        except BaseException:
            log.seek(0)
            sys.stderr.write(log.read())
            raise
        finally:
            program.terminate()
            program.wait()
            log.close()


def window_id(display):
    """The largest top-level window of that title: Qt also makes a hidden 1x1 window of it."""
    listing = subprocess.run(["xwininfo", "-display", display, "-root", "-children"],
                             capture_output=True, text=True).stdout
    found = re.findall(rf'(0x[0-9a-f]+) "{WINDOW_TITLE}": \(.*\)\s+(\d+)x(\d+)', listing)
    if not found:
        return None
    return max(found, key=lambda window: int(window[1]) * int(window[2]))[0]


def grab(display, window):
    dump = subprocess.run(["xwd", "-display", display, "-silent", "-id", window],
                          capture_output=True)
    if dump.returncode != 0:
        return None
    converted = subprocess.run(["xwdtopnm"], input=dump.stdout, capture_output=True)
    return Image(converted.stdout) if converted.returncode == 0 else None


def main_window(display, program, unlike=None) -> Image:
    """The main window once it shows more than a blank fill, differs from UNLIKE, and two looks
    in a row agree; a window that keeps changing (a blinking caret) is taken after a few looks."""
    deadline = time.monotonic() + PATIENCE_SECONDS
    painted = []
    while time.monotonic() < deadline:
        if program.poll() is not None:
            raise RuntimeError(f"the program ended with {program.returncode}")
        window = window_id(display)  # asked anew: the main window may not be up at first
        shot = grab(display, window) if window else None
        if shot and shot.colour_count() > 8 and not (unlike and shot.pixels == unlike.pixels):
            if (painted and shot.pixels == painted[-1].pixels) or len(painted) == 10:
                return shot
            painted.append(shot)
        time.sleep(0.2)
    raise RuntimeError(f"no painted window '{WINDOW_TITLE}' within {PATIENCE_SECONDS} s")


def press_key(display, key):
    """A real key press (XTEST) in the main window, as a player's keyboard makes it."""
    subprocess.run(["xdotool", "windowfocus", "--sync", str(int(window_id(display), 16)),
                    "key", key], env=dict(os.environ, DISPLAY=display), check=True)

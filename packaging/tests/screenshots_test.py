#!/usr/bin/python3
"""Contract: the main window, in a light and a dark desktop style and at twice the scale, shows
each caption, and once Return has started a game each number of the problem, in strong contrast
to what lies behind it, and the chosen level's dot at 3:1 against its ring; at scale 2 it takes
exactly twice the room with its text drawn anew rather than enlarged. Both looks are saved as PNG in the given folder."""
import collections
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from screen_capture import main_window, press_key, running, x_server  # noqa: E402

WIDTH, HEIGHT = 600, 325
# A dark or light desktop as GNOME users have it: Qt takes its palette from the GTK theme.
STYLES = {
    "light": {"QT_QPA_PLATFORMTHEME": "gtk3", "GTK_THEME": "Adwaita"},
    "dark": {"QT_QPA_PLATFORMTHEME": "gtk3", "GTK_THEME": "Adwaita:dark"},
    "scale2": {"QT_QPA_PLATFORMTHEME": "gtk3", "GTK_THEME": "Adwaita", "QT_SCALE_FACTOR": "2"},
}
# Boxes of the window's content (x, y, width, height at scale 1) that hold text: at start-up,
# and during a game, when the level group and Start are disabled and need not stand out.
IDLE_TEXTS = {
    "Op1": (59, 52, 20, 20),
    "Difficulty Level": (208, 20, 110, 16),
    "Easy": (216, 40, 88, 20),
    "Very Hard": (216, 118, 88, 20),
    "Start": (224, 159, 80, 20),
    "Countdown": (208, 224, 110, 20),
    "Time": (243, 243, 40, 30),
    "High Scores": (370, 16, 210, 20),
    "Clear Scores": (425, 222, 100, 20),
    "GamePoints": (358, 279, 42, 20),
    "Points This Game": (405, 275, 175, 30),
}
GAME_TEXTS = {
    "Afield": (20, 20, 35, 20),
    "Bfield": (86, 20, 35, 20),
    "Cfield": (152, 20, 35, 20),
    "Op2": (127, 52, 20, 20),
    "Stop": (224, 195, 80, 20),
    "Time": (243, 243, 40, 30),
}
# Normal-size text needs a contrast ratio of 4.5 to be read with ease.
LEAST_CONTRAST = 4.5
# What shows a control's state: the dot inside the chosen level's ring (Easy, the first run's
# level), against the ring's fill.
LEVEL_DOT = (219, 46, 8, 8)
LEAST_MARK_CONTRAST = 3.0


def luminance(colour):
    def linear(channel):
        c = channel / 255
        return c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4
    r, g, b = (linear(c) for c in colour)
    return 0.2126 * r + 0.7152 * g + 0.0722 * b


def contrast(a, b):
    light, dark = sorted((luminance(a), luminance(b)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


def box_pixels(shot, box, scale):
    """The pixels of a content box; the menu bar above the content is what the shot has more
    than the content's height."""
    x, y, w, h = (v * scale for v in box)
    top = shot.height - HEIGHT * scale
    return [shot.pixel(px, top + py) for py in range(y, y + h) for px in range(x, x + w)]


def text_contrast(pixels):
    """Contrast between the commonest colour (the ground) and the colour farthest from it that
    covers enough pixels to be strokes of text rather than a smoothed edge."""
    counts = collections.Counter(pixels)
    ground = counts.most_common(1)[0][0]
    strokes = [c for c, n in counts.items() if c != ground and n >= max(3, len(pixels) // 200)]
    return max((contrast(ground, c) for c in strokes), default=1.0)


def drawn_anew_share(shot, box):
    """Of the 2x2 blocks of a box at scale 2 that are not plain ground, the share whose four
    pixels differ: an enlarged scale-1 picture has none."""
    pixels, w, h = box_pixels(shot, box, 2), box[2] * 2, box[3] * 2
    ground = collections.Counter(pixels).most_common(1)[0][0]
    blocks = [{pixels[(y + dy) * w + x + dx] for dx in (0, 1) for dy in (0, 1)}
              for y in range(0, h, 2) for x in range(0, w, 2)]
    inked = [block for block in blocks if block != {ground}]
    return sum(len(block) > 1 for block in inked) / len(inked) if inked else 0.0


def problems_of(shot, texts, scale):
    if shot.width != WIDTH * scale or shot.height < HEIGHT * scale:
        yield f"the window is {shot.width}x{shot.height}"
        return
    for text, box in texts.items():
        ratio = text_contrast(box_pixels(shot, box, scale))
        if ratio < LEAST_CONTRAST:
            yield f"'{text}' has a contrast of only {ratio:.1f}"
        if scale == 2 and drawn_anew_share(shot, box) < 0.2:
            yield f"'{text}' looks enlarged, not drawn at scale 2"
    dot = text_contrast(box_pixels(shot, LEVEL_DOT, scale))
    if texts is IDLE_TEXTS and dot < LEAST_MARK_CONTRAST:
        yield f"the chosen level's dot has a contrast of only {dot:.1f}"


def main(game, folder, styles):
    failures = []
    with x_server() as display:
        for style in styles:
            scale = 2 if style == "scale2" else 1
            with running([game], display, STYLES[style]) as program:
                idle = main_window(display, program)
                press_key(display, "Return")  # Start is the default button
                playing = main_window(display, program, unlike=idle)
            for look, shot, texts in (("", idle, IDLE_TEXTS), ("-game", playing, GAME_TEXTS)):
                shot.write_png(pathlib.Path(folder) / f"main-window-{style}{look}.png")
                failures += [f"{style}{look}: {p}" for p in problems_of(shot, texts, scale)]
    for failure in failures:
        print("FAIL:", failure, file=sys.stderr)
    return 1 if failures else 0


if __name__ == "__main__":
    if len(sys.argv) < 4 or not set(sys.argv[3:]) <= STYLES.keys():
        sys.exit(f"usage: {sys.argv[0]} GAME FOLDER {'|'.join(STYLES)}...")
    sys.exit(main(sys.argv[1], sys.argv[2], sys.argv[3:]))

#!/usr/bin/env python3
"""Contract: on a clean Debian root of its own, made from this machine's package sources with
nothing but the package's dependencies and an X server, the package installs with apt
without recommends, the desktop entry's Exec line starts the game to a painted main window,
everything the game loads (and loads by name later) comes from a package its Depends bring,
and a purge leaves no file of it behind. The host's packages are never touched.

deb_test.py DEB CACHE_FOLDER APP_ID SCREENSHOT.png
The root's packed base is kept in CACHE_FOLDER, keyed by its package list and sources.
"""
import glob
import hashlib
import os
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parent))
sys.dont_write_bytecode = True  # as root, Python would leave a cache in the source tree
from screen_capture import main_window, x_server  # noqa: E402

# What the root holds besides the package's Depends: the X server the game is shown on.
EXTRA_PACKAGES = ["xvfb"]
# The sound library is opened by this name at the first sound, so no linker records it.
LOADED_BY_NAME = ["libSDL2-2.0.so.0"]
# What apt, dpkg and a run change in a root besides a package's own files.
VOLATILE = ("proc", "dev", "sys", "tmp", "run", "var/log", "var/cache", "var/lib/apt")
# Debian's PATH for root, and for a user's desktop session, where the Exec line is looked up.
ADMIN_PATH = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"
SESSION_PATH = "/usr/local/bin:/usr/bin:/bin:/usr/local/games:/usr/games"


def run(command, **options):
    done = subprocess.run(command, capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"FAIL: {' '.join(command)}\n{done.stdout}{done.stderr}")
    return done.stdout


def package_names(relations):
    """The first alternative of each entry of a Depends field, without its version."""
    return [re.split(r"[\s(|:]", entry.strip(), maxsplit=1)[0] for entry in relations.split(",")]


def apt_sources():
    """The source files this machine's apt reads, in apt's order."""
    main_list = "/etc/apt/sources.list"
    files = [main_list] if os.path.isfile(main_list) and os.path.getsize(main_list) else []
    return files + sorted(glob.glob("/etc/apt/sources.list.d/*.list") +
                          glob.glob("/etc/apt/sources.list.d/*.sources"))


def base_root(cache, packages):
    """The packed base root for PACKAGES, made with mmdebstrap unless the cache has it; the
    downloaded packages are kept beside it for the next base."""
    sources = apt_sources()
    suite = run(["sh", "-c", ". /etc/os-release && echo $VERSION_CODENAME"]).strip()
    options = ["--variant=apt", "--format=tar", "--include=" + ",".join(packages),
               "--skip=cleanup/apt/lists"]
    keyed = [suite, *options, *(pathlib.Path(source).read_text() for source in sources)]
    key = hashlib.sha256("\n".join(keyed).encode()).hexdigest()[:16]
    tarball = os.path.join(cache, f"base-{key}.tar")
    if os.path.exists(tarball):
        return tarball
    archives = os.path.join(cache, "archives")
    os.makedirs(archives, exist_ok=True)
    print(f"making the base root {tarball} of {' '.join(packages)}", flush=True)
    run(["mmdebstrap", *options,
         '--setup-hook=mkdir -p "$1/var/cache/apt/archives"',
         f"--setup-hook=sync-in {archives} /var/cache/apt/archives",
         f"--customize-hook=sync-out /var/cache/apt/archives {archives}",
         suite, tarball + ".partial", *sources])
    for old in glob.glob(os.path.join(cache, "base-*.tar")):
        os.remove(old)
    os.rename(tarball + ".partial", tarball)
    return tarball


def tree(root):
    """Every path in the root, but where apt and a run leave traces of their own."""
    paths = set()
    for folder, subfolders, files in os.walk(root):
        relative = os.path.relpath(folder, root)
        subfolders[:] = [s for s in subfolders if os.path.normpath(os.path.join(relative, s))
                         not in VOLATILE]
        paths.update(os.path.normpath(os.path.join("/", relative, name))
                     for name in subfolders + files)
    return paths


def dependency_closure(in_root):
    """The package and every package its Depends and Pre-Depends bring, recursively, with the
    essential packages, which every system has and no package needs to name."""
    essential = [line.split()[0] for line in
                 in_root("dpkg-query", "-W", "-f=${Package} ${Essential}\n").splitlines()
                 if line.endswith(" yes")]
    listing = in_root("apt-cache", "depends", "--recurse", "--installed", "--no-recommends",
                      "--no-suggests", "--no-conflicts", "--no-breaks", "--no-replaces",
                      "--no-enhances", "corvalta", *essential)
    return {line.split(":")[0] for line in listing.splitlines()
            if line and not line[0].isspace() and not line.startswith("<")}


def owners(in_root, paths):
    """The package of each file that a package owns; a merged /usr is tried both ways."""
    found = {}
    for path in paths:
        merged_twin = path[4:] if path.startswith("/usr/") else "/usr" + path
        for candidate in (path, merged_twin):
            done = subprocess.run(["chroot", in_root.root, "dpkg-query", "-S", candidate],
                                  capture_output=True, text=True)
            if done.returncode == 0:
                found[path] = done.stdout.split(":")[0]
                break
    return found


def loaded_files(in_root, pid):
    """The files the running game maps, and the libraries it opens by name later, as paths
    inside the root."""
    root = in_root.root
    mapped = set()
    for line in pathlib.Path(f"/proc/{pid}/maps").read_text().splitlines():
        fields = line.split(maxsplit=5)
        if len(fields) == 6 and fields[5].startswith(root + "/"):
            mapped.add(fields[5][len(root):])
    cache = in_root("ldconfig", "-p")
    for name in LOADED_BY_NAME:
        at = re.search(rf"^\s+{re.escape(name)} .*=> (/\S+)$", cache, re.MULTILINE)
        if not at:
            sys.exit(f"FAIL: {name}, which the game opens at its first sound, is not installed")
        mapped.add(at.group(1))
    return {path for path in mapped if path.startswith("/usr/") or path.startswith("/lib")}


class Root:
    """Commands inside the root, in a clean environment."""

    def __init__(self, root):
        self.root = root

    def prefix(self, **env):
        variables = {"PATH": ADMIN_PATH, "LANG": "C.UTF-8", **env}
        return ["chroot", self.root, "env", "-i", *(f"{k}={v}" for k, v in variables.items())]

    def __call__(self, *command, **env):
        return run([*self.prefix(DEBIAN_FRONTEND="noninteractive", **env), *command])


def show_game(in_root, app_id, screenshot, closure):
    """Starts the game by its desktop entry under the root's X server and checks what it runs
    and loads once its main window is painted."""
    entry = pathlib.Path(in_root.root, f"usr/share/applications/{app_id}.desktop").read_text()
    exec_line = re.sub(r"%[fFuUdDnNickvm]", "", re.search(r"^Exec=(.*)$", entry, re.MULTILINE)[1])
    os.makedirs(in_root.root + "/tmp/home/runtime", mode=0o700)
    with x_server(prefix=in_root.prefix()) as display:
        command = [*in_root.prefix(PATH=SESSION_PATH, DISPLAY=display, HOME="/tmp/home",
                                   XDG_RUNTIME_DIR="/tmp/home/runtime"),
                   "sh", "-c", f"exec {exec_line}"]
        with open(in_root.root + "/tmp/home/output.log", "w") as log:
            game = subprocess.Popen(command, stdout=log, stderr=subprocess.STDOUT)
        try:
            main_window(display, game).write_png(screenshot)
            started = os.readlink(f"/proc/{game.pid}/exe")
            if started != in_root.root + "/usr/games/corvalta":
                sys.exit(f"FAIL: the desktop entry started {started}")
            files = loaded_files(in_root, game.pid)
        except BaseException:
            sys.stderr.write(pathlib.Path(in_root.root + "/tmp/home/output.log").read_text())
            raise
        finally:
            game.terminate()
            game.wait()
    strays = {path: package for path, package in owners(in_root, files).items()
              if package not in closure}
    if strays:
        sys.exit("FAIL: the game loads files of packages that its Depends do not bring:\n" +
                 "\n".join(f"  {path} ({package})" for path, package in sorted(strays.items())))


def main(argv):
    if len(argv) != 5:
        sys.exit(__doc__)
    deb, cache, app_id, screenshot = argv[1:]
    # A mount and process namespace of its own: the root lives in a tmpfs that vanishes with
    # the test, whatever ends it, and so does every process started in it.
    if os.environ.get("CORVALTA_DEB_TEST_NAMESPACE") != "1":
        os.environ["CORVALTA_DEB_TEST_NAMESPACE"] = "1"
        os.execvp("unshare", ["unshare", "--mount", "--propagation", "private", "--pid", "--fork",
                              "--kill-child", "--mount-proc", sys.executable, *argv])
    depends = run(["dpkg-deb", "-f", deb, "Depends"])
    tarball = base_root(cache, sorted(set(package_names(depends) + EXTRA_PACKAGES)))

    root = tempfile.mkdtemp(prefix="corvalta-deb-root.")
    try:
        run(["mount", "-t", "tmpfs", "-o", "mode=755", "corvalta-root", root])
        run(["tar", "-xf", tarball, "-C", root])
        run(["mount", "-t", "proc", "proc", root + "/proc"])
        in_root = Root(root)
        before = tree(root)

        run(["cp", deb, root + "/tmp/corvalta.deb"])
        in_root("apt-get", "install", "-y", "-q", "--no-install-recommends", "/tmp/corvalta.deb")
        show_game(in_root, app_id, screenshot, dependency_closure(in_root))

        # dpkg's own records of the package (var/lib/dpkg/info) count as left behind too.
        in_root("apt-get", "purge", "-y", "-q", "corvalta")
        left = sorted(tree(root) - before)
        if left:
            sys.exit("FAIL: the purge left behind:\n  " + "\n  ".join(left))
    finally:
        subprocess.run(["umount", "--recursive", "--lazy", root])
        os.rmdir(root)
    print(f"installed, shown ({screenshot}) and purged in a clean root")


if __name__ == "__main__":
    main(sys.argv)

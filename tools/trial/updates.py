# SPDX-License-Identifier: MIT
"""An update from end to end: a package that was told of a feed, a server with a newer one, and the system's own PackageKit,
which first may not install it and then may."""

import http.server
import os
import re
import shutil
import ssl
import subprocess
import threading

from .checks import await_true, check, must, run, stop
from .debian import USER
from .island import move_pointer
from .packages import ROOT, only_package, repacked

PROGRAM = "/usr/lib/veslora/veslora"
NEWER = "0.2.0"
WINDOW = "Veslora Update"
# The program looks for updates by itself two minutes after its start.
LOOK = 180
_RULE = f"""polkit.addRule(function(action, subject) {{
    if (subject.user == "{USER}" && action.id.indexOf("org.freedesktop.packagekit.") == 0) {{ return polkit.Result.YES; }}
}});
"""


class _Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):  # pylint: disable=arguments-differ
        pass


class Server:
    """Gives the files of its folder, by https, on this machine alone. `certificate` is the path of its own."""

    def __init__(self, place):
        self.folder = os.path.join(place, "web")
        key, self.certificate = os.path.join(place, "server.key"), os.path.join(place, "server.crt")
        os.makedirs(self.folder)
        must("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost", "-addext",
             "subjectAltName=DNS:localhost", "-keyout", key, "-out", self.certificate)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self.certificate, key)
        server = http.server.ThreadingHTTPServer(
            ("127.0.0.1", 0), lambda *given: _Quiet(*given, directory=self.folder))
        server.socket = context.wrap_socket(server.socket, server_side=True)
        self.address = f"https://localhost:{server.server_address[1]}"
        threading.Thread(target=server.serve_forever, daemon=True).start()


def made_package(place, server):
    """One that looks for updates at the server, and the path of the key that signs them."""
    key, source = os.path.join(place, "release.key"), os.path.join(place, "source")
    public = must(os.path.join(ROOT, "tools", "sign-release"), "--new-key", key).strip()
    must("git", "clone", "--quiet", ROOT, source)
    must(os.path.join(source, "tools", "package"), "--feed", server.address + "/feed.xml", "--key", public)
    return only_package(os.path.join(source, "out", "package")), key


class _Window:
    """That of the updates, as far as it can be seen and pressed from outside."""

    def __init__(self, display, place):
        self._display = display
        self._env = {**os.environ, "DISPLAY": display}
        self._place = place

    def _geometry(self):
        """x, y, width and height in pixels; absent while there is none."""
        found = run("xwininfo", "-name", WINDOW, env=self._env).stdout
        if "IsViewable" not in found:
            return None
        return [int(re.search(rf"{name}: +(-?\d+)", found).group(1))
                for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]

    def shows(self):
        return self._geometry() is not None

    def keep_picture(self, name):
        subprocess.run(["import", "-window", "root", os.path.join(self._place, name + ".png")], env=self._env, check=True)

    def press(self):
        """The key at its lower right, which is the one that goes on: "Install Update", and "Close" when that is done."""
        x, y, width, height = self._geometry()
        move_pointer(self._display, x + width - 60, y + height - 34, "click", 1)


def _begin_services(debian, server):
    debian.install("packagekit", "polkitd", "dbus")
    shutil.copy(server.certificate, debian.inside("/usr/local/share/ca-certificates/trial.crt"))
    debian.as_root("update-ca-certificates")
    debian.as_root("install", "-d", "/run/dbus")
    debian.as_root("dbus-daemon", "--system", "--fork")


def _says(log, what):
    with open(log, encoding="utf-8", errors="replace") as file:
        return what in file.read()


def try_updates(trial, place, server, key):
    """In a Debian in which that package is installed. `trial` starts and ends the program there."""
    newer = repacked(trial.deb, NEWER, server.folder)
    notes = os.path.join(place, "notes.txt")
    with open(notes, "w", encoding="utf-8") as file:
        file.write("A newer one, <b>made</b> for a trial.\n")
    must(os.path.join(ROOT, "tools", "sign-release"), "--key", key, "--feed", os.path.join(server.folder, "feed.xml"),
         "--url", server.address, "--notes", notes, newer)
    _begin_services(trial.debian, server)
    was, window = trial.debian.version(), _Window(trial.display.name, place)
    trial.start()
    old = os.stat(f"/proc/{trial.process.pid}/exe").st_ino
    if not await_true(window.shows, 0.5, LOOK):
        stop(f"no update is offered; all that the program said is in {trial.log}")
    check(True, "it looks for updates by itself, and offers the newer one")
    window.keep_picture("1-offered")
    window.press()
    check(await_true(lambda: _says(trial.log, "the system's installer ended"), 0.2, 120), "brought and handed to PackageKit")
    check(trial.debian.version() == was, "which may not install it for this user")
    await_true(lambda: False, patience=1)
    window.keep_picture("2-by-hand")
    window.press()
    trial.end()

    trial.debian.write("/etc/polkit-1/rules.d/50-trial.rules", _RULE)
    # As if a day had gone by since it was shown.
    trial.forget("updateShown", "updateShownAt", "updateCheckedAt")
    trial.start()
    if not await_true(window.shows, 0.5, LOOK):
        stop("the update is not offered again")
    window.press()
    check(await_true(lambda: trial.debian.version() == NEWER, 0.5, 120), f"PackageKit has installed {trial.debian.version()}")
    check(await_true(lambda: _says(trial.log, "the system's installer ended with 0"), 0.2), "and says so to the program")
    await_true(lambda: False, patience=1)
    window.keep_picture("3-installed")
    window.press()
    check(await_true(lambda: not window.shows(), 0.1), "the window closes")
    check(await_true(lambda: os.stat(f"/proc/{trial.process.pid}/exe").st_ino != old and trial.account.answers(), 0.5, 60),
          "and the new version takes the old one's place")
    check(os.stat(f"/proc/{trial.process.pid}/exe").st_ino == os.stat(trial.debian.inside(PROGRAM)).st_ino, "as the same process")
    trial.end()

# SPDX-License-Identifier: MIT
"""A Debian of one's own in a folder, and an ordinary user in it. What is mounted there ends with the namespace of its maker,
who has the rights of root."""

import fcntl
import json
import os
import shutil
import subprocess

from .checks import must, run, stop

CHROOT = "/usr/sbin/chroot"
USER = "tester"
HOME = f"/home/{USER}"


class Debian:
    """The root in which things are tried, by a name of its own: a copy of a small one, which is kept for the next time.
    `place` is a folder."""

    def __init__(self, release, place, name):
        self._release = release
        self.place = os.path.join(place, release)
        self._base, self.root = os.path.join(self.place, "base"), os.path.join(self.place, name)
        self._lock = None

    def make_base(self):
        if os.path.isdir(self._base):
            return
        if not shutil.which("debootstrap"):
            stop("there is no debootstrap; install it")
        os.makedirs(self.place, exist_ok=True)
        unfinished = self._base + ".new"
        shutil.rmtree(unfinished, ignore_errors=True)
        done = run("debootstrap", "--variant=minbase", self._release, unfinished)
        if done.returncode != 0:
            stop("debootstrap could not make a Debian, as without a network or without rights: "
                 + (done.stdout + done.stderr).strip()[-500:])
        os.rename(unfinished, self._base)

    def make_root(self):
        archives = os.path.join(self.place, "archives")
        # Until the end of this process.
        self._lock = open(self.root + ".lock", "w", encoding="ascii")  # pylint: disable=consider-using-with
        try:
            fcntl.flock(self._lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            stop(f"another trial runs in {self.root}")
        # What is mounted there is the machine's own and would be removed with it.
        with open("/proc/self/mounts", encoding="utf-8") as mounts:
            if any(line.split()[1].startswith(self.root + "/") for line in mounts):
                stop(f"something is mounted below {self.root}")
        shutil.rmtree(self.root, ignore_errors=True)
        must("cp", "-a", self._base, self.root)
        os.makedirs(archives + "/partial", exist_ok=True)
        for options in (["-t", "proc", "proc", "/proc"], ["--rbind", "/dev", "/dev"], ["-t", "tmpfs", "tmpfs", "/run"],
                        ["-t", "tmpfs", "tmpfs", "/tmp"], ["--bind", archives, "/var/cache/apt/archives"]):
            must("mount", *options[:-1], self.inside(options[-1]))
        os.chmod(self.inside("/tmp"), 0o1777)
        os.makedirs(self.inside("/tmp/.X11-unix"))
        must("mount", "--bind", "/tmp/.X11-unix", self.inside("/tmp/.X11-unix"))
        shutil.copy("/etc/resolv.conf", self.inside("/etc/resolv.conf"))
        self.write("/etc/hosts", "127.0.0.1 localhost\n")
        # No service is started in there.
        self.write("/usr/sbin/policy-rc.d", "#!/bin/sh\nexit 101\n", 0o755)
        # What is thrown away need not be safe from a loss of power.
        self.write("/etc/dpkg/dpkg.cfg.d/unsafe", "force-unsafe-io\n")
        self.as_root("useradd", "--create-home", "--home-dir", HOME, "--shell", "/bin/sh", USER)
        self.as_root("install", "-d", "-m", "0700", "-o", USER, "-g", USER, f"/run/{USER}")
        self.as_root("apt-get", "-q", "update")

    def inside(self, path):
        """The path of one of its files as it is seen from outside."""
        return self.root + path

    def write(self, path, text, mode=0o644):
        os.makedirs(os.path.dirname(self.inside(path)), exist_ok=True)
        with open(self.inside(path), "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(self.inside(path), mode)

    def as_root(self, *command):
        env = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "HOME": "/root", "LC_ALL": "C.UTF-8",
               "DEBIAN_FRONTEND": "noninteractive"}
        return must(CHROOT, self.root, *command, env=env)

    def install(self, *packages):
        """Nothing besides but what they depend on, which must be enough."""
        self.as_root("apt-get", "install", "-y", "-q", "--no-install-recommends", *packages)

    def packages(self):
        """The size of each, in KiB, as dpkg tells it."""
        lines = self.as_root("dpkg-query", "-W", "-f", "${Package} ${Installed-Size}\n").split("\n")
        return {name: int(size or 0) for name, _, size in (line.partition(" ") for line in lines if line)}

    def version(self):
        """Of the program's package; empty where it is not installed."""
        return run(CHROOT, self.root, "dpkg-query", "-W", "-f", "${Version}", "veslora").stdout.strip()


class Account:
    """An ordinary user in there, on a display of the outside's and, unless one is named, without a bus. chroot becomes what
    it starts, so that its id is the program's."""

    def __init__(self, debian, display):
        self.env = {"HOME": HOME, "PATH": "/usr/bin:/bin", "LANG": "C.UTF-8", "DISPLAY": display,
                    "XDG_RUNTIME_DIR": f"/run/{USER}"}
        self.prefix = [CHROOT, f"--userspec={USER}:{USER}", debian.root]

    def run(self, *command, **options):
        return run(*self.prefix, *command, env=self.env, timeout=60, **options)

    def start(self, log, *command):
        """Starts it with all that it says going into a file outside."""
        with open(log, "wb") as file:
            return subprocess.Popen([*self.prefix, *command], env=self.env, stdin=subprocess.DEVNULL, stdout=file, stderr=file)

    def begin(self, *command, text=""):
        """Starts it with a text to read, and lets it run."""
        process = subprocess.Popen([*self.prefix, *command], env=self.env, text=True,  # pylint: disable=consider-using-with
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        process.stdin.write(text)
        process.stdin.close()
        process.stdin = None
        return process

    def answers(self):
        """Whether the program that runs tells its state."""
        done = self.run("veslora", "status")
        return done.returncode == 0 and "sessions" in json.loads(done.stdout)

# SPDX-License-Identifier: MIT
"""The program as a service of the user's, by the unit of its package below a real systemd: started with the session,
watched, started again, stopped with it."""

import ctypes
import os
import signal
import subprocess
import time

from .checks import await_true, check, must, stop
from .debian import HOME, USER
from .island import Prompt

# Where a kernel may have the tree of groups that systemd keeps its own in: the old way, both ways at once, the new one.
_TREES = ("/sys/fs/cgroup/systemd", "/sys/fs/cgroup/unified", "/sys/fs/cgroup")
_GROUP = "veslora-trial"
# What a desktop's session does: the target of every session may not be started by itself.
_SESSION = "[Unit]\nBindsTo=graphical-session.target\nBefore=graphical-session.target\n"
_PTRACE_INTERRUPT, _PTRACE_SEIZE, _PTRACE_DETACH = 0x4207, 0x4206, 17
_WALL = 0x40000000


class _Groups:
    """Groups of processes that the user may divide further, as a login makes them."""

    def __init__(self, debian):
        must("mount", "-t", "sysfs", "-o", "ro", "sysfs", debian.inside("/sys"))
        must("mount", "--rbind", "/sys/fs/cgroup", debian.inside("/sys/fs/cgroup"))
        user = int(debian.as_root("id", "-u", USER))
        self._folders = [os.path.join(tree, _GROUP) for tree in _TREES if os.path.exists(tree + "/cgroup.procs")]
        if not self._folders:
            stop("no tree of control groups is mounted")
        self.close()
        for folder in self._folders:
            os.mkdir(folder)
            for name in ("", "cgroup.procs", "cgroup.threads", "cgroup.subtree_control", "tasks"):
                if os.path.exists(os.path.join(folder, name)):
                    os.chown(os.path.join(folder, name), user, -1)

    def enter(self):
        """Moves the calling process into them."""
        for folder in self._folders:
            with open(folder + "/cgroup.procs", "w", encoding="ascii") as file:
                file.write(str(os.getpid()))

    def close(self):
        """Only folders without processes can go; those of a run that was cut off are such."""
        for top in self._folders:
            for folder, _, _ in os.walk(top, topdown=False):
                await_true(lambda folder=folder: _removed(folder), 0.1)


def _removed(folder):
    try:
        os.rmdir(folder)
    except FileNotFoundError:
        pass
    except OSError:
        return False
    return True


class _Manager:
    """systemd's manager of a user's services."""

    def __init__(self, debian, account):
        # Its commands do nothing in a root that is not that of the first process.
        account.env["SYSTEMD_IGNORE_CHROOT"] = "1"
        self._account = account
        self._groups = _Groups(debian)
        # It takes this for the sign that the machine runs by systemd at all.
        os.makedirs(debian.inside("/run/systemd/system"))
        with open(os.path.join(debian.place, "systemd.log"), "wb") as log:
            self._process = subprocess.Popen(  # pylint: disable=subprocess-popen-preexec-fn,consider-using-with
                [*account.prefix, "/lib/systemd/systemd", "--user", "--log-target=console", "--unit=basic.target",
                 # What its services say is for the log, where there is no journal.
                 "--default-standard-output=inherit", "--default-standard-error=inherit"],
                env=account.env, stdin=subprocess.DEVNULL, stdout=log, stderr=log, preexec_fn=self._groups.enter)

    def ask(self, *words):
        return self._account.run("systemctl", "--user", *words)

    def tells(self, name):
        """A property of the unit."""
        return self.ask("show", "--value", "--property", name, "veslora").stdout.strip()

    def close(self):
        self._process.send_signal(signal.SIGTERM)
        self._process.wait(60)
        self._groups.close()


def _main_thread_held(pid, seconds, condition):
    """Holds the first thread of a process alone, as one that is stuck in a call, until the condition or the time's end."""
    libc = ctypes.CDLL(None, use_errno=True)
    libc.ptrace.argtypes = [ctypes.c_long, ctypes.c_long, ctypes.c_void_p, ctypes.c_void_p]
    if libc.ptrace(_PTRACE_SEIZE, pid, None, None) != 0 or libc.ptrace(_PTRACE_INTERRUPT, pid, None, None) != 0:
        stop(f"the program's thread can't be held: {os.strerror(ctypes.get_errno())}")
    try:
        return await_true(condition, 0.5, seconds)
    finally:
        # One that has ended meanwhile is gone only once who held it has taken note.
        if libc.ptrace(_PTRACE_DETACH, pid, None, None) != 0:
            os.waitpid(pid, _WALL)


def _comes_back(manager, account, was):
    """Whether another process has become the service, and answers."""
    return await_true(lambda: manager.tells("MainPID") not in ("0", was) and manager.tells("ActiveState") == "active"
                      and account.answers(), 0.2)


def _try_watchdog(manager, account):
    was = manager.tells("MainPID")
    begin = time.monotonic()
    noticed = _main_thread_held(int(was), 60, lambda: manager.tells("SubState") == "stop-watchdog")
    check(noticed, f"its main thread held, systemd misses it after {time.monotonic() - begin:.0f} s")
    check(_comes_back(manager, account, was) and manager.tells("NRestarts") == "1", "and has replaced it")


def _try_kill(manager, account):
    was = manager.tells("MainPID")
    os.kill(int(was), signal.SIGKILL)
    check(_comes_back(manager, account, was) and manager.tells("NRestarts") == "2", "killed, it is started again")


def _try_prompt(account, display):
    prompt = Prompt(account, display)
    check(prompt.comes_to_show(), "a prompt shows")
    printed = prompt.allow()
    check(printed is not None, f"and is allowed: {printed}")
    prompt.close()


def _is_active(manager):
    return manager.tells("ActiveState") == "active"


def _is_over(manager):
    return manager.tells("ActiveState") == "inactive" and manager.tells("Result") == "success"


def try_service(debian, account, display):
    """In a Debian in which the package is installed and the program does not run."""
    debian.install("systemd")
    debian.write(HOME + "/.config/systemd/user/trial-session.target", _SESSION)
    debian.as_root("chown", "-R", f"{USER}:{USER}", HOME + "/.config/systemd")
    manager = _Manager(debian, account)
    try:
        check(await_true(lambda: manager.ask("is-active", "basic.target").returncode == 0, 0.1), "systemd runs for the user")
        check(manager.ask("is-enabled", "veslora").stdout.strip() == "disabled", "the unit is offered, not enabled")
        check(manager.ask("enable", "veslora").returncode == 0, "“systemctl --user enable veslora” is done")
        manager.ask("import-environment", "DISPLAY")
        manager.ask("start", "trial-session.target")
        check(await_true(lambda: _is_active(manager) and account.answers(), 0.1), "it starts with the session and says so")
        _try_prompt(account, display)
        _try_watchdog(manager, account)
        _try_kill(manager, account)
        _try_prompt(account, display)
        check(account.run("veslora", "quit").returncode == 0 and await_true(lambda: _is_over(manager), 0.1),
              "“veslora quit” ends it")
        # Longer than the unit waits before it starts one again.
        time.sleep(3)
        check(_is_over(manager), "and it stays ended")
        check(manager.ask("start", "veslora").returncode == 0 and _is_active(manager), "started by hand")
        manager.ask("stop", "trial-session.target")
        check(await_true(lambda: _is_over(manager), 0.1), "it ends with the session")
    finally:
        manager.close()

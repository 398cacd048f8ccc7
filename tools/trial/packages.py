# SPDX-License-Identifier: MIT
"""The program's package, and the same as another version."""

import os
import re
import shutil

from .checks import must, stop

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def only_package(folder):
    found = [name for name in (os.listdir(folder) if os.path.isdir(folder) else []) if re.match(r"veslora_.*\.deb$", name)]
    if len(found) != 1:
        stop(f"{os.path.relpath(folder, ROOT)} holds no package, or several; run tools/package")
    return os.path.join(folder, found[0])


def repacked(deb, version, folder):
    """The same package with another version, in a folder; the version may name that of the package as "{}"."""
    unpacked = os.path.join(folder, "repack")
    shutil.rmtree(unpacked, ignore_errors=True)
    must("dpkg-deb", "-R", deb, unpacked)
    control = os.path.join(unpacked, "DEBIAN", "control")
    with open(control, encoding="utf-8") as file:
        text = file.read()
    was = re.search(r"^Version: (.*)$", text, re.M).group(1)
    version = version.format(was)
    with open(control, "w", encoding="utf-8") as file:
        file.write(text.replace(f"\nVersion: {was}\n", f"\nVersion: {version}\n"))
    path = os.path.join(folder, f"veslora_{version}_{must('dpkg', '--print-architecture').strip()}.deb")
    must("dpkg-deb", "--root-owner-group", "-Zxz", "-z1", "-b", unpacked, path)
    shutil.rmtree(unpacked)
    return path

#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Looks for each measure of hardening in the given programs, and in what the release's own commands make of one source.
Given "--release", the programs are a release's and must hold everything."""

import json
import os
import platform
import re
import shlex
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
# Resolves a path into memory whose length the compiler knows, keeps an array on its stack and works with strings.
SOURCE = "VesloraLinux/System/PosixFiles.cpp"
failures = []


def check(holds, what):
    print(("ok      " if holds else "MISSING ") + what)
    if not holds:
        failures.append(what)


def output(*command):
    done = subprocess.run(command, capture_output=True, text=True, check=False, env={**os.environ, "LC_ALL": "C"})
    if done.returncode != 0:
        sys.exit(f"hardening: {shlex.join(command)}: {done.stderr}")
    return done.stdout


def check_linked(program):
    """What the linker gives."""
    name = os.path.basename(program)
    header, dynamic = output("readelf", "-hW", program), output("readelf", "-dW", program)
    segments = output("readelf", "-lW", program)
    check(re.search(r"Type:\s+DYN", header) and "PIE" in dynamic, f"{name}: placed anywhere in memory")
    check("GNU_RELRO" in segments, f"{name}: relocations are read-only")
    check(re.search(r"BIND_NOW|\bNOW\b", dynamic), f"{name}: and made at the start")
    check(re.search(r"GNU_STACK\s.*RW\s", segments), f"{name}: no stack can be run")
    paths = re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", dynamic)
    check(not paths, f"{name}: libraries come from the system's folders only")


def check_compiled(path, name, is_large=True):
    """What the compiler gives; a small program may neither copy nor index anything that is left to be checked."""
    symbols = output("nm", "-a", path)
    check("__stack_chk_fail" in symbols, f"{name}: stacks are guarded")
    check(not is_large or re.search(r"U __(?!stack)\w+_chk\b", symbols), f"{name}: copies are checked")
    check(not is_large or "__glibcxx_assert_fail" in symbols, f"{name}: indices are checked")
    if platform.machine() == "x86_64":
        check("endbr64" in output("objdump", "-d", path), f"{name}: jumps land where they may")


def compiled_by_release(folder):
    """What the release's own command makes of a source."""
    build = os.path.join(folder, "build")
    output("cmake", "--preset", "release", "-S", ROOT, "-B", build, "-DBUILD_TESTING=OFF",
           "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON")
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        commands = {os.path.relpath(entry["file"], ROOT): entry for entry in json.load(file)}
    ours = [entry for name, entry in commands.items() if name.startswith(("Veslora", "JsonValue", "MediaAdapter", "Web"))]
    for flag in ("-fstack-protector-strong", "-D_FORTIFY_SOURCE=3", "-D_GLIBCXX_ASSERTIONS"):
        check(ours and all(flag in entry["command"].split() for entry in ours), f"release: {flag} for all {len(ours)} sources")
    # Copies are only checked in what is optimized. The last of these options counts.
    levels = {(["none"] + re.findall(r" (-O\S*)", entry["command"]))[-1] for entry in ours}
    check(levels and levels <= {"-O2", "-Os"}, "release: all is optimized, for speed or for size")
    command = shlex.split(commands[SOURCE]["command"])
    compiled = os.path.join(folder, "object.o")
    command[command.index("-o") + 1] = compiled
    subprocess.run(command, cwd=build, check=True)
    return compiled


def main():
    programs = [argument for argument in sys.argv[1:] if argument != "--release"]
    for program in programs:
        check_linked(program)
        if "--release" in sys.argv:
            check_compiled(program, os.path.basename(program), is_large=program == programs[0])
    with tempfile.TemporaryDirectory() as folder:
        check_compiled(compiled_by_release(folder), "release")
    sys.exit(1 if failures or not programs else 0)


main()

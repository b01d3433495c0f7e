#!/usr/bin/env python3
"""Holds the built program to the wall: it needs no Qt Network, and nothing of the engine stands in it twice.

Usage: check_wall.py BUILD_DIR
"""
import pathlib
import re
import subprocess
import sys


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def defined(binary):
    """What a binary brings itself, save the standard library's and the marks of types, of which the loader keeps one."""
    lines = (line.split() for line in run("nm", "--defined-only", str(binary)).splitlines())
    return {words[2] for words in lines
            if len(words) == 3 and words[1] in "TBDVu" and words[2].startswith("_Z")
            and not re.match(r"_ZT|_Z+N?K?St", words[2])}


def main():
    build = pathlib.Path(sys.argv[1])
    program, module = build / "breloim", build / "libbreloim_network.so"
    face = defined(build / "libbreloim_engine.so")
    faults = []
    if "libQt6Network" in run("ldd", str(program)):
        faults.append("breloim needs Qt Network: something that is linked into it uses it")
    if "libQt6Network" not in run("ldd", str(module)):
        faults.append("the network module needs no Qt Network: is this the right file?")
    if not any("StanzaQueue" in name for name in face):
        faults.append("the engine's face has no StanzaQueue: has the library moved?")
    for binary in (program, *sorted(build.glob("libbreloim_*.so"))):
        if binary.name == "libbreloim_engine.so":
            continue
        twice = sorted(face & defined(binary))
        if twice:
            faults.append(f"{binary.name} brings {len(twice)} parts of the engine once more: {', '.join(twice[:5])}")
    wire = [name for name in defined(program) if "GatewayClient" in name or "6Bridge" in name]
    if wire:
        faults.append(f"breloim brings the wire: {', '.join(wire[:5])}")
    print("\n".join(faults) or f"{len(face)} parts of the engine, each in one place")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Reads the #include lines and fails on a circle, or on a room below src/ that includes a higher one.

A class is one place, whichever of its files includes: a circle through a .cpp is a circle.

Usage: check_includes.py SOURCE_DIR
"""
import pathlib
import re
import sys

# Low to high; the engine's inner walls are walls as well. A folder belongs to the longest name that fits.
ROOMS = ["engine", "engine/bridge", "engine/wire/socket", "engine/wire/auth", "engine/wire/session", "settings", "desktop",
         "contacts", "messaging", "services", "groupchat", "preferences", "mailwatch", "session", "plugins"]
# What stands behind the engine's face; only the modules look there.
BEHIND = ("engine/bridge/", "engine/wire/")
WIDGETS = re.compile(r'#include <(QWidget|QApplication|QDialog|QMainWindow|QMessageBox|QMenu|QTreeView|QLabel)>')
NETWORK = re.compile(r'#include <(QNetwork|QSsl|QTcp|QUdp|QHost|QDns|QAbstractSocket|QAuthenticator)')
INCLUDE = re.compile(r'^\s*#include "([^"]+)"', re.M)


def room_of(name):
    fitting = [room for room in ROOMS if name.startswith(room + "/")]
    return ROOMS.index(max(fitting, key=len)) if fitting else None


def circle(graph):
    done, path = set(), []

    def visit(name):
        if name in path:
            return path[path.index(name):] + [name]
        if name in done:
            return None
        path.append(name)
        for target in sorted(graph.get(name, ())):
            found = visit(target)
            if found:
                return found
        path.pop()
        done.add(name)
        return None

    for name in sorted(graph):
        found = visit(name)
        if found:
            return found
    return None


def faults_of(name, text, targets):
    """What is wrong with one file's includes, circles apart."""
    here, is_main = room_of(name), name == "session/main.cpp"
    has_window = "/forms/" in name or is_main
    if here is None and not is_main:
        yield f"{name} lies in no room"
    for target in targets:
        there = room_of(target)
        if None not in (here, there) and there > here:
            yield f"{name} includes the higher room's {target}"
        if "/forms/" in target and not has_window:
            yield f"{name} has no window, but includes {target}"
        if target.startswith(BEHIND) and not name.startswith(BEHIND + ("plugins/",)):
            yield f"{name} looks behind the engine's face, at {target}"
    if WIDGETS.search(text) and not has_window:
        yield f"{name} has no window, but includes a widget"
    if NETWORK.search(text) and not name.startswith(BEHIND + ("plugins/network/",)):
        yield f"{name} includes something of Qt Network"


def place_of(name, targets, known):
    """The class that a file belongs to. A .cpp without a header of its own begins with the one that declares it."""
    own = pathlib.PurePath(name).with_suffix(".h").as_posix()
    beside = [t for t in targets[:1] if pathlib.PurePath(t).parent == pathlib.PurePath(name).parent]
    return str(pathlib.PurePath(beside[0] if own not in known and beside and not name.endswith("main.cpp") else name).with_suffix(""))


def files_of(source):
    """Below src/ files include from there, elsewhere from the top: each with its name as it is included."""
    for path in sorted((source / "src").rglob("*")):
        yield path, path.relative_to(source / "src").as_posix()
    for tree in ("sandbox", "bench"):
        for path in sorted((source / tree).rglob("*")):
            yield path, path.relative_to(source).as_posix()


def main():
    source = pathlib.Path(sys.argv[1])
    known = {name for path, name in files_of(source) if path.suffix in (".h", ".cpp")}
    places, faults, files = {}, [], len(known)
    for path, name in files_of(source):
        if name not in known:
            continue
        text = path.read_text(encoding="utf8")
        beside = [(pathlib.PurePath(name).parent / i).as_posix() for i in INCLUDE.findall(text)]
        targets = [i for i in INCLUDE.findall(text) + beside if i in known]
        if path.is_relative_to(source / "src"):
            faults += faults_of(name, text, targets)
        place = place_of(name, targets, known)
        places.setdefault(place, set()).update(str(pathlib.PurePath(t).with_suffix("")) for t in targets)
        places[place].discard(place)
    if files < 20:
        faults.append(f"only {files} files found below {source}")
    found = circle(places)
    if found:
        faults.append("a circle: " + " -> ".join(found))
    print("\n".join(faults) or f"{files} files, no circle, no upward include")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

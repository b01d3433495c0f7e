#!/usr/bin/env python3
"""Reads the #include lines below src/ and fails on a circle, or on a room that includes a higher one.

Usage: check_includes.py SOURCE_DIR
"""
import pathlib
import re
import sys

ROOMS = ["engine", "settings", "desktop", "contacts", "messaging", "services", "groupchat", "preferences", "mailwatch", "session"]
WIDGETS = re.compile(r'#include <(QWidget|QApplication|QDialog|QMainWindow|QMessageBox|QMenu|QTreeView|QLabel)>')
INCLUDE = re.compile(r'^\s*#include "([^"]+)"', re.M)


def room_of(name):
    first = name.split("/")[0]
    return ROOMS.index(first) if first in ROOMS else None


def circle(graph):
    done, path = set(), []

    def visit(name):
        if name in path:
            return path[path.index(name):] + [name]
        if name in done:
            return None
        path.append(name)
        for target in graph.get(name, ()):
            found = visit(target)
            if found:
                return found
        path.pop()
        done.add(name)
        return None

    for name in graph:
        found = visit(name)
        if found:
            return found
    return None


def main():
    source = pathlib.Path(sys.argv[1], "src")
    graph, faults = {}, []
    for path in sorted(source.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        name = path.relative_to(source).as_posix()
        text = path.read_text(encoding="utf8")
        graph[name] = [i for i in INCLUDE.findall(text) if (source / i).is_file()]
        for target in graph[name]:
            here, there = room_of(name), room_of(target)
            if here is not None and there is not None and there > here:
                faults.append(f"{name} includes the higher room's {target}")
            if there is not None and "/forms/" in target and "/forms/" not in name and name != "session/main.cpp":
                faults.append(f"{name} has no window, but includes {target}")
        if "/forms/" not in name and name != "session/main.cpp" and WIDGETS.search(text):
            faults.append(f"{name} has no window, but includes a widget")
    if len(graph) < 20:
        faults.append(f"only {len(graph)} files found below {source}")
    found = circle({n: [t for t in ts if t.endswith(".h")] for n, ts in graph.items() if n.endswith(".h")})
    if found:
        faults.append("a circle: " + " -> ".join(found))
    print("\n".join(faults) or f"{len(graph)} files, no circle, no upward include")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

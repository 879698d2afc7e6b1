#!/usr/bin/env python3
"""Which of the module's objects depend on which, read from their symbols (nm): an object
depends on another when it uses a symbol the other defines. Prints the objects that call
each other in a circle (each loop, largest first) and every call that goes up the layers.

    scripts/layers.py OBJDIR            report; exits 1 on a loop or an upward call
    scripts/layers.py --report OBJDIR   report only, exit 0

OBJDIR holds the module's objects (the build tree's noltDevSDK_special_objects.dir).
A file's layer is its folder under the module's source directory; the order of the
layers, top first, is LAYERS below. Files directly in the module's directory are the
public-API layer, on top."""

import os
import subprocess
import sys

# top first: a layer may call the layers after it, never those before it
LAYERS = ["api", "kernel", "shadow", "handlers", "status", "bus", "app"]
MODULE_DIR = "userpace/src/domain/special"


def layer_of(path):
    """The layer of an object: the first folder below the module's directory, or "api"."""
    rel = path.split(MODULE_DIR + "/", 1)[-1]
    parts = rel.split("/")
    return parts[0] if len(parts) > 1 and parts[0] in LAYERS else "api"


def symbols(obj):
    """(defined, undefined) global symbol names of one object."""
    out = subprocess.run(["nm", "-P", obj], check=True, capture_output=True, text=True).stdout
    defined, undefined = set(), set()
    for line in out.splitlines():
        fields = line.split()
        if len(fields) < 2:
            continue
        name, kind = fields[0], fields[1]
        if kind == "U":
            undefined.add(name)
        elif kind in "TDBRVWCu":
            defined.add(name)
    return defined, undefined


ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def objects(objdir):
    """The module's objects whose source still exists (a build tree keeps the objects of
    files that were moved or removed)."""
    found = []
    for top, _, files in os.walk(objdir):
        for f in files:
            obj = os.path.join(top, f)
            rel = os.path.relpath(obj, objdir)
            if f.endswith(".cpp.o") and MODULE_DIR in rel and os.path.exists(os.path.join(ROOT, rel[:-2])):
                found.append(obj)
    return sorted(found)


def name_of(obj, objdir):
    rel = os.path.relpath(obj, objdir)
    rel = rel[:-2] if rel.endswith(".o") else rel
    return rel.split(MODULE_DIR + "/", 1)[-1]


def loops(graph):
    """Strongly connected components of more than one node (Tarjan, iterative)."""
    index, low, on_stack, stack, found, counter = {}, {}, set(), [], [], [0]

    def visit(root):
        work = [(root, iter(sorted(graph[root])))]
        index[root] = low[root] = counter[0]
        counter[0] += 1
        stack.append(root)
        on_stack.add(root)
        while work:
            node, edges = work[-1]
            advanced = False
            for nxt in edges:
                if nxt not in index:
                    index[nxt] = low[nxt] = counter[0]
                    counter[0] += 1
                    stack.append(nxt)
                    on_stack.add(nxt)
                    work.append((nxt, iter(sorted(graph[nxt]))))
                    advanced = True
                    break
                if nxt in on_stack:
                    low[node] = min(low[node], index[nxt])
            if advanced:
                continue
            work.pop()
            if work:
                low[work[-1][0]] = min(low[work[-1][0]], low[node])
            if low[node] == index[node]:
                component = []
                while True:
                    top = stack.pop()
                    on_stack.discard(top)
                    component.append(top)
                    if top == node:
                        break
                if len(component) > 1:
                    found.append(sorted(component))

    for node in sorted(graph):
        if node not in index:
            visit(node)
    return sorted(found, key=len, reverse=True)


def main(argv):
    report_only = "--report" in argv
    args = [a for a in argv if a != "--report"]
    if len(args) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    objdir = args[0]
    objs = objects(objdir)
    if not objs:
        print("layers: no objects under %s" % objdir, file=sys.stderr)
        return 2
    owner, uses = {}, {}
    for obj in objs:
        name = name_of(obj, objdir)
        defined, undefined = symbols(obj)
        uses[name] = undefined
        for sym in defined:
            owner[sym] = name
    graph = {n: {owner[s] for s in u if s in owner and owner[s] != n} for n, u in uses.items()}
    circles = loops(graph)
    upward = []
    for name, targets in sorted(graph.items()):
        for target in sorted(targets):
            if LAYERS.index(layer_of(target)) < LAYERS.index(layer_of(name)):
                upward.append("%s (%s) -> %s (%s)" % (name, layer_of(name), target, layer_of(target)))
    edges = sum(len(t) for t in graph.values())
    print("layers: %d objects, %d dependencies, %d loops" % (len(objs), edges, len(circles)))
    for circle in circles:
        print("  loop of %d: %s" % (len(circle), " ".join(circle)))
    for line in upward:
        print("  upward: " + line)
    if report_only:
        return 0
    return 1 if circles or upward else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

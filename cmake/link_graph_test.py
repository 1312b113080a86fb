#!/usr/bin/env python3
# The libraries link what docs/architecture.md says they may, no more and no less: configures
# the tree afresh with --graphviz and compares each library's direct links to our own
# libraries with the "Links" column of the table in that document.
# usage: link_graph_test.py CMAKE SOURCE_DIR SCRATCH_DIR
import pathlib
import re
import subprocess
import sys

cmake, source, scratch = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
OURS = re.compile(r"corvalta_[a-z_]+")
POLICY = "corvalta_warnings"  # the warning flags every target links


def table():
    """{library: set of our libraries it links}, from the rows whose first cell names one."""
    rows = {}
    for line in (source / "docs/architecture.md").read_text().splitlines():
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if len(cells) != 3 or not cells[0].startswith("`corvalta_"):
            continue
        name = OURS.search(cells[0]).group(0)
        rows[name] = set(OURS.findall(cells[2])) - {name}
    return rows


def graph():
    """{library: set of our libraries it links}, as the build has it."""
    dot = scratch / "links.dot"
    subprocess.run([cmake, "-S", str(source), "-B", str(scratch), f"--graphviz={dot}"],
                   check=True, stdout=subprocess.DEVNULL)
    libraries = {}
    for node in re.findall(r'label = "(corvalta_[a-z_]+)[^"]*", shape = (?!egg)', dot.read_text()):
        libraries.setdefault(node, set())
    for source_name, target in re.findall(r"// (\S+) -> (\S+)$", dot.read_text(), re.MULTILINE):
        if source_name in libraries and OURS.fullmatch(target):
            libraries[source_name].add(target)
    return {name: links - {POLICY} for name, links in libraries.items() if name != POLICY}


documented, built = table(), graph()
faults = []
for name in sorted(built.keys() | documented.keys()):
    if name not in documented:
        faults.append(f"{name}: a library the table does not list")
    elif name not in built:
        faults.append(f"{name}: in the table, but the build has no such library")
    else:
        for extra in sorted(built[name] - documented[name]):
            faults.append(f"{name} links {extra}, which the table does not allow")
        for missing in sorted(documented[name] - built[name]):
            faults.append(f"{name} no longer links {missing}, which the table says it does")
print("\n".join(faults) or f"{len(built)} libraries link as docs/architecture.md says")
sys.exit(1 if faults else 0)

#!/usr/bin/python3
"""Usage: image_test.py OBJDUMP IMPORTS PROGRAM...

Checks what Windows is told of our programs: that their code and data lie at random places, that data are never run, and
that they ask for nothing that the oldest Windows that they are for does not have. IMPORTS lists that, "LIBRARY: NAME
NAME", which a line that is indented goes on with.
"""
import re
import subprocess
import sys

MARKS = ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT")


def known_imports(path):
    known, library = {}, ""
    for line in open(path, encoding="utf-8"):
        if line.startswith("#") or not line.strip():
            continue
        if not line.startswith(" "):
            library, line = line.split(":", 1)
        known.setdefault(library.lower(), set()).update(line.split())
    return known


def imports_of(dump):
    for block in re.split(r"\n\tDLL Name: ", dump)[1:]:
        library = block.split("\n", 1)[0].strip()
        for name in re.findall(r"^\t[0-9a-f]+\s+(?:\d+|<none>)\s+(\S+)$", block.split("\n\n", 1)[0], re.M):
            yield library, name


def offences(objdump, known, program):
    dump = subprocess.run([objdump, "-p", program], check=True, capture_output=True, text=True).stdout
    marks = dump.split("The Data Directory")[0].split()
    yield from (f"is not marked as {mark}" for mark in MARKS if mark not in marks)
    if not re.search(r"^Entry 5 [0-9a-f]+ 0*[1-9a-f][0-9a-f]* Base Relocation", dump, re.M):
        yield "cannot be moved: it has no relocations"
    imports = list(imports_of(dump))
    if len(imports) < 50:
        yield "has imports that cannot be read"
    for library, name in imports:
        if name not in known.get(library.lower(), ()):
            yield f"imports {name} of {library}: since which Windows is it there?"


def main():
    objdump, imports, *programs = sys.argv[1:]
    known = known_imports(imports)
    found = [f"{program} {offence}" for program in programs for offence in offences(objdump, known, program)]
    print("\n".join(found))
    return 1 if found else 0


sys.exit(main())

#!/usr/bin/python3
"""Builds the manual: one folder of HTML that reads offline in three languages, and on request one PDF a language.

    build.py --render VAXEL_RENDER --tables MANUAL_TABLES --out FOLDER [--work FOLDER] [--version V] [--pdf] [--check]

Pictures are drawn by VAXEL_RENDER, and the reference is made from what MANUAL_TABLES prints. --check then looks at
the pages as a reader does, see check.py. Exit status: 0, or 1 when something is missing or wrong.
"""
import argparse
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True  # the sources stay as they are

import check  # noqa: E402
import generate  # noqa: E402

Here = Path(__file__).resolve().parent
SphinxBuild = "/usr/bin/sphinx-build"  # another python's would not know Debian's packages


def stage(language: str, tables: dict, program: str, work: Path) -> tuple[Path, dict]:
    """A folder with the chapters of a language and the pages that are made; where each word stands."""
    source = work / "source" / language
    shutil.rmtree(source, ignore_errors=True)
    shutil.copytree(Here / language, source)
    shutil.copy(Here.parent / "images/window-vu-meter.png", source / "window.png")
    if not (work / "source/dials").exists():  # chapters show its data files
        (work / "source/dials").symlink_to(Here / "dials")
    pages = generate.Pages(tables, language, program)
    pages.write(source)
    return source, pages.places


def sphinx(builder: str, language: str, source: Path, target: Path, given) -> subprocess.Popen:
    environment = dict(
        os.environ, VAXEL_MANUAL=str(Here), VAXEL_LANGUAGE=language, VAXEL_RENDER=str(given.render),
        VAXEL_PICTURES=str(given.work / "pictures"), VAXEL_TABLES=str(given.work / "tables.json"),
        VAXEL_VERSION=given.version, LC_ALL="C.UTF-8", PYTHONDONTWRITEBYTECODE="1")
    return subprocess.Popen(
        [SphinxBuild, "-q", "-W", "--keep-going", "-b", builder, "-c", Here, "-d", given.work / builder / language,
         source, target], env=environment)


def build_all(builder: str, sources: dict, targets: dict, given) -> bool:
    """All languages, as many at a time as there are processors."""
    waiting, running, good = list(sources), [], True
    while waiting or running:
        while waiting and len(running) < (os.cpu_count() or 1):
            language = waiting.pop(0)
            running.append(sphinx(builder, language, sources[language], targets[language], given))
        good = running.pop(0).wait() == 0 and good
    return good


def mend_theme(folder: Path):
    """Debian's theme imports a style sheet from a server's root, which no folder of files has."""
    for style in folder.glob("_static/styles/furo.css"):
        style.write_text(re.sub(r"@import url\(/[^)]*\);?", "", style.read_text(encoding="utf-8")), encoding="utf-8")


Redirect = """<!DOCTYPE html>
<html lang="{language}">
<meta charset="utf-8">
<title>Vaxel</title>
<script src="words.js"></script>
<script>
// The program opens this page at a word: "#grad". Its place in the manual is looked up here.
var language = {choice};
var word = decodeURIComponent(location.hash.slice(1)).toLowerCase();
location.replace(language + "/" + (Object.prototype.hasOwnProperty.call(places, word) ? places[word] : "index.html"));
</script>
<p><a href="en/index.html">English</a> · <a href="fr/index.html">Français</a> · <a href="es/index.html">Español</a></p>
</html>
"""


def write_entrances(out: Path, places: dict):
    """The pages that the program opens: one a language, named after the help files, and one that goes by the reader's
    own language."""
    (out / "words.js").write_text("var places = " + json.dumps(places, ensure_ascii=False, indent=1) + ";\n",
                                  encoding="utf-8")
    for name, language in (("Vaxel", "fr"), ("Vaxel_en", "en"), ("Vaxel_es", "es")):
        (out / f"{name}.html").write_text(Redirect.format(language=language, choice=f'"{language}"'), encoding="utf-8")
    guess = '["en", "fr", "es"].indexOf(navigator.language.slice(0, 2)) < 0 ? "en" : navigator.language.slice(0, 2)'
    for name in ("manual", "index"):
        (out / f"{name}.html").write_text(Redirect.format(language="en", choice=guess), encoding="utf-8")


def print_pdf(page: Path, target: Path) -> bool:
    """Chromium prints the manual as one page; it needs a folder for what it keeps."""
    with tempfile.TemporaryDirectory() as profile:
        done = subprocess.run(
            ["chromium", "--headless=new", "--no-sandbox", "--disable-gpu", f"--user-data-dir={profile}",
             "--no-pdf-header-footer", "--virtual-time-budget=20000", f"--print-to-pdf={target}", page.as_uri()],
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=300, check=False)
    if done.returncode != 0 or not target.exists():
        print(done.stderr.decode()[-2000:], file=sys.stderr)
        return False
    return True


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--render", type=Path, required=True)
    parser.add_argument("--tables", type=Path, required=True)
    parser.add_argument("--out", type=Path, required=True)
    parser.add_argument("--work", type=Path)
    parser.add_argument("--version", default="")
    parser.add_argument("--pdf", action="store_true")
    parser.add_argument("--check", action="store_true")
    given = parser.parse_args()
    given.out = given.out.resolve()
    given.render, given.work = given.render.resolve(), (given.work or given.out / ".work").resolve()
    if given.check:  # nothing of another build may count
        shutil.rmtree(given.work, ignore_errors=True)
    given.out.mkdir(parents=True, exist_ok=True)
    for language in generate.Languages:
        # Pages that there are no more must go, but nothing that is not a manual.
        if (given.out / language / "genindex.html").exists():
            shutil.rmtree(given.out / language)
    given.work.mkdir(parents=True, exist_ok=True)
    said = subprocess.run([given.tables.resolve()], capture_output=True, check=True).stdout.decode()
    (given.work / "tables.json").write_text(said, encoding="utf-8")
    tables = json.loads(said)

    sources, places = {}, {}
    for language in generate.Languages:
        sources[language], places = stage(language, tables, str(given.render), given.work)
    good = build_all("html", sources, {one: given.out / one for one in sources}, given)
    for language in sources:
        mend_theme(given.out / language)
    write_entrances(given.out, places)
    if good and given.check:
        good = check.look(given.out, tables, str(given.render), places)
    if good and given.pdf:
        single = {one: given.work / "single" / one for one in sources}
        good = build_all("singlehtml", sources, single, given)
        for folder in single.values():
            mend_theme(folder)
        good = good and all(
            print_pdf(single[one] / "index.html", given.out / f"vaxel-{one}.pdf") for one in sources)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())

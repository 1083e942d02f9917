"""Looks at the pages of the manual as a reader does: whether what the program knows stands in them, in each language,
and whether each picture is that of the script above it."""
import html
import re
import sys
import tempfile
from pathlib import Path

import generate

sys.path.insert(0, str(Path(__file__).resolve().parent / "_ext"))
import vaxel_dial  # noqa: E402

Languages = generate.Languages


def text_of(page: str) -> str:
    """What a reader sees, in one line."""
    page = re.sub(r"(?s)<(script|style|svg)\b.*?</\1>", " ", page)
    return " ".join(html.unescape(re.sub(r"<[^>]*>", " ", page)).split())


def squeezed(text: str) -> str:
    """Without blanks: tags may part what is one word."""
    return re.sub(r"\s", "", text)


class Look:
    def __init__(self, out: Path, tables: dict, program: str, places: dict):
        self.out, self.tables, self.program, self.places = out, tables, program, places
        self.problems: list[str] = []
        self.drawn: dict[str, bytes] = {}
        self.pages = {(language, page.name): page.read_text(encoding="utf-8")
                      for language in Languages for page in (out / language).glob("*.html")}

    def need(self, condition: bool, what: str):
        if not condition:
            self.problems.append(what)

    def words(self, language: str):
        """Each word that the program may ask for leads to a place that there is."""
        wanted = [row["keyword"] for row in self.tables["commands"]]
        wanted += self.tables["functions"] + [name.lstrip("%") for name in self.tables["variables"]]
        for word in wanted:
            place = self.places.get(word.lower())
            if place is None:
                self.problems.append(f"{word} has no place in the manual")
                continue
            page, name = place.split("#")
            self.need(f'id="{name}"' in self.pages.get((language, page), ""), f"{language}: {word} is not at {place}")

    def contents(self, language: str):
        """Commands, options, messages, menus and keys stand in the pages where they are looked for."""
        def holds(page, wanted, what):
            text = squeezed(text_of(self.pages.get((language, page), "")))
            for one in wanted:
                self.need(squeezed(one) in text, f"{language}: {page} lacks the {what} {one!r}")

        texts = {row["id"]: row for row in self.tables["texts"]}
        for row in self.tables["commands"]:
            page = self.places.get(row["keyword"].lower(), "#").split("#")[0]
            holds(page, [row["help"][language]], "help text")
        holds("glossary.html", [row["shown"] for row in self.tables["commands"]], "keyword")
        holds("ref-functions.html", self.tables["functions"] + self.tables["variables"], "name")
        options = generate.options_of(self.program, language)
        holds("11-vaxel-render.html", [part for option in options for part in option], "option")
        holds("09-problems.html", [row["text"][language].replace("%%", "%") for row in self.tables["texts"]
                                   if generate.is_message(row["name"])], "message")
        shown = [row for row in self.tables["menu"] if row["caption"]]
        holds("10-window.html", [texts[row["caption"]]["text"][language].replace("&", "").removesuffix("...")
                                 for row in shown], "menu item")
        holds("10-window.html", [key for row in self.tables["menu"] for key in row["keys"]], "key")

    def pictures(self, language: str):
        """Each picture is drawn anew from the script that a reader sees above it."""
        shown = set()
        for (its, name), page in self.pages.items():
            if its != language:
                continue
            for part in re.split(r'(?=<div class="dial docutils container">)', page)[1:]:
                image = re.search(r'<img src="_dials/([^"]+)"[^>]* data-options="([^"]*)"', part)
                if not image:
                    continue
                shown.add(image[1])
                code = re.search(r'(?s)<div class="highlight-vaxel[^>]*>.*?<pre>(.*?)</pre>', part)
                if code and code.start() < image.start():
                    script = html.unescape(re.sub(r"<[^>]*>", "", code[1]))
                    self.picture(f"{language}/{name}", image[1], script, html.unescape(image[2]).split(), language)
        kept = {picture.name for picture in (self.out / language / "_dials").iterdir()}
        self.need(kept == shown, f"{language}: pictures that no page shows or that lack: {sorted(kept ^ shown)}")

    def picture(self, place: str, name: str, script: str, options: list[str], language: str):
        expected = vaxel_dial.picture_name(script, options)
        self.need(name == expected, f"{place}: {name} is not named after the script above it")
        try:
            if expected not in self.drawn:
                self.drawn[expected] = self.draw(script, options, language)
        except RuntimeError as error:
            self.problems.append(f"{place}: {error}")
            return
        self.need(self.drawn[expected] == (self.out / language / "_dials" / name).read_bytes(),
                  f"{place}: {name} is not what its script draws")

    def draw(self, script: str, options: list[str], language: str) -> bytes:
        with tempfile.TemporaryDirectory() as folder:
            name, _ = vaxel_dial.Renderer(self.program, Path(folder), language).draw(script, options)
            return (Path(folder) / name).read_bytes()

    def functions(self):
        """The examples of functions have the values that stand beside them."""
        for name, said in generate.functions().items():
            # Angles are worked out with a pi of eight figures.
            script = f"%N == {said['example']}\nIF ABS(%N-({said['gives']})) > 0.00001 THEN Goto {name}\n"
            try:
                self.draw(script, [], "en")
            except RuntimeError as error:
                self.problems.append(f"{said['example']} is not {said['gives']}: {error}")

    def links(self, language: str):
        """Links within the manual lead to pages and places that there are."""
        for (its, name), page in self.pages.items():
            if its != language:
                continue
            for link in set(re.findall(r'href="([^":?]+)"', page)):
                target, _, place = html.unescape(link).partition("#")
                file = (self.out / language / (target or name)).resolve()
                self.need(file.exists(), f"{language}/{name}: there is no {target}")
                if place and file.suffix == ".html" and file.exists() and file.parent.name in Languages:
                    other = self.pages[(file.parent.name, file.name)]
                    self.need(f'id="{place}"' in other, f"{language}/{name}: there is no {link}")


def look(out: Path, tables: dict, program: str, places: dict) -> bool:
    found = Look(out, tables, program, places)
    found.functions()
    for language in Languages:
        found.words(language)
        found.contents(language)
        found.links(language)
        found.pictures(language)
    for problem in found.problems:
        print(problem, file=sys.stderr)
    print(f"{len(found.pages)} pages, {len(found.problems)} problems")
    return not found.problems

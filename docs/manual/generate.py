"""Makes the pages of the manual that come from the program's tables, in one language.

What the tables do not say stands in reference/*.toml, each text in the three languages.
"""
import re
import subprocess
import tomllib
from pathlib import Path

Reference = Path(__file__).resolve().parent / "reference"
Languages = ("en", "fr", "es")

# What the words of the command table's Takes are called.
Words = tomllib.loads((Reference / "words.toml").read_text(encoding="utf-8"))
# By which other words a command stands in the index.
IndexWords = tomllib.loads((Reference / "index.toml").read_text(encoding="utf-8"))


def anchor(keyword: str) -> str:
    """The name by which the program asks for a keyword's place in the manual."""
    return {"+": "plus-sign", "?": "current-point", "%": "assignment"}.get(keyword, keyword.lower())


def read_references() -> tuple[list[dict], dict]:
    """The families of commands in the order of their pages, and what is said of each group of commands."""
    families = tomllib.loads((Reference / "families.toml").read_text(encoding="utf-8"))["family"]
    groups = {}
    for family in families:
        groups[family["page"]] = tomllib.loads(
            (Reference / f"{family['page']}.toml").read_text(encoding="utf-8"))["group"]
    first = {group["keywords"][0] for page in groups.values() for group in page}
    if unknown := IndexWords.keys() - first:
        raise SystemExit(f"reference/index.toml tells of {sorted(unknown)}, with which no group begins")
    return families, groups


def heading(text: str, sign: str) -> list[str]:
    return [text, sign * len(text) * 2, ""]


def literal(text: str) -> str:
    return f"``{text}``" if text.strip() else ""


def block(kind: str, text: str, options: tuple[str, ...] = ()) -> list[str]:
    lines = [f".. {kind}", *(f"   {option}" for option in options), ""]
    return lines + ["   " + line if line else "" for line in text.rstrip().split("\n")] + [""]


def table(widths: str, head: list[str], rows: list[list[str]]) -> list[str]:
    lines = [".. list-table::", "   :header-rows: 1", f"   :widths: {widths}", ""]
    for row in [head, *rows]:
        for n, cell in enumerate(row):
            first, *others = cell.split("\n")
            lines.append(("   * - " if n == 0 else "     - ") + first)
            lines += ["       " + other for other in others]
    return lines + [""]


class Pages:
    def __init__(self, tables: dict, language: str, program: str):
        self.tables, self.language, self.program = tables, language, program
        self.texts = {row["name"]: row["text"] for row in tables["texts"]}
        self.names = {row["id"]: row["name"] for row in tables["texts"]}
        self.commands = {row["keyword"]: row for row in tables["commands"]}
        self.families, self.groups = read_references()
        self.places: dict[str, str] = {}  # word -> page#anchor

    def say(self, key: str) -> str:
        return Words["say"][key][self.language]

    def add(self, word: str, page: str, name: str | None = None):
        self.places[word.lower()] = f"{page}.html#{name or anchor(word)}"

    # The commands.

    def kind_of(self, takes: str) -> str:
        kind = re.match(r"\*?([A-Za-z]+)", takes.strip()).group(1)
        if kind not in Words["kind"]:
            raise SystemExit(f"reference/words.toml does not say what a parameter {kind} is")
        return Words["kind"][kind][self.language]

    def parameter_rows(self, command: dict, form_index: int) -> list[list[str]]:
        form = command["forms"][form_index]
        takes = [part for part in command["takes"].split("|")[form_index].split(",") if part.strip()]
        rows = []
        for parameter, kinds in zip(form["parameters"][self.language], takes):
            for n, (part, kind) in enumerate(zip(parameter["parts"], kinds.split("§"))):
                name = part["name"] or (parameter["name"] if len(parameter["parts"]) == 1 else "")
                what = self.kind_of(kind)
                if part["choices"] and "colourN" not in kind:
                    what += "\n\n" + "\n".join(f"| ``{word}`` {self.escaped(meaning)}" for word, meaning in part["choices"])
                rows.append([("§ " if n else "") + literal(name), what, self.escaped(part["default"])])
        return rows

    @staticmethod
    def escaped(text: str) -> str:
        return re.sub(r"([*`|\\_])", r"\\\1", text)

    def parameters(self, command: dict) -> list[str]:
        lines = []
        for n, form in enumerate(command["forms"]):
            rows = self.parameter_rows(command, n)
            if not rows:
                continue
            if len(command["forms"]) > 1:
                lines += [f"*{self.say('form')} {n + 1}*", ""]
            lines += table("28 46 26", [self.say("parameter"), self.say("what"), self.say("left-out")], rows)
            if form["repeats"]:
                lines += [self.say("repeats").replace("%1", str(form["repeats"])), ""]
        return lines

    @staticmethod
    def dial(example: dict, *options: str) -> list[str]:
        given = [f":{key}: {value}".rstrip() for key, value in example.items() if key != "script"]
        return block("dial::", example["script"], (*given, *options))

    def faults(self, group: dict) -> list[str]:
        if "fails" not in group:
            return []
        lines = [f"**{self.say('faults')}**", ""]
        for fault in group["fails"]:
            lines += self.dial({"script": fault} if isinstance(fault, str) else fault, ":fails:")
        return lines

    def group_lines(self, group: dict, page: str) -> list[str]:
        keywords = group["keywords"]
        if unknown := [keyword for keyword in keywords if keyword not in self.commands]:
            raise SystemExit(f"reference/{page}.toml tells of {unknown}, which the program does not know")
        command = self.commands[keywords[0]]
        shown = [self.commands[k]["shown"] if k == "%" else k for k in keywords]
        lines: list[str] = []
        entries = []
        for keyword, name in zip(keywords, shown):
            meaning = group["word"][self.language].replace(" ;", ",").replace(";", ",")  # which would be a third level
            entries.append(f"   single: {name}; {self.escaped(meaning)}")
            self.add(keyword, page)
        entries += [f"   single: {word}; {shown[0]}" for word in IndexWords.get(keywords[0], {}).get(self.language, [])]
        # The place stands before the entry, whose own would else go to what is no part of the page.
        spans = "".join(f'<span class="anchor" id="{anchor(keyword)}"></span>' for keyword in keywords)
        lines += block("raw:: html", spans)
        lines += [".. index::", *entries, ""]
        lines += heading(", ".join(shown), "-")
        lines += [f"*{group['word'][self.language]}*" + (f" — {self.say('addition')}" if command["addition"] else ""), ""]
        helps = list(dict.fromkeys(self.commands[k]["help"][self.language] for k in keywords))
        for text in helps:
            lines += block("code-block:: text", text)
        for text in dict.fromkeys(self.commands[k]["help"][self.language] for k in keywords):
            one = next(self.commands[k] for k in keywords if self.commands[k]["help"][self.language] == text)
            if len(helps) > 1:
                lines += [f"``{one['shown']}``", ""]
            lines += self.parameters(one)
        lines += group[self.language].strip().split("\n") + [""]
        if "point" in group:
            lines += [f"**{self.say('current-point')}** {Words['point'][group['point']][self.language]}", ""]
        for example in group.get("examples", []):
            lines += self.dial(example)
        return lines + self.faults(group)

    def family_page(self, family: dict) -> str:
        page = family["page"]
        lines = heading(family["title"][self.language], "=")
        if "intro" in family:
            lines += [family["intro"][self.language].strip(), ""]
        for group in self.groups[page]:
            lines += self.group_lines(group, page)
        return "\n".join(lines)

    # Functions and variables.

    def functions_page(self) -> str:
        said = tomllib.loads((Reference / "functions.toml").read_text(encoding="utf-8"))
        page = "ref-functions"
        lines = heading(said["title"][self.language], "=") + [said["intro"][self.language].strip(), ""]
        rows = []
        for name in self.tables["functions"]:
            if name not in said["function"]:
                raise SystemExit(f"reference/functions.toml does not say what {name} is")
            entry = said["function"][name]
            self.add(name, page)
            rows.append([self.target(name) + literal(entry["form"]), entry[self.language],
                         literal(entry["example"]) + " = " + literal(entry["gives"])])
        lines += table("22 50 28", said["head"][self.language], rows)
        lines += heading(said["variables-title"][self.language], "-")
        lines += [said["variables-intro"][self.language].strip(), ""]
        rows = []
        for name in self.tables["variables"]:
            self.add(name.lstrip("%"), page)
            rows.append([self.target(name.lstrip("%")) + literal(name), said["variable"][name[1:]][self.language]])
        return "\n".join(lines + table("20 80", said["variables-head"][self.language], rows))

    @staticmethod
    def target(name: str) -> str:
        return f':raw-html:`<span class="anchor" id="{anchor(name)}"></span>` '

    # The glossary.

    def glossary(self) -> str:
        rows = []
        for page, groups in self.groups.items():
            for group in groups:
                for keyword in group["keywords"]:
                    meaning = group.get("words", {}).get(keyword, group["word"])[self.language]
                    helps = self.commands[keyword]["help"][self.language]
                    shown = self.commands[keyword]["shown"] if keyword == "%" else keyword
                    rows.append([shown, f"`{self.escaped(shown)} <{page}.html#{anchor(keyword)}>`__", meaning,
                                 self.escaped(group["gist"][self.language] if "gist" in group else
                                              self.purpose(helps))])
        rows.sort(key=lambda row: row[0].upper())
        return "\n".join(table("18 34 48", [self.say("keyword"), self.say("meaning"), self.say("purpose")],
                               [row[1:] for row in rows]))

    @staticmethod
    def purpose(text: str) -> str:
        """The first line of a help text that is no form of the command."""
        lines = text.split("\n")
        return next((line for line in lines[1:] if "=" not in line and line not in ("ou", "or", "o")), lines[-1])

    # The menus.

    def caption(self, row: dict) -> str:
        name = self.names.get(row["caption"])
        return self.texts[name][self.language].replace("&", "").removesuffix("...") if name else ""

    def menus(self) -> str:
        said = tomllib.loads((Reference / "menu.toml").read_text(encoding="utf-8"))
        rows = self.tables["menu"]
        lines, items = [], {row["item"]: row for row in rows}
        for key, title in [(None, said["bar"][self.language])] + [
                (row["item"], self.caption(row)) for row in rows
                if any(other["place"] == row["item"] for other in rows)]:
            inside = [row for row in rows if row["caption"] and
                      (row["place"] == key if key is not None else row["place"] not in items)]
            if key is None:
                inside = [row for row in inside if row["runs"]]
            lines += heading(title, "-")
            lines += table("30 20 50", said["head"][self.language], [self.menu_row(row, said) for row in inside])
        lines += heading(said["keys"][self.language], "-")
        lines += table("30 70", said["keys-head"][self.language], [
            [self.keys(row), self.key_text(row, said)] for row in rows if not row["caption"]])
        return "\n".join(lines)

    def key_text(self, row: dict, said: dict) -> str:
        if row["keys"][0] not in said["key"]:
            raise SystemExit(f"reference/menu.toml does not say what {row['keys'][0]} does")
        return said["key"][row["keys"][0]][self.language]

    def menu_row(self, row: dict, said: dict) -> list[str]:
        name = self.names[row["caption"]]
        text = said["item"].get(name, {}).get(self.language, "")
        if not row["runs"]:
            text = (text + " " + said["not-yet"][self.language]).strip()
        return [self.escaped(self.caption(row)), self.keys(row), text]

    def keys(self, row: dict) -> str:
        return ", ".join(f":kbd:`{key}`" for key in row["keys"])

    # The options of vaxel-render.

    def options(self) -> str:
        said = tomllib.loads((Reference / "options.toml").read_text(encoding="utf-8"))
        rows = []
        for form, text in options_of(self.program, self.language):
            name = form.split()[0].rstrip(",")
            more = said.get(name, {}).get(self.language, "")
            rows.append([self.target("option" + name.replace("--", "-")) + literal(form),
                         self.escaped(text).rstrip() + (". " + more if more else "")])
        return "\n".join(table("30 70", Words["options-head"][self.language], rows))

    # The messages.

    def messages(self) -> str:
        said = tomllib.loads((Reference / "messages.toml").read_text(encoding="utf-8"))
        lines, left = [], [row for row in self.tables["texts"] if is_message(row["name"])]
        for part in said["part"]:
            inside = [row for row in left if part["from"] <= row["id"] <= part["to"]]
            left = [row for row in left if row not in inside]
            lines += self.message_table(part["title"][self.language], inside, said)
        if left:
            lines += self.message_table(said["others"][self.language], left, said)
        return "\n".join(lines)

    def message_table(self, title: str, inside: list[dict], said: dict) -> list[str]:
        rows = [[self.quoted(row["text"][self.language]), said["advice"].get(row["name"], {}).get(self.language, "")]
                for row in inside]
        return heading(title, "~") + table("55 45", said["head"][self.language], rows) if rows else []

    def quoted(self, text: str) -> str:
        lines = [self.escaped(line).strip() for line in text.replace("%%", "%").split("\n") if line.strip()]
        return "\n".join("| " + line for line in lines)

    def write(self, folder: Path):
        made = folder / "_made"
        made.mkdir()
        for family in self.families:
            text = self.family_page(family)
            (folder / f"{family['page']}.rst").write_text(text, encoding="utf-8")
        (folder / "ref-functions.rst").write_text(
            ".. role:: raw-html(raw)\n   :format: html\n\n" + self.functions_page(), encoding="utf-8")
        role = ".. role:: raw-html(raw)\n   :format: html\n\n"
        for name, text in (("glossary", self.glossary()), ("menus", self.menus()),
                           ("options", role + self.options()), ("messages", self.messages())):
            (made / f"{name}.rst").write_text(text, encoding="utf-8")


def functions() -> dict[str, dict]:
    """What is said of each function."""
    return tomllib.loads((Reference / "functions.toml").read_text(encoding="utf-8"))["function"]


def is_message(name: str) -> bool:
    """Whether a text says something that happened; the others stand in menus, in help and in dialogs."""
    return not re.match(r"Help[A-Z?%]|Menu|Option[A-Z]|Default[A-Z]|Language(Count|Name|Code)$|"
                        r"Cli(\w+(Help|Value)|Purpose|Usage)$", name) or name in ("HelpPage",)


def options_of(program: str, language: str) -> list[tuple[str, str]]:
    """The options as vaxel-render itself lists them: what is written, and what it says of it."""
    said = subprocess.run([program, "--help", "--language", language], capture_output=True, check=True).stdout.decode()
    options: list[list[str]] = []
    for line in said.split("\n"):
        if found := re.match(r"  (\S.*?)  +(\S.*)$", line):
            options.append([found[1], found[2]])
        elif line.startswith("      ") and options:
            options[-1][1] += " " + line.strip()
    return [(form, text) for form, text in options]

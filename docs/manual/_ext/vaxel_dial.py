"""The directive ``dial``: a script of Vaxel and the picture that vaxel-render draws of it while the manual is built.

    .. dial::              the script stands in the block below, or, with a name behind "::", in a file of dials/
       :area: 100x70       size of the picture in millimetres; or
       :page: A4           the script is drawn for paper of this size
       :width: 60mm        how wide the picture is shown, where that is not its true size
       :options: --mirror  more options for vaxel-render
       :new: 2, 4-5        lines that are marked
       :only: picture      shows the picture alone; "script" the script alone, which is run all the same
       :notice:            notices are expected, and shown below the picture
       :fails:             the script is in error: its message is shown instead of a picture

A picture is named after everything that it depends on, so that it cannot be that of another script.
"""
import hashlib
import os
import re
import subprocess
import tempfile
from pathlib import Path

from docutils import nodes
from docutils.parsers.rst import Directive, directives
from pygments.lexer import RegexLexer, bygroups, words
from pygments import token
from sphinx.util import logging, parselinenos

Dials = Path(__file__).resolve().parent.parent / "dials"
log = logging.getLogger(__name__)


def picture_name(script: str, options: list[str]) -> str:
    """What the file of a script's picture is called; the check of the manual works it out anew."""
    return "dial-" + hashlib.sha256("\0".join([script, *options]).encode()).hexdigest()[:16] + ".svg"


class Renderer:
    """Runs vaxel-render where the files of the scripts lie."""

    def __init__(self, program: str, pictures: Path, language: str):
        self.program, self.pictures, self.language = program, pictures, language
        pictures.mkdir(parents=True, exist_ok=True)

    def run(self, script: str, options: list[str], output: Path) -> subprocess.CompletedProcess:
        return subprocess.run(
            [self.program, "--language", self.language, "--max-seconds", "20", *options, "-o", output, "-"],
            input=script.encode(), cwd=Dials, capture_output=True, check=False)

    def draw(self, script: str, options: list[str]) -> tuple[str, str]:
        """The name of the picture and what vaxel-render said."""
        name = picture_name(script, options)
        said = self.pictures / (name + "." + self.language)
        if not (self.pictures / name).exists() or not said.exists():
            with tempfile.TemporaryDirectory(dir=self.pictures) as folder:
                done = self.run(script, options, Path(folder) / "picture.svg")
                if done.returncode != 0:
                    raise RuntimeError(done.stderr.decode())
                os.replace(Path(folder) / "picture.svg", self.pictures / name)
                said.write_bytes(done.stderr)
        return name, said.read_text(encoding="utf-8")

    def message(self, script: str, options: list[str]) -> str:
        """What a script in error says; it must fail."""
        with tempfile.TemporaryDirectory() as folder:
            done = self.run(script, options, Path(folder) / "picture.svg")
        if done.returncode != 1:
            raise RuntimeError(f"the script should fail, but vaxel-render ended with {done.returncode}")
        return done.stderr.decode()


class Dial(Directive):
    has_content = True
    optional_arguments = 1
    option_spec = {
        "area": directives.unchanged, "page": directives.unchanged, "width": directives.unchanged,
        "options": directives.unchanged, "new": directives.unchanged, "alt": directives.unchanged,
        "only": lambda given: directives.choice(given, ("picture", "script")),
        "fails": directives.flag, "notice": directives.flag,
    }

    def run(self):
        env = self.state.document.settings.env
        if self.arguments:
            name = Dials / self.arguments[0]
            env.note_dependency(str(name))
            script = name.read_text(encoding="utf-8")
        else:
            script = "\n".join(self.content) + "\n"
        options = self.options.get("options", "").split()
        if "page" in self.options:
            options += ["--target", "printer", "--page", self.options["page"]]
        else:
            options += ["--area", self.options.get("area", "100x70")]
        if "notice" not in self.options and "fails" not in self.options:
            options.append("--strict")
        try:
            return [self.shown(env, script, options)]
        except RuntimeError as error:
            log.error("%s", error, location=(env.docname, self.lineno))
            return []

    def shown(self, env, script, options):
        renderer = env.app.vaxel_renderer
        parts = nodes.container(classes=["dial"])
        if self.options.get("only") != "picture":
            code = nodes.literal_block(script, script, language="vaxel")
            if "new" in self.options:
                lines = parselinenos(self.options["new"], script.count("\n"))
                code["highlight_args"] = {"hl_lines": [line + 1 for line in lines]}
            parts += code
        if "fails" in self.options:
            parts += self.words(renderer.message(script, options), "message")
            return parts
        name, said = renderer.draw(script, options)
        if self.options.get("only") != "script":
            parts += nodes.raw("", self.picture(name, script, options), format="html")
        if said.strip():
            parts += self.words(said, "message")
        return parts

    @staticmethod
    def words(said, kind):
        # What comes from standard input has no name.
        said = re.sub(r"(?m)^<[^>\n]*>:(\d+)", r"script.dat:\1", said).strip()
        said = re.sub(r"\S*/docs/manual/dials/", "", said)
        return nodes.literal_block(said, said, language="text", classes=[kind])

    def picture(self, name, script, options):
        width = self.options.get("width")
        style = f' style="width:{width};height:auto"' if width else ""
        alt = self.options.get("alt") or "Vaxel"
        key = hashlib.sha256(script.encode()).hexdigest()[:16]
        shown = " ".join(options).replace('"', "&quot;")
        return (f'<p class="picture"><img src="_dials/{name}" alt="{alt}"{style} data-script="{key}" '
                f'data-options="{shown}"></p>')


class VaxelLexer(RegexLexer):
    name, aliases = "Vaxel", ["vaxel"]
    flags = re.IGNORECASE | re.MULTILINE
    keywords: tuple[str, ...] = ()
    tokens: dict = {}

    @classmethod
    def with_keywords(cls, keywords):
        cls.keywords = keywords
        named = words([k for k in keywords if k.isalnum()], suffix=r"\b")
        cls.tokens = {
            "root": [
                (r"^(\s*)(Texte|TexteC|ListeVar)(\s*=)", bygroups(token.Text, token.Keyword, token.Operator), "text"),
                (r"^(\s*)([+?])(\s*=|\s*$)", bygroups(token.Text, token.Keyword, token.Operator)),
                (r"^(\s*)(" + named.get() + ")", bygroups(token.Text, token.Keyword)),
                (r"\b(then|goto|alors)\b", token.Keyword),
                (r"(?<=then )(" + named.get() + ")", token.Keyword),
                (r"^\s*[^=,'\n%]+:", token.Name.Label),
                (r"'.*", token.Comment),
                (r"%\{[^}\n]*\}|%%|%[^\s=°+\-*/^)<>,§]*", token.Name.Variable),
                (r"#[0-9a-f]{6}\b|\d+(\.\d+)?(e[+-]?\d+)?|\.\d+", token.Number),
                (r"[=<>+\-*/^§,]", token.Operator),
                (r"\n|\s+", token.Text),
                (r"\w+|.", token.Text),
            ],
            "text": [
                (r"%\{[^}\n]*\}|%%|%[^\s=°+\-*/^)<>,§]+", token.Name.Variable),
                (r"\d+(\.\d+)?", token.Number), (r",", token.Operator),
                (r"\n", token.Text, "#pop"), (r"[^,%\d\n]+|.", token.String)],
        }
        return cls


def copy_pictures(app, error):
    """The pages hold the pictures that were drawn for them, and no others."""
    if error or app.builder.format != "html":
        return
    target = Path(app.outdir) / "_dials"
    target.mkdir(exist_ok=True)
    wanted = set()
    for page in Path(app.outdir).rglob("*.html"):
        wanted.update(re.findall(r'src="(?:\.\./)*_dials/(dial-[0-9a-f]+\.svg)"', page.read_text(encoding="utf-8")))
    for old in target.iterdir():
        if old.name not in wanted:
            old.unlink()
    for name in wanted:
        (target / name).write_bytes((app.vaxel_renderer.pictures / name).read_bytes())


def setup(app):
    app.add_config_value("vaxel_render", "", "env")
    app.add_config_value("vaxel_pictures", "", "")
    app.add_config_value("vaxel_keywords", (), "env")
    app.add_directive("dial", Dial)
    app.add_lexer("vaxel", VaxelLexer)

    def begin(app):
        VaxelLexer.with_keywords(app.config.vaxel_keywords)
        app.vaxel_renderer = Renderer(app.config.vaxel_render, Path(app.config.vaxel_pictures), app.config.language)

    app.connect("builder-inited", begin)
    app.connect("build-finished", copy_pictures)
    return {"parallel_read_safe": True, "parallel_write_safe": True}

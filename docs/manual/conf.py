# The manual's settings for Sphinx. scripts/manual gives what is not the same every time in the environment.
import json
import os
import sys
from pathlib import Path

here = Path(os.environ["VAXEL_MANUAL"])
sys.path.insert(0, str(here / "_ext"))

language = os.environ["VAXEL_LANGUAGE"]
project = {"en": "Vaxel, the manual", "fr": "Vaxel, le manuel", "es": "Vaxel, el manual"}[language]
version = release = os.environ["VAXEL_VERSION"]
extensions = ["vaxel_dial"]
exclude_patterns = ["_made"]
templates_path = [str(here / "_templates")]
html_static_path = [str(here / "_static")]
html_css_files = ["manual.css"]
html_theme = "furo"
html_title = project
html_show_sphinx = False
html_show_copyright = False
html_copy_source = False
html_last_updated_fmt = None
html_theme_options = {
    "light_css_variables": {"color-brand-primary": "#8a2a18", "color-brand-content": "#8a2a18"},
    "dark_css_variables": {"color-brand-primary": "#f0a080", "color-brand-content": "#f0a080"},
}
html_sidebars = {
    "**": ["sidebar/brand.html", "languages.html", "sidebar/search.html", "sidebar/scroll-start.html",
           "sidebar/navigation.html", "sidebar/scroll-end.html"]
}
html_context = {"manual_languages": [("en", "English"), ("fr", "Français"), ("es", "Español")]}
smartquotes = False
highlight_language = "vaxel"
pygments_style = "tango"
pygments_dark_style = "native"
nitpicky = True

vaxel_render = os.environ["VAXEL_RENDER"]
vaxel_pictures = os.environ["VAXEL_PICTURES"]
vaxel_keywords = tuple(c["keyword"] for c in json.loads(Path(os.environ["VAXEL_TABLES"]).read_text())["commands"])

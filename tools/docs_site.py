"""Hooks of the site generator: what the fences of docs/ mean to it (tests/README.md), and colours for scripts."""

import pathlib
import re
import sys
import types

from pygments.lexer import RegexLexer, words
from pygments.lexers import LEXERS
from pygments.token import Comment, Keyword, Name, Number, Operator, String, Text

TABLES = pathlib.Path(__file__).resolve().parent.parent / "src" / "interpreter"
# A fence's kind, as the reader sees it: language and heading.
SHOWN = {
    "basic": ("brindle", ""),
    "syntax": ("text", "Syntax"),
    "output": ("text", "Output"),
    "errors": ("text", "Errors"),
    "input": ("text", "Input"),
    "file": ("text", "{name}"),
    "text": ("text", ""),
    "console": ("console", ""),
    "cpp": ("cpp", ""),
    "sh": ("sh", ""),
    "cmake": ("cmake", ""),
}


def words_of(table, field):
    """The words of a table of the interpreter, so that colours cannot fall behind it."""
    return re.findall(field + r'<?\w*>?\{u"(\w+)"', (TABLES / table).read_text(encoding="utf-8"))


class BrindleLexer(RegexLexer):
    name = "Brindle"
    aliases = ["brindle"]
    flags = re.IGNORECASE
    tokens = {
        "root": [
            (r"#.*", Comment.Single),
            (r"\brem\b.*", Comment.Single),
            (r'"[^"]*"', String),
            (r"^\s*[a-z]\w*:", Name.Label),
            (words(words_of("word_tables.cpp", "Word"), prefix=r"\b", suffix=r"\b"), Keyword),
            (words(words_of("function_table.cpp", "BuiltIn"), prefix=r"\b", suffix=r"(?=\()"), Name.Builtin),
            (words(("True", "False", "Nothing"), prefix=r"\b", suffix=r"\b"), Keyword.Constant),
            (r"\d[\w.]*", Number),
            (r"[a-z]\w*", Name),
            (r"[-+*/%^=<>!~]+", Operator),
            (r"\s+", Text),
            (r".", Text),
        ]
    }


def on_config(config):
    # The highlighter imports lexers by the name of their module; this file has none that can be imported.
    module = types.ModuleType("brindle_lexer")
    module.BrindleLexer, module.__all__ = BrindleLexer, ["BrindleLexer"]
    sys.modules[module.__name__] = module
    LEXERS["BrindleLexer"] = (module.__name__, "Brindle", ("brindle",), (), ())
    return config


def on_page_markdown(markdown, **_):
    def fence(match):
        parts = match.group(2).split()
        language, title = SHOWN.get(parts[0], (parts[0], ""))
        name = next((part[5:] for part in parts if part.startswith("name=")), "")
        title = title.format(name=name) or name
        return f"{match.group(1)}{language}" + (f' title="{title}"' if title else "")

    return re.sub(r"^(```+)([a-z].*)$", fence, markdown, flags=re.MULTILINE)

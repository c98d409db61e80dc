#!/usr/bin/env python3
"""Writes editors/vscode/syntaxes/brindle.tmLanguage.json, the grammar that colours scripts in editors.

The words are those of src/interpreter/word_tables.cpp and function_table.cpp; a word that stands there and
in no group below ends the program, so that no new statement is left without a colour.  Run without arguments
to write the grammar, with --check to compare it with what lies there.

A script is coloured token by token, just as the interpreter reads it: every rule takes one whole token, so
that no rule ever begins in the middle of a word.  What follows from that and surprises people:

- a word runs on to the next delimiter; "#", a double quote, "." and "_" are none, so that x#y is one word;
- a word with ":" directly behind it is a label, whatever it says; one with "(" directly behind it is called;
- a literal ends at the next double quote only, be it lines below.
"""

import argparse
import json
import re
import sys
from pathlib import Path

SOURCE_FOLDER = Path(__file__).resolve().parent.parent
GRAMMAR = SOURCE_FOLDER / "editors/vscode/syntaxes/brindle.tmLanguage.json"

COMMAND_GROUPS = {
    "keyword.control.conditional": "else endif if then",
    "keyword.control.loop": "do for loop next to",
    "keyword.control.flow": "call end goto return run runexe stop throw",
    "keyword.declaration": "declare dim endfunction endsub endtype event function global map sub type watch",
    "keyword.other.block": "alter dialog endalter enddialog endpage page propertysheet",
    "keyword.other.import": "include library",
    "keyword.other.statement": "close closedialog encrypt open playsound print setfocus stayresident timerstart timerstop",
    "comment.line.rem": "rem",
}
KEYWORD_GROUPS = {
    "keyword.control.loop": "while",
    "keyword.other.clause": "alias append as calling clear control create enable font input lib menuitem onexit oninit "
                            "output position remove selection show text title value window",
    "storage.modifier": "byval",
    "storage.type": "char double float integer string unicode",
    "support.type.control": "bitmap button cancelbutton checkbox combobox datetime editmultiline editnumber edittext "
                            "groupbox listbox multilistbox okbutton radiogroup sliderhorz slidervert statictext "
                            "tabcontrol treeview",
}
CONSTANTS = ["false", "nothing", "true"]

# Inside a class of characters. A zero ends lines, so it is one of them.
DELIMITERS = r" \t\r\n\x00;,+\-<>/*%^=()\[\]~:!'@&{}|?$"
LINE_ENDS = r"\r\n\x00"
LETTER = r"[\p{L}&&[\x{0001}-\x{FFFF}]]"
DIGIT = r"[\p{Nd}&&[\x{0001}-\x{FFFF}]]"
WORD = r"(?>%s[^%s]*)" % (LETTER, DELIMITERS)
WORD_END = r"(?![^%s])" % DELIMITERS
BLANKS = r"[ \t]+"


def words_in(path, pattern):
    found = re.findall(pattern, (SOURCE_FOLDER / path).read_text(encoding="utf-8"))
    if not found:
        raise SystemExit("%s: the table of words is not where it was" % path)
    return found


def group(words, groups, kind):
    """The groups as sorted lists; every word has to be in exactly one of them."""
    lists = {scope: sorted(names.split()) for scope, names in groups.items()}
    grouped = sorted(word for names in lists.values() for word in names)
    if grouped != sorted(words):
        raise SystemExit("%ss without one group, or not of the language: %s" %
                         (kind, " ".join(sorted(set(grouped) ^ set(words))) or "a word stands twice"))
    return lists


def any_of(words):
    return "(?i:%s)" % "|".join(sorted(words))


def scoped(scope):
    return {"name": scope + ".brindle"}


def grammar():
    commands = words_in("src/interpreter/word_tables.cpp", r'Word<COMMAND_TYPE>\{u"(\w+)"')
    keywords = words_in("src/interpreter/word_tables.cpp", r'Word<KEYWORD_TYPE>\{u"(\w+)"')
    built_ins = words_in("src/interpreter/function_table.cpp", r'BuiltIn\{u"(\w+)"')
    command_groups = group(commands, COMMAND_GROUPS, "command")
    keyword_groups = group(keywords, KEYWORD_GROUPS, "keyword")

    command = any_of(commands) + WORD_END
    # A name that is given by a statement: no word of the language, no label and nothing dotted.
    plain_name = r"(?!%s)(%s)(?!:)" % (command, WORD)
    type_name = r"(?!(?:%s)%s)((?>%s[^.%s]*))(?![.(:])" % (any_of(commands + keywords), WORD_END, LETTER, DELIMITERS)

    repository = {
        "comment": {**scoped("comment.line.number-sign"), "match": "(#)[^%s]*" % LINE_ENDS,
                    "captures": {"1": scoped("punctuation.definition.comment")}},
        "remark": {**scoped("comment.line.rem"), "match": "(?i:rem)%s[^%s]*" % (WORD_END, LINE_ENDS)},
        "string": {**scoped("string.quoted.double"), "begin": '"', "end": '"',
                   "beginCaptures": {"0": scoped("punctuation.definition.string.begin")},
                   "endCaptures": {"0": scoped("punctuation.definition.string.end")}},
        "number": {**scoped("constant.numeric"), "match": "%s[^%s]*" % (DIGIT, DELIMITERS)},
        "label": {"match": "(%s)(:)" % WORD,
                  "captures": {"1": scoped("entity.name.label"), "2": scoped("punctuation.separator.label")}},
        # What stands behind the name is never read.
        "import": {**scoped("meta.import"), "begin": "(%s)%s" % (any_of(command_groups["keyword.other.import"]), WORD_END),
                   "end": "(?=[%s])|$" % LINE_ENDS, "beginCaptures": {"1": scoped("keyword.other.import")},
                   "patterns": [{"include": "#string"},
                                {**scoped("comment.line.ignored"), "match": r'[^\s"][^%s]*' % LINE_ENDS}]},
        "enciphered": {"match": "((?i:encrypt))%s([^%s]*)" % (WORD_END, LINE_ENDS),
                       "captures": {"1": scoped("keyword.other.statement"), "2": scoped("string.unquoted.enciphered")}},
        "procedure": {"match": r"((?i:function|sub))%s%s" % (BLANKS, plain_name),
                      "captures": {"1": scoped("keyword.declaration"), "2": scoped("entity.name.function")}},
        "record": {"match": r"((?i:type))%s%s" % (BLANKS, type_name),
                   "captures": {"1": scoped("keyword.declaration"), "2": scoped("entity.name.type")}},
        "jump": {"match": r"((?i:goto))%s%s" % (BLANKS, plain_name),
                 "captures": {"1": scoped("keyword.control.flow"), "2": scoped("entity.name.label")}},
        # Only here may "as" be followed by a type of the script's own.
        "variables": {**scoped("meta.declaration"), "begin": "((?i:dim|global))%s" % WORD_END,
                      "end": r"(?=[:%s])|$|(?=%s)" % (LINE_ENDS, command),
                      "beginCaptures": {"1": scoped("keyword.declaration")},
                      "patterns": [{"match": r"((?i:as))%s%s" % (BLANKS, type_name),
                                    "captures": {"1": scoped("keyword.other.clause"), "2": scoped("entity.name.type")}},
                                   {"include": "#tokens"}]},
        "command": {"patterns": [{**scoped(scope), "match": any_of(words) + WORD_END}
                                 for scope, words in command_groups.items() if not scope.startswith("comment")]},
        "call": {"patterns": [
            {**scoped("support.function"), "match": r"%s(?=\()" % any_of(built_ins)},
            {"match": r"(%s[^.%s]*)(\.)([^%s]*)(?=\()" % (LETTER, DELIMITERS, DELIMITERS),
             "captures": {"1": scoped("variable.other.object"), "2": scoped("punctuation.accessor"),
                          "3": scoped("entity.name.function.member")}},
            {**scoped("entity.name.function.call"), "match": r"%s(?=\()" % WORD}]},
        "dotted": {"match": r"(%s[^.%s]*)(\.)([^%s]*)" % (LETTER, DELIMITERS, DELIMITERS),
                   "captures": {"1": scoped("variable.other.object"), "2": scoped("punctuation.accessor"),
                                "3": scoped("variable.other.property")}},
        "keyword": {"patterns": [{**scoped(scope), "match": any_of(words) + WORD_END}
                                 for scope, words in keyword_groups.items()]},
        "constant": {**scoped("constant.language"), "match": any_of(CONSTANTS) + WORD_END},
        "variable": {**scoped("variable.other"), "match": WORD},
        "operator": {"patterns": [
            # Not of the language, though other languages have them.
            {**scoped("invalid.illegal.operator"), "match": r">=|=<"},
            {**scoped("keyword.operator.comparison"), "match": r"==|<>|!=|<=|=>|~~|[<>]"},
            {**scoped("keyword.operator.assignment"), "match": r"="},
            {**scoped("keyword.operator.arithmetic"), "match": r"[-+*/^%]"}]},
        "punctuation": {"patterns": [
            {**scoped("punctuation.section.parens"), "match": r"[()]"},
            {**scoped("punctuation.section.brackets"), "match": r"[\[\]]"},
            {**scoped("punctuation.separator"), "match": r"[,;:]"},
            {**scoped("punctuation.other"), "match": r"[~!'@&{}|?$]"}]},
        "stray": {**scoped("invalid.illegal.character"), "match": r"[^%s]" % DELIMITERS},
    }
    order = ["comment", "string", "number", "label", "remark", "import", "enciphered", "procedure", "record", "jump",
             "variables", "command", "call", "dotted", "keyword", "constant", "variable", "operator", "punctuation", "stray"]
    if sorted(order) != sorted(repository):
        raise SystemExit("rules without a place: %s" % " ".join(sorted(set(order) ^ set(repository))))
    repository["tokens"] = {"patterns": [{"include": "#" + name} for name in order]}
    return {"name": "Brindle", "scopeName": "source.brindle", "fileTypes": ["bas"],
            "patterns": [{"include": "#tokens"}], "repository": repository}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="only compare with the file")
    arguments = parser.parse_args()
    text = json.dumps(grammar(), indent=2, ensure_ascii=False) + "\n"
    if not arguments.check:
        GRAMMAR.write_text(text, encoding="utf-8")
    elif GRAMMAR.read_text(encoding="utf-8") != text:
        print("%s does not fit the tables of words: run tools/generate_grammar.py" % GRAMMAR.relative_to(SOURCE_FOLDER))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Compares the language reference and the error messages with the tables of the interpreter.

Usage: check_reference.py [--self-test] SOURCE_DIR

Every statement word, keyword and built-in function has an entry in docs/reference: a heading "### `word`" (several words
are separated by commas) with its syntax and an example that runs, or for keywords a row with an anchor. No entry names a
word that is not there, and the index leads to every one. Every page has its place in the site. docs/errors.md has every number with its exact text; a number
that is reported has an example that reports it.
"""

import argparse
import pathlib
import re
import shutil
import sys
import tempfile


# A stop that the host asks for shows no box, so that no script can show it.
SILENT = {64}


def read(path):
    return path.read_text(encoding="utf-8")


def words_of_language(source):
    tables = read(source / "src/interpreter/word_tables.cpp")
    functions = read(source / "src/interpreter/function_table.cpp")
    commands, keywords = tables.split("kKeywords = {", 1)
    return {
        "statement": set(re.findall(r'Word<COMMAND_TYPE>\{u"(\w+)"', commands)),
        "keyword": set(re.findall(r'Word<KEYWORD_TYPE>\{u"(\w+)"', keywords)),
        "function": set(re.findall(r'BuiltIn\{u"(\w+)"', functions)),
    }


def messages(source):
    table = read(source / "src/values/messages.cpp").split("kMessages = {", 1)[1].split("};", 1)[0]
    texts = re.findall(r'^ +u"((?:[^"\\]|\\.)*)",', table, re.MULTILINE)
    return [text.replace("\\n", "\n").replace('\\"', '"') for text in texts]


def reported_numbers(source):
    return {int(number) for number in re.findall(r"= (\d+)", read(source / "src/interpreter/error_numbers.h"))}


def sections(text):
    """Headings of the third level with what stands below them, fences included."""
    found = []
    in_fence = False
    for line in text.split("\n"):
        if line.startswith("```"):
            in_fence = not in_fence
        if not in_fence and re.match(r"#+ ", line):
            found.append([line, ""])
        elif found:
            found[-1][1] += line + "\n"
    return [(line.removeprefix("### "), body) for line, body in found if line.startswith("### ")]


def anchor_of(heading):
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def check_words(source):
    problems = []
    language = words_of_language(source)
    known = set().union(*language.values())
    entries = {}  # word: where it is described
    for path in sorted((source / "docs/reference").glob("*.md")):
        text = read(path)
        for heading, body in sections(text):
            words = re.findall(r"`(\w+)`", heading)
            if not words:
                continue
            for word in words:
                entries.setdefault(word, set()).add(f"{path.name}#{anchor_of(heading)}")
                if word not in known:
                    problems.append(f"{path}: the language has no word {word}")
            if "\n```syntax\n" not in body or not re.search(r"^```(basic|console)\b", body, re.MULTILINE):
                problems.append(f"{path}: {heading} has no syntax or no example")
        for anchor, word in re.findall(r'<a id="([^"]+)"></a>`(\w+)', text):
            entries.setdefault(word, set()).add(f"{path.name}#{anchor}")
            if word not in language["keyword"] or anchor != word:
                problems.append(f"{path}: {word} is no keyword, or its anchor is not its name")
    index = dict(re.findall(r"\[`(\w+)`\]\(([^)]+)\)", read(source / "docs/reference/index.md")))
    for kind, words in language.items():
        for word in sorted(words):
            if word not in entries:
                problems.append(f"docs/reference: no entry for the {kind} {word}")
            elif index.get(word) not in entries[word]:
                problems.append(f"docs/reference/index.md: {word} does not lead to {' or '.join(sorted(entries[word]))}")
    problems += [f"docs/reference/index.md: the language has no word {word}" for word in sorted(set(index) - known)]
    return len(entries), problems


def check_errors(source):
    problems = []
    texts = messages(source)
    reported = reported_numbers(source)
    page = read(source / "docs/errors.md")
    shown = {}
    for heading, body in sections(page):
        number = int(heading.removeprefix("Error "))
        text = re.search(r"^```text\n(.*?)\n```$", body, re.MULTILINE | re.DOTALL)
        shown[number] = text.group(1) if text else ""
        # What an example reports begins with the message itself.
        report = "```errors\n" + shown[number].rstrip() + "\n"
        if number not in SILENT and report not in re.sub(r" +$", "", body, flags=re.MULTILINE):
            problems.append(f"docs/errors.md: no example reports error {number}")
        if number not in reported:
            problems.append(f"docs/errors.md: nothing reports error {number}")
    unused = {int(number): text for number, text in re.findall(r"^\| (\d+) \| (.*?) \|", page, re.MULTILINE)}
    unused.update({int(number): text for number, text in re.findall(r"(\d+) is `(\w+)`", page)})
    for number, text in enumerate(texts):
        wanted = text if number else "Error loading resource string."
        if number in reported and shown.get(number, "").rstrip() != wanted.rstrip():
            problems.append(f"docs/errors.md: error {number} is not shown as: {wanted}")
        if number not in reported and unused.get(number) != wanted:
            problems.append(f"docs/errors.md: number {number} is not listed as: {wanted}")
    problems += [f"docs/errors.md: {number} is reported" for number in sorted(set(unused) & reported)]
    return len(texts), problems


def check_contents(source):
    """Every page has a place in the site and can be reached from the start page."""
    problems = []
    site = set(re.findall(r": ([\w/-]+\.md)$", read(source / "mkdocs.yml"), re.MULTILINE))
    contents = read(source / "docs/index.md") + read(source / "docs/reference/index.md").replace("](", "](reference/")
    pages = {str(path.relative_to(source / "docs")) for path in (source / "docs").rglob("*.md")}
    for page in sorted(pages):
        if page not in site:
            problems.append(f"mkdocs.yml: {page} has no place")
        if page != "index.md" and not re.search(r"\]\(" + re.escape(page) + r"[#)]", contents):
            problems.append(f"docs/index.md: no link to {page}")
    return problems


def check(source):
    words, problems = check_words(source)
    numbers, more = check_errors(source)
    return words, numbers, problems + more + check_contents(source)


FILES = ("src/interpreter/word_tables.cpp", "src/interpreter/function_table.cpp", "src/interpreter/error_numbers.h",
         "src/values/messages.cpp", "mkdocs.yml")

# What is changed in a copy, and what must be said of it.
CHANGES = (
    ("docs/reference/text.md", "### `left`", "### left", "no entry for the function left"),
    ("docs/reference/text.md", "### `left`", "### `leftmost`", "the language has no word leftmost"),
    ("docs/reference/text.md", "```syntax\nleft(", "```text\nleft(", "has no syntax or no example"),
    ("docs/reference/index.md", "[`left`](text.md#left)", "", "left does not lead to text.md#left"),
    ("docs/reference/dialogs.md", '<a id="slidervert"></a>', "", "no entry for the keyword slidervert"),
    ("src/interpreter/word_tables.cpp", 'u"watch"', 'u"watching"', "no entry for the statement watching"),
    ("src/values/messages.cpp", "Expected: TO", "Expected: to", "error 10 is not shown as: Expected: to"),
    ("src/values/messages.cpp", "Undefined label", "No label", "number 8 is not listed as: No label"),
    ("src/interpreter/error_numbers.h", "kErrorExpectedTo = 10,", "kErrorExpectedTo = 10,\n  kErrorNew = 11,",
     "error 11 is not shown"),
    ("mkdocs.yml", "      - Maps: reference/maps.md\n", "", "reference/maps.md has no place"),
    ("docs/index.md", "[Internals](internals.md)", "", "no link to internals.md"),
    ("docs/errors.md", "\n```errors\nExpected: TO\n", "\n```errors\nSyntax error\n", "no example reports error 10"),
)


def self_test(source):
    failed = 0
    for name, old, new, wanted in CHANGES:
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder)
            shutil.copytree(source / "docs", copy / "docs")
            for file in FILES:
                (copy / file).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source / file, copy / file)
            text = read(copy / name)
            (copy / name).write_text(text.replace(old, new, 1), encoding="utf-8")
            problems = check(copy)[2]
            if old not in text or not any(wanted in problem for problem in problems):
                failed += 1
                print("FAIL", name, wanted, problems)
    print(f"{len(CHANGES) - failed} changes noticed, {failed} not")
    return 1 if failed else 0


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--self-test", action="store_true")
    parser.add_argument("source", type=pathlib.Path)
    options = parser.parse_args()
    if options.self_test:
        return self_test(options.source)
    words, numbers, problems = check(options.source)
    for problem in problems:
        print("FAIL " + problem)
    print(f"{words} words, {numbers} numbers, {len(problems)} faults")
    return 1 if problems or not words or not numbers else 0


if __name__ == "__main__":
    sys.exit(main())

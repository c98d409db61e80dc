"""The pages of the documentation as their tests see them: fences, examples, anchors and links.

What the fences say: README.md, "Examples of the documentation".
"""

import dataclasses
import pathlib
import re
import shlex

# Fences that say what an example does, those that are examples, and those that are only read.
RESULTS = ("output", "errors", "input", "file")
EXAMPLES = ("basic", "console", "cpp")
READ_ONLY = ("syntax", "text", "sh", "cmake")
WORDS = {
    "basic": {"name", "keep", "needs", "options", "exit", "prompts"},
    "console": {"keep", "needs"},
    "cpp": {"name", "keep", "shared", "part", "prompts"},
    "text": {"name"},
    "cmake": {"name"},
    "file": {"name"},
}


class Fault(Exception):
    """A page that breaks the convention."""


@dataclasses.dataclass
class Fence:
    page: pathlib.Path
    line: int
    kind: str
    words: dict
    text: str
    depth: int  # of the heading it stands under
    before: str = ""  # declarations of the comment before a part of a program


@dataclasses.dataclass
class Example:
    fence: Fence
    files: list  # the stored files that are there
    results: dict = dataclasses.field(default_factory=dict)
    made: list = dataclasses.field(default_factory=list)  # fences that show files it writes


@dataclasses.dataclass
class Page:
    path: pathlib.Path
    examples: list
    anchors: set
    links: list  # (line, target)


def words_of(page, line, info):
    try:
        parts = shlex.split(info)
    except ValueError as problem:
        raise Fault(f"{page}:{line}: {problem} in the words of the fence") from problem
    if not parts:
        raise Fault(f"{page}:{line}: a fence without a language")
    kind, words = parts[0], {}
    if kind not in EXAMPLES + RESULTS + READ_ONLY:
        raise Fault(f"{page}:{line}: unknown kind of fence: {kind}")
    for part in parts[1:]:
        key, _, value = part.partition("=")
        if key not in WORDS.get(kind, ()):
            raise Fault(f"{page}:{line}: a fence {kind} knows no word {key}")
        words[key] = value or True
    return kind, words


def anchor_of(heading, taken):
    """The anchor that readers of Markdown give a heading; an explicit {#anchor} wins."""
    explicit = re.search(r"\{#([\w-]+)\}\s*$", heading)
    if explicit:
        return explicit.group(1)
    plain = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", heading.replace("`", ""))
    plain = re.sub(r"[^\w\- ]", "", plain.strip().lower()).replace(" ", "-")
    name, count = plain, 0
    while name in taken:
        count += 1
        name = f"{plain}_{count}"
    return name


def read_page(path):
    """The examples of a page, in order, and its links. Faults of the convention are raised."""
    lines = path.read_text(encoding="utf-8").split("\n")
    fences, anchors, prose = [], set(), []
    depth, index, before, was_blank, in_list = 1, 0, "", True, False
    while index < len(lines):
        line = lines[index]
        opening = re.match(r"^( {0,3})(`{3,})(.*)$", line)
        if opening:
            end = index + 1
            while end < len(lines) and lines[end].strip() != opening.group(2):
                end += 1
            if end == len(lines):
                raise Fault(f"{path}:{index + 1}: a fence without an end")
            kind, words = words_of(path, index + 1, opening.group(3))
            text = "".join(inner + "\n" for inner in lines[index + 1 : end])
            fences.append(Fence(path, index + 1, kind, words, text, depth, before))
            prose += [""] * (end + 1 - index)
            before, was_blank, index = "", False, end + 1
            continue
        heading = re.match(r"^(#+) (.*)$", line)
        if heading:
            depth = len(heading.group(1))
            anchors.add(anchor_of(heading.group(2), anchors))
            fences.append(depth)
            in_list = False
        elif re.match(r"^ {4}", line) and line.strip() and was_blank and not in_list:
            raise Fault(f"{path}:{index + 1}: an indented block is not tested; make it a fence")
        elif re.match(r"^\s*([-*]|\d+\.) ", line):
            in_list = True
        elif line.strip() and not line.startswith(" "):
            in_list = False
        declared = re.match(r"^<!-- declare: (.*) -->$", line)
        if declared:
            before = declared.group(1)
        anchors.update(re.findall(r"<a id=\"([^\"]+)\"", line))
        prose.append(re.sub(r"`[^`]*`", "``", line))
        was_blank = not line.strip()
        index += 1
    text = "\n".join(prose)  # a link may go on in the next line
    links = [(text.count("\n", 0, link.start()) + 1, link.group(1))
             for link in re.finditer(r"!?\[[^]]*\]\(([^)\s]+)\)", text)]
    return Page(path, examples_of(fences), anchors, links)


def is_run(fence, following):
    """A named script without a result is only stored; everything else of a kind that runs, runs."""
    if fence.kind != "basic" or "name" not in fence.words:
        return fence.kind in EXAMPLES
    return isinstance(following, Fence) and following.kind in RESULTS


def examples_of(fences):
    stored, examples, last, unused = [], [], None, {}
    for number, fence in enumerate(fences):
        if isinstance(fence, int):  # a heading ends the files of its own and of deeper sections
            stored = [file for file in stored if file.depth < fence]
            last = None
            continue
        where = f"{fence.page}:{fence.line}"
        if fence.kind in RESULTS:
            if last is None:
                raise Fault(f"{where}: {fence.kind} without an example before it in its section")
            if fence.kind == "file":
                if "name" not in fence.words:
                    raise Fault(f"{where}: file needs name=")
                last.made.append(fence)
            elif last.fence.kind == "console" or fence.kind in last.results:
                raise Fault(f"{where}: this example has its {fence.kind} already")
            else:
                last.results[fence.kind] = fence
            continue
        for name in [name for name, old in unused.items() if mentions(fence, old)]:
            del unused[name]
        following = fences[number + 1] if number + 1 < len(fences) else None
        if is_run(fence, following):
            last = Example(fence, list(stored))
            examples.append(last)
        elif fence.kind in ("text", "cmake", "basic") and "name" not in fence.words:
            last = None
            continue
        elif fence.kind in ("syntax", "sh"):
            last = None
            continue
        else:
            last = None
            unused[fence.words["name"]] = fence
        if "name" in fence.words:
            stored = [file for file in stored if file.words["name"] != fence.words["name"]] + [fence]
    for fence in unused.values():
        raise Fault(f"{fence.page}:{fence.line}: {fence.words['name']} is shown, but no example uses it")
    return examples


def mentions(fence, file):
    name = pathlib.PurePath(file.words["name"])
    wildcard = "*" + name.suffix
    return any(word in fence.text for word in (name.name, name.stem, wildcard))


def check_links(pages):
    """Every link inside the documentation leads to a file, and to a heading where it names one."""
    problems = []
    by_path = {page.path.resolve(): page for page in pages}
    for page in pages:
        for line, target in page.links:
            if re.match(r"^\w+:", target):
                continue
            name, _, anchor = target.partition("#")
            path = (page.path.parent / name).resolve() if name else page.path.resolve()
            if not path.exists():
                problems.append(f"{page.path}:{line}: no such file: {target}")
            elif anchor and path in by_path and anchor not in by_path[path].anchors:
                problems.append(f"{page.path}:{line}: no such heading: {target}")
    return problems


def find_pages(places):
    found = []
    for place in map(pathlib.Path, places):
        found += sorted(place.rglob("*.md")) if place.is_dir() else [place]
    return found

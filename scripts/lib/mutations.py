# SPDX-License-Identifier: MIT
"""Single changes to the product's sources: made by rules, or read from lists."""
import re
from dataclasses import dataclass
from pathlib import Path

FOLDERS = ("console", "core", "framework", "gateways", "library", "platform", "simulator")
SUFFIXES = (".cpp", ".h")
# Three levels of parentheses are more than any line here has inside a condition.
PAREN = r"[^()]*"
for _ in range(3):
    PAREN = rf"(?:[^()]|\({PAREN}\))*"

ANY_CHANGE = "*"  # in the list of those that make no difference, in place of the changed lines

LITERAL = r'"(?:\\.|[^"\\\n])*"'
NOT_CODE = re.compile(
    rf"//[^\n]*|/\*.*?\*/|^[ \t]*#[^\n]*(?<!\\)(?:(?<=\\)\n[^\n]*)*|{LITERAL}|"
    r"'(?:\\[^'\n]+|[^'\\\n])'", re.DOTALL | re.MULTILINE)


class ListError(Exception):
    """A rule or a list that cannot be read, or does not fit the sources."""


@dataclass(frozen=True)
class Change:
    file: str  # relative to the repository
    begin: int
    end: int
    text: str  # what stands between begin and end afterwards
    title: str
    line: int
    before: tuple  # the lines that are changed, and what becomes of them, without indentation
    after: tuple

    def applied(self, source):
        return source[:self.begin] + self.text + source[self.end:]

    def __str__(self):
        return f"{self.file}:{self.line}: {self.title}"

    def shown(self):
        lines = [f"  - {line}" for line in self.before] + [f"  + {line}" for line in self.after]
        return "\n".join([str(self), *lines])


def make_change(file, source, begin, end, text, title):
    first = source.rfind("\n", 0, begin) + 1
    last = source.find("\n", end)
    last = len(source) if last < 0 else last
    before = source[first:last]
    after = source[first:begin] + text + source[end:last]
    strip = lambda lines: tuple(line.strip() for line in lines.split("\n"))
    return Change(file, begin, end, text, title, source.count("\n", 0, first) + 1, strip(before),
                  strip(after))


def masked(source):
    """@return (code, literals): the source, as long as it is, with everything blanked out that is not
    code; and the spans of its strings"""
    code = list(source)
    literals = []
    for match in NOT_CODE.finditer(source):
        token = match.group()
        for at in range(match.start(), match.end()):
            if code[at] != "\n":
                code[at] = " "
        if token[0] in "\"'":
            code[match.start()] = code[match.end() - 1] = token[0]
            for at in range(match.start() + 1, match.end() - 1):
                code[at] = "_"
        if token[0] == '"':
            literals.append(match.span())
    return "".join(code), literals


class Rule:
    def __init__(self, line):
        name, colon, rest = line.partition(": ")
        pattern, *replacements = re.split(r" =>(?: |$)", rest)
        if not colon or not replacements:
            raise ListError(f"a rule without a name, a pattern or a replacement: {line}")
        self.name = name
        self.pattern = re.compile(pattern.replace("PAREN", PAREN), re.MULTILINE)
        self.replacements = replacements

    def matches(self, source, code, literals):
        if not self.name.startswith("text"):
            return self.pattern.finditer(code)
        return filter(None, (self.pattern.fullmatch(source, *span) for span in literals))

    def changes(self, file, source, code, literals):
        for match in self.matches(source, code, literals):
            for replacement in self.replacements:
                text = re.sub(r"\\(\d)",
                              lambda group: source[slice(*match.span(int(group.group(1))))], replacement)
                if text != source[match.start():match.end()]:
                    yield make_change(file, source, match.start(), match.end(), text, self.name)


def content_lines(path):
    """@return (number, line) of the lines of a list that are neither empty nor comments."""
    for number, line in enumerate(path.read_text().split("\n"), 1):
        if line.strip() and not line.startswith("#"):
            yield number, line


def read_rules(path):
    return [Rule(line) for _, line in content_lines(path)]


@dataclass
class Listed:
    """An entry of a list: lines of a file, and what stands there instead."""
    title: str
    place: str  # of the entry, for messages
    file: str = ""
    before: tuple = ()
    after: tuple = ()


def read_list(path):
    entries = []
    for number, line in content_lines(path):
        sign, text = line[0], line[2:].strip()
        if sign == "=":
            entries.append(Listed(text, f"{path.name}:{number}"))
        elif not entries or sign not in "@-+":
            raise ListError(f"{path.name}:{number}: not understood: {line}")
        elif sign == "@":
            entries[-1].file = text
        elif sign == "-":
            entries[-1].before += (text,)
        else:
            entries[-1].after += (text,)
    return entries


def find_lines(source, lines):
    """@return the spans of these lines, one after the other, whatever their indentation."""
    pattern = r"\n[ \t]*".join(re.escape(line) for line in lines)
    return [match.span(1) for match in re.finditer(rf"^[ \t]*({pattern})$", source, re.MULTILINE)]


def listed_change(root, entry):
    file = root / entry.file
    if not entry.file or not file.is_file() or not entry.before:
        raise ListError(f"{entry.place}: no such file, or no line to change: {entry.title}")
    source = file.read_text()
    spans = find_lines(source, entry.before)
    if len(spans) != 1:
        raise ListError(f"{entry.place}: {entry.file} has the lines to change "
                        f"{len(spans)} times: {entry.title}")
    return make_change(entry.file, source, *spans[0], "\n".join(entry.after) or ";", entry.title)


def listed_changes(root, path):
    return [listed_change(root, entry) for entry in read_list(path)]


def misfits(root, path):
    """@return what is wrong with a list's entries, a line for each that does not fit the sources"""
    for entry in read_list(path):
        try:
            listed_change(root, entry)
        except ListError as error:
            yield str(error)


def files_of(root, places):
    files = []
    for place in places:
        path = (root / place).resolve()
        if not path.exists() or root not in [path, *path.parents]:
            raise ListError(f"no such file or folder: {place}")
        found = [path] if path.is_file() else sorted(path.rglob("*"))
        found = [file.relative_to(root).as_posix() for file in found if file.suffix in SUFFIXES]
        files += [file for file in found if file.split("/")[0] in FOLDERS]
    return list(dict.fromkeys(files))


def rule_changes(root, rules, files):
    changes = []
    for file in files:
        source = (root / file).read_text()
        code, literals = masked(source)
        made = {}
        for rule in rules:
            for change in rule.changes(file, source, code, literals):
                made.setdefault(change.applied(source), change)  # two rules may say the same
        changes += sorted(made.values(), key=lambda change: (change.begin, change.end))
    return changes


def without_equivalent(root, changes, path):
    """@return (the others, how many were left out)"""
    outcome = lambda change: (change.file, re.sub(r"\s+", " ", change.applied(sources[change.file])))
    known = listed_changes(root, path)
    sources = {change.file: (root / change.file).read_text() for change in changes + known}
    any_change = [change for change in known if change.text == ANY_CHANGE]
    outcomes = {outcome(change) for change in known}

    def differs(change):
        return outcome(change) not in outcomes and not any(
            lines.file == change.file and lines.begin <= change.begin and change.end <= lines.end
            for lines in any_change)

    others = [change for change in changes if differs(change)]
    return others, len(changes) - len(others)

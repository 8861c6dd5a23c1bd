# SPDX-License-Identifier: MIT
"""Reads a public header: its comments and the declarations that they stand before.

Knows the layout of the headers in library/api/ and no other C: a head comment of paragraphs and lists,
sections that begin with a comment "--- TITLE; REMARK ---", and a doc comment before everything
that is declared. Raises HeaderError for a declaration whose comment is missing or does not fit.
"""
import re
from dataclasses import dataclass, field


class HeaderError(Exception):
    pass


@dataclass
class Declaration:
    name: str
    code: list  # lines as the header has them, without the import macro
    text: str  # what the comment says before its tags; paragraphs by empty lines
    parameters: list = field(default_factory=list)  # (name, text)
    result: str = ""
    function_type: str = ""  # name of the type for this function
    fields: list = field(default_factory=list)  # (name, type, text) of a record
    constants: list = field(default_factory=list)  # (name, value, text) of an enumeration
    members: list = field(default_factory=list)  # declarations of a class

    def summary(self):
        return re.split(r"(?<=[.:;]) ", self.text.replace("\n", " "), maxsplit=1)[0].rstrip(".:;")


@dataclass
class Section:
    title: str
    text: str
    declarations: list


@dataclass
class Header:
    name: str
    text: str
    sections: list


DOC = re.compile(r"/\*\*(?!<)(.*?)\*/", re.DOTALL)
SECTION = re.compile(r"/\* --- (.+?) -+(.*?)\*/", re.DOTALL)
FUNCTION = re.compile(r"VELQUIN_API ([\w ]+?\*?) ?(~?\w+)\((.*?)\);", re.DOTALL)
CONSTRUCTOR = re.compile(r"VELQUIN_API (~?\w+)\(\);")
FUNCTION_TYPE = re.compile(r"\s*typedef ([\w ]+?\*?) ?\(\*(\w+)Fn\)\((.*?)\);", re.DOTALL)
RECORD = re.compile(r"typedef struct (\w+) \{(.*?)\} \1;", re.DOTALL)
FIELD = re.compile(r"(\w+) (\w+);\s*/\*\*<(.*?)\*/", re.DOTALL)
ENUMERATION = re.compile(r"typedef enum (\w+) \{(.*?)\} \1;", re.DOTALL)
CONSTANT = re.compile(r"(\w+) = (\d+),?\s*/\*\*<(.*?)\*/", re.DOTALL)
CLASS = re.compile(r"class (\w+) \{\n public:\n(.*?)\n private:.*?\n\};", re.DOTALL)
ALIAS = re.compile(r"typedef [^;]*?(\w+);", re.DOTALL)


def one_line(text):
    return " ".join(text.split())


def comment_text(raw):
    """A comment's lines without their stars; the rest of the indentation stays."""
    lines = [re.sub(r"^ ?\*( |$)", "", re.sub(r"^\s+", " ", line)) for line in raw.split("\n")]
    return "\n".join(line.rstrip() for line in lines).strip()


def parameter_names(parameters):
    """The names in a function's list of parameters."""
    if one_line(parameters) in ("", "void"):
        return []
    return [re.search(r"(\w+)$", one_line(p)).group(1) for p in parameters.split(",")]


def parameter_types(parameters):
    return [re.sub(r" ?\w+$", "", one_line(p)) for p in parameters.split(",")]


def split_tags(text):
    """The comment before its tags, [(parameter, text)], result."""
    parts = re.split(r"@(param|return)\b", text)
    parameters, result = [], ""
    for tag, body in zip(parts[1::2], parts[2::2]):
        if tag == "return":
            result = one_line(body)
        else:
            name, _, rest = one_line(body).partition(" ")
            parameters.append((name, rest))
    return parts[0].strip(), parameters, result


def code_lines(code):
    return code.replace("VELQUIN_API ", "").split("\n")


def check_function(declaration, parameters, returns):
    names = parameter_names(parameters)
    told = [name for name, _ in declaration.parameters]
    # What the first argument of all of them is for, the rules at the head say.
    expected = [name for name in names if name != "window" or "window" in told]
    if told != expected:
        raise HeaderError(f"{declaration.name}: @param {told} for the parameters {names}")
    if bool(declaration.result) != (returns != "void"):
        raise HeaderError(f"{declaration.name}: @return does not fit the result {returns}")


def read_function(match, doc, owner):
    returns, name, parameters = match.groups()
    text, told, result = split_tags(doc)
    # The columns that the macro took are given back to the lines below.
    code = re.sub(r"\n {12}(?= )", "\n", match.group(0)) if not owner else match.group(0)
    declaration = Declaration(owner + name, code_lines(code), text or result, told, result)
    check_function(declaration, parameters, returns)
    return declaration


def read_function_type(source, position, function, declaration):
    match = FUNCTION_TYPE.match(source, position)
    returns, name, parameters = function.groups()
    if not match or match.group(2) != name:
        raise HeaderError(f"{name}: no type {name}Fn follows")
    types = [one_line(p) for p in match.group(3).split(",")]
    if match.group(1) != returns or types != parameter_types(parameters):
        raise HeaderError(f"{name}: the type {name}Fn is another one")
    declaration.function_type = name + "Fn"


def read_record(match, doc):
    fields = [(f[1], f[0], one_line(f[2])) for f in FIELD.findall(match.group(2))]
    if len(fields) != re.sub(r"/\*.*?\*/", "", match.group(2), flags=re.DOTALL).count(";"):
        raise HeaderError(f"{match.group(1)}: a field without a comment")
    return Declaration(match.group(1), [f"struct {match.group(1)}"], doc, fields=fields)


def read_enumeration(match, doc):
    name, body = match.groups()
    constants = [(c[0], c[1], one_line(c[2])) for c in CONSTANT.findall(body)]
    entries = re.sub(r"/\*.*?\*/", "", body, flags=re.DOTALL).split(",")
    if len(constants) != len([entry for entry in entries if entry.strip()]):
        raise HeaderError(f"{name}: a constant without a value or a comment")
    return Declaration(name, [f"enum {name}"], doc, constants=constants)


def read_class(match, doc):
    name, body = match.groups()
    declaration = Declaration(name, [f"class {name}"], doc)
    documented = 0
    for comment in DOC.finditer(body):
        text = comment_text(comment.group(1))
        position = comment.end() + len(re.match(r"\s*", body[comment.end():]).group(0))
        constructor = CONSTRUCTOR.match(body, position)
        function = FUNCTION.match(body, position)
        if constructor:
            member = Declaration(f"{name}::{constructor.group(1)}",
                                 code_lines(constructor.group(0)), text)
        elif function:
            member = read_function(function, text, name + "::")
        else:
            raise HeaderError(f"{name}: what is this? {body[position:position + 60]!r}")
        declaration.members.append(member)
        documented += 1
    if documented != body.count("VELQUIN_API"):
        raise HeaderError(f"{name}: a member without a comment")
    return declaration


def read_declaration(source, comment):
    text = comment_text(comment.group(1))
    position = comment.end() + len(re.match(r"\s*", source[comment.end():]).group(0))
    function = FUNCTION.match(source, position)
    if function:
        declaration = read_function(function, text, "")
        read_function_type(source, function.end(), function, declaration)
        return declaration
    record = RECORD.match(source, position)
    if record:
        return read_record(record, text)
    enumeration = ENUMERATION.match(source, position)
    if enumeration:
        return read_enumeration(enumeration, text)
    class_match = CLASS.match(source, position)
    if class_match:
        return read_class(class_match, text)
    alias = ALIAS.match(source, position)
    if alias:
        return Declaration(alias.group(1), alias.group(0).split("\n"), text)
    raise HeaderError(f"what is this? {source[position:position + 60]!r}")


def read_header(path):
    """The header's contents. Everything that is imported or typed must be among them."""
    source = path.read_text()
    head = re.search(r"/\*(?! SPDX)(.*?)\*/", source, re.DOTALL)
    header = Header(path.name, comment_text(head.group(1)), [Section("", "", [])])
    inside_class = 0
    events = [(m.start(), m) for m in SECTION.finditer(source)]
    events += [(m.start(), m) for m in DOC.finditer(source)]
    for start, match in sorted(events, key=lambda event: event[0]):
        if match.re is SECTION:
            title, _, remark = one_line(match.group(1)).partition("; ")
            text = remark[:1].upper() + remark[1:] + ("." if remark else "")
            more = comment_text(match.group(2))
            header.sections.append(Section(title, "\n\n".join(t for t in (text, more) if t), []))
        elif start >= inside_class:
            declaration = read_declaration(source, match)
            header.sections[-1].declarations.append(declaration)
            class_match = CLASS.search(source, match.end()) if declaration.members else None
            inside_class = class_match.end() if class_match else 0
    functions = [d for s in header.sections for d in s.declarations if d.function_type]
    members = [m for s in header.sections for d in s.declarations for m in d.members]
    if len(functions + members) != len(re.findall(r"^ *VELQUIN_API ", source, re.MULTILINE)):
        raise HeaderError(f"{path.name}: a function without a comment")
    return header

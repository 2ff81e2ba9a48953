"""Definition files as one file of protobuf messages: a message for each value and entity, a field
for each attribute, an enum for each enumeration. What only the framework has, bounds and methods
among it, is left out."""

import re

SCALARS = {"u8": "uint32", "u16": "uint32", "u32": "uint32", "u64": "uint64", "i32": "int32",
           "i64": "int64", "bool": "bool", "string": "bytes", "double": "double"}
PASSED = re.compile(r"(const|method|static|function|mutating|constructor|flag|instantiate|extern)"
                    r"\b")
HEAD = re.compile(r"\b(namespace|enum|value|entity|constants)\s+([\w:]+)")


def closing(text, start, pair):
    """The place behind the bracket that closes the one at `start`."""
    depth = 0
    for place in range(start, len(text)):
        depth += {pair[0]: 1, pair[1]: -1}.get(text[place], 0)
        if depth == 0:
            return place + 1
    raise ValueError(f"not closed: {text[start:start + 60]}")


def types_in(text, scope, found):
    """Adds to `found`: full name -> kind, scope, base, arguments, body."""
    place = 0
    while head := HEAD.search(text, place):
        kind, name = head.groups()
        arguments, place = "", head.end()
        rest = re.match(r"\s*\(", text[place:])
        if rest:
            start = place + rest.end() - 1
            place = closing(text, start, "()")
            arguments = text[start + 1:place - 1]
        brace = text.index("{", place)
        base = re.match(r"\s*:\s*([\w:]+)", text[place:brace])
        end = closing(text, brace, "{}")
        full = f"{scope}::{name}" if scope else name
        if kind == "namespace":
            types_in(text[brace + 1:end - 1], full, found)
        elif kind != "constants":
            found[full] = (kind, scope, base and base[1], arguments, text[brace + 1:end - 1])
        place = end


def definitions(files):
    found = {}
    for file in files:
        text = re.sub(r"//[^\n]*", "", file.read_text(encoding="utf-8"))
        types_in(re.sub(r'"[^"\n]*"', '""', text), "", found)
    return found


class Proto:
    def __init__(self, found):
        self.found = found
        self.fields = 0
        self.text = 'syntax = "proto3";\n\npackage BenchModel;\n'
        for name, (kind, *_) in found.items():
            (self.enum if kind == "enum" else self.message)(name)

    def resolve(self, name, scope):
        while scope:
            if f"{scope}::{name}" in self.found:
                return f"{scope}::{name}"
            scope = scope.rpartition("::")[0]
        return name

    def type(self, name, scope):
        if name in SCALARS:
            return SCALARS[name]
        full = self.resolve(name, scope)
        return full.replace("::", "_") if full in self.found else "uint32"

    def attributes(self, full):
        """Name and declaration of each argument and attribute."""
        _, _, _, arguments, body = self.found[full]
        for declared in arguments.split(";") + body.split(";"):
            declared = declared.strip()
            one = re.match(r"(?:identity )?(\w+)\s*:\s*(.*)", declared, re.DOTALL)
            if declared == "name":
                yield "name", "string"
            elif one and not PASSED.match(declared):
                yield one[1], one[2]

    def key(self, name, scope):
        """A key is a number or a text: a value is its first field."""
        full = self.resolve(name, scope)
        if full not in self.found:
            return {"bytes": "string"}.get(self.type(name, scope), self.type(name, scope))
        if self.found[full][0] == "enum":
            return "uint32"
        field, declared = next(self.attributes(full), ("", "string"))
        if not field:
            return "string"
        return self.key(re.match(r"[\w:]+", declared)[0], self.found[full][1])

    def field(self, full, declared):
        scope = self.found[full][1]
        words = declared.replace("ordered ", "").split()
        if words[0] == "map" and "->" in words[:3]:
            return f"map<{self.key(words[1], scope)}, {self.type(words[3], scope)}>"
        if words[0] in ("map", "children", "references"):
            return f"map<string, {self.type(words[1], scope)}>"
        if words[0] == "set":
            return f"repeated {self.type(words[1], scope)}"
        if words[0] in ("optional", "child"):
            return f"optional {self.type(words[1], scope)}"
        return self.type(words[0], scope)

    def message(self, full):
        self.text += f"\nmessage {full.replace('::', '_')} {{\n"
        fields = [("base", self.found[full][2])] if self.found[full][2] else []
        for number, (name, declared) in enumerate([*fields, *self.attributes(full)], 1):
            self.text += f"   {self.field(full, declared)} f_{name} = {number};\n"
            self.fields += 1
        self.text += "}\n"

    def enum(self, full):
        name = full.replace("::", "_")
        codes = {}
        for enumerator, code in re.findall(r"(\w+)\s*=\s*(\w+)\s*;", self.found[full][4]):
            codes.setdefault(int(code, 0), enumerator)
        codes.setdefault(0, "none")
        self.text += f"\nenum {name} {{\n"
        for code in sorted(codes):
            self.text += f"   {name}_{codes[code]} = {code};\n"
        self.text += "}\n"

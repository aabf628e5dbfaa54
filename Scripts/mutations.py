"""Finds the mistakes that mutate.py can make in a source."""

import collections
import hashlib
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ["Source/ZEKFormat/*", "Source/ZEKOverwriter/*", "Source/ZekTool/**/*"]
# What the compiler has to know: the length of arrays, a condition at compile time, labels.
LEFT_OUT = re.compile(r"CompressionFamilyCount = |IsMeasuring|^\s*case |static_assert")

# operator: its precedence, its function in mutation.h, what it becomes
SWAPS = {
    "<": (9, "Less", "<="), "<=": (9, "LessEqual", "<"), ">": (9, "More", ">="),
    ">=": (9, "MoreEqual", ">"), "==": (8, "Equal", "!="), "!=": (8, "NotEqual", "=="),
    "+": (11, "Plus", "-"), "-": (11, "Minus", "+"), "&&": (4, "", "||"), "||": (3, "", "&&"),
}  # fmt: skip
PRECEDENCES = dict({operator: swap[0] for operator, swap in SWAPS.items()}, **{"?": 2, ":": 2, "=": 2,
    "+=": 2, "-=": 2, "|=": 2, "|": 5, "&": 7, "<<": 10, ">>": 10, "*": 12, "/": 12, "%": 12})  # fmt: skip
TOKEN = re.compile(
    r"""//[^\n]*|/\*.*?\*/|^\#[^\n]*|"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*'|[\w.]*\d[\w.]*(?<![.])|\w+"""
    r"""|::|->|\+\+|--|<<|&&|\|\||[<>=!+\-*/|&]=|\S""",
    re.M | re.S,
)
OPENERS, CLOSERS = "([{", ")]}"


def get_hash(text):
    return int(hashlib.sha256(text.encode()).hexdigest(), 16)


class Token:
    def __init__(self, match, text):
        self.text, self.start, self.end = match.group(), match.start(), match.end()
        around = text[max(self.start - 1, 0) : self.start], text[self.end : self.end + 1]
        self.is_binary = self.text in PRECEDENCES and all(space.isspace() for space in around)
        self.partner = None  # of a bracket: the index of the other one
        self.scope = None  # the nearest bracket around it


class Mutation:
    """A mistake: what stands in the text, what is put there instead, and how a build that has all
    mistakes does it: texts put around ranges, with {id} in them, and texts for ranges."""

    def __init__(self, file, start, end, new, wraps, replaced=()):
        self.file, self.start, self.end, self.new = file, start, end, new
        self.wraps, self.replaced = wraps, replaced
        self.id = None
        self.line = file.text.count("\n", 0, start) + 1
        self.text = file.text.split("\n")[self.line - 1].strip()
        self.what = " ".join(f"{file.text[start:end] or '(nothing)'} -> {new or '(nothing)'}".split())
        self.key = (file.path.name, self.text, self.what)

    def __str__(self):
        return f"{self.file.path}:{self.line}: {self.text}   [{self.what}]"

    def is_at(self, lines):
        """True when one of some lines (a file and a number each) has to do with it."""
        ends = [end for wrap in self.wraps for end in wrap[:2]]
        first, last = (self.file.text.count("\n", 0, end(ends)) + 1 for end in (min, max))
        return any((str(self.file.path), str(line)) in lines for line in range(first, last + 1))

    def overlaps(self, other):
        ranges = [(start, end) for start, end, *_ in self.wraps]
        return any(start < other.end and other.start < end for start, end in ranges)


class File:
    def __init__(self, path):
        self.path, self.text = path, (ROOT / path).read_text()
        matches = TOKEN.finditer(self.text)
        self.tokens = [Token(match, self.text) for match in matches if not match.group().startswith(("//", "/*"))]
        stack = []
        for i, token in enumerate(self.tokens):
            if token.text in CLOSERS and stack:
                token.partner = stack.pop()
                self.tokens[token.partner].partner = i
            token.scope = stack[-1] if stack else None
            if token.text in OPENERS:
                stack.append(i)

    def is_body(self, scope):
        """True when a bracket is the one of a function's or statement's body."""
        if scope is None or self.tokens[scope].text != "{":
            return False
        i = scope - 1
        if self.tokens[i].text == "=":
            return False
        while i >= 0 and self.tokens[i].text not in (";", "{", "}"):
            if self.tokens[i].text in ("class", "struct", "namespace", "enum"):
                return False
            i = (self.tokens[i].partner if self.tokens[i].text in CLOSERS else i) - 1
        return True

    def operand_end(self, i, precedence, step):
        """Returns the index of the last token of the operand to the left or right of an operator."""
        end = i
        while 0 <= end + step < len(self.tokens):
            token = self.tokens[end + step]
            if token.text in (OPENERS if step < 0 else CLOSERS) or token.text in (",", ";", "return", "case", "else"):
                break
            limit = precedence if step < 0 else precedence + 1
            if token.is_binary and PRECEDENCES[token.text] < limit:
                break
            end += step
            if token.text in (CLOSERS if step < 0 else OPENERS):
                end = token.partner
        return end

    def swap_operator(self, i):
        token = self.tokens[i]
        precedence, function, new = SWAPS[token.text]
        left = self.tokens[self.operand_end(i, precedence, -1)].start
        right = self.tokens[self.operand_end(i, precedence, 1)].end
        if token.text in "+-" and '"' in self.text[left:right]:
            return None  # texts
        if function:
            wraps = [(left, right, f"zekmutation::{function}({{id}}, ", ")")]
            replaced = [(token.start, token.end, ",")]
        else:  # !(!a && !b) is a || b, and the other way round
            is_other = "(zekmutation::Is({id}) != bool("
            ranges = (left, right), (left, token.start), (token.end, right)
            wraps, replaced = [(*ends, is_other, "))") for ends in ranges], ()
        return Mutation(self, token.start, token.end, new, wraps, replaced)

    def negate(self, i):
        """Negates the condition of an if or while."""
        start, end = self.tokens[i + 1].end, self.tokens[self.tokens[i + 1].partner].start
        inner = self.text[start:end]
        if ";" in inner or re.search(r" = ", inner) or re.fullmatch(r"[^&|(]* [!=]= [^&|(]*", inner):
            return None
        return Mutation(self, start, end, f"!({inner})", [(start, end, "zekmutation::Is({id}) != bool(", ")")])

    def drop(self, i):
        """Leaves out the statement that starts at a token."""
        last = i
        while self.tokens[last].text != ";":
            last = (self.tokens[last].partner if self.tokens[last].text in OPENERS else last) + 1
            if last >= len(self.tokens) or self.tokens[last].text in CLOSERS:
                return None
        start, end = self.tokens[i].start, self.tokens[last].end
        statement = self.text[start:end]
        is_exit = self.tokens[i].text in ("return", "continue", "break")
        if is_exit and (self.tokens[i - 1].text != ")" or self.tokens[last + 1].text in ("}", "else")):
            return None
        if not is_exit and not re.match(r"(\+\+|--)?[\w:]+(<[\w:]+>)?((\.|->)\w+|\[\w+\])*(\(| (\S|<<|>>)?= |\+\+|--|;)", statement):
            return None
        return Mutation(self, start, end, "", [(start, end, "{{ if (!zekmutation::Is({id})) ", " }}")])

    def change_number(self, i):
        token, before, after = self.tokens[i], self.tokens[i - 1], self.tokens[i + 1]
        is_type = (before.text in "<," and not before.is_binary) and after.text == ">" and not after.is_binary
        is_length = before.text == "[" and re.search(r"\w \w+$", self.text[: before.start].split("\n")[-1])
        is_pure = before.text == "=" and self.tokens[i - 2].text in (")", "const")
        if is_type or before.text == "<" and not before.is_binary or is_length or is_pure:
            return None
        if token.text in ("true", "false"):
            new = "false" if token.text == "true" else "true"
            return Mutation(self, token.start, token.end, new,
                            [(token.start, token.end, "zekmutation::Or({id}, ", f", {new})")])  # fmt: skip
        step = 1 if get_hash(self.text[: token.end].split("\n")[-1]) % 2 else -1
        return Mutation(self, token.start, token.end, f"{token.text} {'+' if step > 0 else '-'} 1",
                        [(token.start, token.end, "zekmutation::Number({id}, ", f", {step})")])  # fmt: skip

    def change_gate(self, i, gates):
        token = self.tokens[i]
        later = [name for name, value in gates.items() if value > gates[token.text]]
        if not later:
            return None
        start = self.tokens[i - 2].start
        return Mutation(self, start, token.end, "version::" + later[0],
                        [(start, token.end, "zekmutation::Or({id}, ", f", version::{later[0]})")])  # fmt: skip

    def find_mutations(self, gates):
        lines = self.text.split("\n")
        for i, token in enumerate(self.tokens[:-1]):
            if LEFT_OUT.search(lines[self.text.count("\n", 0, token.start)]) or token.text.startswith("#"):
                continue
            is_in_body = self.is_body(token.scope)
            before = self.tokens[i - 1]
            opens_statement = before.text in (";", "{", "}", "else") or (
                before.text == ")" and self.tokens[before.partner - 1].text in ("if", "for", "while"))  # fmt: skip
            if token.is_binary and token.text in SWAPS:
                yield self.swap_operator(i)
            elif token.text in ("if", "while") and self.tokens[i + 1].text == "(":
                yield self.negate(i)
            elif re.fullmatch(r"\d+|true|false", token.text):
                yield self.change_number(i)
            elif before.text == "::" and self.tokens[i - 2].text == "version" and token.text in gates:
                yield self.change_gate(i, gates)
            if is_in_body and opens_statement and re.match(r"\w|\+\+|--", token.text):
                yield self.drop(i)

    def write(self, tree, mutations, alone=None):
        """Writes the file into the tree, with mutations to choose from, and perhaps with one made."""
        if alone:
            mutations = [other for other in mutations if not other.overlaps(alone)]
        edits = []  # where, the order at one place, what is put there, where the text goes on
        constants = set()
        for mutation in mutations:
            constants.update(self.loosen_constant(mutation.start))
            for start, end, prefix, suffix in mutation.wraps:
                edits.append((start, 1, -end, prefix.format(id=mutation.id), start))
                edits.append((end, 0, -start, suffix.format(id=mutation.id), end))
            for start, end, new in mutation.replaced:
                edits.append((start, 2, 0, new, end))
        edits += constants
        if alone:
            edits.append((alone.start, 2, 0, alone.new or ";", alone.end))
        text, pos = "", 0
        for start, _, _, new, end in sorted(edits, key=lambda edit: edit[:3]):
            text += self.text[pos:start] + new
            pos = max(end, start)
        path = tree / self.path
        text += self.text[pos:]
        if path.read_text() != text:
            path.write_text(text)

    def loosen_constant(self, pos):
        """What is a constant expression can have no mistake that is chosen later."""
        for match in re.finditer(r"constexpr (?=[^;{}]*(\)\s*(const\s*)?\{|[;=]))", self.text):
            is_function = match.group(1).endswith("{")
            opening = self.text.find("{", match.end())
            closer = next((t for t in self.tokens if t.start == opening), None) if is_function else None
            end = self.tokens[closer.partner].end if closer else self.text.find(";", match.end())
            if match.start() <= pos < end:
                return [(match.start(), 2, 0, "inline " if is_function else "const ", match.end())]
        return []


def find_all():
    gate_line = re.compile(r"constexpr int (\w+) = (\d+);")
    gates = dict(gate_line.findall((ROOT / "Source/ZEKFormat/ZEKVersion.h").read_text()))
    gates = {name: int(value) for name, value in gates.items()}
    paths = sorted({path for glob in SOURCES for path in ROOT.glob(glob) if path.suffix in (".h", ".cpp")})
    files = [File(path.relative_to(ROOT)) for path in paths]
    return [mutation for file in files for mutation in file.find_mutations(gates) if mutation]


def choose(mutations, count, seed):
    """Returns some of them, mostly the same ones whatever else becomes of their files."""
    seen = collections.Counter()
    ranks = {}
    for mutation in mutations:
        seen[mutation.key] += 1
        ranks[mutation] = get_hash(f"{seed} {mutation.key} {seen[mutation.key]}")
    chosen = sorted(mutations, key=ranks.get)[:count]
    return sorted(chosen, key=lambda mutation: (mutation.file.path, mutation.start))

"""Translates the menu's source, with all it includes, for 64tass, dasm and ca65.

The files, lines, comments and conditions stay; only their spelling changes. Where each bank comes
to lie is worked out here, because the three have no directive of that kind: their program is one
flat file, with fills between the places that our .BANK and .ORG name.
"""

import pathlib
import re

BANK = 8192
LINE = re.compile(r"^([A-Za-z_.][\w]*)?(:?)\s*([^;]*?)\s*(;.*)?$")


class Dialect:
    """What differs between the assemblers, as format texts."""

    def __init__(self, **words):
        self.__dict__.update(words)


TASS = Dialect(
    name="64tass", first=" .fill ${:X}, $ff", local="_", label="{}", byte=".byte", word=".word", text=".ptext {}",
    include=".include", binary=".binary", iff=".if", otherwise=".else", endif=".endif", equal="==",
    unequal="!=", remainder="%", low="(<({}))", high="(>({}))", lower=True,
    start=(" * = $0000",), close=" .here", fill=" .fill (${:X} - *) & $ffff, $ff",
    place=" .logical ${:X}",
    end=(" .here", " .fill (${:X} - *) & $ffff, $ff"), subroutine=False)
DASM = Dialect(
    name="dasm", first=" ds ${:X},$ff", local=".", label="{}", byte=".byte", word=".word", text=".byte {1},{0}",
    include="include", binary="incbin", iff="IF", otherwise="ELSE", endif="ENDIF", equal="==",
    unequal="!=", remainder="%", low="(<({}))", high="(>({}))", lower=False,
    start=(" processor 6502", " org $0000,$ff"), close=" rend", fill=" org ${:X},$ff",
    place=" rorg ${:X}", end=(" rend", " ds ${0:X} - *,$ff"), subroutine=True)
CA65 = Dialect(
    name="ca65", first=" .res ${:X}, $ff", local="@", label="{}:", byte=".byte", word=".word", text=".byte {1},{0}",
    include=".include", binary=".incbin", iff=".if", otherwise=".else", endif=".endif", equal="=",
    unequal="<>", remainder=".mod", low="(<({}))", high="(>({}))", lower=False,
    start=(' .setcpu "6502"',), close=None, fill=" .res {1} - (*), $ff",
    place=" .org ${:X}", end=(), subroutine=False)
DIALECTS = (TASS, DASM, CA65)


class Translator:
    def __init__(self, source, target, dialect):
        self.source, self.target, self.dialect = source, target, dialect
        self.values = {}  # of constants on the assembled path
        self.conditions = [True]
        self.ram = ("0", "0")  # where the RAM counter was set, and what was taken since
        self.bank = 0
        self.origin = None  # flat offset and address of the last place
        self.open_at = None  # depth of conditions at the place that is still to be closed
        self.prg = 0

    def run(self, name):
        out = self.target / name
        out.parent.mkdir(parents=True, exist_ok=True)
        text = (self.source / name).read_text()
        self.has_locals = re.search(r"^\.\w", text, re.M) is not None
        lines = [self.line(line) for line in text.splitlines()]
        if name == "menu.asm":
            end = [self.format_end(line) for line in self.dialect.end]
            lines = [*self.dialect.start, *lines, *end]
        out.write_text("\n".join(lines) + "\n")

    def format_end(self, line):
        return line.format(self.prg * 2 * BANK)

    def evaluate(self, text):
        text = re.sub(r"\$([0-9A-Fa-f]+)", r"0x\1", text)
        text = re.sub(r"(?<![<>=!])=(?!=)", "==", text).replace("/", "//")
        return int(eval(text, {}, self.values))  # the menu's own source, no other

    def expression(self, text):
        d = self.dialect
        text = re.sub(r"(?<![\w)])\.(?=[A-Za-z])", d.local, text)
        text = re.sub(r"'(.)'", lambda m: str(ord(m[1])), text)
        text = re.sub(r"LOW\(([^()]*)\)", lambda m: d.low.format(m[1]), text)
        text = re.sub(r"HIGH\(([^()]*)\)", lambda m: d.high.format(m[1]), text)
        return re.sub(r"(?<= )%(?= )", d.remainder, text)

    def line(self, line):
        label, colon, statement, comment = LINE.match(line).groups()
        active = all(self.conditions)
        body = self.statement(label, statement, active)
        comment = f" {comment}" if comment else ""
        if label and body is not None:
            name = label.replace(".", self.dialect.local)
            form = "{}" if statement.startswith(("=", ".RS")) else self.dialect.label
            head = form.format(name)
            if self.dialect.subroutine and self.has_locals and colon and label[0] != ".":
                head = f" subroutine\n{head}"
            return f"{head} {body}{comment}"
        return f" {body or ''}{comment}"

    def statement(self, label, statement, active):
        if not statement:
            return ""
        word, _, rest = statement.partition(" ")
        rest = rest.strip()
        d = self.dialect
        if word == "=":
            if active and re.fullmatch(r"[\w$ +*/()&<>-]+", rest):
                try:
                    self.values[label] = self.evaluate(rest)
                except NameError:
                    pass  # made of labels
            return f"= {self.expression(rest)}"
        if word in (".IF", ".ELSE", ".ENDIF"):
            return self.condition(word, rest)
        if word in (".RSSET", ".RS"):
            return self.ram_counter(word, rest, active)
        if word in (".BANK", ".ORG", ".INESPRG", ".INESCHR", ".INESMAP", ".INESMIR"):
            return self.place(word, rest) if active else ""
        if word == ".STR":
            return d.text.format(rest, len(rest) - 2)
        if word in ("INCLUDE", "INCBIN"):
            return self.include(word, rest, active)
        if word in (".DB", ".DW", ".WORD"):
            return f"{d.byte if word == '.DB' else d.word} {self.expression(rest)}"
        return self.instruction(word, rest)

    def condition(self, word, rest):
        d = self.dialect
        if word == ".IF":
            self.conditions.append(all(self.conditions) and self.evaluate(rest) != 0)
            rest = re.sub(r"(?<= )!=(?= )", d.unequal, rest)
            return f"{d.iff} {self.expression(re.sub('(?<= )=(?= )', d.equal, rest))}"
        closing = ""
        if d.close and self.open_at == len(self.conditions) and all(self.conditions):
            closing = f"{d.close}\n "  # a place must be closed in the branch that opened it
            self.open_at = None
        if word == ".ELSE":
            self.conditions[-1] = all(self.conditions[:-1]) and not self.conditions[-1]
            return closing + d.otherwise
        self.conditions.pop()
        return closing + d.endif

    def ram_counter(self, word, rest, active):
        if word == ".RSSET":
            self.ram = (rest, "0")
            return ""
        base, taken = self.ram
        if active:
            self.ram = (base, f"{taken} + {rest}" if not taken.isdigit() or not rest.isdigit()
                        else str(int(taken) + int(rest)))
        return f"= {base} + {taken}"

    def place(self, word, rest):
        d = self.dialect
        if word == ".BANK":
            self.bank = self.evaluate(rest)
        elif word == ".INESPRG":
            self.prg = self.evaluate(rest)
        elif word == ".ORG":
            address = self.evaluate(rest)
            flat = self.bank * BANK + address % BANK
            lines = [d.close] if d.close and self.open_at is not None else []
            self.open_at = len(self.conditions)
            if self.origin:
                lines.append(d.fill.format(flat, flat - self.origin[0] + self.origin[1]))
            else:
                lines.append(d.first.format(flat))
            self.origin = (flat, address)
            return "\n".join([*lines, d.place.format(address)]).strip()
        return ""

    def include(self, word, rest, active):
        name = rest.strip('"')
        if active:
            if word == "INCLUDE":
                keep = self.has_locals
                self.run(name)
                self.has_locals = keep
            else:
                out = self.target / name
                out.parent.mkdir(parents=True, exist_ok=True)
                out.write_bytes((self.source / name).read_bytes())
        return f"{self.dialect.include if word == 'INCLUDE' else self.dialect.binary} {rest}"

    def instruction(self, word, rest):
        if rest.upper() == "A":
            rest = ""
        rest = re.sub(r"\[(.*)\]", r"(\1)", rest)
        word = word.lower() if self.dialect.lower else word
        rest = re.sub(r",\s*([XYxy])$", lambda m: "," + m[1].lower(), self.expression(rest))
        return f"{word} {rest}".strip()


def translate(source, target, dialect):
    """Writes the translation below `target`; gives the ROM's size in bytes."""
    translator = Translator(source, target, dialect)
    translator.run("menu.asm")
    return translator.prg * 2 * BANK

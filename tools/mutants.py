# SPDX-License-Identifier: Apache-2.0
"""The mistakes that mutate.py makes: rules that find sites in the tokens of a C++ source.

Rules rely on the formatting of the tree (operators between two operands stand between spaces, brackets of templates do not).
"""
import dataclasses
import hashlib
import re

TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*)
      |(?P<text>"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)+')
      |(?P<number>0[xX][0-9a-fA-F.']+(?:[pP][+-]?\d+)?[uUlLfF]*|\d[\d.']*(?:[eE][+-]?\d+)?[uUlLfF]*|\.\d+(?:[eE][+-]?\d+)?[fF]?)
      |(?P<word>[A-Za-z_]\w*)
      |(?P<mark><<=|>>=|<=>|->|\+\+|--|\+=|-=|\*=|/=|&=|\|=|\^=|%=|==|!=|<=|>=|&&|\|\||<<|::|\.\.\.|[-+*/%&|^~!<>=?:;,.(){}\[\]])""",
    re.X | re.S | re.M)
PAIRS = {"(": ")", "[": "]", "{": "}"}
ERRORS = ("vekStsBadArgErr", "vekStsSizeErr")

ROUNDINGS = [("kRoundNearestEven", "kRoundTowardZero"), ("kRoundTowardZero", "kRoundNearestEven"),
             ("kRoundHalfAway", "kRoundNearestEven"), ("toInt32Nearest", "toInt32Truncated"),
             ("toInt32Truncated", "toInt32Nearest"), ("__builtin_floor", "__builtin_ceil"), ("__builtin_ceil", "__builtin_floor"),
             ("__builtin_rint", "__builtin_trunc"), ("__builtin_nearbyint", "__builtin_trunc"), ("roundEven", "__builtin_trunc"),
             ("__builtin_floorf", "__builtin_ceilf"), ("_mm_cvtps_epi32", "_mm_cvttps_epi32"),
             ("_mm_cvttps_epi32", "_mm_cvtps_epi32"), ("_mm_cvtpd_epi32", "_mm_cvttpd_epi32"),
             ("_mm256_cvtps_epi32", "_mm256_cvttps_epi32"), ("_mm256_cvtpd_epi32", "_mm256_cvttpd_epi32"),
             ("_MM_FROUND_TO_NEAREST_INT", "_MM_FROUND_TO_ZERO"), ("_MM_FROUND_TO_ZERO", "_MM_FROUND_TO_NEAREST_INT")]
ROUNDING_CALL = re.compile(r"round(ed\w*|Shift|Even|Roomy|Full|Lanes|8)?$")
SATURATION = re.compile(r"(clamp|saturat)\w*$", re.I)
LIMITS = re.compile(r"(minOf|maxOf|smaller|larger)$")
OPERATORS = {"+": "-", "-": "+", "*": "+", "/": "*", "%": "/", "<<": ">>", "&": "|", "|": "&", "^": "|", "+=": "-=", "-=": "+="}
COMPARISONS = {"==": "!=", "!=": "==", "<": ">=", ">": "<=", "<=": ">", ">=": "<", "&&": "||", "||": "&&"}
OFF_BY_ONE = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
COMMUTES = re.compile(r"(any|add|mul|and|or|xor|cmpeq|sum|min|max|smaller|larger|fused|swap)", re.I)
RARE_KINDS = ("wrong rounding", "dropped saturation", "wrong order of checks")
NOT_A_STATEMENT = set("""return if for while do switch case default break continue const constexpr static auto using typedef struct
    class enum template namespace public private else typename inline VEK_INLINE VEK_NOINLINE explicit friend extern goto alignas
    unsigned signed int int8_t int16_t int32_t int64_t uint8_t uint16_t uint32_t uint64_t float double char bool ptrdiff_t size_t void
    try static_assert operator""".split())


@dataclasses.dataclass
class Site:
    file: str
    kind: str
    start: int
    end: int
    text: str
    line: int
    before: str = ""
    after: str = ""
    function: str = ""
    id: str = ""

    def apply(self, source):
        return source[: self.start] + self.text + source[self.end :]


class Source:
    def __init__(self, text):
        self.text = text
        self.tokens = []  # (kind, text, start, end)
        for m in TOKEN.finditer(text):
            if m.lastgroup != "skip":
                self.tokens.append((m.lastgroup, m[0], m.start(), m.end()))
        self.words = [t[1] for t in self.tokens]
        self.match = {}
        stack = []
        for i, w in enumerate(self.words):
            if w in PAIRS:
                stack.append(i)
            elif w in PAIRS.values() and stack:
                j = stack.pop()
                self.match[i], self.match[j] = j, i
        self.dead = self.left_alone()

    def left_alone(self):
        """Tokens in static_assert, template heads, alignas, attributes and declarations of functions."""
        dead = set()
        for i, w in enumerate(self.words[:-1]):
            if w in ("static_assert", "alignas", "__attribute__", "requires") and i + 1 in self.match:
                dead.update(range(i, self.match[i + 1] + 1))
            if w == "template" and self.words[i + 1] == "<":
                depth, j = 0, i + 1
                while j < len(self.words):
                    depth += {"<": 1, ">": -1}.get(self.words[j], 0)
                    dead.add(j)
                    if depth == 0:
                        break
                    j += 1
            if w == "using":
                j = i
                while self.words[j] != ";":
                    dead.add(j)
                    j += 1
        return dead

    def spaced(self, i):
        _, _, a, b = self.tokens[i]
        return self.text[a - 1].isspace() and self.text[b : b + 1].isspace()

    def slice(self, i, j):
        """The text of tokens i to j, both included."""
        return self.text[self.tokens[i][2] : self.tokens[j][3]]

    def glued(self, i):
        """Whether token i follows i-1 without a space."""
        return self.tokens[i - 1][3] == self.tokens[i][2]

    def arguments(self, i):
        """First and last token of each argument in the parentheses that open at i."""
        end, j, parts, first = self.match[i], i + 1, [], i + 1
        while j <= end:
            if self.words[j] in PAIRS and j < end:
                j = self.match[j]
            elif self.words[j] == "," or j == end:
                if j > first:
                    parts.append((first, j - 1))
                first = j + 1
            j += 1
        return parts

    def operand_left(self, i):
        """First token of the postfix expression that ends at i."""
        while True:
            if self.words[i] in (")", "]"):
                i = self.match[i]
                if i and self.glued(i) and (self.tokens[i - 1][0] == "word" or self.words[i - 1] in (")", "]")):
                    i -= 1
                    continue
            elif self.tokens[i][0] not in ("word", "number"):
                return None
            if i and self.words[i - 1] in (".", "->", "::"):
                i -= 2
                continue
            return i

    def operand_right(self, i):
        if self.words[i] == "(":
            i = self.match[i]
        elif self.tokens[i][0] not in ("word", "number"):
            return None
        while i + 1 < len(self.words):
            if self.words[i + 1] in ("(", "[") and self.glued(i + 1) and i + 1 in self.match:
                i = self.match[i + 1]
            elif self.words[i + 1] in (".", "->", "::"):
                i += 2
            elif self.words[i + 1] == "<" and self.glued(i + 1):
                return None
            else:
                return i
        return None

    def statement_end(self, i):
        while i < len(self.words):
            if self.words[i] in PAIRS:
                i = self.match.get(i, len(self.words))
            elif self.words[i] == ";":
                return i
            elif self.words[i] == "}":
                return None
            i += 1
        return None


def number_changes(token):
    """(kind, text) for a literal."""
    digits = re.match(r"(0[xX][0-9a-fA-F']+|\d[\d']*)([uUlL]*)$", token)
    if digits:
        value, suffix = int(digits[1].replace("'", ""), 0) if not re.match(r"0\d", digits[1]) else 0, digits[2]
        if value >= 2:
            return [("wrong constant", (hex(value ^ 1) if "x" in token else str(value + 1)) + suffix)]
        return []
    suffix = token[-1] if token[-1] in "fF" else ""
    body = token[: -1] if suffix else token
    try:
        value = float.fromhex(body) if body[:2] in ("0x", "0X") else float(body.replace("'", ""))
    except ValueError:
        return []
    if value == 0:
        return [("wrong constant", "1.0" + suffix)]
    changes = [("wrong constant", repr(value * 1.01) + suffix)]
    return changes + [("wrong rounding", "0.0" + suffix)] if value == 0.5 else changes


def find(source):
    """(kind, start, end, text) of every site."""
    s, words = source, source.words
    at = lambda i, j=None: (s.tokens[i][2], s.tokens[i if j is None else j][3])
    for i, (kind, w, start, end) in enumerate(s.tokens):
        if i in s.dead or i == 0 or i + 1 >= len(words):
            continue
        before, after = words[i - 1], words[i + 1]
        if kind == "mark" and s.spaced(i):
            if w in OFF_BY_ONE:
                yield ("off by one", start, end, OFF_BY_ONE[w])
            if w in COMPARISONS:
                yield ("wrong comparison", start, end, COMPARISONS[w])
            if w in OPERATORS:
                yield ("wrong operator", start, end, OPERATORS[w])
            if w in ("+", "-") and after == "1":
                yield ("off by one", *at(i + 1), "0")
            if w in ("-", "/", "%", "<<"):
                first, last = s.operand_left(i - 1), s.operand_right(i + 1)
                if first is not None and last is not None and words[first - 1] != w:  # a - b - c is a - c - b
                    left, right = s.slice(first, i - 1), s.slice(i + 1, last)
                    if left != right:
                        yield ("swapped operands", *at(first, last), f"{right} {w} {left}")
        if w == "!" and (s.tokens[i + 1][0] == "word" or after == "("):
            yield ("wrong comparison", start, end, "")
        if w == "=" and after == "0" and words[i + 2] == ";" and "for" in words[max(0, i - 4) : i]:
            yield ("off by one", *at(i + 1), "1")
        if kind == "number" and before != "<":
            for change in number_changes(w):
                yield (change[0], start, end, change[1])
        if kind == "word":
            yield from word_sites(s, i, at)
        if w == "?":
            yield from ternary(s, i, at)
        # a statement begins
        controlled = before == ")" and words[s.match.get(i - 1, 0) - 1] in ("if", "for", "while")
        if before in (";", "{", "}", "else") or controlled:
            yield from statement_sites(s, i, at)


def word_sites(s, i, at):
    w, words = s.words[i], s.words
    for old, new in ROUNDINGS:
        if w == old:
            yield ("wrong rounding", *at(i), new)
    if re.match(r"_mm(256)?_(adds|subs)_ep[iu](8|16)$", w):
        yield ("dropped saturation", *at(i), re.sub("s_ep[iu]", "_epi", w))
    if w.startswith("vekSts") and not w.endswith("_t") and words[i - 1] in ("return", "?", ":", ",", "(", "="):
        if w == "vekStsNoErr":
            yield ("wrong status", *at(i), "vekStsBadArgErr")
        else:
            yield ("wrong status", *at(i), "vekStsNoErr" if not w.endswith("Err") or len(w) % 2 else ERRORS[w == ERRORS[0]])
    if words[i + 1] == "(" and s.glued(i + 1) and i + 1 in s.match and s.words[i - 1] not in ("struct", "class"):
        args = s.arguments(i + 1)
        close = s.match[i + 1]
        declares = any(re.search(r"[\w>*&] [*&]?\w+( =|$)|^[A-Z]\w*[*&] ?\w+$|^\w+[*&]+ \w+", s.slice(a, b)) for a, b in args)
        declares = declares or words[close + 1] in ("{", "const") and words[i - 1] not in ("return", "=", "(", ",")
        if declares or not args or w in ("if", "for", "while", "switch", "sizeof"):
            return
        texts = [s.slice(a, b) for a, b in args]
        whole = at(i, close)
        if SATURATION.search(w) and not w.startswith("_mm"):
            if re.match("addSat", w):
                yield ("dropped saturation", *whole, f"({texts[0]} + {texts[1]})" if len(texts) == 2 else texts[0])
            elif re.match("subSat", w):
                yield ("dropped saturation", *whole, f"({texts[0]} - {texts[1]})" if len(texts) == 2 else texts[0])
            else:
                yield ("dropped saturation", *whole, texts[0])
        if LIMITS.search(w) and len(texts) == 2:
            yield ("dropped saturation", *whole, texts[0])
            yield ("dropped saturation", *whole, texts[1])
        if ROUNDING_CALL.match(w) and len(texts) == 1:
            yield ("wrong rounding", *whole, texts[0])
        if len(texts) == 2 and texts[0] != texts[1] and not COMMUTES.search(w):
            yield ("swapped operands", *whole, f"{w}({texts[1]}, {texts[0]})")
        if w == "select" and len(texts) == 3:
            yield ("swapped operands", *whole, f"select({texts[0]}, {texts[2]}, {texts[1]})")


def ternary(s, i, at):
    words, depth, j = s.words, 0, i + 1
    while j < len(words) and not (words[j] == ":" and depth == 0):
        if words[j] in PAIRS:
            j = s.match[j]
        elif words[j] in (";", ")", "}", ","):
            return
        depth += words[j] == "?"
        if words[j] == ":":
            depth -= 1
        j += 1
    k = j + 1
    while k < len(words) and words[k] not in (";", ",", ")", "]", "}", "?", ":"):
        k = s.match[k] + 1 if words[k] in PAIRS else k + 1
    if k >= len(words) or words[k] in ("?", ":"):
        return
    a, b = s.slice(i + 1, j - 1), s.slice(j + 1, k - 1)
    status = "vekSts" in a + b
    yield ("wrong status" if status else "swapped operands", *at(i + 1, k - 1), f"{b} : {a}")


def statement_sites(s, i, at):
    words = s.words
    w = words[i]
    if w == "for" and words[i + 1] == "(":
        close = s.match[i + 1]
        if words[i + 2] == ";":
            end = next(j for j in range(i + 3, close + 1) if words[j] == ";")
            if end > i + 3 and not {"<=", ">="} & set(words[i + 3 : end]):  # those are the loops before the tail
                yield ("missing tail", *at(i + 3, end - 1), "false")
        return
    if w == "while" and words[i + 1] == "(":
        yield ("missing tail", *at(i + 2, s.match[i + 1] - 1), "false")
        return
    if w == "if" and words[i + 1] == "(":
        close = s.match[i + 1]
        condition = s.slice(i + 2, close - 1)
        end = s.statement_end(close + 1)
        returns = words[close + 1] == "return" and end is not None
        if returns and "vekSts" in s.slice(close + 1, end) or re.match(r"const VekStatus \w+ =", condition) and returns:
            yield ("missing check", *at(i, end), "")
            nxt = end + 1
            if words[nxt] == "if" and words[nxt + 1] == "(":
                last = s.statement_end(s.match[nxt + 1] + 1)
                if last and words[s.match[nxt + 1] + 1] == "return":
                    yield ("wrong order of checks", *at(i, last), f"{s.slice(nxt, last)} {s.slice(i, end)}")
        elif re.search(r"\b(tail|rest|left|last|aligns|count)\b| < |!= 0|> 0", condition):
            yield ("missing tail", *at(i + 2, close - 1), "false")
        return
    if s.tokens[i][0] != "word" and w not in ("*", "++", "--") or w in NOT_A_STATEMENT:
        return
    end = s.statement_end(i)
    if end is None or end <= i + 1:
        return
    text = s.slice(i, end)
    target = re.split(r"(?<![=!<>+\-*/&|^%])=(?!=)|[-+*/&|^%]=|<<=|>>=|\(", text, maxsplit=1)[0].strip()
    if re.search(r"[\w>*&\]] +[*&]?\w+$|[*&] \w+$", target) or "{" in text:
        return  # declares
    if re.search(r"[^=!<>]=[^=]", text) or re.match(r"[\w:]+(<[^;]*?>)?\(", text):
        yield ("lost history or store", *at(i, end), ";")


# The head of a function or a struct, which goes before the sites in its body.
FUNCTION = re.compile(
    r"""^(?:VEK_\w+\ |static\ |constexpr\ |template\ <[^\n]*>\ )*[\w:<>,*&\ \[\]]*?\b(\w+)\((?![^\n]*;\s*$)
      |^struct\ (\w+)
      |^\ \ (?:VEK_INLINE|static)[^\n]*\ (\w+)\(""",
    re.X | re.M)


def sites(root, name, skips):
    """All sites of a file, with what they are called in reports and tables."""
    text = (root / name).read_text()
    source = Source(text)
    rules = [re.compile(k["match"]) for k in skips if re.search(k["file"], name)]
    functions = [(m.start(), m[1] or m[2] or m[3]) for m in FUNCTION.finditer(text)]
    found, seen = [], {}
    for kind, start, end, new in find(source):
        first, last = text.rfind("\n", 0, start) + 1, text.find("\n", end)
        before, after = text[first:last], text[first:start] + new + text[end:last]
        if any(r.search(before) for r in rules):
            continue
        squeeze = lambda x: " ".join(x.split())
        before, after = squeeze(before), squeeze(after)
        key = (kind, before, after)
        seen[key] = seen.get(key, 0) + 1
        site = Site(name, kind, start, end, new, text.count("\n", 0, start) + 1, before, after)
        site.function = next((f for at, f in reversed(functions) if at <= start), "")
        site.id = hashlib.sha256(repr((name, key, seen[key])).encode()).hexdigest()[:16]
        found.append(site)
    return found

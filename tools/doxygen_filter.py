#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Prints a public header the way Doxygen reads it.

The headers describe a family once, above all its functions. Doxygen gives a comment to the one function that follows,
so a family becomes a member group here, and each member gets its own line: the element types and the form. Functions
that no comment covers stay as they are, for Doxygen to complain of.
"""
import pathlib
import re
import sys

TYPE = re.compile(r"^(64fc?)?(?:(?:1|8|16|24|32|64)(?:u|s|f|sc|fc))+$")
BLOCK = re.compile(r"/\*\*(?!<).*?\*/|VEK_API [^;]*;", re.S)


def form(name):
    """What tells a member from the others of its family."""
    if name.endswith("_Idx"):
        return f"{name[:-4]}() with an index for each array."
    words = [w for w in name.split("_")[1:] if TYPE.match(w)]
    words += ["in place"] if name.endswith(("_I", "_ISfs")) else []
    words += ["scaled"] if name.endswith("Sfs") else []
    return (", ".join(words) or name) + "."


def name_of(prototype):
    return re.search(r"(vek[sx]?[A-Z]\w*)\(", prototype)[1]


def member(prototype):
    return f"{prototype} /**< {form(name_of(prototype))} */"


def family(comment, prototypes):
    """The comment as the head of a member group."""
    title = name_of(prototypes[0])[4:].split("_")[0]
    return re.sub(r"\s*\*/$", "\n * @{ */", comment.replace("/**", f"/** @name {title}\n *", 1))


def followers(pieces, i):
    """The prototypes right below comment i, which a blank line or another comment ends."""
    run = []
    for kind, text in pieces[i + 1:]:
        if kind == "prototype":
            run.append(text)
        elif text.strip() or text.count("\n") > 1:
            break
    return run


def split(text):
    pieces, end = [], 0
    for m in BLOCK.finditer(text):
        pieces.append(("gap", text[end:m.start()]))
        pieces.append(("comment" if m[0].startswith("/**") else "prototype", m[0]))
        end = m.end()
    return pieces + [("gap", text[end:])]


def document(text):
    pieces = split(text)
    opened, out, left, own = [], [], 0, False
    for i, (kind, piece) in enumerate(pieces):
        if kind == "comment":
            if "@{" in piece:
                before = next((t for k, t in reversed(pieces[:i]) if k == "comment"), "")
                named = "@name" in piece or ("@name" in before and "@{" not in before)
                opened.append("family" if named else "chapter")
            elif "@}" in piece:
                opened.pop()
            elif not re.search(r"@(name|defgroup|file)", piece):
                run = followers(pieces, i)
                if len(run) == 1:
                    own = True
                elif run and "family" not in opened:
                    piece = family(piece, run)
                    left = len(run)
                elif run:
                    own = True
        elif kind == "prototype":
            inside = left > 0 or "family" in opened
            out.append(member(piece) if inside and not own else piece)
            own = False
            if left > 0:
                left -= 1
                if left == 0:
                    out.append(" /** @} */")
            continue
        out.append(piece)
    return "".join(out)


def main():
    path = pathlib.Path(sys.argv[1])
    text = path.read_text()
    if path.name == "status.h":
        # Most codes are kept for their values alone.
        text = re.sub(r"^(  vekSts\w+ = -?\d+,?)$", r"\1 /**< not returned */", text, flags=re.M)
    sys.stdout.write(document(text) if path.suffix == ".h" else text)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Writes the first inputs of the fuzz targets, made from examples/ and tests/data.

Usage: fuzzers/seeds.py FOLDER      one folder per target is made in FOLDER

The targets take their numbers from the end of the input, so every text ends in some bytes for them.
"""
import json
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
examples = root / "examples"


def attribute(name, value):
    if isinstance(value, bool):
        return "b%s=%d" % (name, value)
    if isinstance(value, int):
        return "l%s=%d" % (name, value)
    if isinstance(value, float):
        return "r%s=%r" % (name, value)
    if isinstance(value, dict):
        (kind, text), = value.items()
        return "%s%s=%s" % ({"date": "d", "time": "t", "datetime": "m"}[kind], name, text)
    return "s%s=%s" % (name, value)


def pipeline():
    for template in sorted(examples.glob("*.cpt")):
        for data in sorted(examples.glob(template.stem + "*.json")):
            document = json.loads(data.read_text())
            lines = [document.get("entries", "").replace("\t", "|")]
            lines += [attribute(*pair) for pair in document.get("attributes", {}).items()]
            yield template.read_text().rstrip("\n") + "\n%%\n" + "\n".join(lines)
            # Every line of the template by itself, with the attributes that it names.
            for line in template.read_text().splitlines():
                named = [a for a in lines[1:] if a[1:].split("=")[0] in line]
                yield line + "\n%%\n" + "\n".join(lines[:1] + named)


def markup():
    for template in sorted(examples.glob("*.cpt")):
        yield template.read_text()
        yield from template.read_text().splitlines()


def bbcode():
    for file in sorted(examples.glob("*.bbcode")):
        yield file.read_text()
        yield from file.read_text().splitlines()
    # The tests' cases of the tree are string literals.
    cases = (root / "tests/bbcpp/treecases.h").read_text()
    for literal in re.findall(r'"((?:[^"\\\n]|\\.)+)"', cases):
        if "[" in literal:
            yield literal.encode().decode("unicode_escape", "ignore")


def expression():
    cases = (root / "tests/printerdocs/tst_expressionevaluator.cpp").read_text()
    yield from re.findall(r'QTest::newRow\("[^"]*"\)\s*<<\s*"([^"\\]+)"', cases)
    for template in sorted(examples.glob("*.cpt")):
        yield from re.findall(r"<([a-z0-9(),.+*/^% -]+)>", template.read_text())


def symbols():
    content = (examples / "symbols/shop.ssi").read_text()
    yield content
    head, *fonts = re.split(r"(?=<Symbol )", content)
    for font in fonts:
        yield head + font.split("</Symbol>")[0] + "</Symbol></Font></SpecialSymbolImages>"


def documentmap():
    document = json.loads((root / "tests/data/golden/tags.json").read_text())
    yield json.dumps(document)
    for block in document["blocks"]:
        yield json.dumps({**document, "blocks": [block]})
    picture = {"w": 8, "h": 2, "data": "/wA=", "fn": "logo"}
    for block in ({"type": 1, "img": picture}, {"type": 2, "bar": "MTIz", "bt": 7}, {"type": 3, "qr": "YQ=="}):
        yield json.dumps({"blocks": [block], "cis": {"ci_3": picture}, "spl": 48, "rtout": 5})


def catalogue():
    records = json.loads((root / "printshared/printinfo/printers.info").read_text())
    for record in records[::4]:
        yield json.dumps([record])


def state():
    yield json.dumps({"serviceState": 1, "deviceState": 2, "deviceErrorCode": 7, "deviceNativeCode": 9,
                      "deviceErrorMsg": "paper", "tapeAvailable": False})


def picture():
    yield (examples / "images/logo.png").read_bytes()
    yield b"P4\n8 2\n\xaa\x55"
    yield b"P5\n2 2\n255\n\x00\xff\x80\x00"
    yield b"/* XPM */\nstatic char *a[] = {\n\"2 1 2 1\",\n\"a c #000000\",\n\"b c #ffffff\",\n\"ab\"};"
    yield b"#define a_width 8\n#define a_height 1\nstatic char a_bits[] = { 0x55 };"


# Bytes for the numbers of a target, and for a truth value that chooses text as the form of input.
tails = {"documentmap": b"\x01", "state": b"\x01\0\0\0\0" + b"\0" * 8 + b"\x01\x01", "picture": b"\0\x01"}


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    for target in (pipeline, markup, bbcode, expression, symbols, documentmap, catalogue, state, picture):
        folder = pathlib.Path(sys.argv[1]) / target.__name__
        folder.mkdir(parents=True, exist_ok=True)
        for number, content in enumerate(target()):
            content = content if isinstance(content, bytes) else content.encode()
            (folder / ("%03d" % number)).write_bytes(content + tails.get(target.__name__, b"\0" * 16))
    for target in ("documentfiles", "settings"):
        (pathlib.Path(sys.argv[1]) / target).mkdir(parents=True, exist_ok=True)


main()

#!/usr/bin/env python3
"""Writes the first inputs of the fuzz targets, made from examples/ and tests/data.

Usage: fuzzers/seeds.py FOLDER      one folder per target is made in FOLDER

The targets take their numbers from the end of the input, so every text ends in some bytes for them.
"""
import hashlib
import json
import pathlib
import re
import struct
import sys

root = pathlib.Path(__file__).resolve().parent.parent
examples = root / "examples"


class Input:
    """An input put together in the order in which a target takes it: texts go to the front of the
    input, numbers and truth values to its end."""

    def __init__(self):
        self.texts = b""
        self.numbers = b""

    def number(self, value, least=0, size=1):
        """A number of a range that begins with least and takes size bytes."""
        self.numbers += (value - least).to_bytes(size, "big")
        return self

    def truth(self, value):
        return self.number(int(value))

    def text(self, text):
        self.texts += text.encode().replace(b"\\", b"\\\\") + b"\\\0"
        return self

    def content(self):
        return self.texts + self.numbers[::-1]


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
    cases = (root / "tests/printerdocs/expression/tst_expressionevaluator.cpp").read_text()
    yield from re.findall(r'\{\s*"([^"\\\n]+)",', cases)
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


# A text block with one line, in the parts of takeDocument() of support/documentinput.cpp.
def addDocument(to, line):
    to.truth(False)  # no other keys
    to.truth(True).number(0, -1)  # a text block
    to.truth(True).truth(True).text(line)
    to.truth(False).text("\1" * len(line)).truth(False).text("\1" * len(line))
    to.truth(True).number(7, size=4)  # the spacing
    to.truth(False).number(1, -9)  # no more lines; the alignment
    to.truth(False).truth(False).truth(False)  # no other keys, blocks or images


# Documents by themselves; with their copies, whose checksums are right or wrong; and saved.
def documentfiles():
    block = {"type": 0, "txt": ["Total 10.00", ""], "fmt": ["AQ==", ""], "fnt": ["AQ==", ""],
             "ls": [0, 3], "align": 2}
    texts = [json.dumps({"blocks": [{**block, "txt": [name, "x"]}], "spl": 48}) for name in ("new", "old")]
    right, wrong = 4, 0
    for saved in (False, True):
        for first, second in ((right, right), (wrong, right), (right, wrong), (wrong, wrong)):
            seed = Input()
            for text, checksum in zip(texts, (first, second)):
                seed.truth(True).text(text).number(1).number(1).number(checksum)
                if checksum == wrong:
                    seed.text(hashlib.sha1(b"").hexdigest())
            addDocument(seed, "saved")
            # Bytes between the texts and the numbers stay unread; their sum says whether it is saved.
            seed.texts += bytes([(77 * saved - sum(seed.content())) % 64])
            yield seed
    # Made of keys and values instead, whole and torn.
    for torn in (False, True):
        seed = Input()
        for name in ("new", "old"):
            seed.truth(False)
            addDocument(seed, name)
            seed.truth(torn)
            if torn:
                seed.number(10, size=2)
            seed.number(1).number(1).number(right)
        yield seed


def catalogue():
    records = json.loads((root / "printshared/printinfo/printers.info").read_text())
    for record in records:
        for key in record["paperTypes"]:
            fonts = {k: v for k, v in record["fontTypes"].items() if k == key}
            papers = {key: record["paperTypes"][key]}
            yield json.dumps([{**record, "paperTypes": papers, "fontTypes": fonts}])


printerKeys = ["printerType", "printerName", "emptyStringsAtEnd", "spacesBeforeString", "paperLoopFlag",
               "moveCheckTo", "characterMode", "enablePortLogging", "baseFiscFont", "defSymPerLine",
               "portName", "baudRate", "dataBits", "parity", "stopBits", "flowControl", "portText"]
systemKeys = ["defaultFont", "unit", "pageSizeKey", "pageWidth", "pageHeight", "autoPageHeight",
              "leftMargin", "rightMargin", "topMargin", "bottomMargin", "orientation", "printerMode",
              "fullJustifyAlignment"]
# In the order of the target.
settingsKeys = (printerKeys + ["paperTypeId", "cpage"] + printerKeys + systemKeys +
                ["checkTemplatesPath", "defaultCheckTemplate", "codec", "printAsImage", "defaultFont"])
settingsGroups = ["PRINTER", "CHECK_TEMPLATES", "", "GENERAL_EPSON_PROTOCOL", "CUSTOM_VKP_80", "any"]


def settings():
    port = {"portName": "ttyS1", "baudRate": 50, "dataBits": 7, "parity": 2, "stopBits": 2,
            "flowControl": 1, "portText": "the port"}
    common = {"printerType": 1, "emptyStringsAtEnd": 3, "spacesBeforeString": 2, "paperLoopFlag": 2,
              "moveCheckTo": 9, "characterMode": 1, "enablePortLogging": 1, "baseFiscFont": 2,
              "defSymPerLine": 24}
    text = {"paperTypeId": 1, "codec": "cp1251", "printAsImage": 1, "defaultFont": "Mono,9", "cpage": 17}
    system = {key: number for number, key in enumerate(systemKeys[1:], 1)}
    for printer in settingsGroups[2:]:
        for own in (port, text, system, {**port, **text, **system}):
            yield settingsList(printer, common, own)
    yield settingsList("any", {}, {}, {"checkTemplatesPath": "templates", "defaultCheckTemplate": "a.cpt"})


def settingsList(printer, common, own, templates={}):
    seed = Input()
    items = [("PRINTER", "printerName", printer)]
    items += [("PRINTER", *pair) for pair in common.items()]
    items += [(printer, *pair) for pair in own.items()]
    items += [("CHECK_TEMPLATES", *pair) for pair in templates.items()]
    # The target sets a list, and then its second half once more.
    for group, key, value in items:
        seed.number(1)
        seed.number(1).number(settingsGroups.index(group))
        seed.number(1).number(settingsKeys.index(key))
        seed.number(1)
        if value in settingsGroups:
            seed.truth(False).number(settingsGroups.index(value))
        elif isinstance(value, int):
            seed.truth(True).number(2).number(value, -2)
        else:
            seed.truth(True).number(9).text(value)
    return seed


def state():
    record = {"serviceState": 1, "deviceState": 2, "deviceErrorCode": 7, "deviceNativeCode": 9,
              "deviceErrorMsg": "paper", "tapeAvailable": False}
    texts = [json.dumps(record), "{}", "[]", "", "{\"deviceState\": 1"]
    texts += [json.dumps({**record, "serviceState": service, "deviceState": device})
              for service in (0, 3, 4, 255) for device in (0, 2, 3, 4, 255)]
    texts += [json.dumps({**record, key: value})
              for key in record for value in (-1, 65536, 4294967296, 1.5, "2", True, None, [1])]
    for text in texts:
        for kind in (0, 4, 5, 255):
            seed = Input().number(kind).truth(True).number(10**12, size=8).number(2, size=4).truth(True)
            yield text.encode() + seed.content()


def bmp(bits, colours, pixels, begin=None):
    """A BMP of 4 x 1 pixels: its colour table, its pixels, and where it says that these begin."""
    table = b"\0\0\0\0" + b"\xff\xff\xff\0" * max(0, colours - 1) if colours else b""
    here = 54 + len(table)
    head = b"BM" + struct.pack("<IHHI", here + len(pixels), 0, 0, here if begin is None else begin)
    return head + struct.pack("<IiiHHIIiiII", 40, 4, 1, 1, bits, 0, 0, 0, 0, colours, 0) + table + pixels


def picture():
    yield bmp(8, 2, b"\0\1\1\0")
    yield bmp(8, 2, b"\0\1\xff\0")  # a colour that the table lacks
    yield bmp(24, 0, b"\0" * 12, begin=4000)  # pixels behind the end
    yield bmp(4, 2, b"")  # no pixels at all
    yield (examples / "images/logo.png").read_bytes()
    yield b"P4\n8 2\n\xaa\x55"
    yield b"P5\n2 2\n255\n\x00\xff\x80\x00"
    yield b"/* XPM */\nstatic char *a[] = {\n\"2 1 2 1\",\n\"a c #000000\",\n\"b c #ffffff\",\n\"ab\"};"
    yield b"#define a_width 8\n#define a_height 1\nstatic char a_bits[] = { 0x55 };"


def stream():
    # The last byte chooses the model, the one before it how the stream is parted.
    models = ["GENERAL_EPSON_PROTOCOL", "CUSTOM_VKP_80", "CITIZEN_PPU_700", "CITIZEN_CTS_2000", "TSP-TUP",
              "SWECOIN_TM_20XX"]
    for description in sorted((root / "tests/data/streams").glob("*.json")):
        name = json.loads(description.read_text())["model"]
        if name not in models:
            continue
        model = models.index(name)
        content = description.with_suffix(".bin").read_bytes()
        for begin in range(0, min(len(content), 4000), 1000):
            yield content[begin:begin + 1000] + bytes([6, model])
    for model in range(len(models)):
        yield b"\x1dv0\0\2\0\4\0\x10\4\1abc\x10\x14\1\0\1" + bytes([2, model])
        yield b"\x1d(D\3\0\x14\1\0\x1dk\4AB\0\x1b&\3AB\1abc\0" + bytes([0, model])
        yield b"\x1b*rA" + b"b\2\0abk\1\0c" + b"\x1b*rY10\0\x1b*rB\x1bb6\1\2P123\x1e" + bytes([3, model])
        yield b"\x1cq\1\1\0\1\0abcdefgh\x1d8L\x0c\0\0\0" + b"0p0\1\0011\x08\0\2\0ab" + bytes([9, model])


def encoder():
    # The last byte chooses the model; before it paper, font, picture, drawer, empty lines, blanks in front,
    # loop, moving, code page, and that the document is JSON.
    documents = [json.loads((root / "tests/data/golden/tags.json").read_text())]
    documents += [json.loads(text) for text in documentmap()]
    texts = ["\x1bp\0\x19\xfa", "\x10\x14\x01\0\x01", "Сумма 1 234,50 €", "漢字", "\x01\x07", "x" * 200]
    documents += [{"blocks": [{"type": 0, "txt": [text], "fmt": [format], "fnt": ["AA=="], "ls": [1]}]}
                  for text in texts for format in ("AA==", "QA==", "PA==")]
    documents += [{"blocks": [{"type": 1, "img": {"w": 40, "h": 2, "data": "EBQBAAEAAAAQFAEAAQAAAA=="}}],
                   "cta": actions} for actions in (1, 4, 8)]
    documents += [{"blocks": [{"type": 2, "bar": "MTIzNDU2Nzg5MDEy", "bt": kind}]} for kind in range(80)]
    for number, document in enumerate(documents):
        yield json.dumps(document).encode() + bytes([1, 0, 0, 0, 3, 0, number % 3, number % 2, 0, 0, number % 16])


# Bytes for the numbers of a target, and for a truth value that chooses text as the form of input.
tails = {"documentmap": b"\x01", "state": b"", "picture": b"\0\x01", "stream": b"", "encoder": b""}


def bytesOf(content, target):
    if isinstance(content, Input):
        return content.content()
    content = content if isinstance(content, bytes) else content.encode()
    return content + tails.get(target, b"\0" * 16)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    for target in (pipeline, markup, bbcode, expression, symbols, documentmap, documentfiles, catalogue,
                   settings, state, picture, stream, encoder):
        folder = pathlib.Path(sys.argv[1]) / target.__name__
        folder.mkdir(parents=True, exist_ok=True)
        for number, content in enumerate(target()):
            (folder / ("%03d" % number)).write_bytes(bytesOf(content, target.__name__))


main()

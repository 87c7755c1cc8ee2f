"""Spoils streams, so that a walk can be tried which has to notice it.

Each way gets a walk without faults and gives the spoilt bytes, or None where it doesn't fit the stream.
"""

ESC, GS = b'\x1b', b'\x1d'


def pieces_of(walk, *names):
    return [(at, size) for at, size, name in walk.pieces if name in names]


def without(walk, at, size):
    return walk.data[:at] + walk.data[at + size:]


def inserted(walk, at, new):
    return walk.data[:at] + new + walk.data[at:]


def in_text(walk, new):
    texts = [(at, size) for at, size in pieces_of(walk, 'text') if size > 1]
    return inserted(walk, texts[len(texts) // 2][0] + 1, new) if texts else None


def control_in_text(walk):
    return in_text(walk, b'\x01')


def delete_in_text(walk):
    return in_text(walk, b'\x7f')


def unknown_command(walk):
    texts = pieces_of(walk, 'text')
    return inserted(walk, texts[-1][0], ESC + b'\xf1') if texts else None


def drawer_command(walk):
    command = {'escpos': ESC + b'p\x00\x32\x32', 'star': b'\x07', 'swecoin': None}[walk.printer.dialect]
    return inserted(walk, len(walk.data), command) if command and not walk.job.drawer else None


def chinese_mode(walk):
    """FS . is gone, and text follows."""
    found = pieces_of(walk, 'FS .')
    if not found or not pieces_of(walk, 'text'):
        return None
    data = walk.data
    for at, size in reversed(found):
        data = data[:at] + data[at + size:]
    return data


def no_reset(walk):
    found = pieces_of(walk, 'ESC @', 'ESC ?')
    return without(walk, *found[0]) if found and walk.job.reset and walk.printer.dialect == 'escpos' else None


def cut_at_once(walk):
    """What is fed in front of the last cut is gone."""
    names = [name for _, _, name in walk.pieces]
    cuts = [i for i, name in enumerate(names) if name in ('GS V', 'ESC i', 'ESC m', 'ESC RS', 'RS')]
    if not cuts or walk.data[walk.pieces[cuts[-1]][0]:][:3] in (b'\x1dVA', b'\x1dVB'):
        return None
    first = cuts[-1]
    while first > 0 and names[first - 1] in ('ESC J', 'ESC d', 'ESC Q', 'ESC 3'):
        first -= 1
    # Behind a line with letters: what is blank already is fed, too.
    if names[max(0, first - 2):first] != ['text', 'LF']:
        return None
    begin, end = walk.pieces[first][0], walk.pieces[cuts[-1]][0]
    return walk.data[:begin] + walk.data[end:] if begin < end else None


def no_cut(walk):
    found = pieces_of(walk, 'GS V', 'ESC i', 'ESC m', 'ESC RS', 'RS', 'ESC d' if walk.printer.dialect == 'star' else '')
    if not walk.job.cut or len(found) != 1:
        return None
    return without(walk, *found[0])


def last_line_lost(walk):
    """The stream ends behind a text."""
    texts = pieces_of(walk, 'text')
    return walk.data[:sum(texts[-1])] if texts else None


def wide_line(walk):
    return in_text(walk, b'x' * 120)


def wide_picture(walk):
    return picture(walk, 0x61, 1)


def long_strip(walk):
    return picture(walk, 8, 300)


def picture(walk, columns, rows):
    """A picture in front of the first text or at the end."""
    if walk.printer.dialect != 'escpos':
        return None
    texts = pieces_of(walk, 'ESC @')
    at = sum(texts[0]) if texts else 0
    return inserted(walk, at, GS + b'v0\0' + bytes([columns, 0, rows % 256, rows // 256]) + bytes(columns * rows))


def at_once_in_data(walk):
    """A picture's bytes become a command that acts at once."""
    pattern = {'escpos': b'\x10\x04\x01', 'star': b'\x1b\x06\x01', 'swecoin': None}[walk.printer.dialect]
    strips = [(at, size) for at, size in pieces_of(walk, 'GS v 0', 'ESC k', 'ESC *') if size > 16]
    if not strips or not pattern:
        return None
    at = sum(strips[0]) - len(pattern)
    return walk.data[:at] + pattern + walk.data[at + len(pattern):]


def lines_far_apart(walk):
    """Lines are much further apart than any spacing."""
    found = pieces_of(walk, 'ESC 3')
    if not found or not pieces_of(walk, 'text'):
        return None
    data = bytearray(walk.data)
    for at, size in found:
        data[at + size - 1] = 255
    return bytes(data)


def cut_short(walk):
    """The last byte is gone, and it was an operand."""
    at, size, name = walk.pieces[-1]
    return walk.data[:-1] if size > len(name.split()) and name != 'text' else None


WAYS = {
    'a control character is in the text': control_in_text,
    'a DEL is in the text': delete_in_text,
    'an unknown command is in it': unknown_command,
    'the drawer opens': drawer_command,
    'Chinese mode isn\'t left': chinese_mode,
    'the printer isn\'t reset': no_reset,
    'nothing is fed before the cut': cut_at_once,
    'the ticket isn\'t cut off': no_cut,
    'the last line isn\'t printed': last_line_lost,
    'a line is too wide': wide_line,
    'a picture is too wide': wide_picture,
    'a strip is too long': long_strip,
    'a picture holds a command': at_once_in_data,
    'lines have another height': lines_far_apart,
    'the last command is cut short': cut_short,
}


def spoilt(walk):
    """How a stream is spoilt, and the bytes, for each way that fits it."""
    if not walk.pieces:
        return
    for how, way in WAYS.items():
        data = way(walk)
        if data is not None and data != walk.data:
            yield how, data

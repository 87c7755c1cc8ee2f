"""Walks streams that our drivers make for printers, and says what is wrong with them.

It is an opinion of its own: command tables, heads, units of motion and distances stand here as the
manuals have them, not as drivers/commandsets has them, and no code is shared with the library. Where
the two differ one of them is wrong. So nothing here may ever be made from the library's data.

It is also stricter than a printer: of all that a dialect has it takes only what a driver for receipts
has reason to send, and each line has to have the height of its letters and a whole number of line
spacing codes. It knows nothing of pictures' contents; those are compared dot by dot elsewhere.
"""

import dataclasses
import itertools

NUL, EOT, ENQ, BEL, HT, LF, FF, DLE, DC4, SYN, EM, SUB, ESC, FS, GS, RS = (
    b'\0', b'\x04', b'\x05', b'\x07', b'\t', b'\n', b'\x0c', b'\x10', b'\x14', b'\x16', b'\x19', b'\x1a',
    b'\x1b', b'\x1c', b'\x1d', b'\x1e')

# A strip of a picture, so that a printer answers and stops between two.
MOST_STRIP = 2048
# Dots between two lines: 4 for each of the codes 0 to 7.
SPACINGS = range(0, 29, 4)
# Steps of motors and of ESC 3 aren't dots; a line may be so much higher or lower than it should.
TOLERANCE = 1.0
# Bands of dots join: units of 1/360 inch are a third of a dot off at most.
BAND_TOLERANCE = 0.6


@dataclasses.dataclass
class Printer:
    """What a manual says of a model. Lengths are in dots."""
    dialect: str = 'escpos'
    vendor: str = 'epson'
    head: int = 576
    # Dots, and units of ESC 3 and ESC J, to the inch.
    dpi: float = 203
    unit: float = 203
    # From head to cutter.
    cutter: int = 90
    fonts: tuple = ((12, 24), (9, 17))
    spacing: int = 30
    drawers: int = 2


# Those of kiosks have no connector for a drawer. Models without a manual are taken for printers of
# Epson's protocol. Where a manual doesn't say how far the cutter is it is 11 mm, less than in any
# printer of this kind: no stream may cut nearer to its last line.
PRINTERS = {
    'GENERAL_EPSON_PROTOCOL': Printer(),
    # VKP80II and TG2480 command references: 204 dots to the inch, feed in half dots; 11.9 mm to the cutter.
    'CUSTOM_VKP_80': Printer(vendor='custom', head=640, dpi=204, unit=408, cutter=95,
                             fonts=((18, 24), (14, 24), (10, 24)), spacing=34, drawers=0),
    'CUSTOM_TG_2480_H': Printer(vendor='custom', head=640, dpi=204, unit=408, cutter=95,
                                fonts=((18, 24), (14, 24), (10, 24)), spacing=34, drawers=0),
    'CUSTOM_TG_2480_SE': Printer(vendor='custom', head=576, dpi=204, unit=408, cutter=95,
                                 fonts=((18, 24), (14, 24), (10, 24)), spacing=34, drawers=0),
    # Citizen's manuals, GS P: x = 203, y = 360.
    'CITIZEN_PPU_700': Printer(vendor='citizen', unit=360, fonts=((12, 24), (9, 17), (8, 16)), spacing=34, drawers=0),
    'CITIZEN_CBM_1000': Printer(vendor='citizen', unit=360, fonts=((12, 24), (9, 24)), spacing=34),
    'CITIZEN_CTS_2000': Printer(vendor='citizen', unit=360, fonts=((12, 24), (9, 24), (8, 16)), spacing=34),
    'CITIZEN_PPU_231': Printer(vendor='citizen', unit=360, fonts=((12, 24), (9, 24)), spacing=34, drawers=0),
    'AV_268': Printer(head=384, fonts=((8, 16),)),
    # Star: one step of ESC I is 1/8 mm, a dot.
    'TSP-TUP': Printer(dialect='star', vendor='star', unit=203.2, fonts=((12, 24), (9, 24)), spacing=32),
    'EPSON_EU_4XX': Printer(head=640, spacing=34),
    'SWECOIN_TM_20XX': Printer(dialect='swecoin', vendor='swecoin', fonts=((18, 24),), spacing=34,
                               # TTP 2000 Technical Manual: 9 mm, and as delivered it cuts where the paper is.
                               cutter=72, drawers=0),
    'CITIZEN_CPP_8001': Printer(fonts=((12, 24), (9, 24))),
    'WPK_833': Printer(fonts=((12, 24), (9, 24))),
    'MERCURY_G80_RS': Printer(fonts=((12, 24), (9, 24))),
    'NP_F209_2D': Printer(head=384),
}


# Code pages by the numbers of ESC t, and of Star's ESC GS t, as the manuals have them, with the names that
# Python knows them by; None: it doesn't know that page.
EPSON_PAGES = {0: 'cp437', 1: None, 2: 'cp850', 3: 'cp860', 4: 'cp863', 5: 'cp865', 11: None, 13: 'cp857', 14: 'cp737', 15: 'iso8859_7',
               16: 'cp1252', 17: 'cp866', 18: 'cp852', 19: 'cp858', 21: 'cp874', 33: 'cp775', 34: 'cp855', 35: 'cp861',
               36: 'cp862', 37: 'cp864', 38: 'cp869', 39: 'iso8859_2', 40: 'iso8859_15', 42: None, 43: None, 44: 'cp1125', 45: 'cp1250',
               46: 'cp1251', 47: 'cp1253', 48: 'cp1254', 49: 'cp1255', 50: 'cp1256', 51: 'cp1257', 52: 'cp1258',
               53: 'kz1048'}
PAGES = {
    'epson': EPSON_PAGES,
    'custom': {number: EPSON_PAGES[number] for number in (0, 2, 3, 4, 5, 19)},
    'citizen': {0: 'cp437', 1: None, 2: 'cp858', 3: 'cp860', 4: 'cp863', 5: 'cp865', 6: 'cp852', 7: 'cp866', 8: 'cp857',
                16: 'cp1252', 17: 'cp866', 18: 'cp852', 19: 'cp858', 26: 'cp874', 40: 'cp864'},
    'star': {0: 'cp437', 1: 'cp437', 2: None, 3: 'cp437', 4: 'cp858', 5: 'cp852', 6: 'cp860', 7: 'cp861', 8: 'cp863', 9: 'cp865',
             10: 'cp866', 11: 'cp855', 12: 'cp857', 13: 'cp862', 14: 'cp864', 15: 'cp737', 16: None, 17: 'cp869', 18: 'iso8859_7',
             19: None, 20: None, 21: 'cp874', 32: 'cp1252', 33: 'cp1250', 34: 'cp1251'},
    'swecoin': {0: 'cp437'},
}


@dataclasses.dataclass
class Job:
    """What is known of a stream beside its bytes."""
    # Dots of the line of its paper, as the shop's catalogue has it; the head may have fewer.
    line: int = 10000
    # Whether the ticket is to be cut off.
    cut: bool = None
    # Whether the drawer may open.
    drawer: bool = False
    # Whether the printer is reset first.
    reset: bool = True
    # Control characters that the caller let through.
    allowed: bytes = b''
    # What is to be read on the paper, where all of it is text; blanks don't count.
    text: str = None


class CutOff(Exception):
    """The stream ends inside a command."""


class Walk:
    """One stream. What is wrong stands in `faults` as (offset, text), what it is made of in `pieces` as
    (offset, length, name)."""

    # Introducer: number of operands, and the method that gets them. A method that takes data reads it with
    # `take`. None: the command is taken and changes nothing that is looked at here.
    COMMANDS = {}
    FIRST_TEXT = 0x20
    # Bytes that act at once, wherever they stand.
    AT_ONCE = ()

    def __init__(self, printer, data, job):
        self.printer = printer
        self.data = data
        self.job = job
        self.line = min(printer.head, job.line)
        self.faults = []
        self.pieces = []
        self.at = 0
        self.start = 0
        self.cuts = 0
        self.raster_in_line = False
        self.is_reset = False
        self.pulses = 0
        # What the texts say.
        self.shown = ''
        # Paper that went by since the last dots; none is known of what a former job left.
        self.below = 0.0
        self.reset_state()

    def reset_state(self):
        self.font = 0
        self.width = self.height = 1
        self.spacing = float(self.printer.spacing)
        self.codec = 'cp437'
        self.is_own = False
        # Of the line that isn't printed yet: its end and its highest letter.
        self.end = 0
        self.tallest = 0

    # The road through the stream.

    def fault(self, text, at=None):
        self.faults.append((self.start if at is None else at, text))

    def take(self, count):
        if self.at + count > len(self.data):
            raise CutOff
        taken = self.data[self.at:self.at + count]
        self.at += count
        return taken

    def take_to(self, terminator):
        end = self.data.find(terminator, self.at)
        if end < 0:
            raise CutOff
        return self.take(end + 1 - self.at)[:-1]

    def run(self):
        while self.at < len(self.data):
            self.start = self.at
            self.pieces.append((self.start, *self.step()))
        self.start = len(self.data)
        self.finish()
        return self

    def step(self):
        introducer = next((self.data[self.at:self.at + size] for size in range(5, 0, -1)
                           if self.at + size <= len(self.data)
                           and self.data[self.at:self.at + size] in self.COMMANDS), None)
        if introducer is not None:
            return self.command(introducer)
        if self.data[self.at] >= self.FIRST_TEXT:
            return self.text()
        size = min(2 if self.data[self.at] in b'\x1b\x1c\x1d\x10' else 1, len(self.data) - self.at)
        unknown = self.take(size)
        if len(unknown) == 1 and unknown in self.job.allowed:
            return size, 'allowed'
        self.fault('unknown bytes ' + unknown.hex(' '))
        return size, 'unknown'

    def command(self, introducer):
        count, method = self.COMMANDS[introducer]
        self.at += len(introducer)
        try:
            operands = self.take(count)
            if method:
                getattr(self, method)(*operands)
        except CutOff:
            self.at = len(self.data)
            self.fault('the stream ends inside ' + name_of(introducer))
        self.look_for_hazards(introducer)
        return self.at - self.start, name_of(introducer)

    def look_for_hazards(self, introducer):
        """A command is one whatever its bytes; what acts at once does so inside it all the same."""
        whole = self.data[self.start:self.at]
        for pattern in self.AT_ONCE:
            at = whole.find(pattern, 1 if introducer.startswith(pattern[:1]) else 0)
            while at >= 0:
                if not self.is_harmless(pattern, self.start + at):
                    self.fault(f'{pattern.hex(" ")} acts at once inside {name_of(introducer)}', self.start + at)
                at = whole.find(pattern, at + 1)

    def is_harmless(self, pattern, at):
        """Whether what acts at once was switched off before."""
        return False

    def text(self):
        end = self.at
        while end < len(self.data) and self.data[end] >= self.FIRST_TEXT:
            end += 1
        letters = self.take(end - self.at)
        if b'\x7f' in letters:
            self.fault('a DEL in the text')
        if not self.is_reset and self.job.reset:
            self.fault('text before the printer is reset')
        self.before_text()
        self.shown += '\ufffc' * len(letters) if self.is_own else letters.decode(self.codec or 'ascii', 'replace')
        width, height = self.cell()
        self.end += width * len(letters)
        self.tallest = max(self.tallest, height)
        if self.end > self.line:
            self.fault(f'the line is {self.end} dots wide, of {self.line}')
            self.end = 0
        return len(letters), 'text'

    def before_text(self):
        pass

    def cell(self):
        fonts = self.printer.fonts
        width, height = fonts[self.font] if self.font < len(fonts) else fonts[0]
        return width * self.width, height * self.height

    # What commands of all dialects come to.

    def on_or_off(self, n):
        if n > 1:
            self.fault(f'{n} where there is on and off')

    def off(self, n):
        if n:
            self.fault(f'{n} for what our receipts don\'t have')

    def reset(self):
        if self.end > 0:
            self.fault('a reset throws a line away')
        self.reset_state()
        self.is_reset = True

    def choose_font(self, number):
        if number >= len(self.printer.fonts):
            self.fault(f'there is no font {number}')
        self.font = number

    def choose_page(self, number):
        """By the numbers of its maker."""
        if number not in PAGES[self.printer.vendor]:
            self.fault(f'a code page {number}, of which the manual says nothing')
        self.codec = PAGES[self.printer.vendor].get(number)

    def choose_own(self, n):
        self.on_or_off(n)
        self.is_own = n == 1

    def choose_spacing(self, dots):
        self.spacing = dots

    def heights(self):
        return {height * factor for _, height in self.printer.fonts for factor in (1, 2)}

    def end_line(self, pitch):
        """The line is printed and the paper moves by a pitch, and at least by the height of the line."""
        tall = self.tallest
        choices = {tall} if tall else self.heights()
        if not any(abs(pitch - height - spacing) <= TOLERANCE for height in choices for spacing in SPACINGS):
            self.fault(f'a line of {tall} dots is fed by {pitch:.1f}')
        if tall:
            self.below = max(0.0, pitch - tall)
        else:
            self.below += pitch
        self.end = self.tallest = 0

    def feed(self, dots):
        if self.end > 0:
            self.fault('a line is printed by a feed')
        self.below += dots

    def strip(self, width, rows, size, lowest):
        """Rows of dots from the left edge.

        lowest: how many of the rows there are down to the last that isn't blank
        """
        if self.end > 0:
            self.fault('a picture begins behind text')
        if width > (self.printer.head + 7) // 8 * 8:
            self.fault(f'a picture of {width} dots, of a head of {self.printer.head}')
        if size > MOST_STRIP:
            self.fault(f'a strip of {size} bytes')
        if width == 0 or rows == 0:
            self.fault('a picture without dots')
        self.below = float(rows - lowest) if lowest else self.below + rows

    def cut(self, feeds=False):
        if self.end > 0:
            self.fault('a cut through a line that isn\'t printed')
        if not feeds and self.below < self.printer.cutter - TOLERANCE:
            self.fault(f'a cut {self.below:.0f} dots below the last ones, with the cutter {self.printer.cutter} away')
        self.cuts += 1
        # What was fed hangs between head and cutter, and is the next ticket's.

    def pulse(self):
        self.pulses += 1
        if not self.job.drawer or not self.printer.drawers:
            self.fault('the drawer opens and nobody asked')

    def finish(self):
        if self.end > 0:
            self.fault('the last line isn\'t printed')
        if self.job.cut and self.cuts == 0:
            self.fault('the ticket isn\'t cut off')
        if self.job.cut is False and self.cuts > 0:
            self.fault('the ticket is cut off and nobody asked')
        if self.job.drawer and self.printer.drawers and self.pulses != 1:
            self.fault(f'the drawer opens {self.pulses} times')
        difference = self.job.text is not None and first_difference(self.job.text, self.shown)
        if difference:
            self.fault(f'the texts say otherwise: {difference}')
        if self.job.reset and not self.is_reset:
            self.fault('the printer isn\'t reset')


class EscPos(Walk):
    AT_ONCE = (DLE + EOT, DLE + ENQ, DLE + DC4)
    COMMANDS = {
        LF: (0, 'line_feed'),
        ESC + b'@': (0, 'reset'), FS + b'.': (0, 'leave_chinese'),
        ESC + b'!': (1, 'print_mode'), ESC + b'M': (1, 'choose_font'), GS + b'!': (1, 'size'),
        ESC + b'-': (1, 'below_three'), ESC + b'E': (1, 'on_or_off'), ESC + b'G': (1, 'on_or_off'),
        GS + b'B': (1, 'on_or_off'), ESC + b'{': (1, 'off'), ESC + b'V': (1, 'off'), GS + b'b': (1, 'off'),
        ESC + b' ': (1, 'off'), ESC + b'a': (1, 'align'), GS + b'L': (2, 'set_margin'), ESC + b'$': (2, 'go_to'), GS + b'P': (2, 'units'),
        GS + b'W': (2, 'area'), ESC + b'R': (1, None), ESC + b't': (1, 'choose_page'),
        ESC + b'%': (1, 'choose_own'), ESC + b'&': (3, 'define'), ESC + b'?': (1, None),
        ESC + b'2': (0, 'usual_spacing'), ESC + b'3': (1, 'line_spacing'),
        ESC + b'J': (1, 'print_and_feed'), ESC + b'd': (1, 'feed_lines'),
        ESC + b'*': (3, 'columns'), GS + b'v0': (5, 'raster'),
        GS + b'h': (1, 'code_height'), GS + b'w': (1, 'code_module'), GS + b'H': (1, 'code_digits'),
        GS + b'f': (1, None), GS + b'k': (2, 'barcode'), GS + b'(k': (2, 'symbol'),
        GS + b'(D': (2, 'real_time'), ESC + b'p': (3, 'drawer'),
        GS + b'V': (1, 'cut_paper'), ESC + b'i': (0, 'cut'), ESC + b'm': (0, 'cut'),
    }
    VENDORS = {
        'custom': {GS + b'e': (1, 'custom_ejector'), ESC + b'\xc1': (1, 'custom_pitch')},
        'citizen': {GS + b'R': (1, 'citizen_presenter')},
    }
    # Characters of the barcodes that have few, by the number of GS k.
    DIGITS = b'0123456789'
    CODE_39 = DIGITS + b'ABCDEFGHIJKLMNOPQRSTUVWXYZ -.$/+%*'
    CHARACTERS = {65: DIGITS, 66: DIGITS, 67: DIGITS, 68: DIGITS, 69: CODE_39, 70: DIGITS,
                  71: DIGITS + b'ABCDabcd$+-./:'}
    LENGTHS = {65: (11, 12), 66: (6, 7, 8, 11, 12), 67: (12, 13), 68: (7, 8)}

    def __init__(self, printer, data, job):
        self.COMMANDS = {**EscPos.COMMANDS, **self.VENDORS.get(printer.vendor, {})}
        self.switched_off = set()
        self.is_chinese = None
        super().__init__(printer, data, job)

    def reset_state(self):
        """As the printer is when it was switched on."""
        super().reset_state()
        self.code = {}
        self.symbol_state = {}
        self.columns_in_line = 0
        self.lowest = 0
        self.margin = 0
        self.is_narrow = 0

    def reset(self):
        super().reset()
        self.is_chinese = True

    def leave_chinese(self):
        self.is_chinese = False

    def before_text(self):
        if self.is_chinese is not False:
            self.fault('text in front of FS .')
        if self.columns_in_line and self.tallest < 24:
            self.fault('text behind columns of dots')
        if self.margin:
            self.fault('text behind a margin')

    def is_harmless(self, pattern, at):
        # GS ( D knows of nothing but DLE DC4 1 and 2.
        return pattern == DLE + DC4 and self.switched_off >= {1, 2} and self.data[at + 2:at + 3] not in (b'\3', b'\7', b'\x08')

    def below_three(self, n):
        if n > 2:
            self.fault(f'an underline of {n}')

    def align(self, n):
        if n not in (0, 1, 2):
            self.fault(f'an alignment {n}')

    def set_margin(self, low, high):
        """Codes stand where the margin is; all else begins at the left edge."""
        self.margin = low + 256 * high
        if self.margin >= self.printer.head:
            self.fault(f'a margin of {self.margin}')

    def go_to(self, low, high):
        """Back to print over columns of dots."""
        if not self.columns_in_line or self.has_letters():
            self.fault('a place is chosen where no columns of dots are')
        self.end = low + 256 * high

    def units(self, x, y):
        if x or y:
            self.fault('units of motion that aren\'t the printer\'s own')

    def custom_pitch(self, n):
        """11 and 15 characters to the inch, or 15 and 20: the second font of the latter is the third."""
        self.is_narrow = n
        self.on_or_off(n)

    def cell(self):
        if self.printer.vendor != 'custom':
            return super().cell()
        fonts, number = self.printer.fonts, self.font + self.is_narrow
        if number >= len(fonts):
            self.fault(f'there is no font {self.font} of pitch {self.is_narrow}')
        width, height = fonts[number] if number < len(fonts) else fonts[0]
        return width * self.width, height * self.height

    def area(self, low, high):
        if not 0 < low + 256 * high <= self.printer.head:
            self.fault(f'an area of {low + 256 * high} dots')

    def print_mode(self, n):
        self.choose_font(n & 1)
        self.height = 2 if n & 0x10 else 1
        self.width = 2 if n & 0x20 else 1

    def size(self, n):
        self.width, self.height = 1 + (n >> 4), 1 + (n & 15)
        # A font that is another one doubled may be doubled once more.
        if n & 0xcc:
            self.fault(f'letters enlarged by {n:02x}')

    def dots(self, units):
        return units * self.printer.dpi / self.printer.unit

    def line_spacing(self, n):
        self.choose_spacing(self.dots(n))

    def usual_spacing(self):
        self.choose_spacing(float(self.printer.spacing))

    def has_letters(self):
        """Columns of dots may be characters, which stand on the base of the letters beside them."""
        return self.end > self.columns_in_line

    def line_feed(self):
        self.end_line(max(self.spacing, self.tallest))
        self.columns_in_line = self.lowest = 0

    def print_and_feed(self, n):
        if self.columns_in_line and not self.has_letters():
            self.end_columns(self.dots(n))
        elif self.end > 0:
            self.end_line(max(self.dots(n), self.tallest))
            self.columns_in_line = self.lowest = 0
        else:
            self.feed(self.dots(n))

    def end_columns(self, pitch):
        """Columns hold 24 rows: less would print over them, more would leave a gap."""
        if abs(pitch - 24) > BAND_TOLERANCE:
            self.fault(f'columns of dots are fed by {pitch:.1f}')
        self.below = max(0.0, pitch - self.lowest) if self.lowest else self.below + pitch
        self.columns_in_line = self.end = self.tallest = self.lowest = 0

    def feed_lines(self, n):
        self.feed(n * self.spacing)

    def define(self, height, first, last):
        if height != 3 or not 0x20 <= first <= last <= 0x7e:
            self.fault(f'characters {first} to {last} of {height} bytes')
        for _ in range(first, last + 1):
            width = self.take(1)[0]
            if width > 16:
                self.fault(f'a character of {width} columns')
            self.take(width * height)

    def columns(self, mode, low, high):
        if mode not in (0, 1, 32, 33):
            self.fault(f'columns of mode {mode}')
        count = low + 256 * high
        data = self.take(count * (3 if mode in (32, 33) else 1))
        size = len(data)
        self.lowest = max(self.lowest, lowest_of_columns(data, 3 if mode in (32, 33) else 1))
        width = count * (2 if mode in (0, 32) else 1)
        if self.end > 0 and mode != 33:
            self.fault('columns of dots behind text')
        if size > MOST_STRIP:
            self.fault(f'a strip of {size} bytes')
        self.columns_in_line += width
        self.end += width
        self.tallest = max(self.tallest, 24 if mode == 33 else 0)
        limit = self.line if self.has_letters() else self.printer.head
        if self.end > limit:
            self.fault(f'columns of {self.end} dots, of a head of {limit}')

    def raster(self, mode, x_low, x_high, y_low, y_high):
        columns, rows = x_low + 256 * x_high, y_low + 256 * y_high
        if mode != 0:
            self.fault(f'a picture of mode {mode}')
        data = self.take(columns * rows)
        self.strip(8 * columns, rows, len(data), lowest_row(data, columns))
        if self.margin:
            self.fault('a picture behind a margin')

    def code_height(self, n):
        self.code['height'] = n

    def code_module(self, n):
        self.code['module'] = n
        if not 1 <= n <= 8:
            self.fault(f'a module of {n} dots')

    def code_digits(self, n):
        self.code['digits'] = n
        if n:
            self.fault('digits at a barcode')

    def barcode(self, kind, count):
        if not 65 <= kind <= 79:
            return self.fault(f'a barcode {kind}, whose end nobody can tell')
        payload = self.take(count)
        if len(self.code) < 3:
            self.fault('a barcode without height, module and digits')
        if any(byte not in self.CHARACTERS[kind] for byte in (payload if kind in self.CHARACTERS else b'')):
            self.fault(f'characters in a barcode {kind} that it hasn\'t')
        if kind in self.LENGTHS and count not in self.LENGTHS[kind]:
            self.fault(f'{count} characters in a barcode {kind}')
        if kind == 70 and count % 2:
            self.fault('an odd number of digits in an ITF code')
        if kind == 73 and payload[:2] not in (b'{A', b'{B', b'{C'):
            self.fault('a Code 128 without its code set')
        self.print_code()

    def print_code(self):
        if self.end > 0:
            self.fault('a code begins behind text')
        self.below = 0.0

    def symbol(self, low, high):
        body = self.take(low + 256 * high)
        if len(body) < 2 or body[0] != 49:
            return self.fault(f'a symbol {body[:2].hex(" ")}')
        function, operands = body[1], body[2:]
        if function == 65 and operands not in (b'1\0', b'2\0'):
            self.fault('a model of QR codes')
        elif function == 67 and not (len(operands) == 1 and 1 <= operands[0] <= 16):
            self.fault('a module of QR codes')
        elif function == 69 and operands not in (b'0', b'1', b'2', b'3'):
            self.fault('a correction of QR codes')
        elif function == 80 and not (operands[:1] == b'0' and 2 <= len(operands) <= 7090):
            self.fault('data of a QR code')
        elif function == 81:
            if operands != b'0' or {67, 69, 80} - set(self.symbol_state):
                self.fault('a QR code without module, correction and data')
            self.print_code()
            self.symbol_state = {}
            return None
        elif function not in (65, 67, 69, 80):
            self.fault(f'a function {function} of QR codes')
        self.symbol_state[function] = operands
        return None

    def real_time(self, low, high):
        body = self.take(low + 256 * high)
        if body[:1] != b'\x14' or len(body) % 2 == 0 or len(body) < 3:
            return self.fault('GS ( D of another kind')
        for command, is_on in zip(body[1::2], body[2::2]):
            if command not in (1, 2) or is_on > 1:
                self.fault(f'GS ( D {command} {is_on}')
            elif is_on:
                self.switched_off.discard(command)
            else:
                self.switched_off.add(command)
        return None

    def drawer(self, pin, on, off):
        if pin > 1 or on == 0:
            self.fault(f'a pulse at {pin} of {on}')
        self.pulse()

    def cut_paper(self, mode):
        if mode in (65, 66):
            self.take(1)
            self.cut(feeds=True)
        elif mode in (0, 1, 48, 49):
            self.cut()
        else:
            self.fault(f'a cut of mode {mode}')

    def custom_ejector(self, n):
        if n == 3:
            self.take(1)
        if n not in (0, 2, 3, 5):
            self.fault(f'GS e {n}')

    def citizen_presenter(self, n):
        if n == 49:
            self.take(1)
        elif n != 48:
            self.fault(f'GS R {n}')

    def finish(self):
        super().finish()
        if 1 in self.switched_off:
            self.fault('the pulse of DLE DC4 stays switched off')


class Star(Walk):
    AT_ONCE = (ESC + b'\x06\x01',)
    COMMANDS = {
        LF: (0, 'line_feed'), BEL: (0, 'pulse'), SUB: (0, 'pulse'), FS: (0, 'pulse'), EM: (0, 'pulse'),
        ESC + b'@': (0, 'reset'), ESC + GS + b't': (1, 'choose_page'), ESC + RS + b'F': (1, 'choose_font'),
        ESC + b'R': (1, None), ESC + b' ': (1, 'off'), ESC + b'M': (0, None), ESC + b'P': (0, None),
        ESC + b'i': (2, 'size'),
        ESC + b'E': (0, None), ESC + b'F': (0, None), ESC + b'-': (1, 'on_or_off'), ESC + b'_': (1, 'off'),
        ESC + b'4': (0, None), ESC + b'5': (0, None), ESC + GS + b'b': (1, 'off'), b'\x12': (0, None),
        ESC + b'%': (1, 'choose_own'), ESC + b'&': (3, 'define'), ESC + b'q': (0, None), ESC + b'$': (1, 'off'),
        ESC + GS + b'a': (1, 'align'), ESC + b'l': (1, 'off'), ESC + RS + b'A': (1, None),
        ESC + GS + b'A': (2, 'go_to'), ESC + b'Q': (1, 'right_margin'), ESC + RS + b'i': (1, 'off'),
        ESC + b'z': (1, 'lines'), ESC + b'0': (0, 'narrow_lines'),
        ESC + b'I': (1, 'feed_eighths'), ESC + b'J': (1, 'feed_quarters'), ESC + b'a': (1, 'feed_lines'),
        ESC + b'k': (2, 'rows'), ESC + b'X': (2, 'columns'), ESC + GS + b'S': (6, 'raster'),
        ESC + b'b': (4, 'barcode'), ESC + GS + b'yS0': (1, 'qr_model'), ESC + GS + b'yS1': (1, 'qr_correction'),
        ESC + GS + b'yS2': (1, 'qr_module'), ESC + GS + b'yD1': (3, 'qr_data'), ESC + GS + b'yP': (0, 'qr_print'),
        ESC + b'd': (1, 'cut_paper'), ESC + BEL: (2, None), ESC + SYN: (2, 'presenter'),
    }

    def __init__(self, printer, data, job):
        self.qr = {}
        self.dots_in_line = 0
        self.lowest = 0
        self.alignment = 0
        super().__init__(printer, data, job)

    def align(self, n):
        self.alignment = n & 15
        if n not in (0, 1, 2, 0x30, 0x31, 0x32):
            self.fault(f'an alignment {n}')

    def choose_font(self, number):
        super().choose_font(number & 15)

    def go_to(self, low, high):
        """Back to print over rows of dots."""
        if not self.dots_in_line:
            self.fault('a place is chosen where no rows of dots are')
        self.end = low + 256 * high

    def right_margin(self, n):
        if n * self.printer.fonts[0][0] != self.printer.head:
            self.fault(f'lines of {n} characters')

    def size(self, height, width):
        """Digits are numbers, too."""
        height, width = height & 15, width & 15
        self.width, self.height = 1 + width, 1 + height
        if height > 1 or width > 1:
            self.fault('letters more than doubled')

    def define(self, a, b, code):
        if (a, b) != (1, 1) or not 0x20 <= code <= 0x7f:
            self.fault(f'a character {code} of {a} {b}')
        self.take(48)

    def before_text(self):
        if self.dots_in_line:
            self.fault('text behind rows of dots')
        if self.alignment:
            self.fault('text that is aligned by the printer')

    def lines(self, n):
        if n > 1:
            self.fault(f'lines {n}')
        self.spacing = 32.0 if n & 1 else 24.0

    def narrow_lines(self):
        self.spacing = 24.0

    def line_feed(self):
        if self.dots_in_line:
            self.end_rows(self.spacing)
        else:
            self.end_line(max(self.spacing, self.tallest))

    def advance(self, dots):
        if self.dots_in_line:
            self.end_rows(dots)
        elif self.end > 0:
            self.end_line(max(dots, self.tallest))
        else:
            self.feed(dots)

    def feed_eighths(self, n):
        self.advance(float(n))

    def feed_quarters(self, n):
        self.advance(2.0 * n)

    def feed_lines(self, n):
        self.advance(n * self.spacing)

    def rows(self, low, high):
        """24 rows of dots, which LF or a feed prints."""
        count = low + 256 * high
        data = self.take(24 * count)
        self.add_dots(8 * count, data, lowest_row(data, count))

    def columns(self, low, high):
        """Characters as dots, on the base of the letters beside them."""
        count = low + 256 * high
        size = len(self.take(3 * count))
        if self.dots_in_line:
            self.fault('columns behind rows of dots')
        if size > MOST_STRIP:
            self.fault(f'a strip of {size} bytes')
        self.end += count
        self.tallest = max(self.tallest, 24)
        if self.end > self.line:
            self.fault(f'columns of {self.end} dots, of a line of {self.line}')

    def add_dots(self, width, data, lowest):
        """They stand side by side, and are printed by a feed."""
        left = self.end if self.dots_in_line else 0
        self.end -= left
        below = self.below
        self.strip(left + width, 24, len(data), lowest)
        self.below = below
        self.lowest = max(self.lowest, lowest)
        self.dots_in_line = 24
        self.end = left + width

    def end_rows(self, pitch):
        if abs(pitch - self.dots_in_line) > BAND_TOLERANCE:
            self.fault(f'rows of dots are fed by {pitch:.1f}')
        self.below = max(0.0, pitch - self.lowest) if self.lowest else self.below + pitch
        self.dots_in_line = self.end = self.lowest = 0

    def raster(self, mode, x_low, x_high, y_low, y_high, colour):
        columns, rows = x_low + 256 * x_high, y_low + 256 * y_high
        data = self.take(columns * rows)
        self.strip(8 * columns, rows, len(data), lowest_row(data, columns))
        if mode != 1 or colour != 0:
            self.fault(f'a picture of mode {mode} and colour {colour}')

    def barcode(self, kind, digits, mode, height):
        payload = self.take_to(0x1e)
        if not 0x30 <= kind <= 0x3d or digits not in (0x31, 0x33) or not 0x31 <= mode <= 0x39 or height == 0:
            self.fault(f'a barcode {kind} {digits} {mode} {height}')
        if any(byte < 0x20 for byte in payload):
            self.fault('a control character in a barcode')
        if self.end > 0:
            self.fault('a code begins behind text')
        self.below = 0.0

    def qr_model(self, n):
        self.qr['model'] = n
        if n not in (1, 2):
            self.fault('a model of QR codes')

    def qr_correction(self, n):
        self.qr['correction'] = n
        if n > 3:
            self.fault('a correction of QR codes')

    def qr_module(self, n):
        self.qr['module'] = n
        if not 1 <= n <= 8:
            self.fault('a module of QR codes')

    def qr_data(self, mode, low, high):
        self.qr['data'] = self.take(low + 256 * high)
        if mode != 0 or not self.qr['data']:
            self.fault('data of a QR code')

    def qr_print(self):
        if {'model', 'correction', 'module', 'data'} - set(self.qr):
            self.fault('a QR code without model, module, correction and data')
        if self.end > 0:
            self.fault('a code begins behind text')
        self.qr = {}
        self.below = 0.0

    def cut_paper(self, n):
        if n not in (0, 1, 2, 3, 0x30, 0x31, 0x32, 0x33):
            self.fault(f'a cut of mode {n}')
        self.cut(feeds=n & 15 in (2, 3))

    def presenter(self, n, m):
        if not 0x30 <= n <= 0x33:
            self.fault(f'ESC SYN {n} {m}')


class Swecoin(Walk):
    COMMANDS = {
        LF: (0, 'line_feed'), RS: (0, 'cut_and_eject'), EM: (1, None), ENQ: (0, None),
        b'\x18': (0, 'reset'), ESC + b'!': (1, 'choose_font'), ESC + b'B': (1, 'bold'),
        ESC + b'i': (1, 'on_or_off'), ESC + b'T': (1, 'on_or_off'), ESC + b'u': (1, None),
        ESC + b'h': (1, 'high'), ESC + b'w': (1, 'wide'), ESC + b'3': (1, 'line_spacing'),
        ESC + b'd': (1, 'feed_lines'), ESC + b'J': (1, 'feed'), ESC + b'Q': (2, 'feed_word'),
        ESC + b's': (1, 'row'), ESC + b'l': (2, 'long_row'), ESC + b'o': (1, None),
        ESC + RS: (0, 'cut'), ESC + FF: (1, None),
    }

    def choose_font(self, number):
        super().choose_font(number & 15)

    def bold(self, n):
        """Its letters C, S and W are barcodes; our driver draws them."""
        self.on_or_off(n)

    def high(self, n):
        self.height = self.times(n)

    def wide(self, n):
        self.width = self.times(n)

    def times(self, n):
        if n > 1:
            self.fault(f'letters enlarged {n + 1} times')
        return n + 1

    def line_spacing(self, n):
        self.choose_spacing(float(n))

    def line_feed(self):
        self.end_line(max(self.spacing, self.tallest))

    def feed_lines(self, n):
        self.feed(n * self.spacing)

    def feed_word(self, high, low):
        self.feed(256 * high + low)

    def packing(self, n):
        if n:
            self.fault('packed rows')

    def row(self, count):
        if count == 0:
            self.packing(*self.take(1))
        else:
            data = self.take(count)
            self.strip(8 * count, 1, count, 1 if any(data) else 0)

    def long_row(self, high, low):
        self.row(256 * high + low)

    def cut_and_eject(self):
        self.cut()


DIALECTS = {'escpos': EscPos, 'star': Star, 'swecoin': Swecoin}
NAMES = {0x04: 'EOT', 0x05: 'ENQ', 0x07: 'BEL', 0x0a: 'LF', 0x0c: 'FF', 0x10: 'DLE', 0x12: 'DC2', 0x14: 'DC4',
         0x16: 'SYN', 0x19: 'EM', 0x1a: 'SUB', 0x1b: 'ESC', 0x1c: 'FS', 0x1d: 'GS', 0x1e: 'RS', 0x20: 'SP'}


def lowest_row(data, columns):
    """How many rows there are down to the last that isn't blank."""
    return -(-len(data.rstrip(NUL)) // columns) if columns else 0


def lowest_of_columns(data, height):
    """The same of columns of so many bytes."""
    for byte in reversed(range(height)):
        dots = 0
        for each in data[byte::height]:
            dots |= each
        if dots:
            return 8 * byte + 8 - (dots & -dots).bit_length() + 1
    return 0


def first_difference(expected, shown):
    """Where two texts differ, whatever their blanks. U+FFFD is what can't be told."""
    expected, shown = ''.join(expected.split()), ''.join(shown.split())
    pairs = itertools.zip_longest(expected, shown)
    at = next((i for i, (one, other) in enumerate(pairs) if one != other and other != '\ufffd'), None)
    return None if at is None else f'"{shown[at:at + 12]}" where "{expected[at:at + 12]}" is to be read'


def name_of(introducer):
    return ' '.join(NAMES.get(byte) or chr(byte) for byte in introducer)


def walk(model, data, job=None):
    """The walk over a stream for a model; its `faults` say what is wrong."""
    printer = PRINTERS[model]
    return DIALECTS[printer.dialect](printer, data, job or Job()).run()

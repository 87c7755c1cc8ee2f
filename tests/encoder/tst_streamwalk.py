#!/usr/bin/env python3
"""The walk's own tests: small streams, written out from the manuals."""

import unittest

import spoiling
import streamwalk

START = b'\x1b@\x1c.'
# 24 dots and no spacing on printers whose units are dots, and the way to the cutter.
LINE = START + b'\x1b3\x18Tea  2.50\n'
TICKET = LINE + b'\x1bJ\x60\x1dV\x00'
STAR = b'\x1b@\x1b\x1dt\x0aTea  2.50\x1bI\x18'
SWECOIN = b'\x18\x1b3\x18Tea  2.50\n'


def faults(data, model='GENERAL_EPSON_PROTOCOL', **job):
    return [text for _, text in streamwalk.walk(model, data, streamwalk.Job(**job)).faults]


class WalkTest(unittest.TestCase):
    def assert_good(self, data, *arguments, **job):
        self.assertEqual(faults(data, *arguments, **job), [])

    def assert_fault(self, fault, data, *arguments, **job):
        found = faults(data, *arguments, **job)
        self.assertTrue(any(fault in text for text in found), f'{fault!r} is not in {found}')

    def test_ticket_is_good(self):
        self.assert_good(TICKET, cut=True)

    def test_ticket_that_is_to_be_cut_off_is(self):
        self.assert_fault('isn\'t cut off', LINE, cut=True)
        self.assert_fault('nobody asked', TICKET, cut=False)

    def test_pieces_put_together_are_the_stream(self):
        walk = streamwalk.walk('GENERAL_EPSON_PROTOCOL', TICKET)
        self.assertEqual([name for _, _, name in walk.pieces],
                         ['ESC @', 'FS .', 'ESC 3', 'text', 'LF', 'ESC J', 'GS V'])
        self.assertEqual(sum(size for _, size, _ in walk.pieces), len(TICKET))

    def test_unknown_bytes(self):
        self.assert_fault('unknown bytes 1b f1', START + b'\x1b\xf1')
        self.assert_fault('unknown bytes 01', START + b'\x01')
        # Of other makers' printers, and none that our drivers send.
        self.assert_fault('unknown bytes 1d 65', START + b'\x1de\x05')
        self.assert_fault('unknown bytes 10 14', START + b'\x10\x14\x01\x00\x01')

    def test_makers_have_commands_of_their_own(self):
        self.assert_good(START + b'\x1de\x05', 'CUSTOM_VKP_80')
        self.assert_good(START + b'\x1dR\x31\x05', 'CITIZEN_PPU_700')

    def test_allowed_control_characters(self):
        self.assert_good(START + b'\x07', allowed=b'\x07')
        self.assert_fault('unknown bytes 06', START + b'\x06', allowed=b'\x07')

    def test_text_has_no_control_characters(self):
        self.assert_fault('DEL', START + b'\x1b3\x18a\x7f\n')

    def test_chinese_mode_is_left_behind_each_reset(self):
        self.assert_fault('in front of FS .', b'\x1b@\x1b3\x18a\n')
        self.assert_fault('in front of FS .', LINE + b'\x1b@\x1b3\x18a\n')

    def test_printer_is_reset_where_that_is_asked_for(self):
        self.assert_fault('isn\'t reset', b'\x1c.\x1b3\x18a\n')
        self.assert_good(b'\x1c.\x1b3\x18a\n', reset=False)

    def test_stream_ends_inside_a_command(self):
        self.assert_fault('ends inside GS v 0', START + b'\x1dv0\0\x02\0\x02\0abc')
        self.assert_fault('ends inside ESC 3', START + b'\x1b3')

    def test_lines_fit_head_and_paper(self):
        self.assert_good(START + b'\x1b3\x18' + b'x' * 48 + b'\n')
        self.assert_fault('588 dots wide, of 576', START + b'\x1b3\x18' + b'x' * 49 + b'\n')
        self.assert_fault('396 dots wide, of 384', START + b'\x1b3\x18' + b'x' * 33 + b'\n', line=384)
        self.assert_fault('600 dots wide', START + b'\x1b3\x18\x1d!\x10' + b'x' * 25 + b'\n')
        self.assert_good(START + b'\x1b3\x11\x1bM\x01' + b'x' * 64 + b'\n')

    def test_lines_have_the_height_of_their_letters_and_a_spacing(self):
        for spacing in range(8):
            self.assert_good(START + b'\x1b3' + bytes([24 + 4 * spacing]) + b'a\n')
        self.assert_fault('fed by 26.0', START + b'\x1b3\x1aa\n')
        self.assert_fault('a line of 24 dots is fed by 30.0', START + b'a\n')
        self.assert_fault('fed by 60.0', START + b'\x1b3\x3ca\n')
        self.assert_good(START + b'\x1b3\x30\x1d!\x01a\n')
        # 43 of 360 to the inch are 24 dots.
        self.assert_good(START + b'\x1b3\x2ba\n', 'CITIZEN_CTS_2000')
        self.assert_good(START + b'\x1b3\x30a\n', 'CUSTOM_VKP_80')
        self.assert_fault('fed by', START + b'\x1b3\x18\n\x1b3\x1aa\n')

    def test_cut_is_behind_what_is_printed(self):
        self.assert_fault('a cut 20 dots below', LINE + b'\x1bJ\x14\x1dV\x00')
        self.assert_good(LINE + b'\x1dVB\x00')
        self.assert_fault('a cut 0 dots below', TICKET + b'\x1b3\x18a\n\x1bi')
        self.assert_fault('that isn\'t printed', START + b'\x1b3\x18a\x1dVB\x00')

    def test_distance_is_the_models(self):
        self.assert_good(START + b'\x1b3\x30a\n\x1bJ\xc0\x1bi', 'CUSTOM_VKP_80')
        self.assert_fault('a cut 80 dots below', START + b'\x1b3\x30a\n\x1bJ\xa0\x1bi', 'CUSTOM_VKP_80')

    def test_blank_rows_of_pictures_are_paper_that_was_fed(self):
        ink, blank = b'\x1dv0\0\x01\0\x02\0\x01\x01', b'\x1dv0\0\x01\0\x60\0' + bytes(96)
        self.assert_good(START + ink + blank + b'\x1dV\0')
        self.assert_fault('a cut 0 dots', START + blank + ink + b'\x1dV\0')
        band = b'\x1b*\x21\x02\0%c\0\0\0\0\0\x1bJ\x18'
        self.assert_good(START + band % 0x80 + b'\x1bJ\x44\x1dV\0')
        self.assert_fault('a cut 87 dots', START + band % 0x01 + b'\x1bJ\x47\x1dV\0')
        star = b'\x1bk\x01\0' + b'\x80' + bytes(23) + b'\x1bI\x18'
        self.assert_good(STAR + star + b'\x1bI\x44\x1bd\0', 'TSP-TUP')
        self.assert_fault('a cut 86 dots', STAR + star + b'\x1bI\x3f\x1bd\0', 'TSP-TUP')

    def test_pictures_fit_the_head(self):
        self.assert_good(START + b'\x1dv0\0\x48\0\x01\0' + bytes(72))
        self.assert_fault('584 dots, of a head of 576', START + b'\x1dv0\0\x49\0\x01\0' + bytes(73))
        self.assert_fault('columns of 600 dots', START + b'\x1b*\x21\x58\x02' + bytes(1800) + b'\x1bJ\x18')

    def test_strips_are_short(self):
        self.assert_good(START + b'\x1dv0\0\x08\0\x00\x01' + bytes(2048))
        self.assert_fault('a strip of 2056 bytes', START + b'\x1dv0\0\x08\0\x01\x01' + bytes(2056))

    def test_pictures_hold_no_commands_that_act_at_once(self):
        for hazard in (b'\x10\x04', b'\x10\x05', b'\x10\x14'):
            self.assert_fault(hazard.hex(' ') + ' acts at once', START + b'\x1dv0\0\x02\0\x02\0a' + hazard + b'b')
        self.assert_fault('acts at once', START + b'\x1d(k\x07\0\x31P0\x10\x04\x01a')
        self.assert_fault('acts at once', START + b'\x1bp\0\x10\x14', drawer=True)

    def test_dle_dc4_is_harmless_where_it_is_switched_off(self):
        off, on = b'\x1d(D\x05\0\x14\x01\0\x02\0', b'\x1d(D\x05\0\x14\x01\x01\x02\0'
        picture = b'\x1dv0\0\x02\0\x02\0a\x10%cb'
        self.assert_good(START + off + picture % b'\x14' + on)
        self.assert_fault('acts at once', START + off + picture % b'\x04' + on)
        self.assert_fault('acts at once', START + off + on + picture % b'\x14')
        self.assert_fault('stays switched off', START + off)

    def test_columns_of_dots_are_printed_by_their_height(self):
        columns = START + b'\x1b*\x21\x02\0abcdef'
        self.assert_good(columns + b'\x1bJ\x18')
        self.assert_good(columns + b'\x1b*\x21\x01\0abc\x1bJ\x18')
        self.assert_fault('fed by 23.0', columns + b'\x1bJ\x17')
        self.assert_fault('fed by 26.0', columns + b'\x1bJ\x1a')

    def test_columns_may_stand_among_letters(self):
        dots, coarse = b'\x1b*\x21\x02\0abcdef', b'\x1b*\x00\x02\0ab'
        for line in (b'a' + dots, dots + b'a', dots, b'a' + dots + dots + b'a'):
            for spacing in b'\x18\x1c\x34':
                self.assert_good(START + b'\x1b3' + bytes([spacing]) + line + b'\n')
        self.assert_good(START + b'\x1b3\x30\x1d!\x01a' + dots + b'\n')
        self.assert_good(START + b'\x1b3\x18\x1bM\x01a' + dots + b'\n')
        self.assert_fault('fed by 26.0', START + b'\x1b3\x1a' + dots + b'\n')
        self.assert_fault('fed by 26.0', START + b'a' + dots + b'\x1bJ\x1a')
        self.assert_fault('columns of dots behind text', START + b'\x1b3\x18a' + coarse + b'\n')
        self.assert_fault('text behind columns', START + b'\x1b3\x18' + coarse + b'a\n')
        self.assert_fault('where no columns', START + b'\x1b3\x18a' + dots + b'\x1b$\0\0' + dots + b'\n')
        self.assert_fault('578 dots, of a head of 576', START + b'\x1b3\x18' + b'x' * 48 + dots + b'\n')
        self.assert_fault('a cut 0 dots', START + b'\x1b3\x18' + dots + b'\n\x1dV\0')

    def test_stars_columns_may_stand_among_letters(self):
        start, dots = b'\x1b@\x1b\x1dt\x0a', b'\x1bX\x02\0abcdef'
        for line in (b'a' + dots, dots + b'a', dots):
            self.assert_good(start + line + b'\x1bI\x1c', 'TSP-TUP')
        self.assert_fault('fed by 26.0', start + dots + b'\x1bI\x1a', 'TSP-TUP')
        self.assert_fault('578 dots, of a line of 576', start + b'x' * 48 + dots + b'\x1bI\x18', 'TSP-TUP')
        self.assert_fault('columns behind rows', start + b'\x1bk\x01\0' + bytes(24) + dots + b'\x1bI\x18', 'TSP-TUP')
        self.assert_fault('a picture begins behind text', start + dots + b'\x1bk\x01\0' + bytes(24) + b'\x1bI\x18', 'TSP-TUP')

    def test_columns_may_be_printed_over(self):
        columns = START + b'\x1b*\x21\x02\0abcdef'
        self.assert_good(columns + b'\x1b$\x01\0\x1b*\x21\x01\0abc\x1bJ\x18')
        self.assert_fault('where no columns', START + b'\x1b$\x01\0')
        self.assert_good(STAR + b'\x1bk\x48\0' + bytes(72 * 24) + b'\x1b\x1dA\0\0\x1bk\x48\0' + bytes(72 * 24) + b'\x1bI\x18', 'TSP-TUP')
        self.assert_fault('a picture of 584 dots',
                          STAR + b'\x1bk\x48\0' + bytes(72 * 24) + b'\x1bk\x01\0' + bytes(24) + b'\x1bI\x18', 'TSP-TUP')

    def test_codes_alone_have_a_margin(self):
        self.assert_fault('text behind a margin', START + b'\x1dL\x10\0\x1b3\x18a\n')
        self.assert_fault('a picture behind a margin', START + b'\x1dL\x10\0\x1dv0\0\x02\0\x01\0ab')
        self.assert_good(START + b'\x1dL\x10\0\x1dh\x50\x1dw\x03\x1dH\0\x1dk\x45\x03TEA\x1dL\0\0\x1b3\x18a\n')

    def test_fonts_of_custom_hang_on_the_pitch(self):
        for pitch, font, most in ((0, 0, 35), (0, 1, 45), (1, 0, 45), (1, 1, 64)):
            chosen = START + b'\x1b3\x30\x1b\xc1' + bytes([pitch]) + b'\x1bM' + bytes([font])
            self.assert_good(chosen + most * b'x' + b'\n', 'CUSTOM_TG_2480_H')
            self.assert_fault('dots wide, of 640', chosen + (most + 1) * b'x' + b'\n', 'CUSTOM_TG_2480_H')

    def test_fonts_of_custom_that_there_are_not(self):
        for pitch, font in ((0, 3), (1, 2)):
            chosen = START + b'\x1b3\x30\x1b\xc1' + bytes([pitch]) + b'\x1bM' + bytes([font])
            self.assert_fault('there is no font', chosen + b'x\n', 'CUSTOM_TG_2480_H')

    def test_drawer_opens_once_and_if_asked_for(self):
        self.assert_fault('nobody asked', START + b'\x1bp\0\x32\x32')
        self.assert_good(START + b'\x1bp\0\x32\x32', drawer=True)
        self.assert_fault('opens 0 times', START, drawer=True)

    def test_barcodes_have_what_they_need(self):
        ready = START + b'\x1dh\x50\x1dw\x03\x1dH\0'
        self.assert_good(ready + b'\x1dk\x43\x0c460000000001')
        self.assert_good(ready + b'\x1dk\x49\x05{BTea')
        self.assert_fault('without its code set', ready + b'\x1dk\x49\x03Tea')
        self.assert_fault('that it hasn\'t', ready + b'\x1dk\x45\x03tea')
        self.assert_fault('11 characters', ready + b'\x1dk\x43\x0b46000000000')
        self.assert_fault('odd number', ready + b'\x1dk\x46\x03123')
        self.assert_fault('whose end nobody can tell', ready + b'\x1dk\x04TEA\0')
        self.assert_fault('without height', START + b'\x1dk\x45\x03TEA')

    def test_qr_codes_have_what_they_need(self):
        module, correction = b'\x1d(k\x03\0\x31C\x04', b'\x1d(k\x03\0\x31E\x31'
        data, print_it = b'\x1d(k\x06\0\x31P0Tea', b'\x1d(k\x03\0\x31Q0'
        self.assert_good(START + module + correction + data + print_it)
        self.assert_fault('without module', START + module + data + print_it)
        self.assert_fault('without module', START + module + correction + data + 2 * print_it)

    def test_texts_say_what_they_are_to_say(self):
        cyrillic = START + b'\x1bt\x11\x1b3\x18\x97\xa0\xa9 1\x1bt\x10\x80\n'
        self.assert_good(cyrillic, text='Чай\n   1€')
        self.assert_fault('"ùá⌐1€" where "Чай1€"', cyrillic.replace(b'\x1bt\x11', b'\x1bt\x00'), text='Чай1€')
        self.assert_fault('"" where "!"', cyrillic, text='Чай 1€!')
        self.assert_fault('of which the manual says nothing', START + b'\x1bt\x63', text='')
        # Another maker has other numbers.
        citizen = START + b'\x1bt\x07\x1b3\x2b\x97\xa0\xa9\n'
        self.assert_good(citizen, 'CITIZEN_CBM_1000', text='Чай')
        self.assert_good(b'\x1b@\x1b\x1dt\x0a\x97\xa0\xa9\x1bI\x18', 'TSP-TUP', text='Чай')

    def test_last_line_is_printed(self):
        self.assert_fault('isn\'t printed', START + b'abc')

    def test_star(self):
        self.assert_good(STAR + b'\x1bd\x02', 'TSP-TUP', cut=True)
        self.assert_fault('a cut 0 dots', STAR + b'\x1bd\x00', 'TSP-TUP')
        self.assert_fault('fed by 26.0', STAR[:-1] + b'\x1a', 'TSP-TUP')
        self.assert_fault('acts at once', STAR + b'\x1bk\x01\0' + b'\x1b\x06\x01' * 8 + b'\x1bI\x18', 'TSP-TUP')
        self.assert_good(STAR + b'\x1bk\x01\0' + b'\x1b\x06\x02' * 8 + b'\x1bI\x18', 'TSP-TUP')
        self.assert_fault('584 dots', STAR + b'\x1bk\x49\0' + bytes(73 * 24) + b'\x1bI\x18', 'TSP-TUP')
        self.assert_fault('isn\'t printed', STAR + b'\x1bk\x01\0' + bytes(24), 'TSP-TUP')
        self.assert_fault('nobody asked', STAR + b'\x07', 'TSP-TUP')
        self.assert_good(STAR + b'\x1bb\x34\x31\x32\x501234\x1e', 'TSP-TUP')
        self.assert_fault('ends inside ESC b', STAR + b'\x1bb\x34\x31\x32\x501234', 'TSP-TUP')
        self.assert_fault('a QR code without', STAR + b'\x1b\x1dyP', 'TSP-TUP')

    def test_swecoin(self):
        self.assert_good(SWECOIN + b'\x1bJ\x60\x1b\x1e', 'SWECOIN_TM_20XX', cut=True)
        self.assert_fault('a cut 64 dots below', SWECOIN + b'\x1bJ\x40\x1e', 'SWECOIN_TM_20XX')
        self.assert_fault('a cut 0 dots below', SWECOIN + b'\x1b\x1e', 'SWECOIN_TM_20XX')
        self.assert_good(SWECOIN + b'\x1bs\x02ab', 'SWECOIN_TM_20XX')
        self.assert_fault('584 dots', SWECOIN + b'\x1bs\x49' + bytes(73), 'SWECOIN_TM_20XX')
        self.assert_fault('packed', SWECOIN + b'\x1bs\0\x01', 'SWECOIN_TM_20XX')
        self.assert_fault('612 dots wide', SWECOIN + b'x' * 34 + b'\n', 'SWECOIN_TM_20XX')
        # Its letters C, S and W would begin a barcode.
        self.assert_fault('where there is on and off', SWECOIN + b'\x1bBC', 'SWECOIN_TM_20XX')

    def test_spoilt_streams_are_noticed(self):
        stream = START + b'\x1dv0\0\x08\0\x08\0' + bytes(64) + TICKET[4:]
        walk = streamwalk.walk('GENERAL_EPSON_PROTOCOL', stream, streamwalk.Job(cut=True))
        self.assertEqual(walk.faults, [])
        ways = {}
        for how, bad in spoiling.spoilt(walk):
            ways[how] = faults(bad, cut=True)
            self.assertNotEqual(ways[how], [], how)
        self.assertEqual(list(ways), list(spoiling.WAYS))


if __name__ == '__main__':
    unittest.main()

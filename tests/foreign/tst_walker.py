#!/usr/bin/env python3
"""The walker's own tests: small streams, written out from the manuals."""

import unittest

import walker


def names(dialect, data):
    return [name for _, _, name in walker.pieces(dialect, data)]


class WalkerTest(unittest.TestCase):
    def test_pieces_put_together_are_the_stream(self):
        for dialect in walker.TABLES:
            for seed in range(200):
                data = bytes((seed * i * i + 7 * i + seed) % 256 for i in range(seed))
                end = 0
                for offset, length, _ in walker.pieces(dialect, data):
                    self.assertEqual(offset, end)
                    end += length
                self.assertEqual(end, len(data))

    def test_text_goes_up_to_the_next_control_character(self):
        self.assertEqual(list(walker.pieces('escpos', b'ab\xff\nc')), [(0, 3, 'text'), (3, 1, 'LF'), (4, 1, 'text')])

    def test_unknown_command_is_its_introducer_and_a_byte(self):
        self.assertEqual(list(walker.pieces('escpos', b'\x1b\xf0ab')), [(0, 2, 'unknown'), (2, 2, 'text')])

    def test_control_character_alone_is_unknown(self):
        self.assertEqual(names('escpos', b'\x01\x02'), ['unknown', 'unknown'])

    def test_picture_takes_its_bytes_whatever_they_are(self):
        self.assertEqual(names('escpos', b'\x1dv0\0\x02\0\x03\0\x1b@\n\n\x1b@X'), ['GS v 0', 'text'])

    def test_columns_are_of_one_byte_or_of_three(self):
        self.assertEqual(names('escpos', b'\x1b*\0\x02\0\n\nA'), ['ESC *', 'text'])
        self.assertEqual(names('escpos', b'\x1b*\x21\x02\0\n\n\n\n\n\nA'), ['ESC *', 'text'])

    def test_barcode_ends_with_nul_or_has_a_length(self):
        self.assertEqual(names('escpos', b'\x1dk\x04AB\0C'), ['GS k', 'text'])
        self.assertEqual(names('escpos', b'\x1dk\x45\x02A\0C'), ['GS k', 'text'])

    def test_tab_stops_end_with_nul_or_a_column_that_is_not_further(self):
        self.assertEqual(names('escpos', b'\x1bD\x08\x10\0A'), ['ESC D', 'text'])
        self.assertEqual(names('escpos', b'\x1bD\x08\x04A'), ['ESC D', 'unknown', 'text'])

    def test_cut_feeds_by_an_operand_in_some_forms(self):
        self.assertEqual(names('escpos', b'\x1dV\0A\x1dVBA\x1dV\x31A'), ['GS V', 'text', 'GS V', 'GS V', 'text'])

    def test_families_of_functions_carry_their_length(self):
        self.assertEqual(names('escpos', b'\x1d(k\x03\x001Q0A'), ['GS (', 'text'])
        self.assertEqual(names('escpos', b'\x1d8L\x02\0\0\0\n\nA'), ['GS 8', 'text'])

    def test_command_that_the_stream_cuts_off_is_the_rest(self):
        self.assertEqual(list(walker.pieces('escpos', b'A\x1dv0\0\x02\0')), [(0, 1, 'text'), (1, 6, 'cut off: GS v 0')])
        self.assertEqual(names('escpos', b'\x1dk\x04AB'), ['cut off: GS k'])

    def test_star_barcode_ends_with_rs(self):
        self.assertEqual(names('star', b'\x1bb\x04\x02\x02\x50AB\x1eC'), ['ESC b', 'text'])

    def test_star_picture_is_24_rows_high(self):
        self.assertEqual(names('star', b'\x1bk\x02\0' + b'\n' * 48 + b'A'), ['ESC k', 'text'])

    def test_star_qr_code_has_a_length(self):
        self.assertEqual(names('star', b'\x1b\x1dyD1\0\x03\0\n\n\nA\x1b\x1dyP'), ['ESC GS y D 1', 'text', 'ESC GS y P'])

    def test_bytes_that_are_thrown_away_are_counted_in_digits(self):
        self.assertEqual(names('star', b'\x1b*rN3\0\n\n\nA'), ['ESC * r N', 'text'])

    def test_rows_of_dots_stand_in_raster_mode_alone(self):
        self.assertEqual(names('star', b'\x1b*rAb\x01\0A\x1b*rBb'), ['ESC * r A', 'b', 'ESC * r B', 'text'])
        self.assertEqual(names('star', b'b\x01\0A'), ['text', 'unknown', 'unknown', 'text'])


if __name__ == '__main__':
    unittest.main()

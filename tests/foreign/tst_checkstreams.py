#!/usr/bin/env python3
"""check-streams notices what it is there for: kept streams of which something was altered.

Usage: tst_checkstreams.py RECEIPT STREAMS
"""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).resolve().parent / 'check-streams'


def alter(key, value, **which):
    """Changes a fact of the first part of the content that is so."""
    def change(facts, stream):
        part = next(part for part in facts['content'] if which.items() <= part.items())
        part[key] = value
        return stream
    return change


def add(part):
    def change(facts, stream):
        facts['content'].append(part)
        return stream
    return change


def replace(old, new):
    def change(_, stream):
        assert old in stream
        return stream.replace(old, new, 1)
    return change


class CheckTest(unittest.TestCase):
    receipt = streams = None

    def check(self, name, change):
        facts = json.loads((self.streams / f'{name}.json').read_text(encoding='utf-8'))
        stream = change(facts, (self.streams / f'{name}.bin').read_bytes())
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / f'{name}.bin'
            file.write_bytes(stream)
            file.with_suffix('.json').write_text(json.dumps(facts), encoding='utf-8')
            done = subprocess.run([sys.executable, '-B', CHECK, self.receipt, folder], capture_output=True, text=True)
        return done.returncode, done.stdout

    def assert_noticed(self, message, name, change):
        status, output = self.check(name, change)
        self.assertEqual(status, 1, output)
        self.assertIn(message, output)

    def test_what_is_not_altered_passes(self):
        self.assertEqual(self.check('thermal-epson-twenty', lambda _, stream: stream), (0, '1 passed, 0 failed\n'))

    def test_other_text(self):
        self.assert_noticed('is not in the text', 'encoder-starline-cyrillic', alter('text', 'Спасибо', text='да выпей чаю. ЁЖИК ЩУКА ЭХО'))

    def test_text_that_prints_otherwise(self):
        self.assert_noticed('is not in the text', 'encoder-epson-twenty', replace(b'35.00', b'85.00'))

    def test_other_order(self):
        def change(facts, stream):
            facts['content'][1], facts['content'][2] = facts['content'][2], facts['content'][1]
            return stream
        self.assert_noticed('is not in the text', 'encoder-starline-cyrillic', change)

    def test_other_size(self):
        self.assert_noticed('looks otherwise', 'encoder-epson-sizes',
                            alter('look', {'scale': [3, 4], 'effects': []}, text='3 x 3'))

    def test_cut_that_is_missing(self):
        self.assert_noticed('[cut]', 'thermal-epson-twenty', add({'kind': 'cut'}))

    def test_other_code(self):
        self.assert_noticed('is not in the text', 'encoder-starprnt-qr', alter('payload', 'M', payload='L'))

    def test_code_that_is_no_picture_of_it(self):
        self.assert_noticed('ZXingReader does not read', 'receiptline-epson-qr',
                            alter('payload', 'M', payload='L'))

    def test_other_pulse(self):
        self.assert_noticed('pulses', 'encoder-citizen-drawer', alter('on', 50, pin=2))

    def test_unknown_command(self):
        self.assert_noticed("unknown in the listing: ['1B FE']", 'encoder-epson-twenty', replace(b'Kiosk', b'Kio\x1b\xfesk'))


if __name__ == '__main__':
    CheckTest.receipt, CheckTest.streams = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    unittest.main(argv=sys.argv[:1])

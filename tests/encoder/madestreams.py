"""The streams that the program encode-examples makes."""

import contextlib
import json
import pathlib
import subprocess
import tempfile


@contextlib.contextmanager
def folder_of(program):
    """A folder with the streams, made for as long as it is used."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([program, folder], check=True)
        yield pathlib.Path(folder)


def streams_of(folder):
    """What is known of each stream, and its bytes."""
    data = (folder / 'streams.bin').read_bytes()
    for line in (folder / 'streams.jsonl').read_text(encoding='utf-8').splitlines():
        facts = json.loads(line)
        yield facts, data[facts['offset']:facts['offset'] + facts['size']]


def name_of(facts):
    return f'{facts["model"]} paper {facts["paper"]} font {facts["font"]} {facts["name"]}'

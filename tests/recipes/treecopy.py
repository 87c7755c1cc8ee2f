"""A copy of the project's tree, which is kept from one run to the next."""
import os
import shutil
from pathlib import Path

# Tells a copy from a folder that somebody named by mistake: a copy loses what the source lacks.
MARK = ".followed-recipes"


class Refused(Exception):
    """Why a folder isn't taken."""


def is_left_out(path):
    """What isn't the project's: its history, and folders that something is built in."""
    return path.name in (".git", "build", "out", "__pycache__") or (path / "CMakeCache.txt").exists()


def files_below(folder):
    """Paths of the project's files, relative to the folder."""
    for directory, folders, files in os.walk(folder):
        here = Path(directory)
        folders[:] = [name for name in folders if not is_left_out(here / name)]
        for name in files:
            if name not in (".git", MARK) and (here / name).is_file():
                yield (here / name).relative_to(folder)


def is_same(one, other):
    return other.exists() and one.stat().st_mode == other.stat().st_mode \
        and one.stat().st_size == other.stat().st_size and one.read_bytes() == other.read_bytes()


def is_read(folder, source):
    """Whether the files below the folder are part of the source, or those of the source part of it."""
    if folder in source.parents or folder == source:
        return True
    way = [folder, *folder.parents]
    return source in way and not any(is_left_out(place) for place in way[:way.index(source)])


def make_ready(source, tree):
    """Sees that nothing is lost by a copy in this folder."""
    if is_read(tree, source):
        raise Refused(f"{tree}: a copy in the tree has to lie below its folder build")
    if tree.exists() and any(tree.iterdir()) and not (tree / MARK).exists():
        raise Refused(f"{tree}: the folder isn't empty, and no copy of an earlier run")
    tree.mkdir(parents=True, exist_ok=True)
    (tree / MARK).touch()


def copy_tree(source, tree):
    """Makes the copy what the source is. Files that are alike keep their times, and so what was built
    from them."""
    make_ready(source, tree)
    wanted = set(files_below(source))
    for path in set(files_below(tree)) - wanted:
        (tree / path).unlink()
    for path in wanted:
        if not is_same(source / path, tree / path):
            (tree / path).parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source / path, tree / path)
            shutil.copymode(source / path, tree / path)

"""What a recipe of CONTRIBUTING.md, or of another page, tells a person to do, done by a program.

A recipe is a section of a page. Its blocks are followed in their order: those of "sh" are run, and
those of "diff" change files:

    +++ tests/some/file.cpp
    @@ const Row rows[] = {
         {"old", 1},
    +    {"new", 2},

Lines with " " or "-" must stand in the file like that, one behind the other, and at one place only;
those with "+" come between them, and those with "-" go. Behind "@@" may stand a line, which is in the
file once: the place is the first one below it. A file with nothing but "+" is a new one. Blocks of
other languages are there to be read.
"""
import re
import subprocess
import tomllib
from dataclasses import dataclass
from pathlib import Path


class Failure(Exception):
    """What can't be followed, and where it stands."""


@dataclass
class Block:
    language: str
    page: str
    first: int  # number of its first line in the page
    lines: list


@dataclass
class Hunk:
    place: str  # of its first line: "page:number"
    heading: str
    lines: list


@dataclass
class Recipe:
    name: str
    page: str
    section: str
    suites: list   # regular expressions of names in ctest
    targets: list  # what the suites need beside their programs
    quick: dict    # what a command of the section is replaced with where all is to be quick


def read_recipe(path):
    try:
        table = tomllib.loads(path.read_text())
    except tomllib.TOMLDecodeError as error:
        raise Failure(f"{path}: {error}") from None
    unknown = set(table) - {"page", "section", "suites", "targets", "quick"}
    if unknown or "section" not in table or not table.get("suites"):
        raise Failure(f"{path}: a recipe has section and suites, and may have page, targets "
                      "and quick")
    return Recipe(path.stem, table.get("page", "CONTRIBUTING.md"), table["section"],
                  table["suites"], table.get("targets", []), table.get("quick", {}))


def blocks_of(page, text, section):
    """The fenced blocks of the section with this heading."""
    blocks, inside, fence = [], False, None
    found = False
    for number, line in enumerate(text.split("\n"), 1):
        if fence is not None:
            if line == "```":
                fence = None
            elif inside:
                blocks[-1].lines.append(line)
        elif line.startswith("```"):
            fence = line[3:].strip()
            if inside:
                blocks.append(Block(fence, page, number + 1, []))
        elif line.startswith("#"):
            inside = line.lstrip("#").strip() == section
            found = found or inside
    if not found:
        raise Failure(f"{page} has no section \"{section}\"")
    return blocks


def sections_with_changes(page, text):
    """Headings of the sections that hold a block of "diff"."""
    headings = re.findall(r"^#+ +(.*?) *$", re.sub(r"^```.*?^```$", "", text, flags=re.M | re.S), re.M)
    return [heading for heading in headings
            if any(block.language == "diff" for block in blocks_of(page, text, heading))]


def changes_of(block):
    """The hunks of a block by their file."""
    files = {}
    hunks = None
    for number, line in enumerate(block.lines, block.first):
        place = f"{block.page}:{number}"
        if line.startswith("+++ "):
            hunks = files.setdefault(line[4:].strip(), [])
            is_new_hunk = True
        elif hunks is None:
            raise Failure(f"{place}: a block of \"diff\" begins with \"+++ FILE\"")
        elif line.startswith("@@"):
            hunks.append(Hunk(place, line[2:].strip(), []))
            is_new_hunk = False
        elif line == "" or line[0] in " +-":
            if is_new_hunk:
                hunks.append(Hunk(place, "", []))
                is_new_hunk = False
            hunks[-1].lines.append(line or " ")
        else:
            raise Failure(f"{place}: a line of \"diff\" begins with \" \", \"+\", \"-\" or \"@@\"")
    return files


def places_of(wanted, lines):
    """Where the wanted lines stand one behind the other."""
    return [at for at in range(len(lines) - len(wanted) + 1) if lines[at:at + len(wanted)] == wanted]


def place_of(hunk, lines, file):
    """The index of the hunk's first line in the file."""
    begin = 0
    if hunk.heading:
        headings = [at for at, line in enumerate(lines) if line.strip() == hunk.heading]
        if len(headings) != 1:
            raise Failure(f"{hunk.place}: {file} has {len(headings) or 'no'} lines \"{hunk.heading}\"; "
                          "the recipe needs one")
        begin = headings[0] + 1
    wanted = [line[1:] for line in hunk.lines if line[0] != "+"]
    if not wanted and not hunk.heading:
        raise Failure(f"{hunk.place}: nothing says where in {file} these lines belong")
    places = [at for at in places_of(wanted, lines) if at >= begin]
    if places and (hunk.heading or len(places) == 1):
        return places[0]
    shown = "\n".join(f"    {line}" for line in wanted)
    where = f"below \"{hunk.heading}\"" if hunk.heading else "anywhere"
    count = f"has {len(places)} places with these lines, and" if places else f"doesn't have these lines {where};"
    raise Failure(f"{hunk.place}: {file} {count} the recipe needs one:\n{shown}")


def change_file(tree, file, hunks):
    path = tree / file
    if not path.exists():
        if len(hunks) != 1 or any(line[0] != "+" for line in hunks[0].lines):
            raise Failure(f"{hunks[0].place}: there is no {file}")
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("\n".join(line[1:] for line in hunks[0].lines) + "\n")
        return
    lines = path.read_text().split("\n")
    for hunk in hunks:
        at = place_of(hunk, lines, file)
        old = [line for line in hunk.lines if line[0] != "+"]
        lines[at:at + len(old)] = [line[1:] for line in hunk.lines if line[0] != "-"]
    path.write_text("\n".join(lines))


def commands_of(recipe, block, quick):
    """The block's lines as they are run."""
    return "\n".join(recipe.quick.get(line, line) if quick else line for line in block.lines)


def follow(recipe, tree, quick=False, environment=None):
    """Does in the tree what the recipe's section says. Raises Failure where that can't be done."""
    page = tree / recipe.page
    if not page.exists():
        raise Failure(f"there is no {recipe.page}")
    blocks = [block for block in blocks_of(recipe.page, page.read_text(), recipe.section)
              if block.language in ("diff", "sh")]
    run_lines = [line for block in blocks if block.language == "sh" for line in block.lines]
    for command in recipe.quick:
        if command not in run_lines:
            raise Failure(f"{recipe.page}: \"{recipe.section}\" has no command {command}, which the "
                          "recipe has a quicker one for")
    if not any(block.language == "diff" for block in blocks):
        raise Failure(f"{recipe.page}: \"{recipe.section}\" has no block of \"diff\"")
    for block in blocks:
        if block.language == "diff":
            for file, hunks in changes_of(block).items():
                change_file(tree, file, hunks)
            continue
        done = subprocess.run(["bash", "-euo", "pipefail", "-c", commands_of(recipe, block, quick)],
                              cwd=tree, env=environment, stdin=subprocess.DEVNULL)
        if done.returncode != 0:
            raise Failure(f"{block.page}:{block.first}: these commands gave {done.returncode}")


def read_recipes(folder):
    return [read_recipe(path) for path in sorted(Path(folder).glob("*.toml"))]


def chosen(known, names):
    by_name = {recipe.name: recipe for recipe in known}
    for name in names:
        if name not in by_name:
            raise Failure(f"there is no recipe \"{name}\"; there are: {', '.join(by_name)}")
    return [by_name[name] for name in names] if names else known

"""The fenced blocks of a page. Run as a program, prints the blocks of one language: fences.py PAGE LANGUAGE"""
import dataclasses
import pathlib
import sys


@dataclasses.dataclass
class Block:
    page: pathlib.Path
    line: int  # of the first line inside the fences, from 1
    language: str
    lines: list
    before: str  # the last line of text before the block

    @property
    def text(self):
        return "".join(line + "\n" for line in self.lines)


def read_blocks(page):
    """All fenced blocks of a page, in their order."""
    blocks = []
    block = None
    before = ""
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        if block is None:
            if line.startswith("```"):
                block = Block(page, number + 1, line[3:].strip(), [], before)
            elif line.strip():
                before = line
        elif line == "```":
            blocks.append(block)
            block = None
        else:
            block.lines.append(line)
    if block is not None:
        raise SystemExit(f"{page}:{block.line}: this block isn't closed")
    return blocks


def pages_of(root):
    return [root / "README.md", *sorted((root / "docs").rglob("*.md"))]


if __name__ == "__main__":
    for found in read_blocks(pathlib.Path(sys.argv[1])):
        if found.language == sys.argv[2]:
            sys.stdout.write(found.text)

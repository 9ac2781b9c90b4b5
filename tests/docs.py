#!/usr/bin/env python3
"""Compares the pages with the tree: what a page links, each file and folder that it names in code, and on the pages for
engineers each identifier, exists. Prints what does not and fails; paths of examples and machines are no names of ours.

usage: docs.py SOURCE
"""
import os
import pathlib
import re
import sys

PAGES = re.compile(r"README\.md|CONTRIBUTING\.md|docs/.*\.md")
GUIDE = "docs/guide/"
FOR_USERS = ("README.md", "docs/file-formats.md", "docs/receivers.md", "docs/sharing/", "docs/translating.md",
             GUIDE)  # they name what is in files, too
SOURCES = (".h", ".cpp", ".py", ".sh", ".cmake", ".md")  # a name with one of these is a file's
LISTS = "controls/frequencystore/"  # where paths of a list's folder begin
MADE = re.compile(r"\.git|build.*|out")

LINK = re.compile(r"\]\(([^)#\s]+)[^)]*\)")
FENCE = re.compile(r"^```(\w*)\n(.*?)^```", re.M | re.S)
CODE = re.compile(r"`([^`\n]+(?:\n[^`\n]+)?)`")
PATH = re.compile(r"(?<![\w/.~$%-])[\w-]+(?:[./-]*[\w*-]+)*/?")
IDENTIFIER = re.compile(r"(?<![\w.\"'/-])(?<!std::)[A-Za-z_]\w{2,}(?![\w/-]|\.\w)")


class Tree:
    def __init__(self, root):
        self.root = root
        self.files = []
        for folder, inner, names in os.walk(root):
            if folder == str(root):
                inner[:] = [name for name in inner if not MADE.fullmatch(name)]
            self.files += [os.path.relpath(os.path.join(folder, name), root) for name in names]
        self.top = {name.split("/")[0] for name in self.files if "/" in name}
        self.lists = {path.name for path in (root / LISTS).iterdir() if path.is_dir()}
        text = "\n".join((root / name).read_text(errors="replace") for name in self.files
                         if name.endswith((".h", ".cpp", "CMakeLists.txt", ".cmake", "Presets.json", ".sh", ".py")))
        self.words = set(re.findall(r"\w+", text))
        self.words |= {pathlib.PurePath(name).stem for name in self.files}
        self.words |= {f"test_{path.name}" for path in (root / "tests").iterdir() if path.is_dir()}
        self.words |= {"lib" + name for name in re.findall(r"OUTPUT_NAME (\w+)", text)}

    def has(self, name):
        """Whether the path is there, from the root or as a list's folder has it."""
        return any(any(self.root.glob(start + name.rstrip("/"))) for start in ("", LISTS))

    def names(self, word):
        """Whether a word of code is the name of a file or folder of this tree."""
        return word.endswith(SOURCES) or ("/" in word and word.split("/")[0] in self.top | self.lists)


def complaints(tree, page, is_for_engineers):
    text = (tree.root / page).read_text()
    for target in LINK.findall(text):
        if page.startswith(GUIDE) and target.endswith(".png"):
            continue  # the build takes its pictures
        if "://" not in target and not (tree.root / page).parent.joinpath(target).exists():
            yield f"links {target}"
    code = [block for kind, block in FENCE.findall(text) if kind == "sh"]
    text = FENCE.sub("", text)
    spans = CODE.findall(text)
    for span in code + spans:
        for word in PATH.findall(span):
            if tree.names(word) and not (tree.has(word) if "/" in word else
                                         any(name.endswith("/" + word) or name == word for name in tree.files)):
                yield f"names the file {word}"
    for span in spans if is_for_engineers else ():
        for word in IDENTIFIER.findall(span):
            if word not in tree.words:
                yield f"names {word}, which no source has"


def main():
    tree = Tree(pathlib.Path(sys.argv[1]))
    found = [f"{page}: {what}" for page in sorted(filter(PAGES.fullmatch, tree.files))
             for what in complaints(tree, page, not page.startswith(FOR_USERS))]
    for line in dict.fromkeys(found):
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())

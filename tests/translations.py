#!/usr/bin/env python3
"""Each text of the window is translated: translations.py SOURCES LUPDATE prints what is not, and fails then."""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

# What a translation keeps of its text, by its name.
KEPT = {
    "its %1, %2 and %n": lambda text: sorted(re.findall(r"%L?[0-9n]", text)),
    "its accelerator": lambda text: len(re.findall(r"&(?=\w)", text)),
    "its dots": lambda text: re.search(r"(\.\.\.|…)?$", text)[0],
    "its colon": lambda text: text.endswith(":"),
    "the blanks around it": lambda text: (re.match(r"\s*", text)[0], re.search(r"\s*$", text)[0]),
    "its file patterns": lambda text: re.findall(r"\*\.?\w*", text),
}


def faults(message):
    """What is wrong with the translation of one message."""
    source, translation = message.findtext("source"), message.find("translation")
    kind = translation.get("type")
    if kind in ("vanished", "obsolete"):
        return ["is in no source any more"]
    texts = [form.text or "" for form in translation.findall("numerusform")] or [translation.text or ""]
    if kind == "unfinished" or not all(texts):
        return ["is not translated"]
    return [f'loses {name} in "{text}"' for name, part in KEPT.items() for text in texts if part(source) != part(text)]


def complaints(root, lupdate):
    with tempfile.TemporaryDirectory() as folder:
        for file in root.glob("translations/*.ts"):
            shutil.copy(file, folder)
        command = [root / "translations/update", lupdate, folder]
        done = subprocess.run(command, check=True, text=True, capture_output=True)
        unsure = re.findall(r"(\S+):\d+: Class '(\w+)' lacks Q_OBJECT", done.stdout + done.stderr)
        for path, name in sorted(set(unsure)):
            if f'translate("{name}"' not in pathlib.Path(path).read_text():
                yield f'{path}: its texts are kept as those of "{name}": look them up there, or declare Q_OBJECT'
        for file in sorted(pathlib.Path(folder).glob("*.ts")):
            for context in ElementTree.parse(file).getroot().iter("context"):
                for message in context.iter("message"):
                    for fault in faults(message):
                        yield f'{file.name}: {context.findtext("name")}: "{message.findtext("source")}" {fault}'


found = list(complaints(pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]))
print(*found, f"{len(found)} complaints", sep="\n")
sys.exit(bool(found))

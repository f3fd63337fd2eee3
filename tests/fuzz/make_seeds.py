#!/usr/bin/env python3
"""Makes the inputs that fuzzing begins with: make_seeds.py PROGRAM SAVE_MODEL FOLDER

They are the examples, the blocks of the documents, the layup files of this folder, whose analytic surfaces are fast, and
what the programs make of these: part files of each type and saved models. Behind them the dictionaries."""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

PROGRAM, SAVE_MODEL, FOLDER = sys.argv[1:4]
HERE = pathlib.Path(__file__).resolve().parent
SOURCE = HERE.parents[1]
PANEL = SOURCE / "examples" / "panel" / "panel.layup.json"
EXTENSIONS = {"virtek": "ply", "lpt": "XML", "lap": "lpd", "sl": "sl", "assembly-guidance": "PRT", "general-scanning": "PRT",
              "quilmon": "CPD", "apt": "APT", "apt-2": "APT", "apt-sl": "APT", "dxf": "DXF"}


def blocks(language):
    for document in [SOURCE / "README.md", *sorted((SOURCE / "docs").glob("*.md"))]:
        yield from re.findall(rf"(?ms)^```{language}\n(.*?)^```$", document.read_text(encoding="utf-8"))


def write(target, name, content):
    folder = pathlib.Path(FOLDER) / target
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(content if isinstance(content, bytes) else content.encode())


def layups():
    yield PANEL
    yield from sorted(HERE.glob("seeds/*.json"))


def make_layups():
    for path in layups():
        write("FuzzLayupFile", path.name, json.dumps(json.loads(path.read_text(encoding="utf-8")), separators=(",", ":")))


def make_models(folder):
    for path in layups():
        model = folder / "model"
        subprocess.run([SAVE_MODEL, path, model], check=True)
        write("FuzzModelStream", path.stem, model.read_bytes())


def make_part_files(folder):
    for path in layups():
        for kind, extension in EXTENSIONS.items():
            for variant, options in (("mm", []), ("in", ["--units", "in"]), ("flat", ["--output-type", "flat"])):
                subprocess.run([PROGRAM, path, "--type", kind, "--output", folder / f"{path.stem}-{kind}-{variant}.{extension}",
                                *options], check=False, capture_output=True)  # a layup may have nothing flat
    golden = SOURCE / "tests" / "golden"
    files = [*folder.iterdir(), *golden.rglob("part*"), *golden.rglob("Tool-part*")]
    files = [str(path) for path in files if path.suffix not in (".htm", ".txt") and path.name != "model"]
    told = subprocess.run([PROGRAM, "check", "--json", *files], check=False, capture_output=True).stdout
    for number, document in enumerate(json.loads(told)["files"]):
        path = pathlib.Path(document["file"])
        write("FuzzCheckFile", f"{number}-{path.name}", document["type"].encode() + b"\n" + path.read_bytes())


def make_settings():
    for number, block in enumerate(blocks("json")):
        write("FuzzSettingsFile", f"block-{number}", block)
    schema = json.loads((SOURCE / "schema" / "settings.schema.json").read_text(encoding="utf-8"))
    examples = {"string": "x", "number": 1.5, "integer": 2, "boolean": True, "array": ["P1"]}
    for key, rule in schema["properties"].items():
        value = rule["enum"][0] if "enum" in rule else examples.get(rule.get("type"), [{"type": "virtek", "output": "a.ply"}])
        write("FuzzSettingsFile", key, json.dumps({key: value}))


def make_ply_lists():
    for number, block in enumerate(blocks("csv")):
        write("FuzzPlyList", f"block-{number}", block)
        write("FuzzPlyList", f"semicolons-{number}", block.replace(",", ";").replace("\n", "\r\n"))
        write("FuzzPlyList", f"quotes-{number}", re.sub(r"([^,\n]+)", r'"\1"', block))


def make_dictionary():
    """The words of all formats: keys, and the words in quotes of the readers of check that no message is made of."""
    words = set()
    for schema in (SOURCE / "schema").glob("*.json"):
        words |= set(re.findall(r'"([\w$-]+)"', schema.read_text(encoding="utf-8")))
    for reader in (SOURCE / "apps" / "zetlaser-job" / "check").glob("CheckReader*.cpp"):
        text = re.sub(r"//.*|'\"'", "", reader.read_text(encoding="utf-8"))
        text = re.sub(r'\btr\((?:\s*"(?:[^"\\]|\\.)*")+', "", text)
        literals = re.findall(r'"((?:[^"\\\n]|\\.)*)"', text)
        words |= {literal for literal in literals if re.fullmatch(r"[^\\%]{1,40}", literal) and not literal.endswith(".h")}
    (pathlib.Path(FOLDER) / "words.dict").write_text("".join(f'"{word}"\n' for word in sorted(words) if word.isascii()))


def main():
    make_layups()
    with tempfile.TemporaryDirectory() as folder:
        make_models(pathlib.Path(folder))
        make_part_files(pathlib.Path(folder))
    make_settings()
    make_ply_lists()
    make_dictionary()


if __name__ == "__main__":
    main()

"""The project's sources as the checks see them."""

import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
PRODUCT_FOLDERS = ("platform", "model", "core", "ui", "panels", "jobtypes", "watermark", "driver", "host")
TRIAL_FOLDERS = ("tests", "bench", "fuzz", "reliability")  # what tries the product

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)


def files(folders=PRODUCT_FOLDERS + TRIAL_FOLDERS, suffixes=(".h", ".cpp")):
    """All sources below the folders, as sorted paths from the project's root."""
    found = []
    for folder in folders:
        found += [p.relative_to(ROOT) for p in (ROOT / folder).rglob("*") if p.suffix in suffixes and p.is_file()]
    return sorted(found)


def text(path):
    return (ROOT / path).read_text(encoding="utf-8")


def code(path):
    """The file's text without its comments and without what stands in quotes; includes keep theirs."""
    def replace(match):
        kept = match.group(0)
        if kept.startswith("/"):
            return " " + "\n" * kept.count("\n")
        return kept if kept.startswith("#") else '""'
    return re.sub(r'^[ \t]*#[ \t]*include[^\n]*|//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', replace, text(path),
                  flags=re.DOTALL | re.MULTILINE)


def includes(path):
    """(is_system, name) of every include, in order."""
    return [(mark == "<", name) for mark, name in INCLUDE.findall(text(path))]


def closure(path, seen=None):
    """The file and every file of the project that it reaches by includes."""
    seen = set() if seen is None else seen
    if path not in seen and (ROOT / path).is_file():
        seen.add(path)
        for system, name in includes(path):
            if not system:
                closure(name, seen)
    return seen


def compiled_by(entry):
    """The sources that an entry of compile_commands.json compiles, as paths from the project's root: one, or those of a
    text that CMake makes of several."""
    source = pathlib.Path(entry["file"])
    if not source.is_relative_to(ROOT):
        return []
    if source.parent.name != "Unity":
        return [source.relative_to(ROOT)]
    return [pathlib.Path(name).relative_to(ROOT) for _, name in INCLUDE.findall(source.read_text(encoding="utf-8"))]


if __name__ == "__main__":
    print(*files(), sep="\n")

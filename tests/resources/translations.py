#!/usr/bin/env python3
"""Holds the translations against the English texts, which are the master.

    tests/resources/translations.py [LANGUAGE]...      all that there are, when none is named; or those named, even if missing

Of each text: is it there, is it translated, has it the same placeholders, one letter for the keyboard that no other
control of its window has, the blanks and the ellipsis of the master, and in Arabic the digits of its script? Of each
help page: is it there, with the same elements, links and anchors? It needs nothing but the sources.
"""

import collections
import functools
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLES = ["resources/strings", "resources/host/strings", "resources/watermark_editor/strings", "resources/ppd-names"]
HELP = "resources/help"
NIBS = ["resources/nibs", "resources/host/nibs"]
# Texts that may be the same in another language: names, units, codes.
SAME = ROOT / "tests/resources/same_in_translation.txt"

ROW = re.compile(r'"((?:[^"\\]|\\.)*)"\s*=\s*"((?:[^"\\]|\\.)*)"\s*;')
COMMENT = re.compile(r"/\*.*?\*/", re.DOTALL)
PLACEHOLDER = re.compile(r"%(?:\d+(?:\$@)?|\$?@|[ds])")
TAG = re.compile(r"<(/?[a-zA-Z0-9]+)((?:\s[^>]*)?)>")

# Arabic fixed texts have Arabic-Indic digits, which become the locale's when they are shown (locale_digits.h). The
# digits 0 to 9 stand in names (A4, UTF-8, tavro-report(5)), after the placeholder's sign, and in what is quoted as it is:
# a dialing code, and the names that the printer's PPD gives its papers.
LATIN_NUMBER = re.compile(r"%\d|[A-Za-z]+[-+(]?\d+|مثل 00\b|مخصص 1\b")
NO_TEXTS_OF_OURS = ["InfoPlist.strings", "PPD.strings"]  # versions; texts that programs of every locale show

faults = []


def fault(where, what):
    faults.append(f"{where}: {what}")


def read_table(path):
    rows = {}
    for key, text in ROW.findall(COMMENT.sub("", path.read_text(encoding="utf-8"))):
        if key in rows:
            fault(path.relative_to(ROOT), f'"{key}" twice')
        rows[key] = text.replace('\\"', '"').replace("\\n", "\n").replace("\\\\", "\\")
    return rows


def check_digits(where, name, text):
    if where.name == "PPD.strings" and re.search("[٠-٩]", text):
        fault(where, f'{name} has Arabic-Indic digits, and is shown in every locale: {text!r}')
    if where.name not in NO_TEXTS_OF_OURS and re.search("[0-9]", LATIN_NUMBER.sub("", text)):
        fault(where, f'{name} has digits other than Arabic-Indic ones: {text!r}')


def letter(text):
    """The letter behind an ampersand that is not one of a pair; None when there is none."""
    found = re.search(r"&(.)", text.replace("&&", ""), re.DOTALL)
    return found.group(1) if found else None


def allowed(language):
    lines = SAME.read_text(encoding="utf-8").splitlines() if SAME.exists() else []
    pairs = [line.split("\t", 1) for line in lines if "\t" in line and not line.startswith("#")]
    return {text for languages, text in pairs if languages == "*" or language in languages.split()}


PPD_TEXT_BYTES = 80  # the PPD format's own limit, of its readers as well


def check_text(where, key, english, text, same):
    if where.name == "PPD.strings" and len(text.encode()) > PPD_TEXT_BYTES:
        fault(where, f'"{key}" has more than {PPD_TEXT_BYTES} bytes, which no PPD may show: {text!r}')
    if collections.Counter(PLACEHOLDER.findall(english)) != collections.Counter(PLACEHOLDER.findall(text)):
        fault(where, f'"{key}" has other placeholders: {text!r}')
    if text == english and re.search(r"[A-Za-z]{3}", PLACEHOLDER.sub("", english)) and english not in same:
        fault(where, f'"{key}" is still English: {text!r}')
    if "  " in text and "  " not in english:
        fault(where, f'"{key}" has two blanks: {text!r}')
    # What stands between a name and its value, or the words of a list, is each language's own.
    if key not in (":", "List Comma", "List Semicolon") and (text[:1].isspace(), text[-1:].isspace()) != (
            english[:1].isspace(), english[-1:].isspace()):
        fault(where, f'"{key}" begins or ends with a blank, or lacks one: {text!r}')
    if ("…" in text) != ("…" in english):
        fault(where, f'"{key}" has no ellipsis, or one too many: {text!r}')
    if (letter(text) is None) != (letter(english) is None):
        fault(where, f'"{key}" has no letter for the keyboard, or one too many: {text!r}')


@functools.cache
def ppds():
    return "".join(path.read_text(encoding="latin-1") for path in sorted((ROOT / "resources/ppd").glob("*.ppd")))


def is_shown(keyword, text):
    """Whether a PPD has an option of that name, or with a choice of that name."""
    places = rf"\*{re.escape(keyword)} [^/:\s]+|\*(?:JCL)?OpenUI \*{re.escape(keyword)}"
    return re.search(rf"^(?:{places})/{re.escape(text)}:", ppds(), re.MULTILINE) is not None


def check_tables(language, same):
    for folder in TABLES:
        for master in sorted((ROOT / folder / "en.lproj").glob("*.strings")):
            path = ROOT / folder / f"{language}.lproj" / master.name
            where = path.relative_to(ROOT)
            if not path.exists():
                fault(where, "is missing")
                continue
            english, texts = read_table(master), read_table(path)
            for key in english.keys() - texts.keys():
                fault(where, f'"{key}" is missing')
            # One word of English may be two in another language, or have two genders there, and so a row for one option.
            options = {key: key.partition("/")[2] for key in texts.keys() - english.keys()
                       if master.name == "PPD.strings" and key.partition("/")[2] in english and is_shown(*key.split("/", 1))}
            for key in texts.keys() - english.keys() - options.keys():
                fault(where, f'"{key}" is not in the English table')
            for key, shared in options.items():
                check_text(where, key, english[shared], texts[key], same)
            for key in sorted(english.keys() & texts.keys()):
                check_text(where, key, english[key], texts[key], same)
                if language == "ar":
                    check_digits(where, f'"{key}"', texts[key])


def window_texts(path):
    """The texts of a window's controls; those that share a place with others are not seen together."""
    return [node.text for node in ElementTree.parse(path).iter("string")
            if node.text and node.get("notr") != "true" and letter(node.text)]


# The texts with a letter that code sets, of Localizable.strings: the nib and window of each, and the text of the nib that
# gives way to it, where that has a letter.
WINDOWS_OF_CODE = {
    "Booklet Layout Order:": ("AdvancedPanelOffice/Advanced", None),
    "Finishing Custom Label": ("Utilities/CustomValue", "&Value:"),
    "Finishing Fold Label": ("FinishingDialogs/Position", None),
    "Finishing Position Label": ("FinishingDialogs/Position", None),
    "Lighten/Darken:": ("ImageOptions/Office", None),
}


def texts_with_letters(strings, language):
    """By their keys: the English text and that of the language."""
    english, texts = (read_table(ROOT / strings / f"{each}.lproj/Localizable.strings") for each in ("en", language))
    return {key: (text, texts.get(key, "")) for key, text in english.items() if letter(text)}


def check_letters(language):
    windows = {}
    for folder, strings in zip(NIBS, TABLES):
        for path in sorted((ROOT / folder).glob("*.nib/*.ui")):
            table = ROOT / strings / f"{language}.lproj" / f"{path.parent.stem}.strings"
            rows = read_table(table) if table.exists() else {}
            windows[f"{path.parent.stem}/{path.stem}"] = [
                (text, rows.get(text, "")) for text in dict.fromkeys(window_texts(path))]
    set_by_code = texts_with_letters("resources/strings", language)
    for key, (window, given_way) in WINDOWS_OF_CODE.items():
        windows[f"{window}, {key}"] = [row for row in windows[window] if row[0] != given_way] + [set_by_code.pop(key)]
    for key in set_by_code:
        fault("tests/resources/translations.py", f'WINDOWS_OF_CODE has no window for "{key}"')
    windows["Watermark editor"] = list(texts_with_letters("resources/watermark_editor/strings", language).values())
    dialog = windows["PrintDialog/PrintDialog"] + windows["PDE_Shell/Window"]
    panes = ["AboutPanel/About", "AdvancedPanelOffice/Advanced", "ColorOptions/ColorOptions", "ImageOptions/Office",
             "JobNotes/JobNotes", "Layout/Layout", "PaperOutputOffice/Professional", "PaperOutputOffice/Std_Adv",
             "SpecialPages/SpecialPages", "Watermark/Window"]
    for name, texts in windows.items():
        texts = (dialog if name.partition(",")[0] in panes else []) + texts
        letters = collections.defaultdict(list)
        for text, translated in texts:
            if letter(translated):
                letters[letter(translated).upper()].append(translated)
        english = collections.Counter(letter(text).upper() for text, _ in texts)
        room = max(english.values(), default=1)  # pages of which one is seen at a time may share letters
        for each, users in letters.items():
            if len(users) > room:
                fault(f"{language}: {name}", f"{len(users)} controls have the letter {each}: {users}")


def check_help(language):
    masters = ROOT / HELP / "en.lproj"
    for master in sorted(masters.rglob("*.htm*")):
        path = ROOT / HELP / f"{language}.lproj" / master.relative_to(masters)
        where = path.relative_to(ROOT)
        if not path.exists():
            fault(where, "is missing")
            continue
        outline = []
        for text in (master.read_text(encoding="utf-8"), path.read_text(encoding="utf-8")):
            kept = [(tag, re.findall(r'(?:href|name|src)="[^"]*"', rest)) for tag, rest in TAG.findall(text)
                    if tag.lower() not in ("html", "b", "/b", "i", "/i", "br")]
            outline.append(kept)
        if outline[0] != outline[1]:
            first = next((i for i, (one, other) in enumerate(zip(*outline)) if one != other),
                         min(map(len, outline)))
            fault(where, f"has other elements than the English page, first: "
                         f"{outline[0][first:first + 1]} there, {outline[1][first:first + 1]} here")
        if language == "ar":
            page = path.read_text(encoding="utf-8")
            if 'dir="rtl"' not in page:
                fault(where, 'lacks dir="rtl"')
            for line in TAG.sub("", page).splitlines():
                check_digits(where, "a line", line)


def main():
    present = sorted({path.stem for folder in TABLES for path in (ROOT / folder).glob("*.lproj")} - {"en"})
    for language in sys.argv[1:] or present:
        same = allowed(language)
        check_tables(language, same)
        check_letters(language)
        check_help(language)
        if not (ROOT / "docs/glossary" / f"{language}.md").exists():
            fault(f"docs/glossary/{language}.md", "is missing")
    for line in faults:
        print(line)
    sys.exit(1 if faults else 0)


main()

#!/usr/bin/python3
"""Keeps the translations of the text table: PO files, one a language, whose entries have a text's number as context.

  make_translations.py compile TEXTS OUTPUT PO...   write the C++ table of all languages; a text without a translation
                                                    is left out, so that it is shown in English
  make_translations.py check TEXTS PO...            fail for every text that is not translated as the table has it now
  make_translations.py update TEXTS PO...           take new texts into the PO files, untranslated, mark those whose
                                                    English has changed as fuzzy, and drop those that are gone

TEXTS is the table as print_texts writes it. A translation in which a mark is lost fails in all three.
"""
import json
import pathlib
import re
import sys

import polib

TOKENS = ["{{}}", "{}", "$$$", "$$", "$", "%.%", "~", "^", "*"]
COUNTED = re.compile("|".join(re.escape(token) for token in TOKENS))


def marks(text):
    """What a translation must keep: tokens, mnemonics, patterns of file filters, and the ends of a caption."""
    parts = text.split("|")
    plain = re.sub(r"\([^()|]*\*[^()|]*\)", "", text) if len(parts) > 1 else text
    found = {token: 0 for token in TOKENS}
    for token in COUNTED.findall(plain):
        found[token] += 1
    found["mnemonics"] = len(re.findall(r"&(?!&)", text.replace("&&", "")))
    found["parts"] = len(parts)
    found["patterns"] = parts[1::2]
    found["blanks"] = [text[:1].isspace(), text[-1:].isspace()]
    found["dots"] = [text.startswith("..."), text.endswith("...")]
    found["colon"] = text.endswith(":")
    found["lines"] = text.count("\n")
    if "^" in text:
        found["#@"] = sorted(re.findall("[#@]", text))
    return found


def language_of(po):
    return po.metadata["Language"]


def lost_marks(po):
    for entry in po.translated_entries():
        before, after = marks(entry.msgid), marks(entry.msgstr)
        for mark in before:
            if before[mark] != after[mark]:
                yield f"{entry.msgctxt}: '{mark}' differs in: {entry.msgstr}"
        if language_of(po) == "fr" and re.search(r"(?<![\u00a0\u202f])[;!?»](?=\s|$)|\w:(?=\s|$)| :", entry.msgstr):
            yield f"{entry.msgctxt}: no no-break space before a sign in: {entry.msgstr}"


def stale(po, texts):
    """The entries and texts that do not belong together."""
    entries = {int(entry.msgctxt): entry for entry in po if not entry.obsolete}
    for number, text in texts.items():
        entry = entries.pop(number, None)
        if entry is None or not entry.msgstr:
            yield f"{number}: not translated: {text}"
        elif entry.fuzzy or entry.msgid != text:
            yield f"{number}: the English has changed: {text}"
    for number in entries:
        yield f"{number}: there is no such text any more"
    for entry in po.obsolete_entries():
        yield f"{entry.msgctxt}: obsolete"


def update(po, texts):
    old = {int(entry.msgctxt): entry for entry in po}
    po.clear()
    for number, text in sorted(texts.items()):
        entry = old.get(number) or polib.POEntry(msgctxt=str(number), msgid=text)
        entry.obsolete = False
        if entry.msgid != text:
            entry.msgid = text
            if entry.msgstr and not entry.fuzzy:
                entry.flags.append("fuzzy")
        po.append(entry)
    po.save()


def c_string(text):
    return json.dumps(text, ensure_ascii=False)


def cpp_table(pos, texts):
    lines = ['#include "resources/Languages.h"', "", "#include <algorithm>", "", "namespace kestrane {", "", "namespace {", ""]
    rows = ["    {},"]
    for po in pos:
        code = language_of(po)
        lines.append(f"constexpr TextEntry k_{code}[] = {{")
        for entry in sorted(po.translated_entries(), key=lambda entry: int(entry.msgctxt)):
            if texts.get(int(entry.msgctxt)) == entry.msgid:
                lines.append(f"    {{Text::Id{{{entry.msgctxt}}}, {c_string(entry.msgstr)}}},")
        lines += ["};", "",
                  f"static_assert(std::ranges::is_sorted(k_{code}, {{}}, &TextEntry::Id));", ""]
        rows.append(f'    {{"{code}", {c_string(po.metadata["X-Name"])}, k_{code}}},')
    lines += ["constexpr Language kLanguages[] = {", *rows, "};", "", "} // namespace", "",
              "std::span<const Language> Languages() {", "    return kLanguages;", "}", "", "} // namespace kestrane", ""]
    return "\n".join(lines)


def main(command, texts_file, *names):
    output = pathlib.Path(names[0]) if command == "compile" else None
    texts = {text["id"]: text["text"] for text in json.loads(pathlib.Path(texts_file).read_text(encoding="utf-8"))
             if text["translate"]}
    pos = [polib.pofile(name, encoding="utf-8", wrapwidth=120) for name in names[output is not None:]]
    faults = []
    for po in pos:
        if command == "update":
            update(po, texts)
        found = list(lost_marks(po)) + (list(stale(po, texts)) if command == "check" else [])
        faults += [f"{language_of(po)}.po: {fault}" for fault in found]
    if faults:
        sys.exit("\n".join(faults))
    if output is not None:
        output.write_text(cpp_table(pos, texts), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])

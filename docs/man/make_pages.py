#!/usr/bin/env python3
"""Makes the manual pages, the completions and the schemas of the programs: names and options from the parser itself
(kestrane-cli syntax, kestrane-sim --help), what they do from the documents. A verb, or an option of one, that
docs/cli.md does not tell of is an error.

Usage: make_pages.py CLI SIM VERSION DOCS OUT
"""

import json
import os
import re
import subprocess
import sys

FORMATS = {"XML data file": ("kestrane-xml", "XML data file"), "Project file": ("kestrane-zdp", "project file"),
           "Machine log": ("kestrane-log", "machine log"), "Sound files": ("kestrane-sound", "sound files")}
SEE = {1: "kestrane(1), kestrane-cli(1), kestrane-sim(1)", 5: "kestrane-cli(1)"}


def read(*path):
    with open(os.path.join(*path), encoding="utf-8") as file:
        return file.read()


def cells_of(line):
    return [cell.replace("\\|", "|").strip() for cell in re.split(r"(?<!\\)\|", line.strip().strip("|"))]


# ---- roff

def plain(text):
    text = re.sub(r"!\[[^]]*\]\([^)]*\)|</?kbd>", "", text)
    text = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", text)
    return text.replace("\\", "\\e")


def roff(text):
    """A line of the documents: code and stress in bold, links as their words."""
    text = plain(text)
    text = re.sub(r"`([^`]*)`", r"\\fB\1\\fR", text)
    text = re.sub(r"\*\*([^*]*)\*\*", r"\\fB\1\\fR", text)
    text = text.replace("-", "\\-")
    return "\\&" + text if text[:1] in (".", "'") else text


def joined(markdown):
    """The lines, but each paragraph as one: code and links may go over the end of a line."""
    lines = [""]
    for line in markdown.split("\n"):
        goes_on = lines[-1] and line and not any(text.startswith(("    ", "|", "#")) for text in (lines[-1], line))
        if goes_on:
            lines[-1] += " " + line.strip()
        else:
            lines.append(line)
    return lines[1:]


def section_of(markdown):
    """Paragraphs, tables and examples of a document."""
    out = []
    in_example = False
    lines = joined(markdown)
    for place, line in enumerate(lines):
        is_example = line.startswith("    ")
        if is_example != in_example and (line or not in_example):
            out.append(".EX" if is_example else ".EE")
            in_example = is_example
        if is_example:
            out.append(roff(line).replace("`", "\\`"))
        elif line.startswith("|"):
            if re.match(r"\|[-|]*$", line) or re.match(r"\|[-|]*$", (lines + [""])[place + 1]):
                continue     # the head
            first, *others = cells_of(line)
            out += [".TP", f"\\fB{roff(first).replace(chr(92) + 'fB', '').replace(chr(92) + 'fR', '')}\\fR", roff("; ".join(others))]
        elif line.startswith("#"):
            out.append(".SS " + roff(line.strip("# ")))
        elif roff(line):
            out.append(roff(line))
        elif out and out[-1] != ".PP":
            out.append(".PP")
    if in_example:
        out.append(".EE")
    return "\n".join(out).removesuffix("\n.PP") + "\n"


def page(name, section, what, version, *parts):
    head = f'.TH {name.upper()} {section} "" "Kestrane {version}" "Kestrane"\n.SH NAME\n{roff(name)} \\- {roff(what)}\n'
    return head + "".join(parts) + f".SH SEE ALSO\n{SEE[section]}\n"


def options_of(syntax):
    out = ""
    for option in syntax["Options"]:
        names = ", ".join(f"\\fB{roff(name)}\\fR" for name in option["Names"]) or f"\\fI{option['Positional']}\\fR"
        takes = f" \\fI{roff(option['Takes'])}\\fR" if option["Takes"] and option["Names"] else ""
        choices = " (" + ", ".join(option["Choices"]) + ")" if option["Choices"] else ""
        out += f".TP\n{names}{takes}\n{roff(option['Description'])}{roff(choices)}\n"
    return out


# ---- kestrane-cli

def rows_of(document):
    """What docs/cli.md says of each verb: its calls and what they do."""
    rows = {}
    for line in document.split("\n"):
        call = re.match(r"\| `(([a-z][a-z-]*)[^`]*)` \| (.*) \|$", line)
        if call:
            rows.setdefault(call.group(2), []).append((call.group(1).replace("\\|", "|"), call.group(3).replace("\\|", "|")))
    return rows


def check_told(syntax, words, rows):
    """Every option of a verb stands in its row."""
    told = " ".join(call for call, _ in rows) + " --help"
    for option in syntax["Options"]:
        for name in option["Names"]:
            shared = name in ("-h", "--mode", "--method", "--correction", "--protector", "--database", "--transcript")
            if not shared and name not in told:
                sys.exit(f"docs/cli.md does not tell of the option {name} of {words}")
    for verb in syntax["Verbs"]:
        check_told(verb, words + " " + verb["Name"], rows)


def verb_page(verb, rows, version):
    name = verb["Name"]
    synopsis = ".SH SYNOPSIS\n" + ".br\n".join(f"\\fBkestrane\\-cli\\fR {roff(call)}\n" for call, _ in rows)
    does = ".SH DESCRIPTION\n" + "".join(f".TP\n\\fB{roff(' '.join(re.match('[a-z -]*', call).group().split()))}\\fR\n{roff(what)}\n"
                                         for call, what in rows)
    options = ".SH OPTIONS\n" + options_of(verb)
    for sub in verb["Verbs"]:
        options += f".SS {roff(name + ' ' + sub['Name'])}\n{options_of(sub)}"
    rest = ("Global options, exit status and what all verbs have in common are described in kestrane\\-cli(1); the JSON Schema of the output "
            f"is printed by \\fBkestrane\\-cli schema {roff(name)}\\fR, where there is one.\n")
    return page("kestrane-cli-" + name, 1, verb["Description"], version, synopsis, does, options, ".PP\n" + rest)


def cli_pages(syntax, docs, version, out):
    document = read(docs, "cli.md")
    rows = rows_of(document)
    for verb in syntax["Verbs"]:
        if verb["Name"] not in rows:
            sys.exit(f"docs/cli.md has no row for the verb {verb['Name']}")
        check_told(verb, verb["Name"], rows[verb["Name"]])
        out("man1", f"kestrane-cli-{verb['Name']}.1", verb_page(verb, rows[verb["Name"]], version))
    before, *sections = re.split(r"\n## ", document)
    begin = before.split("\n|", 1)[0].split("\n", 4)[4]
    verbs = "".join(f".TP\n\\fB{roff(verb['Name'])}\\fR\n{roff(verb['Description'])}; see kestrane\\-cli\\-{roff(verb['Name'])}(1)\n"
                    for verb in syntax["Verbs"])
    behind = before[before.rindex("\n\n`--freq`"):]
    parts = [".SH SYNOPSIS\n\\fBkestrane\\-cli\\fR [\\fIGLOBAL OPTIONS\\fR] \\fIVERB\\fR [\\fIOPTIONS\\fR] \\fIARGUMENTS\\fR\n",
             ".SH DESCRIPTION\n" + section_of(begin.strip()), ".SH GLOBAL OPTIONS\n" + options_of(syntax), ".SH VERBS\n" + verbs,
             ".PP\n" + section_of(behind.strip())]
    for text in sections:
        title, body = text.split("\n", 1)
        if title == "Assessments":
            out("man5", "kestrane-assessment.5", page("kestrane-assessment", 5, "exposure assessment of Kestrane", version,
                                                      ".SH DESCRIPTION\n" + section_of(body.strip())))
        parts.append(f".SH {roff(title.upper())}\n{section_of(body.strip())}")
    out("man1", "kestrane-cli.1", page("kestrane-cli", 1, syntax["Description"], version, *parts))


# ---- the other pages

def format_pages(docs, version, out):
    before, *sections = re.split(r"\n## ", read(docs, "formats.md"))
    common = "In all of them" + before.split("In all of them")[1]
    for text in sections:
        title, body = text.split("\n", 1)
        if title in FORMATS:
            name, what = FORMATS.pop(title)
            out("man5", name + ".5", page(name, 5, what + " that Kestrane reads", version, ".SH DESCRIPTION\n" + section_of(body.strip()),
                                          ".SH ALL FORMATS\n" + section_of(common.strip())))
    if FORMATS:
        sys.exit("docs/formats.md has no section for " + ", ".join(FORMATS))


def program_pages(sim, docs, version, out):
    for name, what, words, text in (
            ("kestrane", "noise measurements: exposure, charts, reports", "[\\fB\\-\\-new\\-instance\\fR] [\\fIFILE\\fR...]", read(docs, "desktop.md")),
            ("kestrane-sim", "an instrument on a pseudo-terminal, for trying downloads without a meter", "\\fIOPTIONS\\fR",
             read(docs, "try-a-download.md"))):
        title, body = text.split("\n", 1)
        options = ".SH OPTIONS\n.TP\n\\fB\\-\\-help\\fR\nhelp, then nothing else\n.TP\n\\fB\\-\\-version\\fR\nthe version, then nothing else\n"
        if name == "kestrane-sim":
            usage = subprocess.run([sim, "--help"], capture_output=True, check=True, text=True).stdout
            options = ".SH OPTIONS\n.EX\n" + "".join(roff(line) + "\n" for line in usage.split("Options:\n")[1].split("\n\n")[0].split("\n")) + ".EE\n"
        out("man1", name + ".1", page(name, 1, what, version, f".SH SYNOPSIS\n\\fB{roff(name)}\\fR {words}\n", options,
                                      ".SH DESCRIPTION\n" + section_of(body.strip())))


# ---- completions

def each_verb(syntax, words=()):
    for verb in syntax["Verbs"]:
        yield (*words, verb["Name"]), verb
        yield from each_verb(verb, (*words, verb["Name"]))


def names_of(syntax):
    return [name for option in syntax["Options"] for name in option["Names"]]


def choices_of(syntax):
    found = {}
    for _, verb in [((), syntax), *each_verb(syntax)]:
        for option in verb["Options"]:
            for name in option["Names"]:
                if option["Choices"]:
                    found.setdefault(name, option["Choices"])
    return found


KEYS = r"""tree "$word" 2>/dev/null | grep -oE '"Key":"[LOT][0-9]+I[0-9]+F[0-9]+"' | cut -d'"' -f4"""


def bash(syntax):
    verbs = {" ".join(words): verb for words, verb in each_verb(syntax)}
    cases = "".join(f"        '{words}') words='{' '.join([sub['Name'] for sub in verb['Verbs']] + names_of(verb))}' ;;\n"
                    for words, verb in verbs.items())
    values = "".join(f"        {name}) COMPREPLY=($(compgen -W '{' '.join(choices)}' -- \"$now\")); return ;;\n"
                     for name, choices in choices_of(syntax).items())
    return f"""# Completion of kestrane-cli for bash. Made from the program's own parser.
_kestrane_cli() {{
    local now="${{COMP_WORDS[COMP_CWORD]}}" before="${{COMP_WORDS[COMP_CWORD-1]}}" verb='' words word
    for word in "${{COMP_WORDS[@]:1:COMP_CWORD-1}}"; do
        case "${{verb:+$verb }}$word" in
        {'|'.join(f"'{words}'" for words in verbs)}) verb="${{verb:+$verb }}$word" ;;
        esac
    done
    case "$before" in
{values}        --log) # the logs of the file that the call names
            for word in "${{COMP_WORDS[@]:1}}"; do
                [ -f "$word" ] && COMPREPLY+=($(compgen -W "$("${{COMP_WORDS[0]}}" {KEYS})" -- "$now"))
            done
            return ;;
    esac
    case "$verb" in
{cases}        *) words='{' '.join([verb['Name'] for verb in syntax['Verbs']] + names_of(syntax))}' ;;
    esac
    COMPREPLY=($(compgen -W "$words" -- "$now"))
}}
complete -o default -F _kestrane_cli kestrane-cli
"""


def quoted(text):
    return "'" + text.replace("'", "'\\''") + "'"


def zsh(syntax):
    def arguments(verb):
        out = []
        for option in verb["Options"]:
            text = option["Description"].replace("[", "(").replace("]", ")").replace(":", ";")
            value = ""
            if option["Takes"]:
                action = "(" + " ".join(option["Choices"]) + ")" if option["Choices"] else "_files"
                value = f":{option['Takes'].lower()}:" + ("_kestrane_cli_logs" if "--log" in option["Names"] else action)
            out += [quoted(f"{name}[{text}]{value}") for name in option["Names"]]
        return " ".join(out)
    cases = "".join(f"        {quoted(' '.join(words))}) _arguments {arguments(verb)} "
                    + (f"'*:verb:({' '.join(sub['Name'] for sub in verb['Verbs'])})'" if verb["Verbs"] else "'*:file:_files'") + " ;;\n"
                    for words, verb in each_verb(syntax))
    verbs = " ".join(quoted(f"{verb['Name']}:{verb['Description']}") for verb in syntax["Verbs"])
    known = "|".join(quoted(" ".join(words)) for words, _ in each_verb(syntax))
    return f"""#compdef kestrane-cli
# Completion of kestrane-cli for zsh. Made from the program's own parser.
_kestrane_cli_logs() {{
    local word keys
    for word in $words[2,-1]; do
        [[ -f $word ]] && keys=(${{(f)"$($words[1] {KEYS})"}}) && compadd -a keys
    done
}}
_kestrane_cli() {{
    local verb word
    for word in $words[2,CURRENT-1]; do
        case "${{verb:+$verb }}$word" in
        {known}) verb="${{verb:+$verb }}$word" ;;
        esac
    done
    case "$verb" in
{cases}        *) local -a verbs; verbs=({verbs}); _describe verb verbs; _arguments {arguments(syntax)} ;;
    esac
}}
_kestrane_cli "$@"
"""


def fish(syntax):
    lines = ["# Completion of kestrane-cli for fish. Made from the program's own parser.",
             "function __kestrane_cli_logs", "    for word in (commandline -opc)",
             f"        test -f \"$word\"; and kestrane-cli {KEYS}", "    end", "end"]

    def options(verb, condition):
        for option in verb["Options"]:
            names = " ".join(f"-l {name[2:]}" if name.startswith("--") else f"-s {name[1:]}" for name in option["Names"])
            if not names:
                continue
            value = ""
            if option["Takes"]:
                value = (" -x -a '(__kestrane_cli_logs)'" if "--log" in option["Names"]
                         else f" -x -a {quoted(' '.join(option['Choices']))}" if option["Choices"] else " -r")
            lines.append(f"complete -c kestrane-cli {condition}{names}{value} -d {quoted(option['Description'])}")

    options(syntax, "")
    for verb in syntax["Verbs"]:
        lines.append(f"complete -c kestrane-cli -n __fish_use_subcommand -a {verb['Name']} -d {quoted(verb['Description'])}")
    for words, verb in each_verb(syntax):
        seen = "; and ".join(f"__fish_seen_subcommand_from {word}" for word in words)
        for sub in verb["Verbs"]:
            lines.append(f"complete -c kestrane-cli -n {quoted(seen)} -a {sub['Name']} -d {quoted(sub['Description'])}")
        options(verb, f"-n {quoted(seen)} ")
    return "\n".join(lines) + "\n"


def main():
    cli, sim, version, docs, folder = sys.argv[1:]
    syntax = json.loads(subprocess.run([cli, "syntax"], capture_output=True, check=True).stdout)

    def out(kind, name, text):
        os.makedirs(os.path.join(folder, kind), exist_ok=True)
        with open(os.path.join(folder, kind, name), "w", encoding="utf-8") as file:
            file.write(text)

    cli_pages(syntax, docs, version, out)
    format_pages(docs, version, out)
    program_pages(sim, docs, version, out)
    for verb, schema in json.loads(subprocess.run([cli, "schema"], capture_output=True, check=True).stdout).items():
        out("schemas", verb + ".json", json.dumps(schema, indent=1) + "\n")
    out("completions", "kestrane-cli", bash(syntax))
    out("completions", "_kestrane-cli", zsh(syntax))
    out("completions", "kestrane-cli.fish", fish(syntax))


main()

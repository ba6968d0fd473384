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


def called(syntax):
    """The words of each verb, "" for none, with the options that may stand behind them: global ones may stand anywhere."""
    yield "", syntax["Options"], syntax["Verbs"]
    own = [option for option in syntax["Options"] if option["Takes"] or option["Names"] not in (["-h", "--help"], ["--version"])]
    for words, verb in each_verb(syntax):
        yield " ".join(words), verb["Options"] + own, verb["Verbs"]


def values_of(syntax):
    """The global options that take a value, which is no verb."""
    return [name for option in syntax["Options"] if option["Takes"] for name in option["Names"]]


KEYS = r"""tree "$word" 2>/dev/null | grep -oE '"Key":"[LOT][0-9]+I[0-9]+F[0-9]+"' | cut -d'"' -f4"""
FREE = ("TEXT", "OUT", "FOLDER")     # what is or may be the name of a file; other values are typed


def bash(syntax):
    options, verbs, values = "", "", {}     # of values: what is offered, and behind which words
    for words, own, subs in called(syntax):
        for option in own:
            offer = ("logs=1" if "--log" in option["Names"] else f"words='{' '.join(option['Choices'])}'" if option["Choices"]
                     else "return" if option["Takes"] in FREE else "compopt +o default 2>/dev/null; return")
            if option["Takes"] and option["Names"]:
                values.setdefault(offer, {}).update(dict.fromkeys("*" + quoted(" " + name) if option in syntax["Options"] else quoted(f"{words} {name}")
                                                                  for name in option["Names"]))
        options += f"        {quoted(words)}) words='{' '.join(name for option in own for name in option['Names'])}' ;;\n"
        if subs:
            verbs += f"        {quoted(words)}) words='{' '.join(sub['Name'] for sub in subs)}' ;;\n"
    behind = "".join(f"    {'|'.join(places)}) {offer} ;;\n" for offer, places in values.items())
    known = "|".join(quoted(" ".join(words)) for words, _ in each_verb(syntax))
    return f"""# Completion of kestrane-cli for bash. Made from the program's own parser. Without words it offers files.
_kestrane_cli() {{
    local now="${{COMP_WORDS[COMP_CWORD]}}" before="${{COMP_WORDS[COMP_CWORD-1]}}" verb='' words='' logs='' word i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word="${{COMP_WORDS[i]}}"
        case "${{verb:+$verb }}$word" in
        {known}) verb="${{verb:+$verb }}$word" ;;
        *) case "$word" in {'|'.join(values_of(syntax))}) ((++i)) ;; esac ;;
        esac
    done
    case "$verb $before" in
{behind}    esac
    if [ "$logs" ]; then # of the files that the call names; a name may be quoted
        for word in "${{COMP_WORDS[@]:1}}"; do
            word="${{word//[\\\\\\"\\']/}}"
            word="${{word/#\~\//$HOME/}}"
            [ -f "$word" ] && words+=" $("${{COMP_WORDS[0]}}" {KEYS})"
        done
    elif [ ! "$words" ] && [[ $now == -* ]]; then
        case "$verb" in
{options}        esac
    elif [ ! "$words" ]; then
        case "$verb" in
{verbs}        esac
    fi
    [ "$words" ] && COMPREPLY=($(compgen -W "$words" -- "$now"))
}}
complete -o default -F _kestrane_cli kestrane-cli
"""


def quoted(text):
    return "'" + text.replace("'", "'\\''") + "'"


def zsh(syntax):
    def argument(option):
        text = option["Description"].replace("[", "(").replace("]", ")").replace(":", ";")
        action = ("_kestrane_cli_logs" if "--log" in option["Names"] else "(" + " ".join(option["Choices"]) + ")" if option["Choices"]
                  else "_files" if option["Takes"] in FREE else " ")
        value = f":{option['Takes'].lower()}:{action}" if option["Takes"] else ""
        return " ".join(quoted(f"{name}[{text}]{value}") for name in option["Names"])

    def verbs(subs):
        return "verbs=(" + " ".join(quoted(f"{sub['Name']}:{sub['Description']}") for sub in subs) + "); " if subs else ""
    cases = "".join(f"    {quoted(words)}) {verbs(subs)}_arguments {' '.join(filter(None, map(argument, own)))} "
                    + ("'*:verb:{_describe verb verbs}'" if subs else "'*:file:_files'") + " ;;\n" for words, own, subs in called(syntax))
    known = "|".join(quoted(" ".join(words)) for words, _ in each_verb(syntax))
    return f"""#compdef kestrane-cli
# Completion of kestrane-cli for zsh. Made from the program's own parser.
_kestrane_cli_logs() {{
    local word keys
    for word in ${{(Q)words[2,-1]}}; do
        [[ -f $word ]] && keys=(${{(f)"$($words[1] {KEYS})"}}) && compadd -a keys
    done
}}
_kestrane_cli() {{
    local verb word i
    local -a verbs
    for ((i = 2; i < CURRENT; ++i)); do
        word=$words[i]
        case "${{verb:+$verb }}$word" in
        {known}) verb="${{verb:+$verb }}$word" ;;
        *) case "$word" in {'|'.join(values_of(syntax))}) ((++i)) ;; esac ;;
        esac
    done
    case "$verb" in
{cases}    esac
}}
_kestrane_cli "$@"
"""


def fish(syntax):
    known = " ".join(quoted(" ".join(words)) for words, _ in each_verb(syntax))
    lines = [f"""# Completion of kestrane-cli for fish. Made from the program's own parser.
function __kestrane_cli_logs
    for word in (commandline -opc)
        test -f "$word"; and kestrane-cli {KEYS}
    end
end
function __kestrane_cli_called # whether this verb is called, and none of its own
    set -l verb
    set -l before
    for word in (commandline -opc)[2..-1]
        if contains -- "$before" {' '.join(values_of(syntax))}
            set word '' # its value
        else if contains -- (string join -- ' ' $verb $word) {known}
            set -a verb $word
        end
        set before $word
    end
    test "$verb" = "$argv"
end"""]
    for words, own, subs in called(syntax):
        begin = f"complete -c kestrane-cli -n {quoted('__kestrane_cli_called ' + words)}"
        lines += [f"{begin} -f -a {sub['Name']} -d {quoted(sub['Description'])}" for sub in subs]
        for option in own:
            names = " ".join(f"-l {name[2:]}" if name.startswith("--") else f"-s {name[1:]}" for name in option["Names"])
            value = ""
            if option["Takes"]:
                value = (" -x -a '(__kestrane_cli_logs)'" if "--log" in option["Names"]
                         else f" -x -a {quoted(' '.join(option['Choices']))}" if option["Choices"]
                         else " -r" if option["Takes"] in FREE else " -x")
            if names:
                lines.append(f"{begin} {names}{value} -d {quoted(option['Description'])}")
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

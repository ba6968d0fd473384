#include "cli/CommandLine.h"

#include "cli/Nearest.h"
#include "cli/WholeNumber.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

namespace kestrane {

namespace {

// What is wrong with a separator: letters, digits, blanks and longer texts would change figures or dates.
std::string checkSeparator(const std::string& text) {
    std::size_t end = 0;
    const bool isOne = !text.empty() && isValidUtf8(text) && (nextCodePoint(text, end), end == text.size());
    const bool isMark = isOne && (end > 1 || std::ispunct(static_cast<unsigned char>(text.front())) != 0);
    return isMark ? "" : "one character that is no letter, digit or blank";
}

std::string checkDecimalSeparator(const std::string& text) {
    return text == "+" || text == "-" ? "one character that is no sign" : checkSeparator(text);
}

void addGlobals(CLI::App& app, GlobalOptions& globals) {
    app.add_option("--company", globals.company, "company name of the version data, which chooses the brand");
    app.add_option("--settings", globals.settingsFile, "the settings store: this INI file");
    app.add_option("--decimal-separator", globals.decimalSeparator, "in place of the locale's")
        ->check(checkDecimalSeparator);
    app.add_option("--date-separator", globals.dateSeparator, "in place of the locale's")->check(checkSeparator);
    app.add_option("--answer", globals.answer, "the button pressed on every question")
        ->check(CLI::IsMember({"yes", "no", "ok", "cancel", "retry"}));
    app.add_flag("--quiet", globals.isQuiet, "no progress on standard error");
    app.add_option("--errors", globals.errors, "messages on standard error as text, or each as JSON on a line")
        ->check(CLI::IsMember({"text", "json"}));
}

// Puts the digits of a whole number as the parser is to read them. Returns what is wrong with a text that is none.
std::string asWholeNumber(std::string& text) {
    const auto number = wholeNumber(text);
    if (!number) return "'" + text + "' is no whole number, or too large";
    text = std::to_string(*number);
    return {};
}

// An empty value, such as a script's unset variable gives, would count as none: a result would not be saved, or every
// port would be asked. Only free texts may be empty. The parser itself would read "010" as 8 and "0x10" as 16.
void checkValues(CLI::App& app) {
    constexpr std::string_view kFreeTexts[] = {"--company", "--reason"};
    for (CLI::Option* option : app.get_options()) {
        const std::string type = option->get_type_name();
        if (type.starts_with("INT") || type.starts_with("ENUM")) option->transform(CLI::Validator(asWholeNumber, ""));
        const bool takesValue = !option->get_positional() && option->get_items_expected_min() > 0;
        if (!takesValue || std::ranges::find(kFreeTexts, option->get_name()) != std::end(kFreeTexts)) continue;
        option->check([](const std::string& value) { return value.empty() ? "a value is needed" : ""; });
    }
    for (CLI::App* sub : app.get_subcommands(nullptr))
        checkValues(*sub);
}

// The verb that was called, or its own verb when it has some; the program itself when no verb was called.
const CLI::App& calledVerb(const CLI::App& app) {
    const auto called = app.get_subcommands();
    return called.empty() ? app : calledVerb(*called.front());
}

std::string hintOfOption(const CLI::App& app, const CLI::App& verb, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    std::vector<std::string> names;
    for (const CLI::App* owner : {&verb, &app})
        for (const CLI::Option* option : owner->get_options())
            if (!option->get_positional()) names.push_back(option->get_name());
    for (const CLI::App* group : verb.get_subcommands(nullptr))
        for (const CLI::Option* option : group->get_options())
            if (group->get_name().empty()) names.push_back(option->get_name());
    return "no option '" + name + "'" + meant(name, names);
}

std::string hintOfVerb(const CLI::App& verb, const std::string& word) {
    std::vector<std::string> names;
    for (const CLI::App* sub : verb.get_subcommands(nullptr))
        if (!sub->get_name().empty()) names.push_back(sub->get_name());
    return "no verb '" + word + "'" + meant(word, names);
}

} // namespace

void declare(CLI::App& app, Call& call) {
    app.set_version_flag("--version", "kestrane-cli " KESTRANE_VERSION_TEXT);
    app.allow_windows_style_options(false); // a word that begins with "/" is a file, on every system
    app.require_subcommand(1);
    app.fallthrough();
    addGlobals(app, call.globals);
    for (const auto verbs :
         {documentVerbs(), viewVerbs(), analysisVerbs(), protectionVerbs(), assessmentVerbs(), reportVerbs(),
          exportVerbs(), downloadVerbs(), watchVerbs(), schemaVerbs(), syntaxVerbs()}) {
        for (const Verb& verb : verbs) {
            CLI::App* sub = app.add_subcommand(verb.name, verb.description);
            sub->callback([&call, &verb, runs = verb.prepare(*sub)] {
                call.run = runs;
                call.needsLoop = verb.needsLoop;
            });
        }
    }
    checkValues(app);
}

std::string hintOf(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App& verb = calledVerb(app);
    for (const std::string& word : app.remaining(true)) {
        if (word.size() > 1 && word.front() == '-') return hintOfOption(app, verb, word);
        if (verb.get_require_subcommand_min() > 0) return hintOfVerb(verb, word);
    }
    return error.what();
}

bool asksForJsonErrors(const std::vector<std::string>& words) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--errors=json" || (words[i] == "--errors" && i + 1 < words.size() && words[i + 1] == "json"))
            return true;
    }
    return false;
}

std::vector<std::string> withEmptyValues(const std::vector<std::string>& words) {
    std::vector<std::string> split;
    bool areFiles = false; // behind "--"
    for (const std::string& word : words) {
        areFiles = areFiles || word == "--";
        const bool isEmpty = !areFiles && word.starts_with("--") && word.find('=') == word.size() - 1;
        split.push_back(isEmpty ? word.substr(0, word.size() - 1) : word);
        if (isEmpty) split.emplace_back();
    }
    return split;
}

} // namespace kestrane

#include "cli/Verbs.h"

namespace kestrane {

namespace {

// The words that an option accepts when its type lists them, as in "TEXT:{csv,xlsx,ndjson}"; else an empty array.
Json choicesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t from = type.find('{');
    const std::size_t to = type.find('}', from);
    if (from == std::string::npos || to == std::string::npos) return Json::array();
    return CLI::detail::split(type.substr(from + 1, to - from - 1), ',');
}

std::string placeholderOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(':'));
}

void addOptions(const CLI::App& app, Json& options) {
    for (const CLI::Option* option : app.get_options()) {
        // The help option of an option group is that of its verb.
        if (app.get_name().empty() && option == app.get_help_ptr()) continue;
        Json names = Json::array();
        for (const std::string& name : option->get_snames())
            names.push_back("-" + name);
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
        options.push_back(
            {{"Names", names},
             {"Positional", option->get_positional() ? Json(option->get_name(true)) : Json(nullptr)},
             {"Takes", option->get_items_expected_max() == 0 ? Json(nullptr) : Json(placeholderOf(*option))},
             {"Several", option->get_items_expected_max() > 1},
             {"Required", option->get_required()},
             {"Choices", choicesOf(*option)},
             {"Description", option->get_description()}});
    }
}

Json syntaxOf(const CLI::App& app) {
    Json options = Json::array();
    Json verbs = Json::array();
    addOptions(app, options);
    for (const CLI::App* sub : app.get_subcommands(nullptr)) {
        if (sub->get_name().empty()) {
            addOptions(*sub, options); // an option group
        } else if (!sub->get_group().empty()) {
            verbs.push_back(syntaxOf(*sub));
        }
    }
    return {{"Name", app.get_name()}, {"Description", app.get_description()}, {"Options", options}, {"Verbs", verbs}};
}

RunVerb syntaxVerb(CLI::App& verb) {
    verb.group(""); // hidden: the build makes manual pages and completions from it
    const CLI::App* all = verb.get_parent();
    return [all](Program& program) { return program.print(syntaxOf(*all)); };
}

constexpr Verb kVerbs[] = {{"syntax", "print all verbs and options", syntaxVerb}};

} // namespace

std::span<const Verb> syntaxVerbs() {
    return kVerbs;
}

} // namespace kestrane

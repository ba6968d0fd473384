#include "cli/Nearest.h"
#include "cli/Schemas.h"
#include "cli/Verbs.h"

#include <algorithm>
#include <memory>

namespace kestrane {

namespace {

constexpr std::string_view kDefinitions = "definitions"; // contains what the schemas have in common
constexpr std::string_view kReference = "#/$defs/";

Json embedded(std::string_view name) {
    const auto files = embeddedSchemas();
    const auto file = std::find_if(files.begin(), files.end(), [&](const auto& item) { return item.Name == name; });
    return file == files.end() ? Json(nullptr) : Json::parse(file->Text);
}

// Adds the definitions that a schema refers to, and those that they refer to.
void addReferred(const Json& schema, Json& referred, const Json& definitions) {
    if (!schema.is_structured()) return;
    for (const auto& [key, value] : schema.items()) {
        if (key != "$ref" || !value.is_string()) {
            addReferred(value, referred, definitions);
            continue;
        }
        const std::string name = value.get<std::string>().substr(kReference.size());
        if (referred.contains(name)) continue;
        referred[name] = definitions.at(name);
        addReferred(definitions.at(name), referred, definitions);
    }
}

// The schema of a verb, complete without other files. Null for a verb that prints no JSON and for a word that is no
// verb.
Json schemaOf(const std::string& name) {
    Json own = name == kDefinitions ? Json(nullptr) : embedded(name);
    if (own.is_null()) return own;
    Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"}};
    schema.update(own);
    Json referred = Json::object();
    addReferred(own, referred, embedded(kDefinitions));
    if (!referred.empty()) schema["$defs"] = referred;
    return schema;
}

int schema(Program& program, const std::vector<std::string>& words) {
    if (words.empty()) {
        Json all = Json::object();
        for (const EmbeddedSchema& file : embeddedSchemas())
            if (file.Name != kDefinitions) all[std::string(file.Name)] = schemaOf(std::string(file.Name));
        return program.print(all);
    }
    const std::string name = CLI::detail::join(words, "-");
    const Json found = schemaOf(name);
    if (!found.is_null()) return program.print(found);
    std::vector<std::string> names;
    for (const EmbeddedSchema& file : embeddedSchemas())
        if (file.Name != kDefinitions) names.emplace_back(file.Name);
    throw WrongWords("no verb '" + CLI::detail::join(words, " ") + "' that prints JSON" + meant(name, names));
}

RunVerb schemaVerb(CLI::App& verb) {
    const auto words = std::make_shared<std::vector<std::string>>();
    verb.add_option("VERB", *words, "whose output, such as show or protectors list; without it, all")
        ->expected(0, CLI::detail::expected_max_vector_size);
    return [words](Program& program) { return schema(program, *words); };
}

constexpr Verb kVerbs[] = {{"schema", "print the JSON Schema of a verb's output", schemaVerb}};

} // namespace

std::span<const Verb> schemaVerbs() {
    return kVerbs;
}

} // namespace kestrane

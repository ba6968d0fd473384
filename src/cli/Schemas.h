// The files of the folder schemas, embedded in the program: JSON Schemas (2020-12) of what verbs print, and their
// common definitions.
#pragma once

#include <span>
#include <string_view>

namespace kestrane {

struct EmbeddedSchema {
    std::string_view Name; // of the file without ".json": the words of the verb joined by "-"
    std::string_view Text;
};

std::span<const EmbeddedSchema> embeddedSchemas(); // ordered by name

} // namespace kestrane

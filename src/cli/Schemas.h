// The files of the folder schemas, embedded: JSON Schemas (2020-12) of what verbs print, and their common definitions.
#pragma once

#include <span>
#include <string_view>

namespace kestrane {

struct EmbeddedSchema {
    std::string_view Name; // of the file without ".json": the words of the verb with "-" between
    std::string_view Text;
};

std::span<const EmbeddedSchema> embeddedSchemas(); // by name

} // namespace kestrane

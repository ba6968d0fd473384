// Prints the text table as JSON, for make_translations.py: of each text its number, its words, and whether it is to be
// translated.
#include "resources/TextTable.h"

#include <iostream>

namespace {

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        if (c == '\n') {
            result += "\\n";
        } else if (c == '\r') {
            result += "\\r";
        } else {
            result += c;
        }
    }
    return result + '"';
}

} // namespace

int main() {
    const char* separator = "[";
    for (const auto& [id, text] : kestrane::TextTable()) {
        const bool isTranslated = kestrane::UseOf(id) != kestrane::TextUse::Data;
        std::cout << separator << "\n{\"id\": " << static_cast<int>(id) << ", \"text\": " << quoted(text)
                  << ", \"translate\": " << (isTranslated ? "true" : "false") << '}';
        separator = ",";
    }
    std::cout << "\n]\n";
    return std::cout ? 0 : 1;
}

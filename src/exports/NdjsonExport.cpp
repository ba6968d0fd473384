#include "exports/Export.h"

namespace kestrane {

namespace {

std::string jsonText(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted.append({'\\', c});
        } else if (code < ' ') {
            quoted.append("\\u00").append({kDigits[code >> 4U], kDigits[code & 15U]});
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

} // namespace

bool writeNdjson(const ExportTable& table, const FileSink& sink, const ExportProgress& progress) {
    std::vector<std::string> members; // with the characters that precede each value
    for (const std::string& name : table.columns())
        members.push_back((members.empty() ? "{" : ",") + jsonText(name) + ':');
    std::string line;
    const auto write = [&](std::span<const ExportCell> cells) {
        line.clear();
        for (std::size_t i = 0; i < cells.size(); ++i) {
            line += members[i];
            if (const auto* text = std::get_if<std::string>(&cells[i])) {
                line += jsonText(*text);
            } else if (const auto* number = std::get_if<double>(&cells[i])) {
                line += numberText(*number);
            } else {
                line += "null";
            }
        }
        line += "}\n";
        sink(line);
    };
    return table.forEachLine(write, progress);
}

} // namespace kestrane

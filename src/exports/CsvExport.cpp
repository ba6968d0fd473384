#include "exports/Export.h"

namespace kestrane {

namespace {

// The first characters by which a spreadsheet takes a text for a formula.
constexpr std::string_view kComputed = "=+-@\t\r";

std::string csvText(const std::string& text) {
    const bool isComputed = !text.empty() && kComputed.find(text.front()) != std::string_view::npos;
    const bool needsQuotes = text.find_first_of(",\"\r\n") != std::string::npos;
    if (!needsQuotes) return (isComputed ? "'" : "") + text;
    std::string quoted = isComputed ? "\"'" : "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

} // namespace

bool writeCsv(const ExportTable& table, const FileSink& sink, const ExportProgress& progress) {
    std::string line;
    for (const std::string& name : table.columns())
        line.append(line.empty() ? "" : ",").append(csvText(name));
    sink(line + '\n');
    const auto write = [&](std::span<const ExportCell> cells) {
        line.clear();
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (i > 0) line += ',';
            if (const auto* text = std::get_if<std::string>(&cells[i])) line += csvText(*text);
            if (const auto* number = std::get_if<double>(&cells[i])) line += numberText(*number);
        }
        line += '\n';
        sink(line);
    };
    return table.forEachLine(write, progress);
}

} // namespace kestrane

#include "exports/Export.h"

namespace kestrane {

namespace {

// The first characters by which a spreadsheet takes a text for a formula.
constexpr std::string_view kComputed = "=+-@\t\r";

// The cell in quotes where it needs them.
std::string csvCell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string csvText(const std::string& text) {
    const bool isComputed = !text.empty() && kComputed.find(text.front()) != std::string_view::npos;
    return csvCell((isComputed ? "'" : "") + text);
}

// Whether a cell is a figure, which no spreadsheet takes for a formula.
bool isFigure(std::string_view cell) {
    if (cell.starts_with('-') || cell.starts_with('+')) cell.remove_prefix(1);
    return !cell.empty() && cell.find_first_not_of("0123456789.,") == std::string_view::npos;
}

} // namespace

std::string csvOf(std::string_view copied) {
    std::string csv;
    std::string cell;
    const auto endCell = [&] {
        csv += isFigure(cell) ? csvCell(cell) : csvText(cell);
        cell.clear();
    };
    for (const char c : copied) {
        if (c == '\t' || c == '\n') {
            endCell();
            csv += c == '\t' ? ',' : '\n';
        } else if (c != '\r') {
            cell += c;
        }
    }
    if (!cell.empty()) endCell();
    return csv;
}

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

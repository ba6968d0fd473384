#include "exports/Export.h"

#include <array>
#include <charconv>

namespace kestrane {

std::optional<ExportFormat> exportFormatOf(std::string_view word) {
    if (word == "csv") return ExportFormat::Csv;
    if (word == "xlsx") return ExportFormat::Xlsx;
    if (word == "ndjson") return ExportFormat::Ndjson;
    return std::nullopt;
}

void writeExport(const ExportTable& table, ExportFormat format, const std::string& path) {
    writeFileAtomically(path, [&](const FileSink& sink) {
        switch (format) {
        case ExportFormat::Csv:
            return writeCsv(table, sink);
        case ExportFormat::Xlsx:
            return writeXlsx(table, sink);
        case ExportFormat::Ndjson:
            return writeNdjson(table, sink);
        }
    });
}

std::string numberText(double number) {
    std::array<char, 64> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

} // namespace kestrane

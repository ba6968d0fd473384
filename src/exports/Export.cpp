#include "exports/Export.h"

#include "platform/OutOfMemory.h"

#include <array>
#include <charconv>

namespace kestrane {

namespace {

constexpr std::int64_t kLinesBetween = 1000; // two questions whether to go on

struct Ended {}; // leaves the file as it was

} // namespace

std::string_view exportWord(ExportFormat format) {
    constexpr std::string_view kWords[] = {"csv", "xlsx", "ndjson"};
    return kWords[static_cast<std::size_t>(format)];
}

std::optional<ExportFormat> exportFormatOf(std::string_view word) {
    for (const ExportFormat format : kExportFormats)
        if (exportWord(format) == word) return format;
    return std::nullopt;
}

bool writeExport(const ExportTable& table, ExportFormat format, const std::string& path,
                 const ExportProgress& progress) {
    const auto goesOn = [&](std::int64_t done) { return !progress || done % kLinesBetween != 0 || progress(done); };
    const auto write = [&](const FileSink& sink) {
        switch (format) {
        case ExportFormat::Csv:
            return writeCsv(table, sink, goesOn);
        case ExportFormat::Xlsx:
            return writeXlsx(table, sink, goesOn);
        case ExportFormat::Ndjson:
            return writeNdjson(table, sink, goesOn);
        }
        return false;
    };
    try {
        refusingWithoutMemory([&] {
            writeFileAtomically(path, [&](const FileSink& sink) {
                if (!write(sink)) throw Ended();
            });
        });
    } catch (const Ended&) {
        return false;
    }
    return true;
}

std::string numberText(double number) {
    std::array<char, 64> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

} // namespace kestrane

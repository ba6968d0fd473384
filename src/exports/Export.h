// An export table as a file. Texts that a spreadsheet would take for a formula (those that begin with = + - @) are
// written so that it does not.
#pragma once

#include "exports/ExportTable.h"
#include "platform/AtomicFile.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrane {

enum class ExportFormat { Csv, Xlsx, Ndjson };

constexpr ExportFormat kExportFormats[] = {ExportFormat::Csv, ExportFormat::Xlsx, ExportFormat::Ndjson};

// "csv", "xlsx" or "ndjson": the word for a format and the ending of its files; and back, nothing for any other word.
std::string_view exportWord(ExportFormat format);
std::optional<ExportFormat> exportFormatOf(std::string_view word);

// Asked now and then whether to go on, with the number of lines that are done.
using ExportProgress = std::function<bool(std::int64_t done)>;

// Writes the whole table, or nothing when the progress ended it; returns false then. Raises the system's error.
bool writeExport(const ExportTable& table, ExportFormat format, const std::string& path,
                 const ExportProgress& progress = {});

// A table as text (tabs between cells, CR LF behind lines), as it is copied, as CSV. Figures stay as they are written,
// with the user's decimal separator.
std::string csvOf(std::string_view copied);

// The writers of the formats. They return false when the progress, which is asked before each line, ended them.

// CSV like RFC 4180 in UTF-8, with LF behind lines, and with the names of the columns in the first line. A text that
// a spreadsheet could take for a formula gets an apostrophe in front.
bool writeCsv(const ExportTable& table, const FileSink& sink, const ExportProgress& progress = {});

// A JSON object on each line, with all columns.
bool writeNdjson(const ExportTable& table, const FileSink& sink, const ExportProgress& progress = {});

// A workbook whose sheets have at most rowsOfSheet rows, including the names of the columns at the top of each; the
// remaining rows go to further sheets. It takes little memory, but needs space for temporary files.
constexpr std::int64_t kRowsOfSheet = 1'048'576;
bool writeXlsx(const ExportTable& table, const FileSink& sink, const ExportProgress& progress = {},
               std::int64_t rowsOfSheet = kRowsOfSheet);

// The shortest text that reads back as the same number.
std::string numberText(double number);

} // namespace kestrane

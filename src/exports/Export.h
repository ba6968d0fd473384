// An export table as a file. Texts that a spreadsheet would compute (those that begin with = + - @) are written so that
// none does.
#pragma once

#include "exports/ExportTable.h"
#include "platform/AtomicFile.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrane {

enum class ExportFormat { Csv, Xlsx, Ndjson };

// "csv", "xlsx" or "ndjson"; nothing for another word.
std::optional<ExportFormat> exportFormatOf(std::string_view word);

// Writes the table, all or nothing. Raises the system's error.
void writeExport(const ExportTable& table, ExportFormat format, const std::string& path);

// RFC 4180 in UTF-8, the names of the columns first; a text that could be computed has an apostrophe in front.
void writeCsv(const ExportTable& table, const FileSink& sink);

// A JSON object a line, with all columns.
void writeNdjson(const ExportTable& table, const FileSink& sink);

// A workbook whose sheets have at most so many rows, the names of the columns first on each; what is more goes to
// further sheets. Takes no memory to speak of, but room in the folder for temporary files.
constexpr std::int64_t kRowsOfSheet = 1'048'576;
void writeXlsx(const ExportTable& table, const FileSink& sink, std::int64_t rowsOfSheet = kRowsOfSheet);

// The shortest text that reads back to the same number.
std::string numberText(double number);

} // namespace kestrane

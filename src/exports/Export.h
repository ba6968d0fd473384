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

// The format for "csv", "xlsx" or "ndjson"; nothing for any other word.
std::optional<ExportFormat> exportFormatOf(std::string_view word);

// Writes the whole table or nothing. Raises the system's error.
void writeExport(const ExportTable& table, ExportFormat format, const std::string& path);

// CSV by RFC 4180 in UTF-8, with the names of the columns in the first line. A text that a spreadsheet could take for a
// formula gets an apostrophe in front.
void writeCsv(const ExportTable& table, const FileSink& sink);

// A JSON object on each line, with all columns.
void writeNdjson(const ExportTable& table, const FileSink& sink);

// A workbook whose sheets have at most rowsOfSheet rows, including the names of the columns at the top of each; the
// remaining rows go to further sheets. It takes little memory, but needs space for temporary files.
constexpr std::int64_t kRowsOfSheet = 1'048'576;
void writeXlsx(const ExportTable& table, const FileSink& sink, std::int64_t rowsOfSheet = kRowsOfSheet);

// The shortest text that reads back as the same number.
std::string numberText(double number);

} // namespace kestrane

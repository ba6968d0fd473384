// Writes the XML data file: one line of plain ASCII that any XML parser can read. A default value is not written at
// all.
#pragma once

#include "model/clsFile.h"
#include "model/clsStringBuffer.h"

#include <string>

namespace kestrane {

// The text of the document, with or without the rows, peaks and selections of its logs.
std::string DocumentText(const clsFile& file, bool blnIncludeIntervals);

DocumentMark MarkOf(const clsFile& file);

void SetTagData(const clsFile& file, bool blnIncludeIntervals, clsStringBuffer& out);
void SetTagData(const clsInsData& data, bool blnIncludeIntervals, clsStringBuffer& out);
void SetTagData(const clsLog& log, bool blnIncludeIntervals, clsStringBuffer& out);
void SetTagData(const clsLogInterval& row, bool bChannelBOn, const Locale& locale, clsStringBuffer& out);
void SetTagData(const clsPeak& peak, clsStringBuffer& out);
void SetTagData(const clsDoseLogSample& sample, clsStringBuffer& out);
void SetTagData(const clsLogOptions& options, clsStringBuffer& out);

// A text as it is written to the file. A character past 127 becomes a character reference, and a character that XML
// does not allow becomes a blank.
std::string escapeText(std::string text);

} // namespace kestrane

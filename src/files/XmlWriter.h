// Writes the XML data file: one line of plain ASCII that any XML parser reads. A default value takes no space at all.
#pragma once

#include "model/clsFile.h"
#include "model/clsStringBuffer.h"

#include <string>

namespace kestrane {

// The document's text, with or without the rows, peaks and selections of its logs.
std::string DocumentText(const clsFile& file, bool blnIncludeIntervals);

DocumentMark MarkOf(const clsFile& file);

void SetTagData(const clsFile& file, bool blnIncludeIntervals, clsStringBuffer& out);
void SetTagData(const clsInsData& data, bool blnIncludeIntervals, clsStringBuffer& out);
void SetTagData(const clsLog& log, bool blnIncludeIntervals, clsStringBuffer& out);
void SetTagData(const clsLogInterval& row, bool bChannelBOn, const Locale& locale, clsStringBuffer& out);
void SetTagData(const clsPeak& peak, clsStringBuffer& out);
void SetTagData(const clsDoseLogSample& sample, clsStringBuffer& out);
void SetTagData(const clsLogOptions& options, clsStringBuffer& out);

// A text as it stands in the file. What is past 127 becomes a character reference, what may not stand in XML a blank.
std::string escapeText(std::string text);

} // namespace kestrane

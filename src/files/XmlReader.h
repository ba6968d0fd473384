// Reads XML data files into documents: the header figures of every log at once; the rows are left to background
// loading.
#pragma once

#include "files/XmlDocument.h"
#include "model/clsFile.h"

#include <memory>
#include <string>

namespace kestrane {

// Adds what the document contains to file, except collections without logs. Raises what converting values raises (an
// overflow, a time without seconds).
void GetData(clsFile& file, const std::shared_ptr<XmlDocument>& document);

// Turns a text of a data file back into what it was before it was escaped for writing.
std::string unescapeText(std::string text);

} // namespace kestrane

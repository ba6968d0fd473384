// Reads XML data files into documents: the header figures of every log at once, the rows left for the background.
#pragma once

#include "files/XmlDocument.h"
#include "model/clsFile.h"

#include <memory>
#include <string>

namespace kestrane {

// Adds what the document holds to file. A collection without logs is left out. Raises what the values raise (overflow,
// a time without seconds).
void GetData(clsFile& file, const std::shared_ptr<XmlDocument>& document);

// The text of a data file as it was before it was escaped for writing.
std::string unescapeText(std::string text);

} // namespace kestrane

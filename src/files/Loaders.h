// The loaders of the program, which of them reads a file, and saving. Which kind of file it is, is settled by trying:
// the extension sets the first attempt only.
#pragma once

#include "model/clsFile.h"
#include "platform/Files.h"

#include <functional>
#include <memory>
#include <string>

namespace kestrane {

// How the bytes of a file are fetched; raises the system's error.
using ReadBytes = std::function<std::shared_ptr<FileBytes>(const std::string& path)>;

// Reads the file once, and its content by the loaders in the order of its extension. A later loader counts only when it
// brings data. False when all decline: message is that of the first loader of the order, and the document is empty.
// Raises nothing.
bool LoadDocument(clsFile& file, std::string& message, const ReadBytes& read = readFile);

// Writes the XML data file to FileName, atomically; then the document is unchanged and of the current format. Raises
// the system's error with all of that as it was.
void FileSave(clsFile& file);

// Whether the document differs from what was last loaded or saved; sticks once true.
bool IsChanged(clsFile& file);

} // namespace kestrane

// The loaders of the program, the choice of the one that reads a file, and saving. The kind of a file is found by
// trying: its extension only decides which loader is tried first.
#pragma once

#include "model/clsFile.h"
#include "platform/AtomicFile.h"
#include "platform/Files.h"

#include <functional>
#include <memory>
#include <string>

namespace kestrane {

// Fetches the bytes of a file; raises the system's error.
using ReadBytes = std::function<std::shared_ptr<FileBytes>(const std::string& path)>;

// Reads the file once and tries the loaders in the order that belongs to its extension. A loader after the first counts
// only when it brings data; the first counts in any case, which is meant. Returns false when all loaders decline: then
// message is that of the first loader and the document is empty. Reads the history beside the file, which TakeUpHistory
// gives to the document. Raises nothing.
bool LoadDocument(
    clsFile& file, std::string& message,
    const ReadBytes& read = [](const std::string& path) { return readFile(path); });

// Whether all rows of the document are in memory, so that what is written of it is whole.
bool AreRowsRead(const clsFile& file);

// Passes the text of the XML data file to a sink, piece by piece. May run on any thread while nobody changes the
// document.
void WriteDocument(const clsFile& file, const FileSink& sink);

// Writes the XML data file to FileName, atomically, and then its history beside it; after that the document counts as
// unchanged and as being in the current format, and OnDisk is of the new file. Raises the system's error and then
// leaves all of this as it was; raises kErrorApplication when rows have not been read, which saving would lose. Returns
// why the history was not written; empty when it was, and when there is none to be written: for a pipe, and when it is
// not wanted.
std::string FileSave(clsFile& file);

// Whether the document differs from what was last loaded or saved. Once true, it stays true until a save.
bool IsChanged(clsFile& file);

} // namespace kestrane

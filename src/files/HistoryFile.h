// The file beside a data file that keeps the history of its document: a line of JSON for each change. Lines are only
// ever added. A document that takes the place of another begins its history with a head line of its own, and the lines
// in front of that stay in the file.
#pragma once

#include "model/clsFile.h"

#include <string>
#include <vector>

namespace kestrane {

// The history beside a data file; empty when there is none. Raises nothing: Fault says why a history cannot be used.
DocumentHistory ReadHistory(const Session& session, const std::string& dataFile);

// Notices that the data file is no longer what the history says: when its hash is another one, that becomes a line of
// the history. Returns whether it has become one now.
bool NoticeChange(clsFile& file, const std::string& sha256);

// Gives the logs of a document that has just been loaded the remarks of its history. They are right only if the file is
// the one that was saved last, which CheckHistory tells. No figure that is computed while a document is opened depends
// on them.
void TakeUpHistory(clsFile& file);

// To be called with the hash of the file once that is there. When the file is not the one that was saved last, takes
// the remarks back from the logs, makes that a line of the history, and returns true.
bool CheckHistory(clsFile& file, const std::string& sha256);

// Writes the history of a copy of a document to the file beside it, whole: the lines, and one that says that the copy,
// whose hash is sha256, has the remarks of the document. May run on any thread. Raises the system's error.
void WriteHistoryOfCopy(const std::string& copy, const clsFile& document, const std::vector<HistoryLine>& lines,
                        const std::string& sha256);

// Adds the lines that are not there yet to the history beside the document's file, and one that says what was saved.
// before is the hash of what the save has replaced; empty for none. To be called after the document has been saved.
// Raises the system's error, or kErrorApplication with the reason why the history
// cannot be used.
void AppendHistory(clsFile& file, const std::string& before);

} // namespace kestrane

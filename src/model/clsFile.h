// The document: one data file that is open, holding any number of instrument data collections. Loading, the document
// text and saving are in files/. Owned by the session's OpenFiles once it has been placed there.
#pragma once

#include "model/DocumentHistory.h"
#include "model/UndoStack.h"
#include "model/clsInsData.h"
#include "platform/FileStamp.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kestrane {

// Tells two texts of a document apart without keeping them: a hash of the display options of its logs, and one of
// everything else except the intervals.
struct DocumentMark {
    std::uint64_t rest = 0, display = 0;

    bool operator==(const DocumentMark&) const = default;
};

class FileLock; // platform/

class clsFile {
public:
    clsFile(Session& session, std::string fileName);

    Session& session() const { return session_; }

    std::int16_t FileId = 0; // identity within OpenFiles; 0 until it has been given one
    bool Expanded = false;
    std::string FileName; // full path; a bare name for a download that has never been saved
    std::vector<std::unique_ptr<clsInsData>> InstrumentDatas; // in display order
    bool ToBeSaved = false; // the user's answer to the save question, kept for the second pass of closing
    bool OldStyle = false;  // the content came from a format that cannot be written back
    bool Changed = false;   // once set, only a save clears it
    DocumentMark SavedMark; // of the document as it was last loaded or saved
    UndoStack Edits;        // what can be undone and done again
    DocumentHistory History;
    FileStamp OnDisk; // of the file as it was last read or written; not known where nobody asks for it
    std::shared_ptr<BackgroundWork> Hashing; // makes the hash of the file, which OnDisk and the history wait for
    bool ReadOnly = false; // another running program has the file open, so that it is saved under other names only
    std::shared_ptr<FileLock> Held; // tells other running programs that the file is open here

    // For those who remember the document: a weak pointer to this is empty once the document is closed. FileId is then
    // given to another one.
    const std::shared_ptr<clsFile> Life{this, [](clsFile*) {}};

    bool JustAcquired() const { return FileName == ShortenedFileName(); } // FileName holds no path

    bool IsOldStyle() const { return OldStyle; }

    // Whether the document was never saved, is marked as changed or was edited since. This is cheap, but it may be true
    // of a document whose text has come back to what it was.
    bool IsUnsaved() const { return JustAcquired() || Changed || !Edits.isAtSaved(); }

    bool IsBusy() const;                   // whether a log is loading, waiting for it or recalculating, or Hashing
    bool IsInCollection() const;           // whether it is among the session's OpenFiles
    std::string ShortenedFileName() const; // the part behind the last "\" or "/"

    // Renames the file on disk with its history and assigns the name; before the first save it only assigns. A name
    // that begins with "." or holds no path is in the same folder. Raises the system's error and leaves FileName as it
    // was; a file is never replaced (EEXIST), and none is renamed that is open in another running program (EBUSY).
    void RenameFile(const std::string& strNewFileName);

    // Adds a copy of a collection and its logs behind the collection with InsDataId intAfter and behind the new ones
    // (identity 0) that follow it; before the first when intAfter is 0; at the end when no collection has that identity
    // (kAtEnd). With blnCut the copied logs keep their Selected flag, else it is cleared.
    void append(const clsInsData& objInsData, bool blnCut, int intAfter);

    void CopyDoseLogSamples();
    clsInsData* dataById(int insDataId) const;
    clsInsData* dataOfSerial(const std::string& serial) const; // the first one; null for none, and for an empty serial

private:
    Session& session_;
};

// Calls visit(log) for every log of the document, in the order of the tree.
template <class Visit>
void forEachLog(const clsFile& file, Visit&& visit) {
    for (const auto& data : file.InstrumentDatas)
        forEachLog(*data, visit);
}

} // namespace kestrane

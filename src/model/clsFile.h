// The document: one data file that is open, holding any number of instrument data collections. Loading, the document
// text and saving are in files/. Owned by the session's OpenFiles once it has been placed there.
#pragma once

#include "model/UndoStack.h"
#include "model/clsInsData.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kestrane {

// What tells two texts of a document apart without keeping them: a hash of the display options of its logs, and one of
// all else. Intervals are no part of it.
struct DocumentMark {
    std::uint64_t rest = 0, display = 0;

    bool operator==(const DocumentMark&) const = default;
};

class clsFile {
public:
    clsFile(Session& session, std::string fileName);

    Session& session() const { return session_; }

    std::int16_t FileId = 0; // identity within OpenFiles; 0 until the identity pass
    bool Expanded = false;
    std::string FileName; // full path; a bare name for a download that has never been saved
    std::vector<std::unique_ptr<clsInsData>> InstrumentDatas; // in display order
    bool ToBeSaved = false; // the answer to the save question, for the second pass of closing
    bool OldStyle = false;  // the content came from a format that cannot be written back
    bool Changed = false;   // once set, only a save clears it
    DocumentMark SavedMark; // of the document after the last load or save
    UndoStack Edits;        // what can be undone and done again

    bool JustAcquired() const { return FileName == ShortenedFileName(); } // FileName holds no path

    bool IsOldStyle() const { return OldStyle; }

    // Never saved, or marked as changed, or edited since. Costs nothing, and may say so of a document whose text has
    // come back to what it was.
    bool IsUnsaved() const { return JustAcquired() || Changed || !Edits.isAtSaved(); }

    bool IsBusy() const;                   // a log loads, waits for loading or recalculates
    bool IsInCollection() const;           // in the session's OpenFiles
    std::string ShortenedFileName() const; // behind the last "\" or "/"

    // Renames on disk (unless nothing has been saved yet) and assigns. A name that begins with "." or holds no path is
    // taken to lie in the same folder. Raises the system's error with FileName unchanged; an existing file of the new
    // name is never replaced (EEXIST).
    void RenameFile(const std::string& strNewFileName);

    // Adds a copy of a collection, logs included, behind the one with InsDataId intAfter and the new ones behind it;
    // with 0, before the first; at the end when no collection has that identity (kAtEnd). With blnCut the logs stay
    // selected as they were.
    void append(const clsInsData& objInsData, bool blnCut, int intAfter);

    void CopyDoseLogSamples();
    clsInsData* dataById(int insDataId) const;
    clsInsData* dataOfSerial(const std::string& serial) const; // the first; null for none, and for an empty serial

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

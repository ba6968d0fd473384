// Changes of a document that can be undone, and the one place where they become lines of its history. A command that
// changes a log uses editLog; one that adds, removes or moves logs and collections keeps an ArrangementStep. No step
// holds a second copy of rows: a log that was taken out is kept itself, and the copy of a log that was changed shares
// every column that the change did not touch.
#pragma once

#include "explorer/HistoryText.h"
#include "model/Session.h"
#include "resources/TextNames.h"

#include <array>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kestrane {

// Takes a step that has just been done into what can be undone in its document, and into the document's history.
// wasChanged as for UndoStack::record.
void recordStep(clsFile& file, std::unique_ptr<EditStep> step, bool wasChanged);

// Begins the history of a document that has come from an instrument: what was done, and the names of the logs.
void recordDownload(clsFile& file, Text::Id what);

// A line for a recalculation that came with opening the document, when it has changed figures of the log.
void recordRecalculation(clsFile& file, const clsLog& log, const KeptFigures& before);

// Calls change(), which changes a log; when that returns true, the log's state before the change is kept as a step of
// its document. A log of no open document (a zoomed range) is changed without a step. Undoing later restores the whole
// log: figures, rows, selection, exposure rows and display options. While the rows of the log or the hash of its file
// are still to come, the user gets a message and change is not called. Returns what change returned.
bool editLog(clsLog& log, Text::Id title, const std::function<bool()>& change);

// Renames a log or a collection of the document, as a step.
void editLogName(clsFile& file, clsLog& log, const std::string& newName);
void editCollectionName(clsFile& file, clsInsData& data, const std::string& newName);

// Renames the file, also on disk, as a step. Raises what RenameFile raises.
void editFileName(clsFile& file, const std::string& newName);

// The arrangement of the logs and collections of a document. The step is made before a change and recorded after it;
// what the change takes out of the document is passed to keep().
class ArrangementStep : public EditStep {
public:
    ArrangementStep(clsFile& file, Text::Id title);

    void keep(std::unique_ptr<clsLog> log);
    void keep(std::unique_ptr<clsInsData> data); // with its logs

    bool isUnchanged() const; // whether the document is arranged as it was
    void exchange() override;
    void describe(HistoryLine& line) const override; // the logs that went and that came

    std::weak_ptr<clsFile> Marked; // another document that the step has marked as changed
    std::string Source;            // where the logs that came are from; empty for the same document

private:
    struct Place {
        clsInsData* data;
        std::array<std::vector<clsLog*>, 3> logs; // by mode

        bool operator==(const Place&) const = default;
    };

    static std::vector<Place> arrangementOf(const clsFile& file);
    static std::set<const clsLog*> logsOf(const std::vector<Place>& places);
    static std::string namesOf(const std::vector<Place>& places, const std::set<const clsLog*>& without,
                               const std::multiset<std::string>& all);

    clsFile& file_;
    std::vector<Place> kept_;
    std::unordered_map<const clsLog*, std::unique_ptr<clsLog>> logs_; // the logs that are not in the document now
    std::unordered_map<const clsInsData*, std::unique_ptr<clsInsData>> datas_;
};

// The document that Undo and Redo act on: the one into which logs were just merged, pasted or moved, whichever node is
// selected; else that of the selected node; else the last one that has a step to undo or redo. Null when there is none.
clsFile* documentToEdit(const Session& session, std::string_view selectedKey, Direction direction);

// True when there is a step and nothing is loading or recalculating in the document.
bool canExchange(const clsFile* file, Direction direction);

// Undoes the last step of the document, or does it again. A step of two documents is exchanged in both or in neither:
// when the other document has been changed since, the user gets a message. The trees are rebuilt. Returns false when
// nothing was changed.
bool exchangeStep(Session& session, clsFile* file, Direction direction);

// The text of the command, such as "&Undo Delete Log", for a step by its title or for a document; without a step, only
// "&Undo" or "&Redo".
std::string exchangeText(const Session& session, Text::Id title, Direction direction);
std::string exchangeText(const Session& session, const clsFile* file, Direction direction);

} // namespace kestrane

// Changes of a document that can be undone. A command that changes a log goes through editLog; one that adds, removes
// or moves logs and collections keeps an ArrangementStep. No step holds a second copy of rows: a log that was taken out
// is kept itself, and a log that was changed shares every column that the change has left alone.
#pragma once

#include "model/Session.h"
#include "resources/TextNames.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kestrane {

// Lets change() change a log, and when it returns true keeps what the log was before, as a step of its document; a log
// of no open document (a zoomed range) is just changed. What is undone later is the whole log: its figures, rows,
// selection, exposure rows and display options. While the rows of the log are still to come the user is told so and
// change is not called. Returns what change returned.
bool editLog(clsLog& log, Text::Id title, const std::function<bool()>& change);

// Gives an object of the document another name, as a step.
void editName(clsFile& file, std::string& name, const std::string& newName);

// Gives the file another name, on disk too, as a step. Raises what RenameFile raises.
void editFileName(clsFile& file, const std::string& newName);

// Where the logs and collections of a document stand. Made before a change, and recorded behind it; what the change
// takes out of the document is given to the step to keep.
class ArrangementStep : public EditStep {
public:
    ArrangementStep(clsFile& file, Text::Id title);

    void keep(std::unique_ptr<clsLog> log);
    void keep(std::unique_ptr<clsInsData> data); // with its logs

    bool isUnchanged() const; // the document is arranged as it was
    void exchange() override;

    int MarkedFile = 0; // identity of another document that the step has marked as changed; 0: none

private:
    struct Place {
        clsInsData* data;
        std::array<std::vector<clsLog*>, 3> logs; // by mode

        bool operator==(const Place&) const = default;
    };

    static std::vector<Place> arrangementOf(const clsFile& file);

    clsFile& file_;
    std::vector<Place> kept_;
    std::unordered_map<const clsLog*, std::unique_ptr<clsLog>> logs_; // those that do not stand in the document
    std::unordered_map<const clsInsData*, std::unique_ptr<clsInsData>> datas_;
};

// The document that Undo and Redo act on: the one that logs were just merged, pasted or moved into, whatever is
// selected; else that of the selected node, else the last one that has such a step. Null: none.
clsFile* documentToEdit(const Session& session, std::string_view selectedKey, Direction direction);

// There is a step, and nothing loads or recalculates in the document.
bool canExchange(const clsFile* file, Direction direction);

// Undoes the last step of the document, or does it again. A step of two documents happens in both or in neither: where
// the other has gone on since, the user is told. Trees are rebuilt. False when nothing was changed.
bool exchangeStep(Session& session, clsFile* file, Direction direction);

// "&Undo Delete Log"; without a step the bare command.
std::string exchangeText(const Session& session, const clsFile* file, Direction direction);

} // namespace kestrane

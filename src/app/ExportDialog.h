// What File > Export writes, without its dialog: which rows or logs, in which format, with which columns, under which
// name. The choices are remembered for the next time.
#pragma once

#include "exports/Export.h"
#include "model/Session.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace kestrane {

enum class ExportContent { AllRows, FileRows, LogRows, RowsInView, Summary };

// What the explorer window in front shows.
struct ExportSubject {
    std::string Selected;           // the selected node of the tree
    std::string Opened;             // the log on display; empty for none
    const clsLog* InView = nullptr; // the same log, or the part of it that is zoomed to
    RowRange Rows{1, 0};            // the rows of InView that can be seen
};

class ExportDialog {
public:
    // There must be a log in an open file.
    ExportDialog(Session& session, ExportSubject subject);

    std::vector<ExportContent> Contents() const; // those that there is something of

    ExportContent Content() const { return content_; }

    void ChooseContent(ExportContent content); // one of Contents()

    ExportFormat Format() const { return format_; }

    void ChooseFormat(ExportFormat format);

    const ExportTable& Table() const { return table_; } // with all columns

    bool IsTicked(const std::string& column) const { return !leftOut_.contains(column); }

    void Tick(const std::string& column, bool isTicked);
    ExportTable TickedTable() const;

    // The name of the file: a proposal in the folder of the last export until another one is chosen, whose ending then
    // follows the format.
    const std::string& Name() const { return name_; }

    void ChooseName(const std::string& name);

    bool CanExport() const; // there are a name and a column

    // Writes the file, under a name that gets a folder and an ending where it has none, and tells how many lines it
    // has. Asks before it replaces a file. Returns false, after a message where something is wrong, when nothing was
    // written.
    bool Export(const ExportProgress& progress);

private:
    struct Listed {
        std::string Key;
        const clsFile* File;
        const clsInsData* Data;
        const clsLog* Log;
        RowRange Rows;
    };

    std::string folderOfData() const;
    std::vector<Listed> listed(ExportContent content) const;
    void proposeName();
    std::string proposal() const;
    bool mayWrite() const;
    void remember() const;

    Session& session_;
    const ExportSubject subject_;
    ExportContent content_;
    ExportFormat format_ = ExportFormat::Csv;
    std::set<std::string, std::less<>> leftOut_; // columns, also those that this table does not have
    std::vector<Listed> logs_;
    ExportTable table_;
    std::string folder_, name_;
    bool isNamed_ = false; // by the user
};

} // namespace kestrane

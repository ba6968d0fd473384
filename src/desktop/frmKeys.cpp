#include "desktop/frmKeys.h"

#include "desktop/frmPreview.h"
#include "dialogs/CellTableModel.h"
#include "dialogs/Words.h"
#include "platform/desktop/QtClipboard.h"
#include "reports/GridPages.h"
#include "views/CopyData.h"

#include <QBoxLayout>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <algorithm>

namespace kestrane {

namespace {

constexpr QSize kSize(720, 520);

using Cells = std::vector<std::string>;

std::vector<std::string> captions(const Session& session) {
    return {session.LoadText(Text::KeysPlace), session.LoadText(Text::KeysCommand), session.LoadText(Text::KeysKeys)};
}

// The rows in which every word of an entry stands somewhere, in any case.
std::vector<Cells> rowsWith(const std::vector<KeyRow>& rows, const QString& entry) {
    std::vector<Cells> found;
    const QStringList words = entry.split(' ', Qt::SkipEmptyParts);
    for (const KeyRow& row : rows) {
        const QString all = shown(row.Place + ' ' + row.Command + ' ' + row.Keys);
        const auto isIn = [&](const QString& word) { return all.contains(word, Qt::CaseInsensitive); };
        if (std::ranges::all_of(words, isIn)) found.push_back({row.Place, row.Command, row.Keys});
    }
    return found;
}

CellTable tableOf(const Session& session, std::vector<Cells> rows) {
    CellTable table{.Captions = captions(session), .RowCount = rows.size(), .Cell = {}};
    table.Cell = [rows = std::move(rows)](std::size_t row, std::size_t column) { return rows[row][column]; };
    return table;
}

void print(Session& session, const CellTable& table, QWidget* parent) {
    Printers printers;
    PrintProgress progress(session, parent);
    const PageHeading heading{.Title = session.LoadText(Text::KeysTitle), .FileName = {}};
    const auto layOut = [&](const PageMetrics& paper) {
        return std::make_unique<GridPages>(session, heading, PageGrid{table.Captions, table.RowCount, table.Cell},
                                           paper);
    };
    printDocument(session, printers, parent, false, layOut, progress.function());
}

} // namespace

void ShowKeys(Session& session, std::vector<KeyRow> rows, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName("frmKeys");
    dialog.setWindowTitle(loadText(session, Text::KeysTitle));
    auto* const search = new QLineEdit;
    nameControl(*search, "txtSearch", loadPlainText(session, Text::KeysSearch));
    search->setClearButtonEnabled(true);
    auto* const model = new CellTableModel({}, &dialog);
    QTableView* const table = readTable(*model, "tblKeys", dialog.windowTitle());
    CellTable found;
    const auto look = [&] {
        found = tableOf(session, rowsWith(rows, search->text()));
        model->ShowTable(found);
    };
    look();
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    QObject::connect(search, &QLineEdit::textChanged, &dialog, look);
    const auto button = [&](Text::Id text, const char* name) {
        return pushButton(session, text, name, loadPlainText(session, text));
    };
    QPushButton* const cmdCopy = button(Text::CommandCopy, "cmdCopy");
    QPushButton* const cmdPrint = button(Text::CommandPrint, "cmdPrint");
    QPushButton* const cmdClose = button(Text::CloseButton, "cmdClose");
    QObject::connect(cmdCopy, &QPushButton::clicked, &dialog, [&] { QtClipboard().Set(copiedCells(found)); });
    QObject::connect(cmdPrint, &QPushButton::clicked, &dialog, [&] { print(session, found, &dialog); });
    QObject::connect(cmdClose, &QPushButton::clicked, &dialog, &QDialog::reject);
    auto* const above = new QHBoxLayout;
    above->addWidget(labelOf(session, Text::KeysSearch, *search));
    above->addWidget(search, 1);
    auto* const below = new QHBoxLayout;
    below->addWidget(cmdCopy);
    below->addWidget(cmdPrint);
    below->addStretch();
    below->addWidget(cmdClose);
    auto* const column = new QVBoxLayout(&dialog);
    column->addLayout(above);
    column->addWidget(table, 1);
    column->addLayout(below);
    dialog.resize(kSize);
    search->setFocus();
    dialog.exec();
}

} // namespace kestrane

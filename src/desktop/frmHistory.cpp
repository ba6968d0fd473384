#include "desktop/frmHistory.h"

#include "dialogs/DragOffers.h"
#include "dialogs/Words.h"
#include "model/Session.h"
#include "model/SettingsText.h"
#include "platform/desktop/QtClipboard.h"
#include "views/CopyData.h"
#include "views/HistoryTable.h"

#include <QBoxLayout>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>

namespace kestrane {

namespace {

constexpr std::string_view kSection = "History";
constexpr QSize kFirstSize(960, 480);
constexpr int kWidestColumn = 40; // characters; longer texts take several lines

int sideOf(const Session& session, std::string_view key, int usual) {
    constexpr std::int16_t kLeast = 200;
    auto side = static_cast<std::int16_t>(usual);
    try {
        fromSettingsText(session.state->read(kSection, key, settingsText(side)), side);
    } catch (const RuntimeError&) { // it is no number
        return usual;
    }
    return side < kLeast ? usual : side;
}

void rememberSize(const Session& session, const QSize& size) {
    try {
        session.state->write(kSection, "Width", std::to_string(size.width()));
        session.state->write(kSection, "Height", std::to_string(size.height()));
    } catch (const RuntimeError&) { // then it is not remembered
    }
}

QTableWidget* tableOf(const Session& session, const HistoryTable& history) {
    auto* const table =
        new QTableWidget(static_cast<int>(history.Rows.size()), static_cast<int>(history.Captions.size()));
    nameControl(*table, "tblHistory", loadText(session, Text::PartHistory));
    QStringList captions;
    for (const std::string& caption : history.Captions)
        captions.push_back(shown(caption));
    table->setHorizontalHeaderLabels(captions);
    for (std::size_t row = 0; row < history.Rows.size(); ++row)
        for (std::size_t column = 0; column < history.Captions.size(); ++column)
            table->setItem(static_cast<int>(row), static_cast<int>(column),
                           new QTableWidgetItem(shown(history.Rows[row][column])));
    table->setEditTriggers(QTableWidget::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setAlternatingRowColors(true);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->resizeColumnsToContents();
    const int widest = table->fontMetrics().averageCharWidth() * kWidestColumn;
    for (int column = 0; column < table->columnCount(); ++column)
        table->setColumnWidth(column, std::min(table->columnWidth(column), widest));
    table->resizeRowsToContents();
    if (table->rowCount() > 0) table->setCurrentCell(table->rowCount() - 1, 0);
    return table;
}

} // namespace

void ShowHistory(const clsFile& file, QWidget* parent) {
    const Session& session = file.session();
    const HistoryTable history = historyTable(file);
    QDialog dialog(parent);
    dialog.setObjectName("frmHistory");
    dialog.setWindowFlag(Qt::WindowMaximizeButtonHint);
    dialog.setWindowTitle(shown(ReplaceText(session.LoadText(Text::HistoryTitle), "^", file.ShortenedFileName())));
    const auto button = [&](Text::Id text, const char* name) {
        return pushButton(session, text, name, loadPlainText(session, text));
    };
    QTableWidget* const table = tableOf(session, history);
    QPushButton* const cmdCopy = button(Text::CommandCopy, "cmdCopy");
    QPushButton* const cmdClose = button(Text::CloseButton, "cmdClose");
    auto* const nothing = new QLabel(loadText(session, Text::NoHistory));
    nothing->setVisible(history.Rows.empty());
    cmdCopy->setEnabled(!history.Rows.empty());
    const auto copied = [&] { return copiedLines(historyText(history), true); };
    const auto copy = [&] { QtClipboard().Set(copied()); };
    allowDragging(*table, copied, dialog.windowTitle().toStdString());
    QObject::connect(cmdCopy, &QPushButton::clicked, &dialog, copy);
    QObject::connect(new QShortcut(QKeySequence::Copy, table), &QShortcut::activated, &dialog, copy);
    QObject::connect(cmdClose, &QPushButton::clicked, &dialog, &QDialog::reject);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(cmdCopy);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto* const layout = new QVBoxLayout(&dialog);
    layout->addWidget(nothing);
    layout->addWidget(table, 1);
    layout->addLayout(buttons);
    dialog.resize(sideOf(session, "Width", kFirstSize.width()), sideOf(session, "Height", kFirstSize.height()));
    table->setFocus();
    dialog.exec();
    rememberSize(session, dialog.size());
}

} // namespace kestrane

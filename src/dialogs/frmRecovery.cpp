#include "dialogs/frmRecovery.h"

#include "dialogs/Words.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrane {

namespace {

constexpr int kColumns = 96; // average characters
constexpr int kLines = 10;

class Dialog : public QDialog {
public:
    Dialog(Session& session, const std::vector<CopyRow>& rows, QWidget* parent) :
        QDialog(parent), choices(rows.size(), CopyChoice::KeepForLater), session_(session) {
        setObjectName("frmRecovery");
        setWindowTitle(loadText(session, Text::RecoveryTitle));
        auto* const told = new QLabel(loadText(session, Text::RecoveryTold));
        told->setWordWrap(true);
        list_ = new QTreeWidget;
        nameControl(*list_, "lstCopies", windowTitle());
        list_->setRootIsDecorated(false);
        list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
        list_->setHeaderLabels({loadText(session, Text::RecoveryDocument), loadText(session, Text::RecoveryTime),
                                loadText(session, Text::RecoveryDifference)});
        for (std::size_t i = 0; i < rows.size(); ++i)
            add(rows[i], static_cast<int>(i));
        const QFontMetrics metrics = list_->fontMetrics();
        list_->setMinimumSize(metrics.averageCharWidth() * kColumns, metrics.lineSpacing() * kLines);
        for (const int column : {0, 1})
            list_->resizeColumnToContents(column);

        auto* const buttons = new QHBoxLayout;
        buttons->addStretch();
        const auto button = [&](Text::Id text, const char* name, CopyChoice choice) {
            QPushButton* const made = pushButton(session, text, name, loadPlainText(session, text));
            connect(made, &QPushButton::clicked, this, [this, choice] { decide(choice); });
            buttons->addWidget(made);
            return made;
        };
        button(Text::RecoveryOpen, "cmdOpen", CopyChoice::Open)->setDefault(true);
        button(Text::RecoveryLater, "cmdLater", CopyChoice::KeepForLater);
        button(Text::RecoveryDiscard, "cmdDiscard", CopyChoice::Discard);
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(told);
        layout->addWidget(list_);
        layout->addLayout(buttons);
        list_->selectAll();
        list_->setFocus();
    }

    std::vector<CopyChoice> choices;

private:
    void add(const CopyRow& row, int number) {
        auto* const item = new QTreeWidgetItem({shown(row.Name), shown(row.Time), shown(row.Difference)});
        item->setData(0, Qt::UserRole, number);
        item->setToolTip(0, shown(row.File.empty() ? row.Name : row.File));
        item->setToolTip(2, shown(row.Difference));
        list_->addTopLevelItem(item);
    }

    // Of the rows that are selected, which then leave the list.
    void decide(CopyChoice choice) {
        for (QTreeWidgetItem* item : list_->selectedItems()) {
            if (choice == CopyChoice::Discard && !mayDiscard(item->text(0))) continue;
            choices[item->data(0, Qt::UserRole).toUInt()] = choice;
            delete item;
        }
        if (list_->topLevelItemCount() == 0) return accept();
        list_->selectAll();
    }

    bool mayDiscard(const QString& name) {
        const std::string question = ReplaceText(session_.LoadText(Text::RecoveryAskDiscard), "^", name.toStdString());
        return session_.ShowMessage(question, kButtonsYesNo | kIconQuestion | kDefaultSecond) == Button::Yes;
    }

    Session& session_;
    QTreeWidget* list_;
};

} // namespace

std::vector<CopyChoice> frmRecovery::Ask(Session& session, const std::vector<CopyRow>& rows, QWidget* parent) {
    Dialog dialog(session, rows, parent);
    dialog.exec();
    return dialog.choices;
}

} // namespace kestrane

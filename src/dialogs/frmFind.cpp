#include "dialogs/frmFind.h"

#include "app/Placement.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

namespace kestrane {

namespace {

constexpr int kColumns = 26;

Placement placementOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.width(), rect.height()};
}

} // namespace

frmFind::frmFind(const Session& session, std::function<void()> findNext, QWidget* parent) :
    QDialog(parent, Qt::Tool),
    txtFindWhat_(new QLineEdit),
    cboSearch_(new QComboBox),
    chkMatchCase_(checkBox(session, Text::MatchCase, "chkMatchCase", false)),
    chkFindEntire_(checkBox(session, Text::FindEntireNameOnly, "chkFindEntire", false)),
    cmdFind_(pushButton(session, Text::FindNext, "cmdFind", loadPlainText(session, Text::FindNext))) {
    setObjectName("frmFind");
    setWindowTitle(loadText(session, Text::FindTitle));
    nameControl(*txtFindWhat_, "txtFindWhat", loadPlainText(session, Text::FindWhat));
    nameControl(*cboSearch_, "cboSearch", loadPlainText(session, Text::SearchLabel));
    txtFindWhat_->setMinimumWidth(fontMetrics().averageCharWidth() * kColumns);
    for (const Text::Id text : kFindInTexts)
        cboSearch_->addItem(loadText(session, text));
    QPushButton* const cmdClose =
        pushButton(session, Text::FindClose, "cmdClose", loadPlainText(session, Text::FindClose));
    cmdFind_->setDefault(true);
    cmdFind_->setEnabled(false);

    auto* const form = new QFormLayout;
    form->addRow(labelOf(session, Text::FindWhat, *txtFindWhat_), txtFindWhat_);
    form->addRow(labelOf(session, Text::SearchLabel, *cboSearch_), cboSearch_);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdFind_);
    buttons->addWidget(cmdClose);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(chkMatchCase_);
    layout->addWidget(chkFindEntire_);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(txtFindWhat_, &QLineEdit::textChanged, this,
            [this](const QString& text) { cmdFind_->setEnabled(!text.isEmpty()); });
    connect(cmdFind_, &QPushButton::clicked, this, [findNext = std::move(findNext)] { findNext(); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::close);
}

void frmFind::ShowFind(const QRect& explorer) {
    if (!isVisible()) {
        std::vector<Placement> screens;
        for (const QScreen* screen : QGuiApplication::screens())
            screens.push_back(placementOf(screen->availableGeometry()));
        const Placement beside = broughtOnScreen(placementOf({explorer.topRight(), sizeHint()}), screens);
        move(beside.Left, beside.Top);
        show();
    }
    activateWindow();
    txtFindWhat_->setFocus();
    txtFindWhat_->selectAll();
}

FindEntry frmFind::Entry() const {
    return {txtFindWhat_->text().toStdString(), static_cast<FindIn>(cboSearch_->currentIndex()),
            chkMatchCase_->isChecked(), chkFindEntire_->isChecked()};
}

} // namespace kestrane

#include "desktop/fraZoom.h"

#include "desktop/FlowLayout.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace kestrane {

namespace {

constexpr int kGap = 8;
constexpr int kAll = 0;
constexpr int kTime = 1;

} // namespace

fraZoom::fraZoom(const Session& session, Zoom& zoom, QWidget* parent) : QWidget(parent), zoom_(zoom) {
    nameControl(*this, "fraZoom", loadText(session, Text::ZoomButton));
    auto* const row = new FlowLayout(kGap, kGap / 2);
    setLayout(row);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(loadText(session, Text::ZoomLabel)));
    optZoom_ = new QButtonGroup(this);
    for (const auto& [id, text, name] :
         {std::tuple(kAll, Text::ZoomAll, "optZoom0"), std::tuple(kTime, Text::ZoomTime, "optZoom1")}) {
        optZoom_->addButton(radioButton(session, text, name, id == kAll), id);
        row->addWidget(optZoom_->button(id));
    }
    for (const auto& [list, text, name] :
         {std::tuple(0U, Text::ZoomFrom, "lstZoom0"), std::tuple(1U, Text::ZoomTo, "lstZoom1")}) {
        QComboBox* const box = intervalBox(intervals_);
        nameControl(*box, name, loadPlainText(session, text));
        auto* const field = new QWidget; // keeps the label and the list together
        auto* const cells = new QHBoxLayout(field);
        cells->setContentsMargins(0, 0, 0, 0);
        cells->addWidget(labelOf(session, text, *box));
        cells->addWidget(box);
        row->addWidget(field);
        lstZoom_[list] = box;
        fields_[list] = field;
        connect(box, &QComboBox::activated, this,
                [this, list = list](int index) { (list == 0 ? zoom_.Range.From : zoom_.Range.To) = index + 1; });
    }
    auto* const cmdApplyZoom = new QPushButton(loadText(session, Text::ApplyZoom));
    nameControl(*cmdApplyZoom, "cmdApplyZoom", loadPlainText(session, Text::ApplyZoom));
    row->addWidget(cmdApplyZoom);
    connect(cmdApplyZoom, &QPushButton::clicked, this, &fraZoom::ApplyZoom);
    onChosen(*optZoom_, [this](int id) {
        zoom_.ByTime = id == kTime;
        ShowChoice();
    });
    setFocusProxy(cmdApplyZoom);
}

void fraZoom::ShowLog(const clsLog& opened) {
    intervals_.SetLog(opened);
    ShowChoice();
}

void fraZoom::ShowChoice() {
    optZoom_->button(zoom_.ByTime ? kTime : kAll)->setChecked(true);
    lstZoom_[0]->setCurrentIndex(static_cast<int>(zoom_.Range.From) - 1);
    lstZoom_[1]->setCurrentIndex(static_cast<int>(zoom_.Range.To) - 1);
    for (QWidget* field : fields_)
        field->setEnabled(zoom_.ByTime);
}

void fraZoom::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit ApplyZoom();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace kestrane

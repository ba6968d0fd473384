#include "desktop/pages/RangeStrip.h"

#include "desktop/FlowLayout.h"
#include "dialogs/Words.h"
#include "platform/Numbers.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QResizeEvent>
#include <QToolButton>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kMargin = 8; // pixels
constexpr double kUsualPercent = 10;
constexpr int kUsualWindow = 2; // 15 minutes
constexpr int kBoxWidth = 6;    // characters

// A control with its label, which stay together when the line is broken.
QWidget* field(QLabel* label, QWidget* control) {
    auto* const box = new QWidget;
    auto* const cells = new QHBoxLayout(box);
    cells->setContentsMargins(0, 0, 0, 0);
    cells->addWidget(label);
    cells->addWidget(control);
    return box;
}

} // namespace

RangeStrip::RangeStrip(const Session& session, QWidget* parent) : QScrollArea(parent), session_(session) {
    nameControl(*this, "fraRange", loadText(session, Text::RangeFiguresTitle));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    hint_ = new QLabel(loadText(session, Text::RangeHint));
    hint_->setObjectName("lblRangeHint");
    hint_->setWordWrap(true);

    percent_ = new QDoubleSpinBox;
    nameControl(*percent_, "txtPercent", loadText(session, Text::ExceededPercent));
    percent_->setToolTip(percent_->accessibleName());
    percent_->setPrefix("L");
    percent_->setDecimals(1);
    percent_->setRange(0, 100);
    percent_->setValue(kUsualPercent);
    connect(percent_, &QDoubleSpinBox::valueChanged, this, &RangeStrip::PercentChosen);

    window_ = new QComboBox;
    nameControl(*window_, "cboWindow", loadPlainText(session, Text::WindowLabel));
    window_->setEditable(true);
    window_->lineEdit()->setAccessibleName(window_->accessibleName());
    window_->setInsertPolicy(QComboBox::NoInsert);
    window_->addItems({"1", "5", "15", "60"});
    window_->setCurrentIndex(kUsualWindow);
    window_->setMinimumContentsLength(kBoxWidth);

    figures_ = new FlowLayout(2 * kMargin, kMargin / 2);
    buttons_ = new FlowLayout(kMargin / 2, kMargin / 2);
    buttons_->addWidget(percent_);
    buttons_->addWidget(field(labelOf(session, Text::WindowLabel, *window_), window_));
    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin / 2);
    column->setSpacing(kMargin / 2);
    column->addWidget(hint_);
    column->addLayout(figures_);
    column->addLayout(buttons_);
    setWidget(content);
}

QSize RangeStrip::sizeHint() const {
    return {widget()->sizeHint().width(), widget()->heightForWidth(width())};
}

QSize RangeStrip::minimumSizeHint() const {
    return {widget()->minimumSizeHint().width(), percent_->sizeHint().height() + kMargin};
}

bool RangeStrip::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) updateGeometry(); // its content has changed
    return QScrollArea::event(event);
}

void RangeStrip::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    if (event->oldSize().width() != width()) updateGeometry();
}

void RangeStrip::ShowFigures(const std::vector<RangeFigure>& figures) {
    hint_->setVisible(figures.empty());
    for (const RangeFigure& figure : figures) {
        QLabel*& label = labels_[figure.Name];
        if (label == nullptr) {
            label = new QLabel;
            label->setTextInteractionFlags(Qt::TextSelectableByMouse);
            figures_->addWidget(label);
        }
        const QString value = figure.Value.empty() ? QStringLiteral("-") : shown(figure.Value);
        nameControl(*label, figure.Name.c_str(), shown(figure.Caption) + ' ' + value);
        label->setText(shown(figure.Caption).toHtmlEscaped() + " <b>" + value.toHtmlEscaped() + "</b>");
    }
    for (const auto& [name, label] : labels_)
        label->setVisible(!figures.empty());
}

void RangeStrip::AddButtons(const std::vector<QAction*>& actions) {
    for (QAction* const action : actions) {
        auto* const button = new QToolButton;
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setFocusPolicy(Qt::StrongFocus);
        buttons_->addWidget(button);
    }
}

double RangeStrip::Percent() const {
    return percent_->value();
}

double RangeStrip::WindowMinutes() const {
    return std::max(0.0, typedNumber(window_->currentText().toStdString(), session_.locale).value_or(0));
}

} // namespace kestrane

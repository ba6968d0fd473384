#include "desktop/assessment/ResultView.h"

#include "dialogs/SignalColours.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kGap = 6; // pixels
constexpr int kMargin = 16;
constexpr double kRowHeight = 1.6; // of a line of text
constexpr int kScaleLines = 4;
constexpr double kNameShare = 0.3; // of the width
constexpr double kHeadingSize = 1.3;

constexpr int kBandOpacity = 0x70;

Signal signalOf(ActionState state) {
    constexpr Signal kSignals[] = {Signal::Good, Signal::Caution, Signal::Bad, Signal::None, Signal::Caution};
    return kSignals[static_cast<std::size_t>(state)];
}

// Long words may be broken anywhere, since a label is never narrower than its longest word.
QString html(const std::string& text) {
    constexpr int kLongest = 24;
    constexpr QChar kMayBreak(0x200B);
    QString broken;
    int letters = 0;
    for (const QChar letter : shown(text)) {
        letters = letter.isSpace() ? 0 : letters + 1;
        if (letters > kLongest && !letter.isLowSurrogate()) {
            broken += kMayBreak;
            letters = 1;
        }
        broken += letter;
    }
    return broken.toHtmlEscaped();
}

QString heading(const QString& text) {
    return "<p><b>" + text.toHtmlEscaped() + "</b></p>";
}

QString figuresHtml(const Session& session, const GroupResult& group) {
    QString text =
        heading(shown(ReplaceText(session.LoadText(Text::HeadingFigures), "^", std::string(kAssessmentEdition))));
    text += "<table>";
    for (const ShownFigure& figure : shownFigures(session, group))
        text += "<tr><td style='padding-right: 16px'>" + html(figure.Caption) + "</td><td><b>" + html(figure.Value) +
                "</b></td></tr>";
    return text + "</table>";
}

QString actionsHtml(const Session& session, const GroupResult& group, const QPalette& palette) {
    QString text = heading(loadText(session, Text::HeadingActions)) + "<table>";
    for (const ShownAction& action : shownActions(session, group)) {
        const QString style = " style='color: " + signalColour(signalOf(action.State), palette).name() + "'";
        text += "<tr><td style='padding-right: 16px'>" + html(action.Name) + "</td><td style='padding-right: 16px'>" +
                html(action.Limit) + "</td><td" + style + "><b>" + html(action.Symbol) + "&nbsp;" + html(action.Words) +
                "</b></td></tr>";
    }
    return text + "</table>";
}

QString warningsHtml(const Session& session, const GroupResult& group) {
    QString text = heading(loadText(session, Text::HeadingWarnings)) + "<ul style='margin-left: -20px'>";
    for (const std::string& warning : shownWarnings(session, group))
        text += "<li>" + html(warning) + "</li>";
    return text + "</ul>";
}

} // namespace

ScaleView::ScaleView(const Session& session) {
    nameControl(*this, "scale", loadText(session, Text::FigureLex));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ScaleView::Show(ExposureScale scale) {
    scale_ = std::move(scale);
    setAccessibleDescription(shown(scale_.Words));
    update();
}

QSize ScaleView::sizeHint() const {
    return {10 * kMargin, kScaleLines * fontMetrics().height() + 2 * kGap};
}

// From the top down there are the words of the level, the band with the level in it, and the axis with its marks.
void ScaleView::draw(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = fontMetrics().height();
    const double room = width() - 2.0 * kMargin;
    const double axis = 2.5 * line + kGap;
    const auto x = [&](double at) { return kMargin + at * room; };
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawLine(QPointF(kMargin, axis), QPointF(kMargin + room, axis));
    for (const ExposureScale::Mark& mark : scale_.Marks) {
        QFont marked = font();
        marked.setBold(mark.IsLimit);
        painter.setFont(marked);
        painter.setPen(QPen(palette().color(QPalette::WindowText), mark.IsLimit ? 2 : 1));
        painter.drawLine(QPointF(x(mark.At), mark.IsLimit ? line + kGap : axis - kGap / 2.0),
                         QPointF(x(mark.At), axis));
        const QRectF place(x(mark.At) - kMargin, axis + 1, 2 * kMargin, line);
        painter.drawText(place, Qt::AlignCenter, shown(mark.Words));
    }
    if (!scale_.Level) return;
    const double top = 1.25 * line + kGap;
    painter.setPen(Qt::NoPen);
    const QColor bar = barColour(palette());
    if (scale_.From) {
        QColor band = bar;
        band.setAlpha(kBandOpacity);
        painter.setBrush(band);
        painter.drawRect(QRectF(x(*scale_.From), top, x(*scale_.To) - x(*scale_.From), line));
    }
    painter.setBrush(bar);
    painter.drawRect(QRectF(x(*scale_.Level) - 2, top - 3, 4, line + 6.0));
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::WindowText));
    const QString words = shown(scale_.Words);
    const double wide = painter.fontMetrics().horizontalAdvance(words);
    const double left = std::clamp(x(*scale_.Level) - wide / 2, 0.0, std::max(0.0, width() - wide));
    painter.drawText(QPointF(left, line), words);
}

TaskBarsView::TaskBarsView(const Session& session) : session_(session) {
    nameControl(*this, "bars", loadText(session, Text::HeadingContributions));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TaskBarsView::Show(std::vector<TaskBar> bars) {
    bars_ = std::move(bars);
    setAccessibleDescription(shown(spokenBars(session_, bars_)));
    setVisible(!bars_.empty());
    updateGeometry();
    update();
}

int TaskBarsView::rowHeight() const {
    return static_cast<int>(kRowHeight * fontMetrics().height());
}

QSize TaskBarsView::sizeHint() const {
    return {10 * kMargin, rowHeight() * static_cast<int>(bars_.size())};
}

// Each task has a line with its name, the bar, and the words behind the bar.
void TaskBarsView::draw(QPainter& painter) {
    const int line = fontMetrics().height();
    int words = 0;
    for (const TaskBar& bar : bars_)
        words = std::max(words, fontMetrics().horizontalAdvance(shown(bar.Words)));
    const int names = static_cast<int>(kNameShare * width());
    const int room = std::max(0, width() - names - words - 2 * kGap);
    int top = (rowHeight() - line) / 2;
    for (const TaskBar& bar : bars_) {
        painter.setPen(palette().color(QPalette::WindowText));
        const QString name = fontMetrics().elidedText(shown(bar.Name), Qt::ElideRight, names - kGap);
        painter.drawText(QRect(0, top, names, line), Qt::AlignLeft | Qt::AlignVCenter, name);
        const int length = static_cast<int>(bar.Share.value_or(0) * room);
        painter.fillRect(QRect(names, top, length, line), barColour(palette()));
        painter.drawText(QRect(names + length + kGap, top, words, line), Qt::AlignLeft | Qt::AlignVCenter,
                         shown(bar.Words));
        top += rowHeight();
    }
}

ResultView::ResultView(const Session& session) : session_(session) {
    nameControl(*this, "ResultView", loadText(session, Text::FigureLex));
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    column_ = new QWidget;
    auto* const layout = new QVBoxLayout(column_);
    lblGroup_ = addLabel("lblGroup", *column_);
    QFont large = lblGroup_->font();
    large.setPointSizeF(large.pointSizeF() * kHeadingSize);
    large.setBold(true);
    lblGroup_->setFont(large);
    layout->addWidget(scale_ = new ScaleView(session));
    lblFigures_ = addLabel("lblFigures", *column_);
    lblActions_ = addLabel("lblActions", *column_);
    lblWarnings_ = addLabel("lblWarnings", *column_);
    // Last, because there may be many tasks.
    lblTasks_ = addLabel("lblTasks", *column_);
    lblTasks_->setText(heading(loadText(session, Text::HeadingContributions)));
    layout->addWidget(bars_ = new TaskBarsView(session));
    layout->addStretch(1);
    setWidget(column_);
    Show(nullptr);
}

QLabel* ResultView::addLabel(const char* name, QWidget& column) {
    auto* const label = new QLabel;
    label->setObjectName(QLatin1String(name)); // without an accessible name, so that its text is read out
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    column.layout()->addWidget(label);
    return label;
}

void ResultView::Show(const GroupResult* group) {
    for (QWidget* part :
         std::initializer_list<QWidget*>{scale_, lblTasks_, bars_, lblFigures_, lblActions_, lblWarnings_})
        part->setVisible(group != nullptr);
    if (group == nullptr) {
        lblGroup_->setText(loadText(session_, Text::EmptyAssessment));
        return;
    }
    lblGroup_->setText(html(group->Name));
    scale_->Show(exposureScale(session_, *group));
    bars_->Show(taskBars(session_, *group));
    lblTasks_->setVisible(!group->Tasks.empty());
    lblFigures_->setText(figuresHtml(session_, *group));
    lblActions_->setText(actionsHtml(session_, *group, palette()));
    lblWarnings_->setText(warningsHtml(session_, *group));
}

} // namespace kestrane

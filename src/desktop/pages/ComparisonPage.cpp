#include "desktop/pages/ComparisonPage.h"

#include "charts/chaTab.h"
#include "desktop/frmRank.h"
#include "dialogs/Words.h"
#include "dialogs/frmHPD.h"
#include "explorer/NodeKeys.h"
#include "views/CopyData.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace kestrane {

namespace {

constexpr int kSpacing = 16; // pixels

} // namespace

ComparisonPage::ComparisonPage(Session& session, ExplorerState& state) : GraphPage(session, state, eTabCompareHPD) {
    placeholder_ = placeholderLabel();
    placeholder_->setText(loadText(session, Text::ChooseAProtector));
    column_->addWidget(placeholder_);

    bar_ = new QWidget;
    bar_->setObjectName("fraProtector");
    QPushButton* const cmdHPD = pushButton(session, Text::HearingProtectorButton, "cmdHPD",
                                           loadPlainText(session, Text::HearingProtectorButton));
    QPushButton* const cmdRank =
        pushButton(session_, Text::RankButton, "cmdRank", loadPlainText(session_, Text::RankButton));
    fraHPD_ = new QLabel;
    fraHPD_->setObjectName("fraHPD");
    lblGrade_ = new QLabel;
    lblGrade_->setObjectName("lblGrade");
    auto* const row = new QHBoxLayout(bar_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kSpacing);
    row->addWidget(cmdHPD);
    row->addWidget(cmdRank);
    row->addWidget(fraHPD_);
    row->addWidget(lblGrade_);
    connect(cmdHPD, &QPushButton::clicked, this, &ComparisonPage::ProtectorAsked);
    connect(cmdRank, &QPushButton::clicked, this, &ComparisonPage::RankAsked);
}

ChartChoice ComparisonPage::choice() const {
    ChartChoice compared = GraphPage::choice();
    compared.Comparison = &comparison_;
    return compared;
}

void ComparisonPage::Follow(const clsLog*) {
    const bool isChosen = state_.View.Protector.has_value();
    placeholder_->setVisible(!isChosen);
    if (chart_ != nullptr) chart_->setVisible(isChosen);
}

// Without a protector the screen to choose one opens by itself after the tab has been drawn.
void ComparisonPage::Draw(clsLog& inView) {
    const LogView& view = state_.View;
    showFigures({}, {});
    if (view.Protector) {
        comparison_ = compareWithProtector(inView, *view.Protector, session_.Options, view.CorrectionFactor);
        GraphPage::Draw(inView);
        showFigures(comparison_.Panel, comparison_.Method.empty() ? std::string() : gradeText(session_, comparison_));
    } else if (!view.IsComparisonDeclined) {
        QMetaObject::invokeMethod(this, &ComparisonPage::ProtectorAsked, Qt::QueuedConnection);
    }
}

void ComparisonPage::showFigures(const std::vector<std::pair<std::string, std::string>>& figures,
                                 const std::string& grade) {
    QString text;
    for (const auto& [label, value] : figures)
        text += (text.isEmpty() ? "" : "&nbsp;&nbsp;&nbsp; ") + shown(label).toHtmlEscaped() + "&nbsp;<b>" +
                shown(value).toHtmlEscaped() + "</b>";
    fraHPD_->setText(text);
    fraHPD_->setVisible(!figures.empty());
    lblGrade_->setText(shown(grade));
    lblGrade_->setVisible(!grade.empty());
}

ClipboardForms ComparisonPage::Copy(const clsLog& inView, bool valuesOnly) const {
    ClipboardForms chart = GraphPage::Copy(inView, valuesOnly);
    if (valuesOnly || shownChart() == nullptr) return chart;
    ClipboardForms forms = withWholeFigures(copiedComparison(comparison_), inView);
    forms.Png = std::move(chart.Png);
    forms.Svg = std::move(chart.Svg);
    return forms;
}

std::unique_ptr<PagedDocument> ComparisonPage::Pages(const PrintedView& printed) const {
    return shownChart() == nullptr ? nullptr : chartPages(printed, chart_->onPage(), figuresLine(comparison_));
}

void ComparisonPage::ChooseProtector() {
    const auto download = [this](QWidget* parent) {
        bool isDone = false;
        emit DatabaseDownloadAsked(parent, &isDone);
        return isDone;
    };
    const std::string before = state_.View.Protector ? state_.View.Protector->Name : std::string();
    choose(
        [&](const clsLog& log) { return frmHPD::ShowHPDComparisonScreen(session_, log, before, download, window()); });
}

void ComparisonPage::ChooseByRank() {
    choose([this](const clsLog& log) {
        const clsFile& file = *resolve(session_, state_.View.Key).file;
        return frmRank::Choose(session_, file, log, state_.View.CorrectionFactor, window());
    });
}

// By a screen, while which another log may come on view.
void ComparisonPage::choose(const std::function<std::optional<ProtectorChoice>(const clsLog& log)>& screen) {
    const clsLog* log = state_.LogInView(session_);
    if (log == nullptr || state_.View.Tab != tab_ || session_.protectors == nullptr) return;
    const std::string key = state_.View.Key;
    const std::optional<ProtectorChoice> chosen = screen(*log);
    if (state_.View.Key != key) return;
    state_.View.IsComparisonDeclined = !chosen && !state_.View.Protector;
    if (!chosen) return;
    state_.View.chooseProtector(chosen->Protector, chosen->CorrectionFactor);
    emit ProtectorChosen();
}

} // namespace kestrane

#include "desktop/pages/GraphPage.h"

#include "charts/chaTab.h"
#include "desktop/ChartDrag.h"
#include "dialogs/Words.h"
#include "dialogs/frmChartTable.h"
#include "dialogs/frmPicture.h"
#include "views/ChartSummary.h"
#include "views/CopyData.h"
#include "views/TimeChart.h"

#include <QBoxLayout>

#include <utility>

namespace kestrane {

GraphPage::GraphPage(Session& session, ExplorerState& state, LogTab tab) : LogPage(session, state, tab) {
    column_ = new QVBoxLayout(this);
    column_->setContentsMargins(0, 0, 0, 0);
}

ChartChoice GraphPage::choice() const {
    const LogView& view = state_.View;
    return {view.Choice(), view.Axis, view.IntervalRow};
}

// Returns false when the user does not want to wait for a long chart in 3D.
bool GraphPage::isWanted(const clsLog& inView, const ChartData& drawn) {
    return !tabRow(tab_).IsOverTime || !isAskedBefore3D(inView, drawn.Style) ||
           session_.ShowMessage(session_.LoadText(Text::Ask3DTakesTime), kButtonsYesNo | kIconQuestion) == Button::Yes;
}

void GraphPage::Draw(clsLog& inView) {
    if (chart_ == nullptr) {
        chart_ = new chaTab(session_.locale, [this](const ChartData& chart) { return chartSummary(session_, chart); });
        chart_->setObjectName("chaTab" + QString::number(tab_));
        connect(chart_, &chaTab::ViewChanged, this, [this] {
            const auto rows = chart_->rowsInView();
            if (rows) chart_->tellFirst(shown(partInView(session_, chart_->chart(), rows->first, rows->second)));
            emit ViewChanged();
        });
        kestrane::allowDragging(*chart_);
        column_->insertWidget(0, chart_, 1);
    }
    std::optional<ChartData> drawn = chartOfTab(inView, tab_, choice());
    const bool isDrawn = drawn && isWanted(inView, *drawn);
    chart_->setVisible(isDrawn);
    if (!drawn) session_.ShowMessage(session_.LoadText(Text::NoAvailableData), kIconInformation);
    if (!isDrawn) return;
    chart_->setChart(std::move(*drawn));
    if (!state_.View.ShowsLegend) FollowLegend();
    FollowNote();
}

void GraphPage::FollowLegend() {
    if (chart_ != nullptr && tabRow(tab_).HidesLegend) chart_->showLegend(state_.View.ShowsLegend);
}

void GraphPage::FollowNote() {
    if (chart_ != nullptr && tabRow(tab_).IsOverTime) chart_->showFootnote(state_.View.ShowsNote);
}

const chaTab* GraphPage::shownChart() const {
    return chart_ != nullptr && !chart_->isHidden() ? chart_ : nullptr;
}

bool GraphPage::HasContent() const {
    return shownChart() != nullptr && chart_->chart().RowCount > 0;
}

ClipboardForms GraphPage::Copy(const clsLog& inView, bool valuesOnly) const {
    if (shownChart() == nullptr) return {};
    if (valuesOnly) return withWholeFigures(copiedValues(chart_->chart(), session_.locale), inView);
    return pictureOf(*chart_);
}

std::unique_ptr<PagedDocument> GraphPage::Pages(const PrintedView& printed) const {
    return shownChart() == nullptr ? nullptr : chartPages(printed, chart_->onPage(), {});
}

void GraphPage::ExportPicture(const clsLog& inView) {
    if (shownChart() != nullptr) frmPicture::Export(session_, inView.Name, chart_->pictureWriter(), window());
}

void GraphPage::ShowTable() const {
    if (shownChart() != nullptr) ShowChartTable(session_, chart_->onPage().Data, window());
}

std::optional<std::pair<std::size_t, std::size_t>> GraphPage::RowsInView() const {
    return chart_ == nullptr ? std::nullopt : chart_->rowsInView();
}

} // namespace kestrane

#include "views/ChartParts.h"

#include "model/Session.h"

namespace kestrane {

ChartData emptyChart(const clsLog& log, const clsLogOptions& options) {
    ChartData chart;
    chart.Title = log.Name;
    chart.Style = options.ChartStyle;
    chart.LineWidth = options.LineWidth;
    chart.TitleFont = options.TitleFont;
    chart.LegendFont = options.LegendFont;
    chart.AxisFont = options.AxisFont;
    chart.NoteFont = options.NoteFont;
    return chart;
}

void addFootnote(ChartData& chart, const std::string& line) {
    if (line.empty()) return;
    chart.Footnote += (chart.Footnote.empty() ? "" : "\n") + line;
}

std::string exposureTitle(const Session& session, bool hasPercent, bool hasPa2Hours) {
    const std::string percent = hasPercent ? session.LoadText(Text::Percent) : std::string();
    const std::string pa2Hours = hasPa2Hours ? session.LoadText(Text::Pa2Hours) : std::string();
    return pa2Hours + (hasPercent && hasPa2Hours ? " / " : "") + percent;
}

} // namespace kestrane

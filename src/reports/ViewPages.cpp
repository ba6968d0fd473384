#include "reports/ViewPages.h"

#include "assessment/CriteriaTable.h"
#include "calc/ExposureCalculator.h"
#include "model/Session.h"
#include "reports/GridPages.h"
#include "reports/PageText.h"
#include "views/CumulativePanel.h"
#include "views/ExposureTable.h"
#include "views/HistoryTable.h"
#include "views/IntervalTable.h"
#include "views/LogHistory.h"
#include "views/LogTabs.h"
#include "views/Zoom.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace kestrane {

namespace {

constexpr std::size_t kMostLinesBelow = 4;

using Cells = std::vector<std::vector<std::string>>;

PageHeading headed(const PrintedView& view, std::string title, std::string kind = {}) {
    return {std::move(title), view.FileNames.empty() ? view.file.ShortenedFileName() : view.FileNames, view.IsModified,
            view.IsPart, std::move(kind)};
}

// The heading of a view of the log; band 0 means that it names no band.
PageHeading headingOf(const PrintedView& view, const std::string& title, int band = 0) {
    std::string kind = view.log.Name.empty() ? title : " - " + title;
    if (band > 0) kind += " - " + bandLabel(view.log, band);
    return headed(view, view.log.Name + kind, kind);
}

PageHeading headingOf(const PrintedView& view, int band = 0) {
    return headingOf(view, view.log.session().LoadText(tabRow(view.tab).Caption), band);
}

std::unique_ptr<PagedDocument> gridPages(const PrintedView& view, PageGrid grid, int band = 0) {
    return std::make_unique<GridPages>(view.log.session(), headingOf(view, band), std::move(grid), view.metrics);
}

PageGrid gridOf(std::vector<std::string> captions, Cells cells) {
    PageGrid grid;
    grid.Captions = std::move(captions);
    grid.Rows = cells.size();
    grid.Cell = [cells = std::move(cells)](std::size_t row, std::size_t column) { return cells[row][column]; };
    return grid;
}

// A chart that fills its page within the margins.
class ChartPage : public PagedDocument {
public:
    ChartPage(const PrintedView& view, ChartOnPage chart, const std::string& below, std::string title) :
        heading_(title.empty() ? headingOf(view) : headed(view, std::move(title))),
        frame_(view.log.session(), heading_, view.metrics),
        chart_(std::move(chart)),
        isPart_(view.IsPart),
        line_(view.metrics.lineHeight(kBodyFont)) {
        if (!below.empty())
            below_ = wrappedText(view.metrics, below, frame_.wholePage().width(), kBodyFont, kMostLinesBelow);
    }

    const std::string& Title() const override { return heading_.Title; }

    std::size_t pageCount() const override { return 1; }

    void drawPage(PageDevice& device, std::size_t page) override {
        const PageArea area = isPart_ ? frame_.body() : frame_.wholePage();
        if (isPart_) frame_.drawHead(device);
        double top = area.Bottom - static_cast<double>(below_.size()) * line_;
        device.chart(chart_, {area.Left, area.Top, area.width(), top - area.Top});
        for (const std::string& text : below_) {
            device.text(area.Left, top, text, kBodyFont);
            top += line_;
        }
        frame_.drawFoot(device, numberOf(page), lastNumber());
    }

private:
    const PageHeading heading_;
    PageFrame frame_;
    const ChartOnPage chart_;
    const bool isPart_; // of a report, which has its head on every page
    const double line_;
    std::vector<std::string> below_;
};

} // namespace

std::unique_ptr<PagedDocument> chartPages(const PrintedView& view, ChartOnPage chart, const std::string& below,
                                          std::string title) {
    return std::make_unique<ChartPage>(view, std::move(chart), below, std::move(title));
}

std::unique_ptr<PagedDocument> panelPages(const PrintedView& view, int band, PanelForm panel) {
    const clsLog& log = view.log;
    const bool hasChannelB = log.IsChannelBOn && showsChannelB(panel);
    std::vector<std::string> captions = {{}, {}};
    if (hasChannelB)
        captions = {{}, log.session().LoadText(Text::ChannelA), {}, log.session().LoadText(Text::ChannelB)};
    const std::vector<PanelRow> rows = cumulativePanel(log, band);
    Cells cells;
    for (const PanelSection section :
         {PanelSection::Levels, PanelSection::Exposure, PanelSection::Measurement, PanelSection::Instrument}) {
        if (!isShownIn(panel, section)) continue;
        if (!cells.empty()) cells.emplace_back(captions.size());
        for (const PanelRow& row : rows) {
            const std::string channelB = hasChannelB ? valueText(row.B, row.Unit) : std::string();
            if (row.Section != section || (row.A.Text.empty() && channelB.empty())) continue;
            std::vector<std::string> line = {row.Caption, valueText(row.A, row.Unit)};
            if (hasChannelB) {
                line.push_back(channelB.empty() || row.B.Caption == row.Caption ? std::string() : row.B.Caption);
                line.push_back(channelB);
            }
            cells.push_back(std::move(line));
        }
    }
    PageGrid grid = gridOf(std::move(captions), std::move(cells));
    grid.Note = wholeFiguresLine(log);
    return gridPages(view, std::move(grid), band);
}

std::unique_ptr<PagedDocument> exposurePages(const PrintedView& view) {
    const ExposureTable table = exposureTable(view.log);
    Cells cells = table.Rows;
    cells.push_back(table.Totals);
    cells.back()[eColumnNote] = view.log.session().LoadText(Text::Total);
    PageGrid grid = gridOf(exposureCaptions(view.log.session()), std::move(cells));
    grid.TotalRows = 1;
    std::map<std::string, std::string> rowsOfNotes;
    for (std::size_t row = 0; row < table.LevelNotes.size(); ++row) {
        std::string& rows = rowsOfNotes[table.LevelNotes[row]];
        rows += (rows.empty() ? "" : ", ") + std::to_string(row + 1);
    }
    for (const auto& [note, rows] : rowsOfNotes) {
        if (note.empty()) continue;
        grid.Note.append(grid.Note.empty() ? "" : "  ").append(rows).append(": ").append(note);
    }
    return gridPages(view, std::move(grid));
}

std::unique_ptr<PagedDocument> criteriaPages(const PrintedView& view) {
    CriteriaTable table = criteriaTable(view.log);
    return gridPages(view, gridOf(std::move(table.Captions), std::move(table.Rows)));
}

// Before, after and reason are one column: it is the one that is broken into lines.
std::unique_ptr<PagedDocument> historyPages(const PrintedView& view) {
    const Session& session = view.log.session();
    Cells cells;
    const std::vector<HistoryLine> lines = view.file.History.oldestFirst();
    const std::vector<std::string> logs = logsOfLines(view.file, lines);
    for (std::size_t i = 0; i < lines.size(); ++i)
        cells.push_back({ReplaceText(lines[i].Time, "T", " "), lines[i].What, logs[i],
                         withReason(session, changeText(lines[i]), lines[i].Reason)});
    PageGrid grid = gridOf({session.LoadText(Text::TimeColumn), session.LoadText(Text::HistoryWhatColumn),
                            session.LoadText(Text::HistoryLogColumn), session.LoadText(Text::ChangesLabel)},
                           std::move(cells));
    return std::make_unique<GridPages>(session, headingOf(view, session.LoadText(Text::PartHistory)), std::move(grid),
                                       view.metrics);
}

std::unique_ptr<PagedDocument> rankPages(const PrintedView& view, const RankTable& ranks) {
    Cells cells;
    for (const RankTable::Row& row : ranks.Rows)
        cells.push_back(row.Cells);
    PageGrid grid = gridOf(ranks.Captions, std::move(cells));
    grid.Note = ranks.Note;
    return gridPages(view, std::move(grid));
}

std::unique_ptr<PagedDocument> cellPages(const PrintedView& view, const CellTable& table, std::string title,
                                         std::string note) {
    PageGrid grid{table.Captions, table.RowCount, table.Cell};
    grid.Note = std::move(note);
    return std::make_unique<GridPages>(view.log.session(), headed(view, std::move(title)), std::move(grid),
                                       view.metrics);
}

std::unique_ptr<PagedDocument> tablePages(const PrintedView& view, LogChannel channel, const DisplayChoice& choice) {
    const auto table = std::make_shared<IntervalTable>(view.log, channel, choice);
    PageGrid grid;
    for (std::size_t column = 0; column < table->columnCount(); ++column)
        grid.Captions.push_back(table->caption(column));
    grid.Rows = table->rowCount();
    grid.Cell = [table](std::size_t row, std::size_t column) { return table->copiedCell(row, column); };
    if (view.log.LogIntervals.IncludedCount() != view.log.LogIntervals.Count())
        grid.Note = "*" + view.log.session().LoadText(Text::IntervalRemoved);
    return gridPages(view, std::move(grid));
}

} // namespace kestrane

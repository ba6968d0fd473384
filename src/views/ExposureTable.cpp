#include "views/ExposureTable.h"

#include "calc/BandLevels.h"
#include "model/Session.h"
#include "platform/Format.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

std::string levelNote(const clsLog& log, const clsDoseLogSample& row) {
    const Session& session = log.session();
    const auto shown = [&session](float level) { return formatNumber(level, "##0.0", session.locale); };
    const float level = row.Leq.CalcValue();
    const std::string reported = shown(row.Leq.Value());
    if (shown(level) != reported && level != row.Leq.Value())
        return ReplaceText(session.LoadText(Text::MadeOfReportedLevel), "^", reported);
    const bool isOfLog = level == log.LeqCumA(0).CalcValue();
    return isOfLog && isExposureNotAWeighted(log, kChannelA, eLepdET) ? session.LoadText(Text::NotAWeighted)
                                                                      : std::string();
}

} // namespace

ExposureTable exposureTable(const clsLog& log) {
    ExposureTable table;
    const double day = static_cast<double>(doseTotals(log).Dose.Value());
    for (const clsDoseLogSample& row : log.DoseLogIntervals) {
        std::vector<std::string> line = exposureLine(log.session(), row, static_cast<int>(table.Rows.size()) + 1);
        auto& missing = table.Missing.emplace_back();
        for (int column = 0; column < kExposureColumns; ++column) {
            const auto cell = static_cast<std::size_t>(column);
            missing[cell] = isMissing(row, column);
            if (missing[cell]) line[cell].clear();
        }
        table.Rows.push_back(std::move(line));
        const double dose = row.IsIncluded ? static_cast<double>(row.getDose().Value()) : 0;
        table.Shares.push_back(day > 0 ? std::clamp(dose / day, 0.0, 1.0) : 0);
        table.LevelNotes.push_back(levelNote(log, row));
    }
    table.Totals = exposureTotalsLine(log);
    return table;
}

} // namespace kestrane

#include "views/ExposureTable.h"

#include "model/Session.h"
#include "platform/Format.h"

#include <algorithm>
#include <utility>

namespace kestrane {

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
        const std::string reported = formatNumber(row.Leq.Value(), "##0.0", log.session().locale);
        const bool isOther = table.Rows.back()[eColumnLeq] != reported && row.Leq.CalcValue() != row.Leq.Value();
        table.LevelNotes.push_back(
            isOther ? ReplaceText(log.session().LoadText(Text::MadeOfReportedLevel), "^", reported) : std::string());
    }
    table.Totals = exposureTotalsLine(log);
    return table;
}

} // namespace kestrane

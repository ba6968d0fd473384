#include "views/EventTable.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "views/RangeTable.h"
#include "views/RowTimes.h"

#include <utility>

namespace kestrane {

namespace {

enum Column : std::size_t { kStart, kLength, kLAeq, kLmax, kShare };

std::string shareText(const Session& session, double part, double all) {
    return all > 0 ? formatNumber(part / all, "##0.0 %", session.locale) : std::string();
}

} // namespace

EventTable::EventTable(const clsLog& log, AnalysedRows rows, EventRule rule) :
    log_(log),
    rows_(std::move(rows)),
    events_(std::make_shared<const std::vector<Stretch>>(eventsOf(*rows_, rule))),
    exposure_(exposureOf(*rows_)) {}

std::span<const AnalysedRow> EventTable::rowsOf(const Stretch& event) const {
    return std::span(*rows_).subspan(event.First, event.Behind - event.First);
}

RowRange EventTable::RowsOf(std::size_t event) const {
    const auto rows = rowsOf((*events_)[event]);
    return {rows.front().Number, rows.back().Number};
}

CellTable EventTable::Table() const {
    const Session& session = log_.session();
    const auto caption = [&](Parameter parameter) {
        return VariableCaption(session, parameter, kChannelA, kNoBand, &log_);
    };
    const auto cell = [self = *this, &session, times = RowTimes(log_)](std::size_t row,
                                                                       std::size_t column) -> std::string {
        const auto rows = self.rowsOf((*self.events_)[row]);
        const StretchFigures figures = stretchFigures(rows, 0, 0);
        switch (column) {
        case kStart:
            return times.dateAndTime(static_cast<std::size_t>(rows.front().Number - 1));
        case kLength:
            return figures.Seconds > 0 ? durationText(figures.Seconds) : std::string();
        case kLAeq:
            return shownLevel(session, figures.LAeq);
        case kLmax:
            return figures.Lmax ? shownLevel(session, static_cast<double>(*figures.Lmax)) : std::string();
        default:
            return shareText(session, exposureOf(rows), self.exposure_);
        }
    };
    return {{session.LoadText(Text::RangeStart), session.LoadText(Text::RangeLength), caption(eLeq), caption(eLmax),
             session.LoadText(Text::ColumnShare)},
            events_->size(),
            cell};
}

std::string EventTable::Summary() const {
    double seconds = 0;
    double exposure = 0;
    for (const Stretch& event : *events_) {
        for (const AnalysedRow& row : rowsOf(event))
            seconds += row.Seconds;
        exposure += exposureOf(rowsOf(event));
    }
    const Session& session = log_.session();
    std::string text = ReplaceText(session.LoadText(Text::EventsSummary), "#", shareText(session, exposure, exposure_));
    text = ReplaceText(std::move(text), "*", durationText(seconds));
    return ReplaceText(std::move(text), "^", std::to_string(events_->size()));
}

} // namespace kestrane

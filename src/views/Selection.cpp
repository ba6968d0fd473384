#include "views/Selection.h"

#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "platform/RuntimeError.h"

#include <charconv>

namespace kestrane {

namespace {

bool hasFigures(const clsLog& log) {
    for (const LogChannel channel : kChannels) {
        for (const Parameter parameter : kParameters) {
            if (parameter == eOverload) continue;
            for (int band = 0; band <= lastBand(log.Mode()); ++band)
                if (cumulativeValue(log, channel, parameter, band).CalcValue() != 0) return true;
        }
    }
    return false;
}

} // namespace

std::unique_ptr<clsLog> makeZoom(const clsLog& log, std::int64_t from, std::int64_t to) {
    auto zoom = std::make_unique<clsLog>(log.session());
    zoom->Copy(log, from, to);
    zoom->IsZoomed = true;
    zoom->IsParent5Mins = lastsFiveMinutes(log, ExcludedRows::Count);
    zoom->HasWholeFigures = hasFigures(*zoom);
    return zoom;
}

std::vector<RowRange> parseRowRanges(std::string_view text) {
    std::vector<RowRange> ranges;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at < end) {
        RowRange range{};
        auto read = std::from_chars(at, end, range.From);
        if (read.ec != std::errc()) return {};
        range.To = range.From;
        if (read.ptr < end && *read.ptr == '-') {
            read = std::from_chars(read.ptr + 1, end, range.To);
            if (read.ec != std::errc()) return {};
        }
        ranges.push_back(range);
        if (read.ptr == end) return ranges;
        if (*read.ptr != ',') return {};
        at = read.ptr + 1;
    }
    return {};
}

bool isRangeOf(const RowRange& range, std::int64_t rows) {
    return range.From >= 1 && range.From <= range.To && range.To <= rows;
}

void setIntervalSelection(clsLog& log, const std::vector<RowRange>& ranges, bool toBeIncluded) {
    log.LogIntervals.CutIntervals.clear();
    for (const RowRange& range : ranges)
        log.LogIntervals.CutIntervals.push_back(selectionText(range));
    log.LogIntervals.IntervalsToBeIncluded = toBeIncluded;
}

} // namespace kestrane

#include "views/Selection.h"

#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <utility>

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

// The reason that is there was given for what was left out before.
bool selectWithoutReason(clsLog& log, const std::vector<RowRange>& ranges, bool toBeIncluded) {
    if (!setIntervalSelection(log, ranges, toBeIncluded)) return false;
    log.CutReason.clear();
    return true;
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

bool setIntervalSelection(clsLog& log, const std::vector<RowRange>& ranges, bool toBeIncluded) {
    std::vector<std::string> texts(ranges.size());
    std::ranges::transform(ranges, texts.begin(), selectionText);
    clsLogIntervals& rows = log.LogIntervals;
    if (rows.CutIntervals == texts && rows.IntervalsToBeIncluded == toBeIncluded) return false;
    rows.CutIntervals = std::move(texts);
    rows.IntervalsToBeIncluded = toBeIncluded;
    return true;
}

bool excludeRows(clsLog& log, const RowRange& range) {
    const auto count = static_cast<std::size_t>(log.LogIntervals.Count());
    const clsLogIntervals& rows = log.LogIntervals;
    const auto before = excludedRows(selectionRanges(rows.CutIntervals), rows.IntervalsToBeIncluded, count);
    std::vector<std::uint8_t> excluded = before;
    excluded.resize(count);
    std::fill(excluded.begin() + (range.From - 1), excluded.begin() + range.To, std::uint8_t{1});
    if (excluded == before) return false;
    std::vector<RowRange> ranges;
    for (std::size_t row = 0; row < count; ++row) {
        const auto number = static_cast<std::int64_t>(row) + 1;
        if (excluded[row] == 0) continue;
        if (ranges.empty() || ranges.back().To + 1 != number) ranges.push_back({number, number});
        ranges.back().To = number;
    }
    return selectWithoutReason(log, ranges, false);
}

bool includeOnly(clsLog& log, const RowRange& range) {
    return selectWithoutReason(log, {range}, true);
}

} // namespace kestrane

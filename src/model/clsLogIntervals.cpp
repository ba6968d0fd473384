#include "model/clsLogIntervals.h"

#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace kestrane {

namespace {

constexpr std::int64_t kGrowth = 5000; // rows

// The quantities of a row that have bands, each with its member.
struct RowBands {
    Quantity quantity;
    BandValues clsLogInterval::*member;
};

constexpr RowBands kRowBands[] = {{Quantity::LeqA, &clsLogInterval::LeqA},
                                  {Quantity::LminA, &clsLogInterval::LminA},
                                  {Quantity::LmaxA, &clsLogInterval::LmaxA}};

Level toLevel(const clsValue& value) {
    return {value.CalcValue(), value.Value()};
}

void fromLevel(clsValue& value, Level level) {
    value.Value(level.Value);
    value.CalcValue(level.CalcValue);
}

} // namespace

std::size_t clsLogIntervals::row(std::int64_t index) const {
    if (index < 1 || index > Count()) raiseIndexOutOfRange();
    return static_cast<std::size_t>(index) - 1;
}

void clsLogIntervals::setArraySize(std::int64_t size) {
    columns_ = IntervalColumns();
    columns_.resize(static_cast<std::size_t>(size), static_cast<std::size_t>(size));
}

void clsLogIntervals::Add(const clsLogInterval& objInterval) {
    const std::int64_t count = Count() + 1;
    if (count > Capacity()) columns_.resize(columns_.count(), static_cast<std::size_t>(Capacity() + kGrowth));
    columns_.setCount(static_cast<std::size_t>(count));
    Commit(objInterval, count);
}

void clsLogIntervals::Commit(const clsLogInterval& objInterval, std::int64_t index) {
    const std::size_t at = row(index);
    IntervalColumns& c = columns_;
    c.set(c.IntervalLength, at, objInterval.mLngInterval);
    c.set(c.Criterion, at, objInterval.mIntCriterion);
    c.set(c.Exchange, at, objInterval.mIntExchange);
    c.set(c.StartDate, at, objInterval.StartDate == clsDate() ? 0 : objInterval.StartDate.getDate());
    c.set(c.StartTime, at, objInterval.StartTime.getTimeAsSeconds());
    c.set(c.LminTimeA, at, objInterval.LminTimeA.getTimeAsSeconds());
    c.set(c.LmaxTimeA, at, objInterval.LmaxTimeA.getTimeAsSeconds());
    c.set(c.PeakTimeA, at, objInterval.PeakTimeA.getTimeAsSeconds());
    c.set(c.OverloadedA, at, static_cast<std::uint8_t>(objInterval.OverloadedA));
    c.set(c.OverloadedB, at, static_cast<std::uint8_t>(objInterval.OverloadedB));
    c.set(c.isExcluded, at, static_cast<std::uint8_t>(objInterval.isExcluded));
    for (const RowMember& m : kRowMembers)
        c.setLevel(m.quantity, 0, at, toLevel(objInterval.*m.member));
    for (int band = 0; band <= lastBand(shared_->Mode()); ++band) {
        for (const RowBands& b : kRowBands)
            c.setLevel(b.quantity, band, at, toLevel((objInterval.*b.member)(band)));
        for (int ln = 1; ln <= NumberOfLns; ++ln)
            c.setLevel(lnQuantity(ln), band, at, toLevel(objInterval.LnA(ln, band)));
    }
}

clsLogInterval clsLogIntervals::Item(std::int64_t index) const {
    const std::size_t at = row(index);
    const IntervalColumns& c = columns_;
    clsLogInterval item;
    item.Initialize(shared_);
    item.mLngInterval = c.IntervalLength.at(at);
    item.mIntCriterion = c.Criterion.at(at);
    item.mIntExchange = c.Exchange.at(at);
    if (const CalendarTime date = c.StartDate.at(at); date != 0) {
        const CivilDate civil = toCivil(date);
        item.StartDate.Day = static_cast<std::int16_t>(civil.Day);
        item.StartDate.Month = static_cast<std::int16_t>(civil.Month);
        item.StartDate.Year = static_cast<std::int16_t>(civil.Year);
    }
    item.StartTime.setTimeFromSeconds(c.StartTime.at(at));
    item.LminTimeA.setTimeFromSeconds(c.LminTimeA.at(at));
    item.LmaxTimeA.setTimeFromSeconds(c.LmaxTimeA.at(at));
    item.PeakTimeA.setTimeFromSeconds(c.PeakTimeA.at(at));
    item.OverloadedA = c.OverloadedA.at(at) != 0;
    item.OverloadedB = c.OverloadedB.at(at) != 0;
    item.isExcluded = c.isExcluded.at(at) != 0;
    for (const RowMember& m : kRowMembers)
        fromLevel(item.*m.member, c.level(m.quantity, 0, at));
    for (int band = 0; band <= lastBand(shared_->Mode()); ++band) {
        for (const RowBands& b : kRowBands)
            fromLevel((item.*b.member)(band), c.level(b.quantity, band, at));
        for (int ln = 1; ln <= NumberOfLns; ++ln)
            fromLevel(item.LnA(ln, band), c.level(lnQuantity(ln), band, at));
    }
    return item;
}

void clsLogIntervals::Copy(const clsLogIntervals& objPrev, std::int64_t intStart, std::int64_t intEnd) {
    IntervalsToBeIncluded = objPrev.IntervalsToBeIncluded;
    CutIntervals = objPrev.CutIntervals;
    if (intStart == 0) {
        columns_ = objPrev.columns_;
        return;
    }
    const std::size_t first = objPrev.row(intStart);
    const std::size_t last = objPrev.row(intEnd);
    if (last < first) raiseIndexOutOfRange();
    columns_ = objPrev.columns_.part(first, last - first + 1);

    // The selection counts rows by position, so it is shifted with them. When an include selection covers none of the
    // copied rows, the range "0~0" is kept, which contains no row.
    CutIntervals.clear();
    for (const RowRange& range : selectionRanges(objPrev.CutIntervals)) {
        const RowRange moved = {std::max(range.From, intStart) - intStart + 1,
                                std::min(range.To, intEnd) - intStart + 1};
        if (moved.From <= moved.To) CutIntervals.push_back(selectionText(moved));
    }
    if (CutIntervals.empty() && IntervalsToBeIncluded && !objPrev.CutIntervals.empty()) {
        CutIntervals.push_back(selectionText({0, 0}));
    }
}

void clsLogIntervals::copyData(const IntervalColumns& range, std::int64_t from, std::int64_t to) {
    if (from == 0) {
        columns_ = range;
        return;
    }
    if (from < 1 || to > Count() || to - from + 1 != static_cast<std::int64_t>(range.count())) raiseIndexOutOfRange();
    columns_.moveIn(range, static_cast<std::size_t>(from) - 1);
}

void clsLogIntervals::ApplySelection() {
    const auto excluded = excludedRows(selectionRanges(CutIntervals), IntervalsToBeIncluded, columns_.count());
    columns_.isExcluded.drop();
    if (excluded.empty()) return;
    const auto cells = columns_.isExcluded.write(columns_.count(), columns_.capacity());
    std::copy(excluded.begin(), excluded.end(), cells.begin());
}

std::int64_t clsLogIntervals::IncludedCount() const {
    const auto excluded = columns_.cells(columns_.isExcluded);
    return Count() - std::count_if(excluded.begin(), excluded.end(), [](std::uint8_t cell) { return cell != 0; });
}

std::vector<RowRange> selectionRanges(const std::vector<std::string>& CutIntervals) {
    std::vector<RowRange> ranges;
    for (const std::string& text : CutIntervals) {
        RowRange range{};
        const char* end = text.data() + text.size();
        const auto from = std::from_chars(text.data(), end, range.From);
        if (from.ec != std::errc() || from.ptr == end || *from.ptr != '~') continue;
        const auto to = std::from_chars(from.ptr + 1, end, range.To);
        if (to.ec == std::errc() && to.ptr == end) ranges.push_back(range);
    }
    return ranges;
}

std::string selectionText(const RowRange& range) {
    return std::to_string(range.From) + "~" + std::to_string(range.To);
}

std::vector<std::uint8_t> excludedRows(const std::vector<RowRange>& ranges, bool toBeIncluded, std::size_t count) {
    if (ranges.empty()) return {};
    const auto rows = static_cast<std::int64_t>(count);
    // One pass is enough for any number of ranges: +1 where a range begins, -1 behind its end.
    std::vector<std::int32_t> steps(count + 1);
    for (const RowRange& range : ranges) {
        const std::int64_t first = std::max<std::int64_t>(range.From, 1);
        const std::int64_t last = std::min(range.To, rows);
        if (first > last) continue;
        ++steps[static_cast<std::size_t>(first) - 1];
        --steps[static_cast<std::size_t>(last)];
    }
    std::vector<std::uint8_t> excluded(count);
    std::int32_t depth = 0;
    for (std::size_t row = 0; row < count; ++row) {
        depth += steps[row];
        excluded[row] = static_cast<std::uint8_t>((depth > 0) != toBeIncluded);
    }
    return excluded;
}

} // namespace kestrane

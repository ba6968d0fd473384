#include "model/tLogInterval.h"

#include "model/clsLogIntervals.h"
#include "platform/RuntimeError.h"

namespace kestrane {

namespace {

// Where the figures without bands are in a record.
struct RecordMember {
    Quantity quantity;
    RecordDouble tLogInterval::*calcValue;
    RecordDouble tLogInterval::*value;
};

constexpr RecordMember kRecordMembers[] = {
    {Quantity::PeakA, &tLogInterval::PeakACalc, &tLogInterval::PeakA},
    {Quantity::DoseA, &tLogInterval::DoseACalc, &tLogInterval::DoseA},
    {Quantity::LepdA, &tLogInterval::LepdACalc, &tLogInterval::LepdA},
    {Quantity::SELA, &tLogInterval::SELACalc, &tLogInterval::SELA},
    {Quantity::Ltm3A, &tLogInterval::Ltm3ACalc, &tLogInterval::Ltm3A},
    {Quantity::Ltm5A, &tLogInterval::Ltm5ACalc, &tLogInterval::Ltm5A},
    {Quantity::Pa2hA, &tLogInterval::Pa2hACalc, &tLogInterval::Pa2hA},
    {Quantity::LeqB, &tLogInterval::LeqBCalc, &tLogInterval::LeqB},
    {Quantity::LminB, &tLogInterval::LminBCalc, &tLogInterval::LminB},
    {Quantity::LmaxB, &tLogInterval::LmaxBCalc, &tLogInterval::LmaxB},
    {Quantity::PeakB, &tLogInterval::PeakBCalc, &tLogInterval::PeakB},
    {Quantity::SELB, &tLogInterval::SELBCalc, &tLogInterval::SELB},
    {Quantity::LepdB, &tLogInterval::LepdBCalc, &tLogInterval::LepdB},
    {Quantity::DoseB, &tLogInterval::DoseBCalc, &tLogInterval::DoseB},
    {Quantity::Pa2hB, &tLogInterval::Pa2hBCalc, &tLogInterval::Pa2hB},
};

struct RecordBands {
    Quantity quantity;
    RecordDouble (tLogInterval::*calcValue)[34];
    RecordDouble (tLogInterval::*value)[34];
};

constexpr RecordBands kRecordBands[] = {
    {Quantity::LeqA, &tLogInterval::LeqACalc, &tLogInterval::LeqA},
    {Quantity::LminA, &tLogInterval::LminACalc, &tLogInterval::LminA},
    {Quantity::LmaxA, &tLogInterval::LmaxACalc, &tLogInterval::LmaxA},
};

Level toLevel(double calcValue, double value) {
    return {static_cast<float>(calcValue), static_cast<float>(value)};
}

} // namespace

void clsLogIntervals::GetData(std::vector<tLogInterval>& records) const {
    const IntervalColumns& c = columns_;
    records.assign(c.count(), tLogInterval());
    for (std::size_t at = 0; at < c.count(); ++at) {
        tLogInterval& r = records[at];
        r.IntervalLength = c.IntervalLength.at(at);
        r.Criterion = c.Criterion.at(at);
        r.Exchange = c.Exchange.at(at);
        r.StartDateTime = c.StartDate.at(at);
        r.StartTime = c.StartTime.at(at);
        r.LminTimeA = c.LminTimeA.at(at);
        r.LmaxTimeA = c.LmaxTimeA.at(at);
        r.PeakTimeA = c.PeakTimeA.at(at);
        r.OverloadedA = c.OverloadedA.at(at) != 0 ? -1 : 0;
        r.OverloadedB = c.OverloadedB.at(at) != 0 ? -1 : 0;
        for (const RecordMember& m : kRecordMembers) {
            const Level level = c.level(m.quantity, 0, at);
            r.*m.calcValue = level.CalcValue;
            r.*m.value = level.Value;
        }
        for (int band = 0; band < kBandCount; ++band) {
            for (const RecordBands& b : kRecordBands) {
                const Level level = c.level(b.quantity, band, at);
                (r.*b.calcValue)[band] = level.CalcValue;
                (r.*b.value)[band] = level.Value;
            }
            for (int ln = 1; ln <= NumberOfLns; ++ln) {
                const Level level = c.level(lnQuantity(ln), band, at);
                r.LnACalc[band][ln - 1] = level.CalcValue;
                r.LnA[band][ln - 1] = level.Value;
            }
        }
    }
}

void clsLogIntervals::copyData(const std::vector<tLogInterval>& records, std::int64_t from, std::int64_t to) {
    if (from == 0) {
        setArraySize(static_cast<std::int64_t>(records.size()));
        from = 1;
        to = Count();
    }
    if (from < 1 || to > Count() || to - from + 1 > static_cast<std::int64_t>(records.size())) raiseIndexOutOfRange();
    IntervalColumns& c = columns_;
    for (std::int64_t index = from; index <= to; ++index) {
        const std::size_t at = row(index);
        const tLogInterval& r = records[static_cast<std::size_t>(index - from)];
        c.set(c.IntervalLength, at, r.IntervalLength);
        c.set(c.Criterion, at, r.Criterion);
        c.set(c.Exchange, at, r.Exchange);
        c.set(c.StartDate, at, r.StartDateTime);
        c.set(c.StartTime, at, r.StartTime);
        c.set(c.LminTimeA, at, r.LminTimeA);
        c.set(c.LmaxTimeA, at, r.LmaxTimeA);
        c.set(c.PeakTimeA, at, r.PeakTimeA);
        c.set(c.OverloadedA, at, static_cast<std::uint8_t>(r.OverloadedA != 0));
        c.set(c.OverloadedB, at, static_cast<std::uint8_t>(r.OverloadedB != 0));
        for (const RecordMember& m : kRecordMembers)
            c.setLevel(m.quantity, 0, at, toLevel(r.*m.calcValue, r.*m.value));
        for (int band = 0; band < kBandCount; ++band) {
            for (const RecordBands& b : kRecordBands) {
                c.setLevel(b.quantity, band, at, toLevel((r.*b.calcValue)[band], (r.*b.value)[band]));
            }
            for (int ln = 1; ln <= NumberOfLns; ++ln) {
                c.setLevel(lnQuantity(ln), band, at, toLevel(r.LnACalc[band][ln - 1], r.LnA[band][ln - 1]));
            }
        }
    }
}

} // namespace kestrane

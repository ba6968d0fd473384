// The flat record of one interval row: 34 bands whatever the mode, each figure as CalcValue and as Value. A companion
// server's interface fixes its size and members; the record is kept for that server, and no rule of this program reads
// it.
#pragma once

#include <cstdint>

namespace kestrane {

// A double on a four-byte boundary, as the record requires.
using RecordDouble [[gnu::aligned(4)]] = double;

struct tLogInterval {
    std::int32_t IntervalLength; // seconds
    std::int16_t Criterion;
    std::int16_t Exchange;
    RecordDouble StartDateTime; // calendar number
    std::int32_t StartTime;     // seconds since midnight
    RecordDouble LeqACalc[34], LeqA[34];
    RecordDouble LminACalc[34], LminA[34];
    RecordDouble LmaxACalc[34], LmaxA[34];
    std::int32_t LminTimeA, LmaxTimeA; // seconds since midnight
    RecordDouble PeakACalc, PeakA;
    std::int32_t PeakTimeA; // seconds since midnight
    RecordDouble DoseACalc, DoseA;
    RecordDouble LepdACalc, LepdA;
    RecordDouble SELACalc, SELA;
    RecordDouble Ltm3ACalc, Ltm3A;
    RecordDouble Ltm5ACalc, Ltm5A;
    RecordDouble LnACalc[34][10], LnA[34][10]; // band, then Ln - 1
    RecordDouble Pa2hACalc, Pa2hA;
    std::int16_t OverloadedA; // 0 or -1
    RecordDouble LeqBCalc, LeqB;
    RecordDouble LminBCalc, LminB;
    RecordDouble LmaxBCalc, LmaxB;
    RecordDouble PeakBCalc, PeakB;
    RecordDouble SELBCalc, SELB;
    RecordDouble LepdBCalc, LepdB;
    RecordDouble DoseBCalc, DoseB;
    RecordDouble Pa2hBCalc, Pa2hB;
    std::int16_t OverloadedB; // 0 or -1
};

static_assert(sizeof(tLogInterval) == 7352);

} // namespace kestrane

// The flat record of one interval row, as it travels at the border of the store. 34 bands whatever the mode; each
// figure as CalcValue and Value. Its size is fixed.
#pragma once

#include <cstdint>

namespace kestrane {

#pragma pack(push, 4)

struct tLogInterval {
    std::int32_t IntervalLength; // seconds
    std::int16_t Criterion;
    std::int16_t Exchange;
    double StartDateTime;   // calendar number
    std::int32_t StartTime; // seconds since midnight
    double LeqACalc[34], LeqA[34];
    double LminACalc[34], LminA[34];
    double LmaxACalc[34], LmaxA[34];
    std::int32_t LminTimeA, LmaxTimeA; // seconds since midnight
    double PeakACalc, PeakA;
    std::int32_t PeakTimeA; // seconds since midnight
    double DoseACalc, DoseA;
    double LepdACalc, LepdA;
    double SELACalc, SELA;
    double Ltm3ACalc, Ltm3A;
    double Ltm5ACalc, Ltm5A;
    double LnACalc[34][10], LnA[34][10]; // band, then Ln - 1
    double Pa2hACalc, Pa2hA;
    std::int16_t OverloadedA; // 0 or -1
    double LeqBCalc, LeqB;
    double LminBCalc, LminB;
    double LmaxBCalc, LmaxB;
    double PeakBCalc, PeakB;
    double SELBCalc, SELB;
    double LepdBCalc, LepdB;
    double DoseBCalc, DoseB;
    double Pa2hBCalc, Pa2hB;
    std::int16_t OverloadedB; // 0 or -1
};

#pragma pack(pop)

static_assert(sizeof(tLogInterval) == 7352);

} // namespace kestrane

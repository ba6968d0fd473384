// One interval row as an object. Code fills one and commits it to clsLogIntervals, or asks for a row and gets a copy.
// Changing the object changes nothing in the store until it is committed.
#pragma once

#include "model/BandValues.h"
#include "model/IntervalColumns.h"
#include "model/clsDate.h"
#include "model/clsLogShared.h"
#include "model/clsTime.h"
#include "model/clsValue.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kestrane {

class clsLogInterval {
public:
    bool isExcluded = false;        // left out of calculations
    std::int32_t mLngInterval = 0;  // length of this row, seconds; 0 when it is the log's
    std::int16_t mIntCriterion = 0; // dB
    std::int16_t mIntExchange = 0;  // dB
    std::shared_ptr<clsLogShared> objLogShared;
    std::string InsName;       // set for saving only
    float FirmwareVersion = 0; // set for saving only
    clsDate StartDate;
    clsTime StartTime;
    clsTime LminTimeA, LmaxTimeA;
    clsValue PeakA;
    clsTime PeakTimeA;
    clsValue DoseA, LepdA, SELA, Ltm3A, Ltm5A, Pa2hA;
    clsValue LeqB, LminB, LmaxB, PeakB, SELB, LepdB, DoseB, Pa2hB;
    bool OverloadedA = false;
    bool OverloadedB = false;
    BandValues LeqA, LminA, LmaxA;
    LnValues LnA;

    void Initialize(std::shared_ptr<clsLogShared> shared);

    void Copy(const clsLogInterval& objPrevInterval) { *this = objPrevInterval; }

    LogMode Mode() const { return objLogShared->Mode(); }

    int e(std::string_view bandText) const { return objLogShared->e(bandText); }

    std::string_view eStr(int band) const { return objLogShared->eStr(band); }

    bool IsBrevikMeter() const;
};

// The one list of the quantities of a row that have no bands, each with its member.
struct RowMember {
    Quantity quantity;
    clsValue clsLogInterval::*member;
};

constexpr RowMember kRowMembers[] = {
    {Quantity::PeakA, &clsLogInterval::PeakA}, {Quantity::DoseA, &clsLogInterval::DoseA},
    {Quantity::LepdA, &clsLogInterval::LepdA}, {Quantity::SELA, &clsLogInterval::SELA},
    {Quantity::Ltm3A, &clsLogInterval::Ltm3A}, {Quantity::Ltm5A, &clsLogInterval::Ltm5A},
    {Quantity::Pa2hA, &clsLogInterval::Pa2hA}, {Quantity::LeqB, &clsLogInterval::LeqB},
    {Quantity::LminB, &clsLogInterval::LminB}, {Quantity::LmaxB, &clsLogInterval::LmaxB},
    {Quantity::PeakB, &clsLogInterval::PeakB}, {Quantity::SELB, &clsLogInterval::SELB},
    {Quantity::LepdB, &clsLogInterval::LepdB}, {Quantity::DoseB, &clsLogInterval::DoseB},
    {Quantity::Pa2hB, &clsLogInterval::Pa2hB},
};

} // namespace kestrane

#include "calc/FreqWeight.h"

#include "model/Session.h"

#include <algorithm>
#include <iterator>

namespace kestrane {

namespace {

struct BandOffset {
    std::string_view band;
    float a, c;
};

constexpr BandOffset kOffsets[] = {
    {"12.5", 63.4F, 11.2F}, {"16", 56.7F, 8.5F},   {"20", 50.5F, 6.2F},  {"25", 44.7F, 4.4F},   {"31.5", 39.4F, 3.0F},
    {"40", 34.6F, 2.0F},    {"50", 30.2F, 1.3F},   {"63", 26.2F, 0.8F},  {"80", 22.5F, 0.5F},   {"100", 19.1F, 0.3F},
    {"125", 16.1F, 0.2F},   {"160", 13.4F, 0.1F},  {"200", 10.9F, 0.0F}, {"250", 8.6F, 0.0F},   {"315", 6.6F, 0.0F},
    {"400", 4.8F, 0.0F},    {"500", 3.2F, 0.0F},   {"630", 1.9F, 0.0F},  {"800", 0.8F, 0.0F},   {"1k", 0.0F, 0.0F},
    {"1.25k", -0.6F, 0.0F}, {"1.6k", -1.0F, 0.1F}, {"2k", -1.2F, 0.2F},  {"2.5k", -1.3F, 0.3F}, {"3.15k", -1.2F, 0.5F},
    {"4k", -1.0F, 0.8F},    {"5k", -0.5F, 1.3F},   {"6.3k", 0.1F, 2.0F}, {"8k", 1.1F, 3.0F},    {"10k", 2.5F, 4.4F},
    {"12.5k", 4.3F, 6.2F},  {"16k", 6.6F, 8.5F},   {"20k", 9.3F, 11.2F},
};

bool isWeighting(std::string_view weight) {
    return weight == "A" || weight == "C" || weight == "Z";
}

// The two amounts added to convert a band, in dB: the first removes the old weighting, the second applies the new one.
struct Amounts {
    float off, on;
};

void addToPresent(clsValue& value, const Amounts& amounts) {
    for (const float amount : {amounts.off, amounts.on})
        if (value.CalcValue() != 0) value.CalcValue(value.CalcValue() + amount);
}

void adjustRows(IntervalColumns& rows, int band, const Amounts& amounts) {
    const auto adjust = [&](Quantity quantity) {
        if (rows.levels(quantity, band).empty()) return;
        for (Level& level : rows.writeLevels(quantity, band)) {
            for (const float amount : {amounts.off, amounts.on})
                if (level.CalcValue != 0) level.CalcValue += amount;
        }
    };
    for (const Quantity quantity : {Quantity::LeqA, Quantity::LminA, Quantity::LmaxA})
        adjust(quantity);
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        adjust(lnQuantity(ln));
}

void adjustCumulative(clsLog& log, int band, const Amounts& amounts) {
    for (BandValues* values : {&log.LeqCumA, &log.LminCumA, &log.LmaxCumA})
        addToPresent((*values)(band), amounts);
    for (int ln = 1; ln <= NumberOfLns; ++ln) {
        if (log.LnNumberA(ln) == 0) continue;
        clsValue& value = log.LnCumA(ln, band); // converted even when it is 0; that is meant
        for (const float amount : {amounts.off, amounts.on})
            value.CalcValue(value.CalcValue() + amount);
    }
}

float leqOfWeight(const clsLog& log, std::string_view weight) {
    if (log.FreqWeightA() == weight) return log.LeqCumA(0).CalcValue();
    return log.IsChannelBOn && log.FreqWeightB() == weight ? log.LeqCumB.CalcValue() : 0;
}

} // namespace

float weightingOffset(std::string_view weight, std::string_view bandText) {
    const auto row = std::find_if(std::begin(kOffsets), std::end(kOffsets),
                                  [&](const BandOffset& offset) { return offset.band == bandText; });
    if (row == std::end(kOffsets) || weight == "Z") return 0;
    return weight == "A" ? row->a : row->c;
}

void AdjustFreqWeight(clsLog& log, std::string_view newWeight, bool bAdjustIntervals) {
    const std::string before = log.FreqWeightA();
    clsLog named(log.session());
    named.FreqWeightA(newWeight);
    const std::string after = named.FreqWeightA();
    if (after.empty()) return;
    const int last = log.e("Last");
    if (last == 0) log.session().ShowMessage(log.session().LoadText(Text::WeightingHasNoEffect), kIconExclamation);
    if (after == before) return;
    log.FreqWeightA(after);
    // In a log without a weighting, the first step repeats the second step of the band before; that is meant
    // (instrument convention).
    float amount = 0;
    for (int band = 1; band <= last; ++band) {
        Amounts amounts{};
        if (isWeighting(before)) amount = weightingOffset(before, log.eStr(band));
        amounts.off = amount;
        amounts.on = amount = -weightingOffset(after, log.eStr(band));
        if (bAdjustIntervals) adjustRows(log.LogIntervals.Columns(), band, amounts);
        adjustCumulative(log, band, amounts);
    }
}

float LeqFreqWA(const clsLog& log) {
    return leqOfWeight(log, "A");
}

float LeqFreqWC(const clsLog& log) {
    return leqOfWeight(log, "C");
}

bool IsHMLCalculateable(const clsLog& log) {
    const std::string& a = log.FreqWeightA();
    const std::string& b = log.FreqWeightB();
    return log.IsChannelBOn && ((a == "A" && b == "C") || (a == "C" && b == "A"));
}

float HMLCMinusA(const clsLog& log) {
    return IsHMLCalculateable(log) ? LeqFreqWC(log) - LeqFreqWA(log) : 0;
}

std::string FreqW_NRR(const clsLog& log) {
    const auto usable = [](const std::string& weight) { return weight == "A" || weight == "C"; };
    if (usable(log.FreqWeightA())) return log.FreqWeightA();
    return log.IsChannelBOn && usable(log.FreqWeightB()) ? log.FreqWeightB() : std::string();
}

} // namespace kestrane

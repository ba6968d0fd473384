#include "sim/MerrowanInstrument.h"

#include "model/Session.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace kestrane {

namespace {

constexpr std::array<std::string_view, 3> kOctaveModels = {"TR322", "TR326", "TR352"};
constexpr std::array<std::string_view, 10> kOctaveBands = {"31.5", "63", "125", "250", "500",
                                                           "1k",   "2k", "4k",  "8k",  "16k"};
constexpr std::size_t kOctaveRecord = 82; // characters
constexpr std::array<std::string_view, 3> kFrequencyWeights = {"A", "Z", "C"};
constexpr std::array<std::string_view, 3> kTimeWeights = {"Slow", "Fast", "Impulse"};

// The code of a weighting; 3, which means none, when the weighting is not in the list.
std::string weightCode(const std::array<std::string_view, 3>& weights, std::string_view weight) {
    return hexPair(
        static_cast<unsigned>(std::distance(weights.begin(), std::find(weights.begin(), weights.end(), weight))));
}

bool isEnvironmental(const clsLog& log) {
    return log.TestLocationType() == EnvironmentLocation;
}

std::string moment(const clsTime& time, const clsDate& date) {
    return hexTime(time.getTimeAsSeconds()) + hexDate(date);
}

std::string hoursAndMinutes(std::int32_t secondsOfDay) {
    return hexTime(secondsOfDay).substr(0, 4);
}

std::string listEntry(const clsLog& log) {
    return "00" + std::string(isEnvironmental(log) ? "02" : "01") + hoursAndMinutes(log.StartTime.getTimeAsSeconds()) +
           "0000" + hexDate(log.StartDate);
}

// The Ln (1..10) of the percentile that the instrument calls its first (10) or second (90); 0 when the log has none.
int percentile(const clsLog& log, int number) {
    for (int ln = 1; ln <= NumberOfLns; ++ln) {
        if (log.LnNumberA(ln) == number) return ln;
    }
    return 0;
}

std::string cumulativePercentile(const clsLog& log, int number) {
    const int ln = percentile(log, number);
    return tenths(ln == 0 ? 0 : log.LnCumA(ln, 0).CalcValue());
}

std::string cumulative(const clsLog& log) {
    std::string payload = "000000";
    payload += hexWord(static_cast<unsigned>(log.LogIntervals.Count()));
    payload += moment(log.StartTime, log.StartDate) + moment(log.EndTime, log.EndDate);
    payload += weightCode(kFrequencyWeights, log.FreqWeightA()) + weightCode(kTimeWeights, log.TimeWeightA());
    payload += log.Criterion == 90 ? "0" : log.Criterion == 85 ? "1" : "9";
    payload += log.Exchange == 3 ? "0" : log.Exchange == 5 ? "1" : "9";
    const std::string leq = tenths(log.LeqCumA(0).CalcValue());
    const std::string lmax = tenths(log.LmaxCumA(0).CalcValue()) + moment(log.LmaxCumTimeA, log.LmaxCumDateA);
    const std::string sel = tenths(log.SELCumA.CalcValue());
    if (!isEnvironmental(log)) {
        return payload + leq + tenths(log.DoseETCumA.CalcValue()) + sel + lmax + tenths(log.PeakCumA.CalcValue()) +
               moment(log.PeakCumTimeA, log.PeakCumDateA);
    }
    payload += leq + lmax + tenths(log.LminCumA(0).CalcValue()) + moment(log.LminCumTimeA, log.LminCumDateA);
    return payload + cumulativePercentile(log, 10) + "0000" + cumulativePercentile(log, 90) + "0000000000" + sel;
}

std::string intervals(const clsLog& log) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const int tenth = percentile(log, 10);
    const int ninetieth = percentile(log, 90);
    std::string payload;
    for (std::size_t row = 0; row < rows.count(); ++row) {
        const auto level = [&](Quantity quantity) { return tenths(rows.level(quantity, 0, row).CalcValue); };
        const auto ln = [&](int i) { return i == 0 ? tenths(0) : level(lnQuantity(i)); };
        payload += hoursAndMinutes(rows.StartTime.at(row));
        if (isEnvironmental(log)) {
            payload += level(Quantity::LeqA) + level(Quantity::LmaxA) + hexTime(rows.LmaxTimeA.at(row)) +
                       level(Quantity::LminA) + hexTime(rows.LminTimeA.at(row)) + ln(tenth) + "0000" + ln(ninetieth) +
                       "00";
        } else {
            payload += level(Quantity::DoseA) + level(Quantity::LeqA) + level(Quantity::LmaxA) +
                       hexTime(rows.LmaxTimeA.at(row)) + level(Quantity::PeakA) + hexTime(rows.PeakTimeA.at(row)) +
                       "00";
        }
    }
    return payload;
}

std::string octaveRecord(const clsLog& log) {
    std::string record;
    for (const std::string_view band : kOctaveBands)
        record += tenths(log.LeqCumA(band).CalcValue());
    record += moment(log.StartTime, log.StartDate);
    record += log.OctaveType() == ManualOctave ? "01" : log.OctaveType() == LeqOctave ? "02" : "00";
    record += weightCode(kFrequencyWeights, log.FreqWeightA()) + weightCode(kTimeWeights, log.TimeWeightA());
    record.resize(kOctaveRecord, '0');
    return record;
}

std::string joined(const std::vector<const clsLog*>& logs, std::string (*record)(const clsLog&)) {
    std::string records;
    for (const clsLog* log : logs)
        records += record(*log);
    return records;
}

} // namespace

std::string MerrowanInstrument::answerTo(std::string_view payload) {
    const std::string_view question = payload.substr(0, 2);
    if (question == "00") return textFrame("0" + holdings_.Model.substr(2, 3) + holdings_.Model);
    if (question == "03") return textFrame(holdings_.Serial);
    if (question == "01") return textFrame(joined(holdings_.Locations, listEntry));
    const bool hasOctaves =
        std::find(kOctaveModels.begin(), kOctaveModels.end(), holdings_.Model) != kOctaveModels.end();
    if (question == "05" && hasOctaves) {
        return textFrame(hexWord(static_cast<unsigned>(holdings_.Octaves.size())));
    }
    if (question == "06" && hasOctaves) return textFrame(joined(holdings_.Octaves, octaveRecord));
    const clsLog* log = askedLog(payload, holdings_.Locations);
    const std::string_view part = payload.substr(std::max<std::size_t>(payload.size(), 2) - 2);
    if (log != nullptr && part == "00") return textFrame(cumulative(*log));
    if (log != nullptr && part == "01") return textFrame(intervals(*log));
    return std::string(kErrorReply);
}

} // namespace kestrane

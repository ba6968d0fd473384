#include "sim/TallixInstrument.h"

#include "model/InstrumentFamilies.h"
#include "model/Session.h"

#include <algorithm>
#include <cstdio>

namespace kestrane {

namespace {

constexpr std::size_t kCumulative = 68; // characters of a cumulative reply

// Replaces part of the payload by a text; position is counted from 1.
void put(std::string& payload, std::size_t position, std::string_view text) {
    payload.replace(position - 1, text.size(), text);
}

// A decimal number in five characters, with as many decimals as fit.
std::string fiveCharacters(float value) {
    char text[64];
    for (int decimals = 3; decimals >= 0; --decimals) {
        const int length = std::snprintf(text, sizeof text, "%05.*f", decimals, static_cast<double>(value));
        if (length == 5) return text;
    }
    return "00000";
}

std::string cumulative(const clsLog& log) {
    std::string payload(kCumulative, '0');
    put(payload, 1, hexWord(static_cast<unsigned>(log.LogIntervals.Count())));
    put(payload, 5, tenths(log.DoseETCumA.CalcValue()));
    put(payload, 9, tenths(log.LepdETCumA.CalcValue()));
    put(payload, 13, tenths(log.DoseMTCumA.CalcValue()));
    put(payload, 17, tenths(log.LepdMTCumA.CalcValue()));
    put(payload, 27, log.IsLoggingOverLoaded ? "01" : "00");
    put(payload, 29, hexPair(static_cast<unsigned>(log.Interval / 60)));
    put(payload, 31, tenths(log.DoseHourA.CalcValue()));
    put(payload, 47, tenths(log.LeqCumA(0).CalcValue()));
    put(payload, 51, fiveCharacters(log.Pa2hCumA.CalcValue()));
    put(payload, 56, std::string(1, static_cast<char>(log.Criterion)));
    put(payload, 57, hexTime(log.StartTime.getTimeAsSeconds()));
    put(payload, 63, hexDate(log.StartDate));
    return payload;
}

std::string series(const clsLog& log, Quantity quantity) {
    std::string payload;
    const IntervalColumns& rows = log.LogIntervals.Columns();
    for (std::size_t row = 0; row < rows.count(); ++row)
        payload += tenths(rows.level(quantity, 0, row).CalcValue);
    return payload;
}

} // namespace

std::string TallixInstrument::answerTo(std::string_view payload) {
    const std::string_view question = payload.substr(0, 2);
    if (question == "00") return textFrame("0" + holdings_.Model.substr(2, 3) + holdings_.Model);
    if (question == "03") return textFrame(holdings_.Serial);
    if (question == "01") {
        std::string entries;
        for (std::size_t i = 1; i <= holdings_.Locations.size(); ++i)
            entries += hexWord(static_cast<unsigned>(i)) + "000000000";
        return textFrame(entries);
    }
    if (question == "04") {
        clock_ << "clock " << payload.substr(2) << std::endl;
        return {};
    }
    const clsLog* log = askedLog(payload, holdings_.Locations);
    const std::string_view part = payload.substr(std::max<std::size_t>(payload.size(), 2) - 2);
    if (log != nullptr && part == "00") return textFrame(cumulative(*log));
    if (log != nullptr && part == "01") return textFrame(series(*log, Quantity::DoseA));
    const bool hasLevels = !hasTrait(holdings_.Model, Trait::ReportsDoseOnly);
    if (log != nullptr && part == "03" && hasLevels) return textFrame(series(*log, Quantity::LeqA));
    return std::string(kErrorReply);
}

} // namespace kestrane

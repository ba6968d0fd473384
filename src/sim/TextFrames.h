// What the instruments that answer in characters have in common: the frame, and numbers, times and dates as pairs of
// hexadecimal digits.
#pragma once

#include "model/clsDate.h"
#include "model/clsLog.h"
#include "model/clsTime.h"
#include "sim/Instrument.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

std::string textFrame(std::string_view payload);

std::string hexPair(unsigned value); // of the low byte
std::string hexWord(unsigned value); // four digits of the low two bytes

// A level or dose in tenths, four digits; 0 for what does not fit.
std::string tenths(float value);

std::string hexTime(std::int32_t secondsOfDay); // hhmmss
std::string hexDate(const clsDate& date);       // ddmmyy; zeros for a date that is not set

// Takes whole text frames; their payload is the command.
class TextInstrument : public CommandInstrument {
protected:
    std::size_t commandLength(std::string_view bytes) const override;
    std::string reply(std::string_view command) override;

    virtual std::string answerTo(std::string_view payload) = 0; // the bytes to send; empty: none
};

inline constexpr std::string_view kErrorReply = "ERROR"; // to a question that makes no sense, without a frame

// Of the question for data of a log, "02", its number, and which data ("00"): the log when there is one of the number,
// counted from 1; else null.
const clsLog* askedLog(std::string_view payload, const std::vector<const clsLog*>& logs);

} // namespace kestrane

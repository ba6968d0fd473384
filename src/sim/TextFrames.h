// What the instruments that answer in text have in common: the frame, and numbers, times and dates as pairs of
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

std::string hexPair(unsigned value); // two digits of the low byte
std::string hexWord(unsigned value); // four digits of the low two bytes

// A level or dose in tenths, as four digits; 0 for a value that does not fit.
std::string tenths(float value);

std::string hexTime(std::int32_t secondsOfDay); // hhmmss
std::string hexDate(const clsDate& date);       // ddmmyy; zeros for a date that is not set

// Takes whole text frames; their payload is the command.
class TextInstrument : public CommandInstrument {
protected:
    std::size_t commandLength(std::string_view bytes) const override;
    std::string reply(std::string_view command) override;

    virtual std::string answerTo(std::string_view payload) = 0; // the bytes to send; empty for no answer
};

// The answer, without a frame, to a question that makes no sense.
inline constexpr std::string_view kErrorReply = "ERROR";

// The log that a question for data asks for: "02", its number (counted from 1) and which data ("00"). Null when there
// is no log of that number and for any other question.
const clsLog* askedLog(std::string_view payload, const std::vector<const clsLog*>& logs);

} // namespace kestrane

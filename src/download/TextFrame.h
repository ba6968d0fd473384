// The replies of the text protocols: the payload of a frame, and its fields by position. A field that does not lie
// within the payload, or is no number, ends the download: the reply cannot be taken apart.
#pragma once

#include "download/Transport.h"
#include "model/clsDate.h"
#include "model/clsTime.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

std::string_view framePayload(std::string_view reply);

// Of a reply with the data of a log: a character of the check field stays behind them, and is not read.
std::string_view dataPayload(std::string_view reply);

// Positions are counted from 1.
class TextFields {
public:
    explicit TextFields(std::string_view text) : text_(text) {}

    std::string_view text(std::size_t position, std::size_t length) const;
    std::int32_t hex(std::size_t position, std::size_t length) const;
    float value(std::size_t position) const; // four digits, in tenths

    clsTime time(std::size_t position, std::size_t length = 6) const; // pairs of hexadecimal digits
    clsDate date(std::size_t position) const;

    TextFields from(std::size_t position) const; // what begins there

private:
    std::string_view text_;
};

// How many entries of a size a payload holds, to the nearest whole number.
std::size_t entryCount(std::string_view payload, std::size_t size);

// Questions that both families answer.
std::string askSerialNumber(Transport& line);
std::string askLogList(Transport& line); // its payload

enum class LogPart { Cumulative = 0, Intervals = 1, Levels = 3 };

std::string askLog(Transport& line, int number, LogPart part); // its payload

} // namespace kestrane

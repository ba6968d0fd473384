// The replies of the text protocols: the payload of a frame, and its fields by position. A field that is not within the
// payload, or is no number, ends the download, because the reply cannot be decoded. So does a reply that is not one
// whole frame: a line that stood still for a while would else give figures of another place, or fewer of them.
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

// The payload of a reply with the data of a log. It keeps the check field at its end, which is not read; that is meant.
std::string_view dataPayload(std::string_view reply);

// Positions are counted from 1.
class TextFields {
public:
    explicit TextFields(std::string_view text) : text_(text) {}

    std::string_view text(std::size_t position, std::size_t length) const;
    std::int32_t hex(std::size_t position, std::size_t length) const;
    float value(std::size_t position) const; // a number of four digits, in tenths

    clsTime time(std::size_t position, std::size_t length = 6) const; // pairs of hexadecimal digits
    clsDate date(std::size_t position) const;

    TextFields from(std::size_t position) const; // the fields from a position on, which becomes position 1

private:
    std::string_view text_;
};

// The number of entries of a size in a payload, rounded to the nearest whole number.
std::size_t entryCount(std::string_view payload, std::size_t size);

// Questions that both families of text protocols answer.
std::string askSerialNumber(Transport& line);
std::string askLogList(Transport& line); // the payload of the answer

enum class LogPart { Cumulative = 0, Intervals = 1, Levels = 3 };

std::string askLog(Transport& line, int number, LogPart part); // the payload of the answer

} // namespace kestrane

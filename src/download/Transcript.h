// What went over the line, as a text that people can read and kestrane-sim can replay. There is a line for each chunk
// of bytes and for each note:
//     # Identifying Instrument...
//     +0.000 > 02010003
//     +0.160 < 0200007D
// The number is the seconds since the download began, with three decimals; ">" marks bytes sent and "<" bytes received,
// as pairs of upper-case hexadecimal digits. A chunk received is what was waiting when the line was looked at: a reply
// may take many lines, and belongs to the chunk sent before it. A note extends from "# " to the end of its line. The
// notes "# port NUMBER DEVICE" and "# settings TEXT" are about the port, "# read to the end" says that a log is whole;
// other notes are for people. Lines end with a line feed.
#pragma once

#include "platform/MonotonicClock.h"

#include <functional>
#include <string_view>

namespace kestrane {

// The note that everything received so far is in a log, or the octaves, that were read to the end.
constexpr std::string_view kReadToEnd = "read to the end";

using TranscriptSink = std::function<void(std::string_view line)>; // receives a whole line, including its end

class Transcript {
public:
    // Time is counted from now on. Without a sink nothing is recorded.
    Transcript(const MonotonicClock& clock, TranscriptSink sink);

    void Sent(std::string_view bytes) const { chunk('>', bytes); }

    void Received(std::string_view bytes) const { chunk('<', bytes); }

    void Note(std::string_view text) const; // line ends become blanks

private:
    void chunk(char direction, std::string_view bytes) const;

    const MonotonicClock& clock_;
    TranscriptSink sink_;
    std::chrono::milliseconds start_;
};

} // namespace kestrane

// What went over the line, as text that people read and kestrane-sim replays. A line for each chunk of bytes and for
// each note:
//     # Identifying Instrument...
//     +0.000 > 02010003
//     +0.160 < 0200007D
// The number is seconds since the download began, with three decimals; ">" are bytes sent, "<" bytes received, as pairs
// of upper-case hexadecimal digits. A chunk received is what was waiting at one look: a reply may take many lines, and
// belongs to the chunk sent before it. A note goes from "# " to the end of its line. The notes "# port NUMBER DEVICE"
// and "# settings TEXT" tell of the port; others are for people. Lines end with a line feed.
#pragma once

#include "platform/MonotonicClock.h"

#include <functional>
#include <string_view>

namespace kestrane {

using TranscriptSink = std::function<void(std::string_view line)>; // a whole line, with its end

class Transcript {
public:
    // Time begins now. Without a sink nothing is kept.
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

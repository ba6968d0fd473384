#include "download/TextFrame.h"

#include "download/Hex.h"
#include "download/WireReader.h"

#include <cmath>

namespace kestrane {

namespace {

constexpr std::size_t kHead = 5; // bytes: STX and the length
constexpr std::size_t kTail = 3; // bytes: check field and ETX

// Whether a reply is one whole frame. Its first and last byte stand nowhere else, so a piece that is missing, or one of
// another reply that came too late for its own question, is seen.
bool isOneFrame(std::string_view reply) {
    constexpr char kBegin = '\x02', kEnd = '\x03';
    return reply.rfind(kBegin) == 0 && reply.find(kEnd) == reply.size() - 1;
}

std::string_view payloadOf(std::string_view reply, std::size_t tail) {
    if (reply.size() < kHead + tail || !isOneFrame(reply)) throw DownloadEnded{std::string(kReplyError)};
    return reply.substr(kHead, reply.size() - kHead - tail);
}

} // namespace

std::string_view framePayload(std::string_view reply) {
    return payloadOf(reply, kTail);
}

std::string_view dataPayload(std::string_view reply) {
    return payloadOf(reply, 1);
}

std::string_view TextFields::text(std::size_t position, std::size_t length) const {
    return wireField(text_, position - 1, length);
}

std::int32_t TextFields::hex(std::size_t position, std::size_t length) const {
    return hexNumber(text(position, length));
}

float TextFields::value(std::size_t position) const {
    constexpr std::size_t kDigits = 4;
    return HexPairValue(text(position, kDigits));
}

clsTime TextFields::time(std::size_t position, std::size_t length) const {
    clsTime time;
    time.AcquireTime(text(position, length));
    return time;
}

clsDate TextFields::date(std::size_t position) const {
    constexpr std::size_t kDigits = 6;
    clsDate date;
    date.CalcDate(text(position, kDigits));
    return date;
}

TextFields TextFields::from(std::size_t position) const {
    wireField(text_, position - 1, 0);
    return TextFields(text_.substr(position - 1));
}

std::size_t entryCount(std::string_view payload, std::size_t size) {
    return static_cast<std::size_t>(std::nearbyint(static_cast<double>(payload.size()) / static_cast<double>(size)));
}

std::string askSerialNumber(Transport& line) {
    return wireText(framePayload(line.Ask("03")));
}

std::string askLogList(Transport& line) {
    line.ShowLabel(line.session().LoadText(Text::DownloadingListOfLogs));
    return std::string(framePayload(line.Ask("01")));
}

std::string askLog(Transport& line, int number, LogPart part) {
    const std::string command = "02" + fourHexDigits(number) + "0" + std::to_string(static_cast<int>(part));
    return std::string(dataPayload(line.Ask(command)));
}

} // namespace kestrane

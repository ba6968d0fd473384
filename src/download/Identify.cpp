#include "download/Identify.h"

#include "download/WireReader.h"
#include "model/InstrumentFamilies.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace kestrane {

namespace {

constexpr std::size_t kNoReplySize = 3; // a reply of at most this size counts as none
constexpr std::string_view kHoldsNoLogs = "\x30\xFE";
constexpr std::string_view kFastLine = "19200,n,8,2";
constexpr std::string_view kSlowLine = "2400,n,8,2";

void setType(clsInsData& data, std::int32_t type) {
    const bool fits = type >= 0 && type <= std::numeric_limits<std::int16_t>::max();
    data.InsType = fits ? static_cast<std::int16_t>(type) : std::int16_t{0};
}

std::string nameOfType(std::int32_t type, bool isLongRecord) {
    constexpr std::int32_t kTR312E = 117;
    std::string brevik = InstrumentNameByIndex(type);
    if (!brevik.empty() || isLongRecord) return brevik;
    return type == kTR312E ? "TR312E" : "TR" + std::to_string(type) + "L";
}

// Reads the firmware version times 100, in the long form an unused number, the type, and the serial number.
void readBinary(std::string_view reply, clsInsData& data) {
    constexpr std::size_t kRecord = 3;
    constexpr std::size_t kLongReply = 20;
    const bool isLongRecord = reply.size() == kLongReply;
    const std::size_t type = kRecord + (isLongRecord ? 8 : 4);
    const std::int32_t serial = wireLong(reply, type + 4);
    data.InsName(nameOfType(wireLong(reply, type), isLongRecord));
    setType(data, wireLong(reply, type));
    data.FirmwareVersion = static_cast<float>(wireLong(reply, kRecord) / 100.0);
    data.InsSerial = std::to_string(serial);
}

// Reads one character, the name, CR, the serial number, CR.
void readLines(std::string_view reply, clsInsData& data) {
    const std::size_t name = reply.find('\r', 1);
    if (name == std::string_view::npos) return;
    data.InsName(wireText(reply.substr(1, name - 1)));
    const std::size_t serial = reply.find('\r', name + 1);
    if (serial != std::string_view::npos) data.InsSerial = wireText(reply.substr(name + 1, serial - name - 1));
}

// Reads a text frame: the type in four digits, then the name. A shorter reply has no name, as when a looped-back cable
// returns the question.
void readFramed(std::string_view reply, clsInsData& data) {
    constexpr std::size_t kHead = 5, kTail = 3, kDigits = 4;
    if (reply.size() < kHead + kTail) throw DownloadEnded{std::string(kReplyError)};
    std::string_view payload = reply.substr(kHead, reply.size() - kHead - kTail);
    while (payload.starts_with(' '))
        payload.remove_prefix(1);
    setType(data, toInteger(payload.substr(0, kDigits), Locale{}));
    data.InsName(wireText(payload.substr(std::min(kDigits, payload.size()))));
}

struct Question {
    std::string_view Settings;
    std::string_view Command;
    void (*Read)(std::string_view reply, clsInsData& data);
};

constexpr std::string_view kAskBinary{"\xAC\x02\x01\x00\x03", 5};
constexpr std::string_view kAskLines = "\xAC\x02\x05";
constexpr std::string_view kAskFramed = "00";

constexpr Question kQuestions[] = {
    {kFastLine, kAskBinary, readBinary},
    {kFastLine, kAskLines, readLines},
    {kSlowLine, kAskFramed, readFramed},
};

enum class Answer { None, Error, NoLogs, Named };

Answer ask(Transport& line, const Question& question, clsInsData& data) {
    const std::string reply = line.SendCommand(question.Command, true, 1);
    if (line.IsCancelled()) throw DownloadEnded{};
    if (reply == kNoResponse) return Answer::None;
    if (reply == kReplyError) return Answer::Error;
    const bool isEcho = question.Command == kAskBinary && reply == FrameCommand(question.Command);
    if (reply.size() <= kNoReplySize || isEcho) {
        return question.Command == kAskLines && reply == kHoldsNoLogs ? Answer::NoLogs : Answer::None;
    }
    try {
        question.Read(reply, data);
        return Answer::Named;
    } catch (const RuntimeError&) {
        return Answer::Error;
    } catch (const DownloadEnded&) { // from reading: the reply cannot be decoded
        return Answer::Error;
    }
}

// The search over all ports.
class PortScan {
public:
    PortScan(Transport& line, clsInsData& data) : line_(line), data_(data) {}

    Identification run() {
        for (const PortInfo& port : portsInOrder()) {
            const std::optional<Identification> settled = tryPort(port);
            if (settled) return *settled;
            line_.ClosePort();
        }
        return {failure(), false};
    }

private:
    std::vector<PortInfo> portsInOrder() const {
        std::vector<PortInfo> ports = line_.comm().Ports();
        std::erase_if(ports, [](const PortInfo& port) { return port.Number < 1 || port.Number > 255; });
        const int lastUsed = line_.session().Options.SerialPort;
        std::stable_sort(ports.begin(), ports.end(), [&](const PortInfo& a, const PortInfo& b) {
            const bool isFirst = a.Number == lastUsed;
            const bool isOtherFirst = b.Number == lastUsed;
            return isFirst != isOtherFirst ? isFirst : a.Number < b.Number;
        });
        return ports;
    }

    std::optional<Identification> tryPort(const PortInfo& port) {
        try {
            line_.OpenPort(port);
        } catch (const RuntimeError& error) {
            refusals_ += "\r\n" + port.Device + ": " + error.what();
            return std::nullopt;
        }
        isAnyOpen_ = true;
        forgetInstrument();
        try {
            return askAll(port);
        } catch (const RuntimeError& error) { // from opening or setting the port
            takeFault(std::to_string(error.Number) + ": " + error.what());
        } catch (const DownloadEnded& ended) {
            if (line_.IsCancelled()) return Identification{};
            takeFault(ended.Message);
        }
        return std::nullopt;
    }

    std::optional<Identification> askAll(const PortInfo& port) {
        for (const Question& question : kQuestions) {
            if (!line_.comm().IsOpen()) line_.OpenPort(port); // the silence after the previous question has closed it
            line_.SetLine(std::string(question.Settings));
            const Answer answer = ask(line_, question, data_);
            if (answer == Answer::NoLogs) return Identification{std::string(kNoLogs), false};
            if (answer == Answer::Named) {
                if (data_.InsName().empty()) return std::nullopt;
                return Identification{{}, true};
            }
            isAnyError_ = isAnyError_ || answer == Answer::Error;
        }
        return std::nullopt;
    }

    void forgetInstrument() {
        data_.InsName({});
        data_.InsSerial.clear();
        data_.InsType = 0;
        data_.FirmwareVersion = 0;
    }

    void takeFault(const std::string& text) {
        if (fault_.empty()) fault_ = text;
    }

    // The message that says why the search found nothing.
    std::string failure() const {
        const Session& session = line_.session();
        if (!isAnyOpen_) return session.LoadText(Text::NoValidPort) + refusals_;
        if (isAnyError_) return std::string(kReplyError);
        return fault_.empty() ? session.LoadText(Text::InstrumentNotResponding) : fault_;
    }

    Transport& line_;
    clsInsData& data_;
    bool isAnyOpen_ = false;
    bool isAnyError_ = false;
    std::string fault_;
    std::string refusals_;
};

} // namespace

Identification IdentifyInstrument(Transport& line, clsInsData& data) {
    line.ShowLabel(line.session().LoadText(Text::IdentifyingInstrument));
    Identification identification = PortScan(line, data).run();
    data.IsBrevikS = IsBrevikS(data.InsName());
    data.IsBrevikE = IsBrevikE(data.InsName());
    data.IsBrevikSE = IsBrevikSE(data.InsName());
    return identification;
}

} // namespace kestrane

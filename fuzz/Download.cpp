// Any bytes as the replies of an instrument: the first byte says which family answers, then each question takes two
// bytes of length and a reply of that length. When they have run out the user cancels. The download ends with logs
// whose document can be opened again, or with a message and none.
#include "app/Download.h"
#include "Target.h"
#include "download/ScriptedLine.h"
#include "download/Wire.h"
#include "files/XmlDocument.h"
#include "files/XmlWriter.h"

#include <cmath>

namespace kestrane::fuzz {

namespace {

struct Identity {
    std::string settings, question, reply; // an empty reply is taken from the input, too
};

const std::vector<Identity>& identities() {
    const auto binary = [](std::int32_t firmware, std::int32_t type) {
        return Identity{"19200,n,8,2", bytesOf("02010003"),
                        "abc" + std::string(Record(12).at(0, firmware).at(4, type).at(8, 7))};
    };
    const auto text = [](const char* payload) { return Identity{"2400,n,8,2", textFrame("00"), textFrame(payload)}; };
    static const std::vector<Identity> all = {
        binary(230, 0),
        binary(105, 1),
        binary(101, 117),
        binary(100, 350),
        text("0001TR310"),
        text("0001TR340"),
        text("0001TR322"),
        {"19200,n,8,2", bytesOf("0205"), "*Corvane\r1\r"},
        {"19200,n,8,2", bytesOf("02010003"), ""},
        {"19200,n,8,2", bytesOf("0205"), ""},
        {"2400,n,8,2", textFrame("00"), ""},
    };
    return all;
}

class Replies {
public:
    explicit Replies(std::string_view input) : rest_(input) {}

    std::string next() {
        if (rest_.size() < kLength) return {};
        const auto byte = [&](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(rest_[i])); };
        const std::size_t length = byte(0) + 256 * byte(1);
        std::string reply(rest_.substr(kLength, length));
        rest_.remove_prefix(std::min(kLength + length, rest_.size()));
        return reply;
    }

private:
    static constexpr std::size_t kLength = 2;
    std::string_view rest_;
};

void requireWholeLogs(const clsInsData& data, std::size_t bytes) {
    for (const LogMode mode : {modeBroadband, modeFullOctave, modeThirdOctave}) {
        for (const auto& log : data.logsOf(mode)) {
            require(!log->IntervalsRecalculating, "the recalculation has ended");
            require(static_cast<std::size_t>(log->LogIntervals.Count()) <= bytes, "rows have come over the line");
            for (const Level& level : log->LogIntervals.Columns().levels(Quantity::LeqA, 0))
                require(std::isfinite(level.Value), "a level is a number");
        }
    }
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    using namespace kestrane::fuzz;
    if (size == 0) return 0;
    const Identity& identity = identities()[data[0] % identities().size()];
    Replies replies({reinterpret_cast<const char*>(data) + 1, size - 1});
    ScriptedDownload download;
    download.messages.Answers.assign(4, Button::Cancel);
    milliseconds asked{0};
    download.user.Cancels = [&] { return download.time.Now - asked > std::chrono::minutes(1); };
    bool isIdentified = false;
    download.comm.Answer = [&](const std::string& sent) -> std::vector<ScriptedComm::Arrival> {
        std::string reply;
        asked = download.time.Now;
        if (isIdentified) {
            reply = replies.next();
        } else if (sent == identity.question && download.comm.LineSettings == identity.settings) {
            reply = identity.reply.empty() ? replies.next() : identity.reply;
            isIdentified = true;
        }
        if (reply.empty()) return {};
        return {{milliseconds(5), reply}};
    };
    if (!DownloadData(download.services, nullptr)) {
        require(download.session.OpenFiles.empty(), "nothing is kept");
        require(!download.messages.Boxes.empty() && !download.shown().empty(), "a failure says why");
        return 0;
    }
    const clsFile& file = *download.session.OpenFiles.front();
    requireWholeLogs(*file.InstrumentDatas.front(), size);
    std::string reason;
    require(XmlDocument::fromText(DocumentText(file, true), reason) != nullptr, "what was downloaded can be saved");
    return 0;
}

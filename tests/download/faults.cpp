// Every fault of a line at every byte of what an instrument sends: the download gives the same logs, or a message and
// nothing, or, from an instrument that holds files, the files that can be read and a message about the others. Prints a
// table, a row for each kind of instrument; exit status 1 when a download broke that rule.
//     protocol_faults [--every N]     tries one fault in N
// A line that stops in the middle of a reply, for a while or for good, must never change a figure in silence, where the
// protocol says how a reply begins and ends. Time is
// virtual, so a wait costs nothing. No protocol carries a checksum, so a changed digit of a figure cannot be
// seen by anybody: the last column counts the downloads that gave other figures than the instrument has.
#include "SampleInstruments.h"
#include "app/Download.h"
#include "files/XmlWriter.h"

#include <cstdio>
#include <cstdlib>
#include <random>

namespace kestrane {
namespace {

// One fault at a byte of a reply.
enum class LineFault { Flip, Drop, Double, InsertZero, InsertOnes, InsertAny, Swap, Stall, Cut, HangUp, End };

constexpr int kBits = 8;
constexpr milliseconds kAnswerTime{40};
constexpr milliseconds kStall{5000};                         // longer than a silence that ends a reply
constexpr milliseconds kPatience = std::chrono::minutes(2);  // of a user who waits for an answer
constexpr milliseconds kDeadline = std::chrono::seconds(30); // for an answer, three tries included
constexpr long kMostTold = 3;                                // broken downloads of one kind of instrument

struct Place {
    int exchange;
    std::size_t at;
    LineFault fault;
    int bit; // of a flip
};

std::string spoilt(std::string reply, const Place& place, std::mt19937& random) {
    const auto at = static_cast<std::ptrdiff_t>(place.at);
    switch (place.fault) {
    case LineFault::Flip:
        reply[place.at] = static_cast<char>(reply[place.at] ^ (1 << place.bit));
        break;
    case LineFault::Drop:
        reply.erase(place.at, 1);
        break;
    case LineFault::Double:
        reply.insert(place.at, 1, reply[place.at]);
        break;
    case LineFault::InsertZero:
        reply.insert(place.at, 1, '\0');
        break;
    case LineFault::InsertOnes:
        reply.insert(place.at, 1, '\xFF');
        break;
    case LineFault::InsertAny:
        reply.insert(place.at, 1, static_cast<char>(random() % 256));
        break;
    case LineFault::Swap:
        if (place.at + 1 < reply.size()) std::iter_swap(reply.begin() + at, reply.begin() + at + 1);
        break;
    case LineFault::Cut:
    case LineFault::HangUp:
        reply.resize(place.at);
        break;
    case LineFault::Stall:
    case LineFault::End:
        break;
    }
    return reply;
}

// What a download came to.
struct Outcome {
    bool isKept = false;
    bool isLate = false;
    bool isWaiting = false; // it waited for an answer until the user gave up
    std::string message;
    std::string document;
    bool isBroken = false; // neither logs nor a message, or both
};

// Knows for how long an answer has been waited for. Time goes on in other waits, too, such as that for a recalculation.
class WatchedComm : public ScriptedComm {
public:
    explicit WatchedComm(ScriptedTime& time) : ScriptedComm(time), time_(time) {}

    std::size_t InBufferCount() const override {
        const milliseconds since = time_.Now - last_;
        if (since < kNoLook) waited_ += since;
        last_ = time_.Now;
        Longest = std::max(Longest, waited_);
        return ScriptedComm::InBufferCount();
    }

    void Output(std::string_view bytes) override {
        last_ = time_.Now;
        waited_ = milliseconds(0);
        ScriptedComm::Output(bytes);
    }

    mutable milliseconds Longest{0};

private:
    static constexpr milliseconds kNoLook{1000}; // longer than between two looks at a line

    const ScriptedTime& time_;
    mutable milliseconds last_{0}, waited_{0};
};

class Line {
public:
    Line(const SampleInstrument& instrument, const Place* place) : instrument_(instrument), place_(place) {}

    Outcome download() {
        ScriptedDownload run;
        WatchedComm comm(run.time);
        const DownloadServices services{run.session, comm, run.user, run.time, {}};
        bool isWaiting = false;
        run.user.Cancels = [&] {
            isWaiting = isWaiting || comm.Longest > kPatience;
            return isWaiting;
        };
        comm.Answer = [&](const std::string& sent) { return answer(comm, sent); };
        Outcome outcome;
        outcome.isKept = DownloadData(services, nullptr);
        outcome.isWaiting = isWaiting;
        outcome.isLate = !isWaiting && comm.Longest > kDeadline;
        const auto& files = run.session.OpenFiles;
        outcome.message = run.shown();
        outcome.isBroken = outcome.isKept == files.empty() || (!outcome.isKept && outcome.message.empty());
        if (!files.empty()) outcome.document = DocumentText(*files.front(), true);
        return outcome;
    }

    const std::vector<std::string>& replies() const { return replies_; }

private:
    std::vector<ScriptedComm::Arrival> answer(ScriptedComm& comm, const std::string& sent) {
        const auto found = instrument_.Answers.find(sent);
        if (isDead_ || found == instrument_.Answers.end() || comm.LineSettings != instrument_.Settings) return {};
        const std::string& reply = found->second;
        replies_.push_back(reply);
        if (place_ == nullptr || static_cast<int>(replies_.size()) - 1 != place_->exchange)
            return {{kAnswerTime, reply}};
        isDead_ = place_->fault == LineFault::Cut || place_->fault == LineFault::HangUp;
        if (place_->fault == LineFault::HangUp) comm.FaultText = "The device is not there any more";
        if (place_->fault == LineFault::Stall)
            return {{kAnswerTime, reply.substr(0, place_->at)}, {kStall, reply.substr(place_->at)}};
        return {{kAnswerTime, spoilt(reply, *place_, random_)}};
    }

    const SampleInstrument& instrument_;
    const Place* place_;
    std::vector<std::string> replies_;
    bool isDead_ = false;
    std::mt19937 random_{20261125};
};

struct Row {
    long faults = 0, same = 0, refused = 0, partly = 0, waited = 0, other = 0, broken = 0;
};

std::vector<Place> placesIn(const std::vector<std::string>& replies) {
    std::vector<Place> places;
    for (std::size_t exchange = 0; exchange < replies.size(); ++exchange) {
        for (std::size_t at = 0; at < replies[exchange].size(); ++at) {
            for (int fault = 0; fault < static_cast<int>(LineFault::End); ++fault) {
                const auto kind = static_cast<LineFault>(fault);
                for (int bit = 0; bit < (kind == LineFault::Flip ? kBits : 1); ++bit)
                    places.push_back({static_cast<int>(exchange), at, kind, bit});
            }
        }
    }
    return places;
}

// Whether a fault loses bytes or brings them too late, and no others, so that it can be seen.
bool isLost(LineFault fault, bool isFramed) {
    return fault == LineFault::Cut || fault == LineFault::HangUp || (fault == LineFault::Stall && isFramed);
}

struct Kind {
    const char* name;
    SampleInstrument instrument;
    bool isFramed = true; // it can be told where a reply begins and ends
};

// Tries every step-th fault of the instrument.
Row tried(const Kind& kind, std::size_t step) {
    const auto& [name, instrument, isFramed] = kind;
    Line whole(instrument, nullptr);
    const Outcome golden = whole.download();
    const std::vector<Place> places = placesIn(whole.replies());
    Row row;
    if (!golden.isKept) {
        std::printf("%s without a fault: %s\n", name, golden.message.c_str());
        ++row.broken;
    }
    for (std::size_t i = 0; i < places.size(); i += step) {
        const Place& place = places[i];
        const Outcome outcome = Line(instrument, &place).download();
        ++row.faults;
        const bool isSame = outcome.document == golden.document;
        const bool isSilent = outcome.isKept && !isSame && outcome.message == golden.message;
        if (outcome.isBroken || outcome.isLate || (isSilent && isLost(place.fault, isFramed))) {
            if (++row.broken > kMostTold) continue;
            std::printf("%s: exchange %d, byte %zu, fault %d, bit %d: %s\n", name, place.exchange, place.at,
                        static_cast<int>(place.fault), place.bit,
                        (outcome.message + outcome.document).substr(0, 200).c_str());
        } else if (!outcome.isKept) {
            ++(outcome.isWaiting ? row.waited : row.refused);
        } else {
            ++(isSame ? row.same : isSilent ? row.other : row.partly);
        }
    }
    return row;
}

int run(std::size_t step) {
    const Kind kinds[] = {{"Brevik", brevik()},
                          {"Brevik, early", brevik(105)},
                          {"Halcyr", halcyr(101, 117)},
                          {"Halcyr, early", halcyr(100, 117)},
                          {"Old Tallix", tallix("TR310")},
                          {"Old Tallix, doses", tallix("TR340")},
                          {"Merrowan", merrowan("TR322")},
                          {"Corvane", corvane(), false}};
    std::printf("| instrument | faults | same logs | refused | without a log that is told | waits for the user | other "
                "figures | broken |\n");
    std::printf("|---|---|---|---|---|---|---|---|\n");
    long broken = 0;
    for (const Kind& kind : kinds) {
        const Row row = tried(kind, step);
        broken += row.broken;
        std::printf("| %s | %ld | %ld | %ld | %ld | %ld | %ld | %ld |\n", kind.name, row.faults, row.same, row.refused,
                    row.partly, row.waited, row.other, row.broken);
        std::fflush(stdout);
    }
    return broken == 0 ? 0 : 1;
}

} // namespace
} // namespace kestrane

int main(int argc, char* argv[]) {
    const bool hasStep = argc == 3 && std::string(argv[1]) == "--every";
    const long step = hasStep ? std::strtol(argv[2], nullptr, 10) : 1;
    if (step < 1 || (argc != 1 && !hasStep)) {
        std::fprintf(stderr, "usage: protocol_faults [--every N]\n");
        return 2;
    }
    return kestrane::run(static_cast<std::size_t>(step));
}

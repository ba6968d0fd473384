#include "sim/Faults.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kestrane {

namespace {

enum class Count { None, May, Must }; // whether "=N" stands behind a word

struct FaultWord {
    std::string_view word;
    FaultKind kind;
    Count count;
};

constexpr std::array kWords = {
    FaultWord{"silence", FaultKind::Silence, Count::May}, FaultWord{"error", FaultKind::Error, Count::May},
    FaultWord{"echo", FaultKind::Echo, Count::None},      FaultWord{"split", FaultKind::Split, Count::None},
    FaultWord{"noise", FaultKind::Noise, Count::None},    FaultWord{"cut", FaultKind::Cut, Count::Must},
    FaultWord{"hangup", FaultKind::HangUp, Count::Must}};

} // namespace

std::optional<Fault> parseFault(std::string_view text) {
    const std::size_t equals = std::min(text.find('='), text.size());
    const auto word = std::find_if(kWords.begin(), kWords.end(),
                                   [&](const FaultWord& w) { return w.word == text.substr(0, equals); });
    if (word == kWords.end()) return std::nullopt;
    Fault fault{word->kind};
    if (equals == text.size()) return word->count == Count::Must ? std::nullopt : std::optional(fault);
    const std::string_view number = text.substr(equals + 1);
    const auto result = std::from_chars(number.data(), number.data() + number.size(), fault.count);
    const bool isGood =
        result.ec == std::errc() && result.ptr == number.data() + number.size() && word->count != Count::None;
    return isGood ? std::optional(fault) : std::nullopt;
}

Reply FaultyInstrument::answer(std::string_view bytes) {
    if (fault_.kind == FaultKind::Echo) return {{{std::string(bytes)}}};
    Reply reply = instrument_->answer(bytes);
    if (reply.pieces.empty()) return reply;
    ++answered_;
    switch (fault_.kind) {
    case FaultKind::Silence:
        if (answered_ > fault_.count) reply.pieces.clear();
        break;
    case FaultKind::Error:
        if (answered_ > fault_.count) reply.pieces = {{"ERROR"}};
        break;
    case FaultKind::Split:
        split(reply);
        break;
    case FaultKind::Noise:
        addNoise(reply);
        break;
    case FaultKind::Cut:
    case FaultKind::HangUp:
        cut(reply);
        break;
    case FaultKind::Echo:
        break;
    }
    return reply;
}

void FaultyInstrument::split(Reply& reply) const {
    constexpr std::size_t kPieces = 4;
    constexpr std::chrono::milliseconds kPause{40};
    std::vector<Piece> pieces;
    for (const Piece& piece : reply.pieces) {
        const std::size_t size = piece.bytes.size() / kPieces + 1;
        for (std::size_t at = 0; at < piece.bytes.size(); at += size)
            pieces.push_back({piece.bytes.substr(at, size), at == 0 ? piece.pause : kPause});
    }
    reply.pieces = std::move(pieces);
}

void FaultyInstrument::addNoise(Reply& reply) {
    constexpr std::size_t kEvery = 64; // bytes on average, roughly
    for (Piece& piece : reply.pieces) {
        for (std::size_t at = random_() % kEvery; at < piece.bytes.size(); at += 1 + random_() % kEvery)
            piece.bytes.insert(at, 1, static_cast<char>(random_()));
    }
}

void FaultyInstrument::cut(Reply& reply) {
    for (Piece& piece : reply.pieces) {
        piece.bytes.resize(std::min(piece.bytes.size(), fault_.count - sent_));
        sent_ += piece.bytes.size();
    }
    reply.hangsUp = fault_.kind == FaultKind::HangUp && sent_ == fault_.count;
}

} // namespace kestrane

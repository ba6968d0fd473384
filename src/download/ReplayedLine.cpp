#include "download/ReplayedLine.h"

#include "download/Transcript.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace kestrane {

namespace {

constexpr int kPatience = 100; // looks in vain before the line goes away

std::optional<std::string> bytesOf(std::string_view hex) {
    if (hex.size() % 2 != 0) return std::nullopt;
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2) {
        unsigned value = 0;
        const char* const end = hex.data() + at + 2;
        const auto result = std::from_chars(hex.data() + at, end, value, 16);
        if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
        bytes += static_cast<char>(value);
    }
    return bytes;
}

} // namespace

ReplayedLine::ReplayedLine(std::string_view transcript) {
    bool isLastOpen = false; // the last exchange may have been broken off
    while (!transcript.empty()) {
        const std::size_t end = transcript.find('\n');
        if (end == std::string_view::npos) break; // torn
        const std::string_view line = transcript.substr(0, transcript[end - (end > 0)] == '\r' ? end - 1 : end);
        transcript.remove_prefix(end + 1);
        // Where the port was opened again behind a download that broke off, what was asked last had no whole answer,
        // unless it belongs to a log that was whole by then.
        const bool isReopened = line.starts_with("# port ");
        if (isReopened && isLastOpen) exchanges_.pop_back();
        if (isReopened || (line.starts_with("# ") && line.substr(2) == kReadToEnd)) isLastOpen = false;
        const std::size_t mark = line.find_first_of("<>");
        if (!line.starts_with('+') || mark == std::string_view::npos || mark + 2 > line.size()) continue;
        std::optional<std::string> bytes = bytesOf(line.substr(mark + 2));
        if (!bytes || bytes->empty()) continue;
        if (line[mark] == '>') {
            exchanges_.push_back({*std::move(bytes), {}});
            isLastOpen = true;
        } else if (!exchanges_.empty()) {
            exchanges_.back().received += *bytes;
        }
    }
    std::erase_if(exchanges_, [](const Exchange& exchange) { return exchange.received.empty(); });
}

std::size_t ReplayedLine::InBufferCount() const {
    if (waiting_.empty()) ++looks_;
    return waiting_.size();
}

void ReplayedLine::Output(std::string_view bytes) {
    looks_ = 0;
    const auto isSame = [bytes](const Exchange& exchange) { return exchange.sent == bytes; };
    const auto from = exchanges_.begin() + static_cast<std::ptrdiff_t>(next_);
    auto found = std::find_if(from, exchanges_.end(), isSame);
    if (found == exchanges_.end()) found = std::find_if(exchanges_.begin(), exchanges_.end(), isSame);
    if (found == exchanges_.end()) return;
    next_ = static_cast<std::size_t>(found - exchanges_.begin()) + 1;
    waiting_ += found->received;
}

std::string ReplayedLine::Input() {
    return std::exchange(waiting_, {});
}

std::string ReplayedLine::Fault() const {
    return looks_ > kPatience ? "the transcript ends here" : std::string();
}

} // namespace kestrane

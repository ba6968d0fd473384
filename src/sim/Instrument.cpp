#include "sim/Instrument.h"

namespace kestrane {

Reply CommandInstrument::answer(std::string_view bytes) {
    received_ += bytes;
    std::string answered;
    while (!received_.empty()) {
        const std::size_t length = commandLength(received_);
        if (length == kIncomplete) break;
        if (length == kNoCommand) {
            received_.erase(0, 1);
            continue;
        }
        answered += reply(std::string_view(received_).substr(0, length));
        received_.erase(0, length);
    }
    if (answered.empty()) return {};
    return {{{std::move(answered)}}};
}

} // namespace kestrane

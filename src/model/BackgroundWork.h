// Background work as the model sees it: something that goes on while it is held, and is given up when it is dropped;
// and where rows that are not loaded yet come from.
#pragma once

#include "model/IntervalColumns.h"

#include <cstdint>

namespace kestrane {

// Dropping the last reference gives the work up: its results are not delivered.
class BackgroundWork {
public:
    virtual ~BackgroundWork() = default;
};

// Rows still in a file. load runs on worker threads, several at once on different ranges.
class IntervalSource {
public:
    virtual ~IntervalSource() = default;
    virtual std::int64_t Count() const = 0;

    // Rows from..to, counted from 1, as columns. Raises what the text of a row raises.
    virtual IntervalColumns load(int mode, bool isChannelBOn, std::int64_t from, std::int64_t to) const = 0;
};

} // namespace kestrane

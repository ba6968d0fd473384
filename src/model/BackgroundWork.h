// Background work as the model sees it: it goes on while somebody holds it and is given up when it is dropped. And the
// place that rows come from that are not loaded yet.
#pragma once

#include "model/IntervalColumns.h"
#include "model/clsLogShared.h"

#include <cstdint>

namespace kestrane {

// Dropping the last reference gives the work up: its results are not delivered.
class BackgroundWork {
public:
    virtual ~BackgroundWork() = default;
};

// Rows that are still in a file. load runs on worker threads, on several at once with different ranges.
class IntervalSource {
public:
    virtual ~IntervalSource() = default;
    virtual std::int64_t Count() const = 0;

    // Rows from to to, both included and counted from 1, as columns. Raises what the conversion of a row's text raises.
    virtual IntervalColumns load(LogMode mode, bool isChannelBOn, std::int64_t from, std::int64_t to) const = 0;
};

} // namespace kestrane

// Today and now in local time, as an interface so that a test can say what time it is.
#pragma once

#include "platform/Calendar.h"

namespace kestrane {

class Clock {
public:
    virtual ~Clock() = default;
    virtual CalendarTime now() const = 0; // local time, whole seconds
};

class SystemClock : public Clock {
public:
    CalendarTime now() const override;
};

class FixedClock : public Clock {
public:
    explicit FixedClock(CalendarTime time) : Time(time) {}

    CalendarTime now() const override { return Time; }

    CalendarTime Time;
};

} // namespace kestrane

// One peak event of a log.
#pragma once

#include "model/clsTime.h"

namespace kestrane {

class clsPeak {
public:
    clsTime PeakTime;         // time of day
    float SampleDuration = 0; // seconds, as the instrument gave it
};

} // namespace kestrane

// The number of the run-time error that a call raises, 0 when it raises none.
#pragma once

#include "platform/RuntimeError.h"

namespace kestrane {

template <class Call>
std::int64_t errorOf(Call call) {
    try {
        call();
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number;
    }
}

} // namespace kestrane

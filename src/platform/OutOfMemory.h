// A lack of memory as an error like all others.
#pragma once

#include "platform/RuntimeError.h"

#include <new>

namespace kestrane {

// Returns what f returns. Raises kErrorOutOfMemory when memory lacks, which the language has another exception for.
template <class F>
auto refusingWithoutMemory(F&& f) {
    try {
        return f();
    } catch (const std::bad_alloc&) {
        throw RuntimeError(kErrorOutOfMemory, "Out of memory");
    }
}

} // namespace kestrane

#include "platform/RuntimeError.h"

#include <system_error>

namespace kestrane {

void raiseOverflow() {
    throw RuntimeError(kErrorOverflow, "Overflow");
}

void raiseIndexOutOfRange() {
    throw RuntimeError(kErrorIndexOutOfRange, "Subscript out of range");
}

void raiseTypeMismatch() {
    throw RuntimeError(kErrorTypeMismatch, "Type mismatch");
}

void raiseSystemError(int error) {
    throw RuntimeError(error, std::generic_category().message(error));
}

} // namespace kestrane

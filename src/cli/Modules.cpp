#include "cli/Modules.h"

#include "platform/RunningProgram.h"

namespace kestrane {

void* openModule(const char* file) {
    const auto give = reinterpret_cast<void* (*)(const char*)>(
        functionOfLibrary(folderOfProgram() + KESTRANE_MODULES + file, "kestraneModule"));
    return give == nullptr ? nullptr : give(KESTRANE_VERSION_TEXT);
}

} // namespace kestrane

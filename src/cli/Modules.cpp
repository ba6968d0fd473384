#include "cli/Modules.h"

#include "platform/RunningProgram.h"

namespace kestrane {

void* openModule(const char* file) {
    const auto give = reinterpret_cast<void* (*)(const char*)>(
        functionOfLibrary(folderOfProgram() + KESTRANE_MODULES + file + KESTRANE_MODULE_ENDING, "kestraneModule"));
    return give == nullptr ? nullptr : give(KESTRANE_VERSION_TEXT);
}

} // namespace kestrane

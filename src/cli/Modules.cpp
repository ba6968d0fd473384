#include "cli/Modules.h"

#include "app/StartUp.h"

#include <dlfcn.h>

namespace kestrane {

void* openModule(const char* file) {
    const std::string path = programFolder() + KESTRANE_MODULES + file;
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); // stays loaded to the end
    if (library == nullptr) return nullptr;
    const auto give = reinterpret_cast<void* (*)(const char*)>(dlsym(library, "kestraneModule"));
    return give == nullptr ? nullptr : give(KESTRANE_VERSION_TEXT);
}

} // namespace kestrane

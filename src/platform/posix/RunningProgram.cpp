#include "platform/RunningProgram.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace kestrane {

std::string folderOfProgram() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string("/") : program.parent_path().string() + "/";
}

std::vector<std::string> programArguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void* functionOfLibrary(const std::string& path, const char* function) {
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return library == nullptr ? nullptr : dlsym(library, function);
}

// A write then fails with an error, which is reported, in place of a signal that ends the program.
void ignoreSignalsOfWrites() {
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
}

// The substitute can be neither read nor written as the stream would be, so messages are lost.
void prepareStandardStreams() {
    for (const auto& [stream, mode] :
         {std::pair(STDIN_FILENO, O_WRONLY), std::pair(STDOUT_FILENO, O_RDONLY), std::pair(STDERR_FILENO, O_WRONLY)})
        if (fcntl(stream, F_GETFD) < 0) open("/dev/null", mode);
    ignoreSignalsOfWrites();
}

bool hasDisplay() {
    const char* const platform = std::getenv("QT_QPA_PLATFORM");
    return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr ||
           (platform != nullptr && *platform != '\0');
}

} // namespace kestrane

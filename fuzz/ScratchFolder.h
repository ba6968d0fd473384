// A folder in memory for targets whose subject is known by its name.
#pragma once

#include "Target.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <unistd.h>

namespace kestrane::fuzz {

class ScratchFolder {
public:
    ScratchFolder() {
        require(mkdtemp(name_.data()) != nullptr, "a folder in memory can be made");
        name_ += '/';
    }

    ~ScratchFolder() { std::filesystem::remove_all(name_); }

    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string path(std::string_view file) const { return name_ + std::string(file); }

    // Returns the path.
    std::string write(std::string_view file, std::string_view content) const {
        std::ofstream(path(file), std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
        return path(file);
    }

private:
    std::string name_ = "/dev/shm/kestrane-fuzz-XXXXXX";
};

} // namespace kestrane::fuzz

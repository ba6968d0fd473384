// A folder for the files of one test, removed with everything in it at the end.
#pragma once

#include "platform/FileNames.h"
#include "platform/Paths.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace kestrane {

class TemporaryFolder {
public:
    TemporaryFolder() {
        path_ = makeUniqueFolder((std::filesystem::temp_directory_path() / "kestrane-test-").generic_string());
    }

    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path() const { return path_; }

    std::string file(const std::string& name) const { return path_ + '/' + name; }

private:
    std::string path_;
};

inline void writeText(const std::string& path, const std::string& text) {
    std::ofstream(pathOf(path), std::ios::binary) << text;
}

inline std::string readText(const std::string& path) {
    std::ifstream file(pathOf(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace kestrane

// Runs a fuzz target on every file of the folders named: the seeds, and what fuzzing has found.
#include "Target.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::exists(argv[i])) continue; // nothing found yet
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::cout << entry.path().string() << std::endl; // stands last when the target ends the program
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    return count > 0 ? 0 : 1;
}

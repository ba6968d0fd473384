#include "platform/Files.h"

#include "platform/InPieces.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/StreamBytes.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace kestrane {

namespace {

std::string resolved(const std::string& path) {
    std::error_code error;
    const auto name = std::filesystem::weakly_canonical(pathOf(path), error);
    return error ? path : name.string();
}

bool equalIgnoringCase(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

} // namespace

void makeFolderOf(const std::string& path) {
    const std::filesystem::path folder = pathOf(path).parent_path();
    if (folder.empty()) return; // the working folder
    std::error_code failed;
    std::filesystem::create_directories(folder, failed);
    if (failed) raiseSystemError(failed.default_error_condition().value());
}

bool isSameFile(const std::string& a, const std::string& b) {
    const std::string nameA = resolved(a);
    const std::string nameB = resolved(b);
    if (nameA == nameB) return true;
    if (!equalIgnoringCase(nameA, nameB)) return false;
    std::error_code error; // where names differ by case, both files exist and are two
    return !fileExists(a) || !fileExists(b) || std::filesystem::equivalent(pathOf(a), pathOf(b), error);
}

std::optional<int> openFileNumber(std::string_view path) {
    if (path == kStandardInput) return 0;
    if (path == kStandardOutput) return 1;
    if (path == "/dev/stderr") return 2;
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.starts_with(folder)) continue;
        const std::string_view digits = path.substr(folder.size());
        int number = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (error == std::errc() && end == digits.data() + digits.size() && number >= 0) return number;
    }
    return std::nullopt;
}

bool isRegularFile(const std::string& path) {
    std::error_code ignored;
    return !openFileNumber(path) && std::filesystem::is_regular_file(pathOf(path), ignored);
}

std::shared_ptr<FileBytes> readStream(const FillBytes& fill) {
    constexpr std::size_t kFirst = std::size_t{1} << 20;
    constexpr std::size_t kMost = std::size_t{1} << 30;
    auto bytes = std::make_shared<FileBytes>(kFirst);
    std::size_t size = 0;
    while ((size = fill(*bytes, size)) == bytes->size()) {
        if (size >= kMost) raiseSystemError(EFBIG);
        auto larger = std::make_shared<FileBytes>(2 * size);
        std::memcpy(larger->data(), bytes->data(), size);
        bytes = std::move(larger);
    }
    bytes->shrink(size);
    return bytes;
}

std::shared_ptr<FileBytes> readParts(std::size_t size, const ReadPart& read, const std::function<void()>& between) {
    auto bytes = std::make_shared<FileBytes>(size);
    std::atomic<std::size_t> end = size;
    const auto readPiece = [&](std::size_t from, std::size_t to) {
        const std::size_t reached = read(*bytes, from, to);
        if (reached == to) return;
        for (std::size_t before = end; reached < before && !end.compare_exchange_weak(before, reached);) {
        }
    };
    inPieces(size, kReadAtOnce, readPiece, between);
    bytes->shrink(end);
    return bytes;
}

} // namespace kestrane

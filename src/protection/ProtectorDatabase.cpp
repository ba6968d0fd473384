#include "protection/ProtectorDatabase.h"

#include "platform/AtomicFile.h"
#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <iterator>

namespace kestrane {

namespace {

constexpr std::size_t kFields = 42;
constexpr std::size_t kMostBytes = 64UL << 20U;

// The indexes of the fields in a line, from 0.
constexpr std::size_t kType = 1;
constexpr std::size_t kMeans = 2; // a mean, then its deviation, for each band
constexpr std::size_t kHMLFlag = 18;
constexpr std::size_t kSNRFlag = 22;
constexpr std::size_t kMeansUS = 24;
constexpr std::size_t kNRRFlag = 40;

[[noreturn]] void raiseCorrupt() {
    throw RuntimeError(kErrorCorruptFile, "Corrupt file error");
}

using Fields = std::array<std::string_view, kFields>;

// The last 41 fields of a line; everything before them is the name.
Fields split(std::string_view line) {
    Fields fields;
    for (std::size_t field = kFields - 1; field > 0; --field) {
        const std::size_t comma = line.rfind(',');
        if (comma == std::string_view::npos) raiseCorrupt();
        fields[field] = line.substr(comma + 1);
        line = line.substr(0, comma);
    }
    fields[0] = line;
    return fields;
}

float number(std::string_view field) {
    return field.empty() ? 0 : toSingle(field, Locale{});
}

clsHP protectorOf(const Fields& fields) {
    clsHP hp;
    hp.Name = toUtf8(fields[0]);
    hp.Tipe = fields[kType].empty() ? std::int16_t{0} : toInteger(fields[kType], Locale{});
    for (int i = 1; i <= kProtectorBands; ++i) {
        const std::size_t pair = 2 * (static_cast<std::size_t>(i) - 1);
        hp.Mean(i) = number(fields[kMeans + pair]);
        hp.SD(i) = number(fields[kMeans + pair + 1]);
        hp.MeanUS(i) = number(fields[kMeansUS + pair]);
        hp.SDUS(i) = number(fields[kMeansUS + pair + 1]);
    }
    if (fields[kHMLFlag] == "1") {
        hp.High = number(fields[kHMLFlag + 1]);
        hp.Medium = number(fields[kHMLFlag + 2]);
        hp.Low = number(fields[kHMLFlag + 3]);
    }
    if (fields[kSNRFlag] == "1") hp.SNR = number(fields[kSNRFlag + 1]);
    if (fields[kNRRFlag] == "1") hp.NRR = number(fields[kNRRFlag + 1]);
    return hp;
}

void appendNumbers(std::string& line, std::initializer_list<float> numbers) {
    for (const float value : numbers)
        line += "," + singleText(value);
}

void appendFlagged(std::string& line, bool isThere, std::initializer_list<float> numbers) {
    line += isThere ? ",1" : ",0";
    appendNumbers(line, numbers);
}

std::string lineOf(const clsHP& hp) {
    std::string line = hp.Name + "," + std::to_string(hp.Tipe);
    for (int i = 1; i <= kProtectorBands; ++i)
        appendNumbers(line, {hp.Mean(i), hp.SD(i)});
    appendFlagged(line, hp.HasHML(), {hp.High, hp.Medium, hp.Low});
    appendFlagged(line, hp.HasSNR(), {hp.SNR});
    for (int i = 1; i <= kProtectorBands; ++i)
        appendNumbers(line, {hp.MeanUS(i), hp.SDUS(i)});
    appendFlagged(line, hp.HasNRR(), {hp.NRR});
    return line;
}

} // namespace

const std::string& sourceOf(const ProtectorCollection& collection) {
    const bool isTaken = collection.Original.empty() || fileExists(collection.File);
    return isTaken ? collection.File : collection.Original;
}

bool readProtectors(std::string_view text, std::vector<clsHP>& protectors) {
    protectors.clear();
    text = behindMark(text);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end);
        text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
        if (line.empty()) return text.find_first_not_of("\r\n") == std::string_view::npos;
        protectors.push_back(protectorOf(split(line)));
        protectors.back().HPDId = static_cast<int>(protectors.size());
    }
    return true;
}

bool loadProtectors(const std::string& path, std::vector<clsHP>& protectors) {
    protectors.clear();
    std::error_code unknown; // when the size is unknown, reading raises the reason
    if (const auto size = std::filesystem::file_size(pathOf(path), unknown); !unknown && size > kMostBytes)
        raiseCorrupt();
    return readProtectors(readFile(path)->view(), protectors);
}

bool isWholeDatabase(const std::string& path) {
    std::vector<clsHP> protectors;
    try {
        return loadProtectors(path, protectors);
    } catch (const RuntimeError& error) {
        return error.Number == ENOENT;
    }
}

std::string keepDamagedFile(const std::string& path) {
    const std::string first = path + ".damaged";
    std::string kept = first;
    for (int next = 2; std::filesystem::exists(pathOf(kept)); ++next)
        kept = first + std::to_string(next);
    std::error_code failed;
    std::filesystem::copy_file(pathOf(path), pathOf(kept), failed);
    if (failed) raiseSystemError(failed.default_error_condition().value());
    return kept;
}

void keepOldDatabase(const std::string& from, const std::string& file) {
    if (!fileExists(from)) return;
    const std::string newest = file + ".bak";
    if (fileExists(newest) && readFile(newest)->view() == readFile(from)->view()) return;
    const std::string names[] = {newest, newest + "2", newest + "3"};
    for (std::size_t i = std::size(names) - 1; i > 0; --i)
        if (fileExists(names[i - 1])) static_cast<void>(renameFile(names[i - 1], names[i])); // a failure shows below
    std::error_code failed;
    std::filesystem::copy_file(pathOf(from), pathOf(newest), failed);
    if (failed) raiseSystemError(failed.default_error_condition().value());
}

std::string protectorsText(const std::vector<clsHP>& protectors) {
    std::string text;
    for (const clsHP& hp : protectors)
        text += lineOf(hp) + "\r\n";
    return text;
}

void saveProtectors(const std::string& path, const std::vector<clsHP>& protectors) {
    makeFolderOf(path);
    writeFileAtomically(path, [&](const FileSink& sink) { sink(protectorsText(protectors)); });
}

std::string databaseText(std::string_view body) {
    std::string text;
    const auto isEnd = [](char c) { return c == '\r' || c == '\n'; };
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (static_cast<unsigned char>(body[i]) > 31) text += body[i];
        if (isEnd(body[i]) && (i == 0 || body[i] == body[i - 1] || !isEnd(body[i - 1]))) text += "\r\n";
    }
    while (text.ends_with('\r') || text.ends_with('\n'))
        text.pop_back();
    return text;
}

} // namespace kestrane

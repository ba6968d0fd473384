#include "explorer/NodeKeys.h"

#include "platform/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>

namespace kestrane {

namespace {

constexpr std::array kGroupKinds = {tLOCL, tOCTL, tTOCL};
constexpr std::array kLogKinds = {tLOCN, tOCTN, tTOCN};

// The identity that the whole text stands for; 0, which is no identity, for any other text.
int identity(std::string_view text) {
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() ? value : 0;
}

// The kinds of nodes on which nodes of some kinds may be dropped.
struct DropRule {
    std::string_view sources;
    std::string_view targets;
};

constexpr DropRule kDropRules[] = {{"F", "F"}, {"I", "FI"}, {"XL", "FIXL"}, {"YO", "FIYO"}, {"ZT", "FIZT"}};

struct HighestIdentities {
    std::int16_t file = 0;
    std::int32_t data = 0;
    std::array<std::int32_t, 3> logs{}; // indexed by mode
};

HighestIdentities highestIdentities(const Session& session) {
    HighestIdentities highest;
    for (const auto& file : session.OpenFiles) {
        highest.file = std::max(highest.file, file->FileId);
        for (const auto& data : file->InstrumentDatas) {
            highest.data = std::max(highest.data, data->InsDataId);
            forEachLog(*data, [&highest](const clsLog& log) {
                std::int32_t& most = highest.logs[static_cast<std::size_t>(log.Mode())];
                most = std::max(most, log.LogId);
            });
        }
    }
    return highest;
}

std::int32_t next(std::int32_t& highest) {
    return highest = checkedLong(std::int64_t{highest} + 1);
}

} // namespace

char groupKind(LogMode mode) {
    return kGroupKinds[static_cast<std::size_t>(mode)];
}

char logKind(LogMode mode) {
    return kLogKinds[static_cast<std::size_t>(mode)];
}

bool isLogKind(std::string_view key) {
    return !key.empty() && std::find(kLogKinds.begin(), kLogKinds.end(), key.front()) != kLogKinds.end();
}

bool isEditableKind(std::string_view key) {
    return isLogKind(key) || key.starts_with(tFILE) || key.starts_with(tINST);
}

std::string fileKey(const clsFile& file) {
    return tFILE + std::to_string(file.FileId);
}

std::string dataKey(const clsInsData& data, const clsFile& file) {
    return tINST + std::to_string(data.InsDataId) + fileKey(file);
}

std::string groupKey(LogMode mode, const clsInsData& data, const clsFile& file) {
    return groupKind(mode) + std::to_string(data.InsDataId) + fileKey(file);
}

std::string logKey(const clsLog& log, const clsInsData& data, const clsFile& file) {
    return logKind(log.Mode()) + std::to_string(log.LogId) + dataKey(data, file);
}

std::vector<std::string> logKeys(const clsFile& file) {
    std::vector<std::string> keys;
    for (const auto& data : file.InstrumentDatas)
        forEachLog(*data, [&](const clsLog& log) { keys.push_back(logKey(log, *data, file)); });
    return keys;
}

Node resolve(const Session& session, std::string_view key) {
    Node node;
    const std::size_t f = key.find(tFILE);
    if (f == std::string_view::npos) return node;
    node.file = session.fileById(identity(key.substr(f + 1)));
    if (node.file == nullptr || f == 0) return node;
    const std::string_view head = key.substr(0, f);
    const bool isGroup = std::find(kGroupKinds.begin(), kGroupKinds.end(), head.front()) != kGroupKinds.end();
    const std::size_t i = isGroup ? 0 : head.find(tINST);
    if (i == std::string_view::npos) return node;
    node.data = node.file->dataById(identity(head.substr(i + 1)));
    if (node.data == nullptr || !isLogKind(head)) return node;
    const int id = identity(head.substr(1, i - 1));
    const auto mode = std::find(kLogKinds.begin(), kLogKinds.end(), head.front()) - kLogKinds.begin();
    const LogCollection& logs = node.data->logsOf(static_cast<LogMode>(mode));
    const auto log = std::find_if(logs.begin(), logs.end(), [&](const auto& item) { return item->LogId == id; });
    if (log != logs.end()) node.log = log->get();
    return node;
}

void AssignIdentities(Session& session, bool bLastFileOnly, int intFileId) {
    HighestIdentities highest = highestIdentities(session);
    for (const auto& file : session.OpenFiles) {
        if (bLastFileOnly && file != session.OpenFiles.back()) continue;
        if (!bLastFileOnly && intFileId > 0 && file->FileId != intFileId) continue;
        if (file->FileId == 0) file->FileId = highest.file = checkedInteger(highest.file + 1);
        for (const auto& data : file->InstrumentDatas) {
            if (data->InsDataId == 0) data->InsDataId = next(highest.data);
            for (const LogMode mode : kLogModes) {
                std::set<std::int32_t> taken;
                for (const auto& log : data->logsOf(mode)) {
                    if (log->LogId != 0 && taken.insert(log->LogId).second) continue;
                    log->LogId = next(highest.logs[static_cast<std::size_t>(mode)]);
                    taken.insert(log->LogId);
                }
            }
        }
    }
}

bool SittingOnValidNode(std::string_view sourceKey, std::string_view targetKey, std::string_view selectedKey) {
    if (targetKey.empty()) targetKey = selectedKey;
    if (sourceKey.empty() || targetKey.empty() || sourceKey == targetKey) return false;
    return std::any_of(std::begin(kDropRules), std::end(kDropRules), [&](const DropRule& rule) {
        return rule.sources.find(sourceKey.front()) != std::string_view::npos &&
               rule.targets.find(targetKey.front()) != std::string_view::npos;
    });
}

} // namespace kestrane

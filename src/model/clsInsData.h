// One instrument data collection: the logs that came from one instrument in one download, or the corresponding part of
// a file. It owns its logs, in three collections by mode. Owned by a clsFile.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kestrane {

constexpr int kAtEnd = -1; // an identity that no object has: append puts the new object at the end

using LogCollection = std::vector<std::unique_ptr<clsLog>>;

class clsInsData {
public:
    explicit clsInsData(Session& session) : session_(session) {}

    Session& session() const { return session_; }

    std::int32_t InsDataId = 0; // identity within the file; 0 until it has been given one
    bool Expanded = false, ExpandedL = false, ExpandedO = false, ExpandedT = false;
    float FirmwareVersion = 0;
    std::string InsSerial;
    std::int16_t InsType = 0;
    std::string NameX; // the user's name for the collection
    LogCollection Locations, Octaves, ThirdOctaves;
    bool IsBrevikS = false, IsBrevikE = false, IsBrevikSE = false; // set at download

    const std::string& InsName() const { return insName_; }

    void InsName(std::string_view name); // trimmed

    // Copies all simple fields. With bCopyLogs the logs are copied whole, too; without it the collection ends up
    // without logs.
    void Copy(const clsInsData& objPrevInsData, bool bCopyLogs);

    // Adds a log to the collection of its mode: the first form adds a copy, the second the log itself. It is put behind
    // the log with LogId intAfter and behind those with LogId 0 that follow it; at the end when no log has that LogId;
    // when intAfter is 0, before the first log whose LogId is not 0.
    void append(const clsLog& objLog, int intAfter);
    void append(std::unique_ptr<clsLog> objLog, int intAfter);

    LogCollection& logsOf(LogMode mode);
    const LogCollection& logsOf(LogMode mode) const;

    bool hasLogs() const { return !Locations.empty() || !Octaves.empty() || !ThirdOctaves.empty(); }

private:
    Session& session_;
    std::string insName_;
};

// Calls visit(log) for every log of the collection, in the order of the tree.
template <class Visit>
void forEachLog(const clsInsData& data, Visit&& visit) {
    for (const LogMode mode : kLogModes) {
        for (const auto& log : data.logsOf(mode))
            visit(*log);
    }
}

// Where a new item with identity 0 goes among items (see append): behind the item with identity after and the new ones
// that follow it; at the end when no item has that identity.
template <class Item, class Identity>
auto placeBehind(std::vector<Item>& items, Identity identity, int after) {
    auto at = items.begin();
    while (at != items.end() && identity(**at) != after)
        ++at;
    if (at != items.end()) ++at;
    while (at != items.end() && identity(**at) == 0)
        ++at;
    return at;
}

} // namespace kestrane

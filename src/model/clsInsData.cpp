#include "model/clsInsData.h"

#include "platform/Trimmed.h"

#include <algorithm>
#include <utility>

namespace kestrane {

void clsInsData::InsName(std::string_view name) {
    insName_ = trimmed(name);
}

void clsInsData::Copy(const clsInsData& objPrevInsData, bool bCopyLogs) {
    InsDataId = objPrevInsData.InsDataId;
    Expanded = objPrevInsData.Expanded;
    ExpandedL = objPrevInsData.ExpandedL;
    ExpandedO = objPrevInsData.ExpandedO;
    ExpandedT = objPrevInsData.ExpandedT;
    FirmwareVersion = objPrevInsData.FirmwareVersion;
    InsSerial = objPrevInsData.InsSerial;
    InsType = objPrevInsData.InsType;
    NameX = objPrevInsData.NameX;
    IsBrevikS = objPrevInsData.IsBrevikS;
    IsBrevikE = objPrevInsData.IsBrevikE;
    IsBrevikSE = objPrevInsData.IsBrevikSE;
    insName_ = objPrevInsData.insName_;
    for (const LogMode mode : kLogModes)
        logsOf(mode).clear();
    if (!bCopyLogs) return;
    forEachLog(objPrevInsData, [this](const clsLog& log) {
        LogCollection& logs = logsOf(log.Mode());
        logs.push_back(std::make_unique<clsLog>(session_));
        logs.back()->Copy(log, 0, 0);
    });
}

void clsInsData::append(const clsLog& objLog, int intAfter) {
    auto copy = std::make_unique<clsLog>(session_);
    copy->Copy(objLog, 0, 0);
    copy->LogId = 0;
    copy->Selected = false;
    append(std::move(copy), intAfter);
}

void clsInsData::append(std::unique_ptr<clsLog> objLog, int intAfter) {
    LogCollection& logs = logsOf(objLog->Mode());
    const auto at = intAfter != 0
                        ? placeBehind(
                              logs, [](const clsLog& log) { return log.LogId; }, intAfter)
                        : std::find_if(logs.begin(), logs.end(), [](const auto& log) { return log->LogId != 0; });
    logs.insert(at, std::move(objLog));
}

const LogCollection& clsInsData::logsOf(LogMode mode) const {
    return mode == modeBroadband ? Locations : mode == modeFullOctave ? Octaves : ThirdOctaves;
}

LogCollection& clsInsData::logsOf(LogMode mode) {
    return const_cast<LogCollection&>(std::as_const(*this).logsOf(mode));
}

} // namespace kestrane

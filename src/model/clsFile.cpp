#include "model/clsFile.h"

#include "model/FileHold.h"
#include "model/Session.h"
#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace kestrane {

namespace {

std::size_t lastSeparator(const std::string& name) {
    return name.find_last_of("/\\");
}

} // namespace

clsFile::clsFile(Session& session, std::string fileName) :
    FileName(std::move(fileName)), Edits(session.EditTurns), session_(session) {}

// Work proceeds from the first log to the last, so searching from the end finds a busy log soonest.
bool clsFile::IsBusy() const {
    if (Hashing != nullptr) return true;
    const auto isBusyLog = [](const auto& log) { return log->IsBusy(); };
    return std::any_of(InstrumentDatas.rbegin(), InstrumentDatas.rend(), [&](const auto& data) {
        return std::any_of(data->ThirdOctaves.rbegin(), data->ThirdOctaves.rend(), isBusyLog) ||
               std::any_of(data->Octaves.rbegin(), data->Octaves.rend(), isBusyLog) ||
               std::any_of(data->Locations.rbegin(), data->Locations.rend(), isBusyLog);
    });
}

bool clsFile::IsInCollection() const {
    return FileId > 0 && session_.fileById(FileId) != nullptr;
}

std::string clsFile::ShortenedFileName() const {
    const std::size_t separator = lastSeparator(FileName);
    return separator == std::string::npos ? FileName : FileName.substr(separator + 1);
}

void clsFile::RenameFile(const std::string& strNewFileName) {
    if (JustAcquired()) {
        FileName = strNewFileName;
        return;
    }
    std::string name = strNewFileName;
    if (name.starts_with('.') || lastSeparator(name) == std::string::npos) {
        name = FileName.substr(0, lastSeparator(FileName) + 1) + name;
    }
    const auto refuse = [this](const std::string& held) {
        const std::string words = session_.LoadText(Text::RenameOpenElsewhere);
        throw RuntimeError(EBUSY, ReplaceText(words, "^", held.substr(lastSeparator(held) + 1)));
    };
    if (ReadOnly) refuse(FileName);
    if (name != FileName && fileExists(name)) throw RuntimeError(EEXIST, std::strerror(EEXIST));
    std::shared_ptr<FileLock> held = Held;
    if (!HoldRenamed(session_, FileName, name, held)) refuse(name);
    if (const int error = renameFile(FileName, name); error != 0) raiseSystemError(error);
    const std::string history = historyNameOf(name);
    const bool isFree = !fileExists(history); // one that another document has left is never replaced
    if (isFree && renameFile(historyNameOf(FileName), history) == 0) History.DataFile = name;
    FileName = name;
    Held = std::move(held);
}

void clsFile::append(const clsInsData& objInsData, bool blnCut, int intAfter) {
    auto data = std::make_unique<clsInsData>(session_);
    data->Copy(objInsData, true);
    data->InsDataId = 0;
    forEachLog(*data, [blnCut](clsLog& log) {
        log.LogId = 0;
        if (!blnCut) log.Selected = false;
    });
    const auto at = intAfter == 0 ? InstrumentDatas.begin()
                                  : placeBehind(
                                        InstrumentDatas, [](const clsInsData& d) { return d.InsDataId; }, intAfter);
    InstrumentDatas.insert(at, std::move(data));
}

void clsFile::CopyDoseLogSamples() {
    forEachLog(*this, [](clsLog& log) { log.CopyDoseLogSamples(); });
}

clsInsData* clsFile::dataOfSerial(const std::string& serial) const {
    if (serial.empty()) return nullptr;
    const auto found = std::find_if(InstrumentDatas.begin(), InstrumentDatas.end(),
                                    [&](const auto& data) { return data->InsSerial == serial; });
    return found == InstrumentDatas.end() ? nullptr : found->get();
}

clsInsData* clsFile::dataById(int insDataId) const {
    const auto found = std::find_if(InstrumentDatas.begin(), InstrumentDatas.end(),
                                    [&](const auto& data) { return data->InsDataId == insDataId; });
    return found == InstrumentDatas.end() ? nullptr : found->get();
}

} // namespace kestrane

#include "app/Download.h"

#include "explorer/NodeKeys.h"

#include <algorithm>
#include <iterator>

namespace kestrane {

namespace {

constexpr int kUntitled = 6531; // text

clsInsData* collectionOf(const clsFile& file, const std::string& serial) {
    if (serial.empty()) return nullptr;
    const auto found = std::find_if(file.InstrumentDatas.begin(), file.InstrumentDatas.end(),
                                    [&](const auto& data) { return data->InsSerial == serial; });
    return found == file.InstrumentDatas.end() ? nullptr : found->get();
}

void takeIn(clsFile& file, std::unique_ptr<clsInsData> data) {
    clsInsData* const present = collectionOf(file, data->InsSerial);
    if (present == nullptr) return file.InstrumentDatas.push_back(std::move(data));
    for (const int mode : {modeBroadband, modeFullOctave, modeThirdOctave})
        std::ranges::move(data->logsOf(mode), std::back_inserter(present->logsOf(mode)));
}

} // namespace

bool DownloadData(const DownloadServices& services, clsFile* objFile) {
    Session& session = services.session;
    auto data = std::make_unique<clsInsData>(session);
    if (!DownloadData(services, *data)) return false;
    if (objFile != nullptr) {
        takeIn(*objFile, std::move(data));
        AssignIdentities(session, false, objFile->FileId);
    } else {
        auto file = std::make_unique<clsFile>(session, session.LoadText(kUntitled));
        takeIn(*file, std::move(data));
        session.OpenFiles.push_back(std::move(file));
        AssignIdentities(session, true, 0);
    }
    session.frame->RebuildExplorerTrees();
    session.frame->EnableMenusAndButtons();
    return true;
}

} // namespace kestrane

#include "app/Download.h"

#include "explorer/Edits.h"
#include "explorer/NodeEditing.h"
#include "explorer/NodeKeys.h"

#include <algorithm>
#include <iterator>

namespace kestrane {

namespace {

void takeIn(clsFile& file, std::unique_ptr<clsInsData> data) {
    clsInsData* const present = file.dataOfSerial(data->InsSerial);
    if (present == nullptr) return file.InstrumentDatas.push_back(std::move(data));
    if (const std::string text = foldedText(*data, *present); !text.empty()) file.session().frame->Tell(text);
    for (const LogMode mode : kLogModes)
        std::ranges::move(data->logsOf(mode), std::back_inserter(present->logsOf(mode)));
}

} // namespace

bool DownloadData(const DownloadServices& services, clsFile* objFile) {
    Session& session = services.session;
    auto data = std::make_unique<clsInsData>(session);
    if (!DownloadData(services, *data)) return false;
    if (objFile != nullptr) {
        const bool wasChanged = objFile->Changed;
        auto step = std::make_unique<ArrangementStep>(*objFile, Text::StepMerge);
        takeIn(*objFile, std::move(data));
        recordStep(*objFile, std::move(step), wasChanged);
        AssignIdentities(session, false, objFile->FileId);
    } else {
        auto file = std::make_unique<clsFile>(session, session.LoadText(Text::Untitled));
        takeIn(*file, std::move(data));
        recordDownload(*file, Text::HistoryDownload);
        session.OpenFiles.push_back(std::move(file));
        AssignIdentities(session, true, 0);
    }
    session.frame->RebuildExplorerTrees();
    session.frame->EnableMenusAndButtons();
    if (objFile != nullptr) return true;
    const std::vector<std::string> logs = logKeys(*session.OpenFiles.back());
    if (!logs.empty()) session.frame->ChooseLog(logs.front(), true);
    return true;
}

} // namespace kestrane

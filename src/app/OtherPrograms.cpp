#include "app/OtherPrograms.h"

#include "platform/FileLock.h"
#include "platform/FileStamp.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"

#include <filesystem>
#include <vector>

namespace kestrane {

bool HoldFile(const Session& session, clsFile& file) {
    return file.JustAcquired() || HoldFile(session, file.FileName, file.Held);
}

bool MayOpen(Session& session, const std::string& path, std::shared_ptr<FileLock>& held, bool& isReadOnly) {
    if (HoldFile(session, path, held)) return true;
    const std::string question =
        ReplaceText(session.LoadText(Text::OpenElsewhere), "^", path.substr(path.rfind('/') + 1));
    isReadOnly = session.ShowMessage(question, kButtonsYesNo | kIconQuestion) == Button::Yes;
    return isReadOnly;
}

OnConflict AskAboutConflict(Session& session, const std::string& path) {
    const std::string question = ReplaceText(session.LoadText(Text::ChangedByAnother), "^", path);
    const std::size_t answer =
        session.frame->Choose(question, {session.LoadText(Text::KeepMine), session.LoadText(Text::TakeTheirs),
                                         session.LoadText(Text::SaveMineAs)});
    constexpr OnConflict kAnswers[] = {OnConflict::GoOn, OnConflict::Theirs, OnConflict::SaveAs};
    return answer < std::size(kAnswers) ? kAnswers[answer] : OnConflict::Later;
}

void LookForOtherPrograms(Session& session, const AskSaveName& askName) {
    if (session.StateFolder.empty()) return;
    std::vector<clsFile*> files;
    for (const auto& file : session.OpenFiles)
        if (!file->JustAcquired() && !file->IsBusy()) files.push_back(file.get());
    for (clsFile* const file : files) {
        if (!hasOtherContent(file->FileName, file->OnDisk, false)) continue;
        const FileStamp now = hashedStampOf(file->FileName);
        switch (AskAboutConflict(session, file->FileName)) {
        case OnConflict::GoOn: // what is here differs from the file from now on
            file->OnDisk = now;
            file->Changed = true;
            break;
        case OnConflict::Theirs:
            TakeTheirs(session, *file);
            continue;
        case OnConflict::SaveAs:
            if (SaveFile(session, *file, true, askName)) continue;
            [[fallthrough]];
        case OnConflict::Later: // the same change is asked about once more only before saving, which compares the hash
            file->OnDisk.Size = now.Size;
            file->OnDisk.Modified = now.Modified;
            break;
        }
        session.frame->EnableMenusAndButtons();
    }
}

bool TakeTheirs(Session& session, clsFile& file) {
    auto theirs = std::make_unique<clsFile>(session, file.FileName);
    if (!FileOpen(*theirs)) return false;
    theirs->ReadOnly = file.ReadOnly;
    theirs->Held = std::move(file.Held);
    std::erase_if(session.OpenFiles, [&](const auto& open) { return open.get() == &file; });
    const clsFile& taken = TakeUp(session, std::move(theirs));
    ShowOpened(session, {taken.FileName});
    return true;
}

} // namespace kestrane

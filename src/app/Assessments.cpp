#include "app/Assessments.h"

#include "app/Backups.h"
#include "app/OtherPrograms.h"
#include "assessment/AssessmentEdits.h"
#include "assessment/AssessmentFile.h"
#include "assessment/LogLevels.h"
#include "explorer/NodeKeys.h"
#include "platform/Files.h"
#include "platform/Format.h"
#include "platform/Sha256.h"
#include "protection/ProtectorDatabase.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <algorithm>
#include <atomic>
#include <cctype>

namespace kestrane {

namespace {

// What goes wrong with a data file is told where its figures are missing.
class SilentMessages : public MessageInterface {
public:
    Button show(const std::string&, MessageFlags flags, const std::string&) override { return defaultButtonOf(flags); }
};

const clsHP* protectorOfName(const Session& session, const std::string& name) {
    if (session.protectors == nullptr) return nullptr;
    const std::vector<clsHP>& list = session.protectors->Protectors;
    const auto found = std::ranges::find(list, name, &clsHP::Name);
    return found == list.end() ? nullptr : &*found;
}

bool isSavedAsItIs(Session& session, clsFile& file) {
    if (!file.JustAcquired() && !IsChanged(file)) return true;
    session.ShowMessage(ReplaceText(session.LoadText(Text::SaveLogFirst), "^", file.ShortenedFileName()),
                        kIconInformation);
    return false;
}

// Uses a session of its own, since what is open in windows may hold changes that the disk does not, and must not be
// touched.
void readFiles(Session& session, const AssessmentDocument& document, Measurements& measured,
               const ReadProgress& progress) {
    const std::vector<std::string> files = measured.unread(document.Now(), document.Path());
    if (files.empty()) return;
    SilentMessages messages;
    Session reading(session.brand.CompanyName, session.locale, session.settings, messages, session.pump, session.clock);
    reading.Options = session.Options;
    reading.server = session.server;
    for (std::size_t i = 0; i < files.size() && progress(i, files.size()); ++i) {
        std::string hash;
        std::atomic<bool> isHashed = true;
        std::shared_ptr<BackgroundWork> hashing;
        // While the file is read, a worker thread hashes a copy: the reader gives the pages of the bytes back.
        const ReadBytes read = [&](const std::string& path) {
            std::shared_ptr<FileBytes> bytes = readFile(path);
            if (reading.server == nullptr) {
                hash = sha256Of(bytes->view());
                return bytes;
            }
            isHashed = false;
            hashing = reading.server->Run([&hash, copy = std::string(bytes->view())] { hash = sha256Of(copy); },
                                          [&isHashed] { isHashed = true; });
            return bytes;
        };
        bool isOpen = OpenFile(reading, files[i], OpenSource::Named, true, read);
        session.pump.runUntil([&] { return isHashed && noLogIsBusy(reading); });
        forEachLog(reading, [&isOpen](const clsLog& log) { isOpen = isOpen && !log.HasFailedRecalc; });
        measured.take(session, document.Now(), document.Path(), files[i],
                      isOpen ? reading.OpenFiles.front().get() : nullptr, hash,
                      [&](const std::string& name) { return protectorOfName(session, name); });
        reading.OpenFiles.clear();
    }
}

} // namespace

bool isNamedAsAssessment(const std::string& name) {
    std::string extension = name.substr(std::min(name.rfind('.'), name.size()));
    std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
    return extension == ".kxa" || extension == ".json";
}

namespace {

// Returns nothing, after a message, when it cannot be read.
std::optional<AssessmentDocument> readAssessment(Session& session, const std::string& path) {
    try {
        return AssessmentDocument::ofFile(path);
    } catch (const RuntimeError& error) {
        session.ShowMessage(ReplaceText(session.LoadText(Text::UnableToOpen), "^", path) + "\r\n\r\n" + error.what(),
                            kIconStop);
        return std::nullopt;
    }
}

} // namespace

std::optional<AssessmentDocument> OpenAssessment(Session& session, const std::string& path, OpenSource source) {
    std::shared_ptr<FileLock> held;
    bool isReadOnly = false;
    if (!MayOpen(session, path, held, isReadOnly)) return std::nullopt;
    std::optional<AssessmentDocument> document = readAssessment(session, path);
    if (!document) return std::nullopt;
    document->Held = std::move(held);
    document->ReadOnly = isReadOnly;
    if (source != OpenSource::Named) rememberRecentFile(session, path);
    return document;
}

AssessmentDocument NewAssessment(const Session& session) {
    Assessment assessment;
    assessment.Date = formatDate(session.clock.now(), "yyyy-mm-dd");
    return {withGroup(session, assessment).Next, {}};
}

std::string assessmentName(const Session& session, const AssessmentDocument& document) {
    const std::string& path = document.Path();
    return path.empty() ? session.LoadText(Text::Untitled) : path.substr(path.rfind('/') + 1);
}

std::string assessmentTitle(const Session& session, const AssessmentDocument& document) {
    return assessmentName(session, document) + (document.ReadOnly ? session.LoadText(Text::ReadOnlyMark) : "");
}

namespace {

bool isChangedByAnother(const Session& session, const AssessmentDocument& document, bool isThorough) {
    return !session.StateFolder.empty() && hasOtherContent(document.Path(), document.OnDisk(), isThorough);
}

bool takeTheirs(Session& session, AssessmentDocument& document) {
    std::optional<AssessmentDocument> theirs = readAssessment(session, document.Path());
    if (!theirs) return false;
    theirs->Held = std::move(document.Held);
    theirs->ReadOnly = document.ReadOnly;
    document = std::move(*theirs);
    return true;
}

// Asks until the name is not that of a file that is open elsewhere, which would be overwritten.
std::optional<std::string> askFreeName(Session& session, const AssessmentDocument& document,
                                       const AskSaveName& askName) {
    std::string proposal = document.Path().empty() ? session.LoadText(Text::Untitled) + ".kxa" : document.Path();
    while (true) {
        std::optional<std::string> name = askName(proposal);
        if (!name || name->empty()) return std::nullopt;
        if ((!document.ReadOnly && isSameFile(*name, document.Path())) || !IsHeldElsewhere(session, *name)) return name;
        session.ShowMessage(ReplaceText(session.LoadText(Text::FileIsOpen), "^", name->substr(name->rfind('/') + 1)),
                            kIconExclamation);
        proposal = *std::move(name);
    }
}

} // namespace

bool SaveAssessment(Session& session, AssessmentDocument& document, bool bSaveAs, const AskSaveName& askName) {
    std::string path = document.Path();
    bSaveAs = bSaveAs || document.ReadOnly || path.empty();
    if (!bSaveAs && isChangedByAnother(session, document, true)) {
        const OnConflict conflict = AskAboutConflict(session, path);
        if (conflict == OnConflict::Later) return false;
        if (conflict == OnConflict::Theirs) return takeTheirs(session, document);
        bSaveAs = conflict == OnConflict::SaveAs;
    }
    if (bSaveAs) {
        const std::optional<std::string> name = askFreeName(session, document, askName);
        if (!name) return false;
        path = *name;
    }
    try {
        const std::string backup = SaveWithBackup(session, path, [&] {
            document.Save(path);
            return document.OnDisk().Hash;
        });
        if (!backup.empty()) session.frame->Tell(ReplaceText(session.LoadText(Text::BackupMade), "^", backup));
    } catch (const RuntimeError& error) {
        session.ShowMessage(saveErrorText(session, error, path), kIconExclamation);
        return false;
    }
    if (bSaveAs) {
        document.ReadOnly = !HoldFile(session, path, document.Held);
        rememberRecentFile(session, path);
    }
    return true;
}

bool LookForOtherPrograms(Session& session, AssessmentDocument& document, const AskSaveName& askName) {
    if (!isChangedByAnother(session, document, false)) return false;
    FileStamp now = hashedStampOf(document.Path());
    switch (AskAboutConflict(session, document.Path())) {
    case OnConflict::GoOn:
        document.SetOnDisk(std::move(now));
        document.MarkChanged();
        return true;
    case OnConflict::Theirs:
        return takeTheirs(session, document);
    case OnConflict::SaveAs:
        if (SaveAssessment(session, document, true, askName)) return true;
        [[fallthrough]];
    case OnConflict::Later: // the same change is asked about once more only before saving, which compares the hash
        now.Hash = document.OnDisk().Hash;
        document.SetOnDisk(std::move(now));
        return false;
    }
    return false;
}

bool MayCloseAssessment(Session& session, AssessmentDocument& document, const AskSaveName& askName) {
    if (!document.IsChanged()) return true;
    const std::string question =
        ReplaceText(session.LoadText(Text::AskSaveChanges), "^", assessmentName(session, document));
    const Button answer = session.ShowMessage(question, kButtonsYesNoCancel | kIconQuestion);
    return answer == Button::No || (answer == Button::Yes && SaveAssessment(session, document, false, askName));
}

void ReadDataFiles(Session& session, AssessmentDocument& document, Measurements& measured,
                   const ReadProgress& progress) {
    readFiles(session, document, measured, progress);
    Assessment present = document.Now(); // also when a further sample is of a file that has been read
    keepMeasuredHashes(present, document.Path(), measured);
    document.Amend(std::move(present));
}

std::optional<LogSample> sampleOfNode(Session& session, const std::string& key, const std::optional<RowRange>& range) {
    const Node node = resolve(session, key);
    if (node.log == nullptr || !isSavedAsItIs(session, *node.file)) return std::nullopt;
    LogSample sample;
    sample.Name = node.log->Name;
    sample.Rows.File = node.file->FileName;
    sample.Rows.Log = keyOfLog(*node.file, *node.log);
    if (!range || (range->From == 1 && range->To == node.log->LogIntervals.Count())) return sample;
    sample.Rows.From = range->From;
    sample.Rows.To = range->To;
    return sample;
}

} // namespace kestrane

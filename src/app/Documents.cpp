#include "app/Documents.h"

#include "app/Backups.h"
#include "app/OtherPrograms.h"
#include "calc/Recalculation.h"
#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "files/HistoryFile.h"
#include "files/Loaders.h"
#include "files/XmlWriter.h"
#include "model/BusyFrame.h"
#include "model/SettingsText.h"
#include "platform/FileStamp.h"
#include "platform/Files.h"
#include "platform/OutOfMemory.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <chrono>
#include <exception>
#include <set>
#include <utility>
#include <vector>

namespace kestrane {

namespace {

// All rows have come, and the plottable tables have been made. That may have changed display options, which is no
// change by the user: a document without other changes counts as saved.
void adoptDisplayOptions(clsFile& file) {
    if (file.Changed) return;
    const DocumentMark mark = MarkOf(file);
    if (mark.rest == file.SavedMark.rest) file.SavedMark = mark;
}

// The rows of a log of the document have come. When it was the last one, the recalculations that waited for rows begin.
// What they change is no change by the user, either.
void takeUpRows(const Session& session, int fileId) {
    clsFile* const file = session.fileById(fileId);
    if (file == nullptr || file->IsBusy()) return;
    adoptDisplayOptions(*file);
    std::vector<clsLog*> waiting;
    forEachLog(*file, [&](clsLog& log) {
        if (std::exchange(log.RecalcWithRows, false) && !log.HasUnreadIntervals) waiting.push_back(&log);
    });
    const bool wasChanged = !waiting.empty() && IsChanged(*file);
    for (clsLog* const log : waiting) {
        RecalcValues(*log, kCalcFull, [&session, fileId, wasChanged, log, before = KeptFigures(*log)] {
            clsFile* const ended = session.fileById(fileId);
            if (ended == nullptr) return;
            forEachLog(*ended, [&](const clsLog& each) {
                if (&each == log) recordRecalculation(*ended, each, before);
            });
            if (wasChanged || ended->Changed || !ended->Edits.isAtSaved() || ended->IsBusy()) return;
            ended->SavedMark = MarkOf(*ended);
        });
    }
}

// Does long work on a worker thread and waits for it while the pump runs: the windows stay alive, but the user cannot
// give a command. Raises what the job raises, or else what watching it raises; never before the job is done, since the
// job works on what stands in the functions that wait for it.
void waitFor(Session& session, const std::function<void()>& job,
             const std::function<void(const std::function<bool()>& isDone)>& watch = {}) {
    if (session.server == nullptr) return job();
    std::exception_ptr raised;
    bool isDone = false;
    const BusyFrame busy(*session.frame);
    const auto work = session.server->Run(
        [&] {
            try {
                job();
            } catch (...) {
                raised = std::current_exception();
            }
        },
        [&isDone] { isDone = true; });
    std::exception_ptr raisedByWatch;
    try {
        if (watch) watch([&isDone] { return isDone; });
    } catch (...) {
        raisedByWatch = std::current_exception();
    }
    session.pump.runUntil([&isDone] { return isDone; });
    for (const std::exception_ptr& each : {raised, raisedByWatch}) {
        if (each) std::rethrow_exception(each);
    }
}

// Recalculates the logs of a document whose rows are there and waits for the figures while the pump runs, because what
// follows needs them.
void recalculate(const clsFile& file, bool bForce) {
    Session& session = file.session();
    for (const auto& data : file.InstrumentDatas)
        RecalcValues(*data, bForce);
    const auto isBusy = [&file] {
        bool isRecalculating = false;
        forEachLog(file, [&](const clsLog& log) { isRecalculating = isRecalculating || log.IntervalsRecalculating; });
        return isRecalculating;
    };
    if (!isBusy()) return;
    const BusyFrame busy(*session.frame);
    session.pump.runUntil([&] { return !isBusy(); });
}

// The logs whose exposure rows the user has edited and which are not saved with these rows.
std::vector<clsLog*> logsOfUnsavedRows(const clsFile& file) {
    std::vector<clsLog*> logs;
    forEachLog(file, [&logs](clsLog& log) {
        if (log.AreDoseRowsEdited && !log.SaveDoseCalc && !log.DoseLogIntervals.empty()) logs.push_back(&log);
    });
    return logs;
}

void loadRows(Session& session, int fileId) {
    LoadWaitingIntervals(session, [&session, fileId](const clsLog&) { takeUpRows(session, fileId); });
}

// The hash of the file that was opened is there.
void takeUpHash(clsFile& file, FileStamp stamp) {
    const Session& session = file.session();
    if (CheckHistory(file, stamp.Hash))
        session.frame->Tell(ReplaceText(session.LoadText(Text::ChangedByOtherTold), "^", file.ShortenedFileName()));
    if (!session.StateFolder.empty() || !isRegularFile(file.FileName)) file.OnDisk = std::move(stamp);
}

// Makes the hash while the document is shown already, which is busy until then.
void hashBeside(clsFile& file, FileStamp stamp, std::shared_ptr<FileBytes> bytes) {
    bytes->Keep(true);
    const auto hashed = std::make_shared<FileStamp>(std::move(stamp));
    file.Hashing = file.session().server->Run(
        [hashed, bytes = std::move(bytes)] {
            hashed->Hash = sha256Of(bytes->view());
            bytes->Keep(false);
        },
        [&file, hashed] {
            const auto ended = std::exchange(file.Hashing, nullptr);
            takeUpHash(file, std::move(*hashed));
            forEachLog(file, [](clsLog& log) { log.RaiseLogValuesChanged(); });
            takeUpRows(file.session(), file.FileId);
            TellWhenLoaded(file.session());
        });
}

void addToOpen(Session& session, std::unique_ptr<clsFile> file) {
    session.OpenFiles.push_back(std::move(file));
    AssignIdentities(session, true, 0);
}

void refreshWindows(Session& session) {
    session.frame->RebuildExplorerTrees();
    session.frame->EnableMenusAndButtons();
}

bool hasEmptyCollection(const clsFile& file) {
    return std::any_of(file.InstrumentDatas.begin(), file.InstrumentDatas.end(),
                       [](const auto& data) { return !data->hasLogs(); });
}

// The last four characters of a name in lower case; all of a shorter name.
std::string extensionOf(const std::string& name) {
    std::string extension = name.substr(name.size() - std::min<std::size_t>(name.size(), 4));
    std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
    return extension;
}

bool isOldExtension(const std::string& extension) {
    constexpr std::string_view kOldExtensions[] = {".csv", ".zdf", ".zdo", ".zd2", ".zd4", ".log"};
    return std::ranges::find(kOldExtensions, extension) != std::end(kOldExtensions);
}

// The name to propose for saving. It is never that of a file in an older format, because that file is kept.
std::string proposalFor(const clsFile& file) {
    if (!file.IsOldStyle()) return file.FileName;
    const std::string extension = extensionOf(file.FileName);
    return file.FileName.substr(0, file.FileName.size() - (isOldExtension(extension) ? extension.size() : 0)) + ".xml";
}

// Asks until the name is not that of another open document, which would be overwritten.
std::optional<std::string> askFreeName(Session& session, const clsFile& file, const AskSaveName& askName) {
    std::string proposal = proposalFor(file);
    while (true) {
        std::optional<std::string> name = askName(proposal);
        if (!name || name->empty()) return std::nullopt;
        const clsFile* const other = openFileOfName(session, *name);
        if (other == &file && !file.ReadOnly) return name;
        if ((other == nullptr || other == &file) && !IsHeldElsewhere(session, *name)) return name;
        const std::string open =
            other != nullptr ? other->ShortenedFileName() : clsFile(session, *name).ShortenedFileName();
        session.ShowMessage(ReplaceText(session.LoadText(Text::FileIsOpen), "^", open), kIconExclamation);
        proposal = *name;
    }
}

} // namespace

bool isNamedAsDataFile(const std::string& name) {
    const std::string extension = extensionOf(name);
    return extension == ".xml" || extension == ".zdp" || isOldExtension(extension);
}

namespace {

// Whether the hash of the bytes is made before they are looked at: it takes no time worth mentioning, or the reader
// gives the memory of the bytes back as it goes, as that of UTF-16 does, which turns them into UTF-8.
bool isHashedFirst(std::string_view bytes) {
    return bytes.size() <= kReadAtOnce || bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

// Is raised where a file is being read, once the user does not want to wait for it any longer.
struct GivenUp {};

// Waits for the work of opening. When it is long, the user is told, and may give it up.
void watchOpening(const clsFile& file, const std::function<bool()>& isDone, std::atomic<bool>& isGivenUp) {
    constexpr std::chrono::seconds kPatience(1);
    Session& session = file.session();
    const auto begin = std::chrono::steady_clock::now();
    session.pump.runUntil([&] { return isDone() || std::chrono::steady_clock::now() - begin > kPatience; });
    const std::string what = ReplaceText(session.LoadText(Text::OpeningFile), "^", file.ShortenedFileName());
    if (!isDone() && !session.frame->WaitUntil(session.pump, what, isDone)) isGivenUp = true;
}

} // namespace

bool FileOpen(clsFile& file, const ReadBytes& read) {
    if (file.FileId >= 1) return true;
    Session& session = file.session();
    std::atomic<bool> isGivenUp = false;
    const auto between = [&isGivenUp] {
        if (isGivenUp) throw GivenUp();
    };
    std::string message;
    bool isLoaded = false;
    // What comes from a pipe comes once, and its hash with it.
    const bool isStream = !isRegularFile(file.FileName);
    const bool isToHash = isStream || !session.StateFolder.empty() || fileExists(historyNameOf(file.FileName));
    // The stamp is taken before, so that a change while the file is read is noticed.
    FileStamp stamp;
    std::shared_ptr<FileBytes> bytes;
    const ReadBytes kept = [&](const std::string& path) {
        stamp = stampOf(path);
        bytes = read ? read(path) : readFile(path, between);
        if (isToHash && (isStream || session.server == nullptr || isHashedFirst(bytes->view())))
            stamp.Hash = sha256Of(bytes->view());
        return bytes;
    };
    try {
        waitFor(
            session, [&] { isLoaded = LoadDocument(file, message, kept); },
            [&](const auto& isDone) { watchOpening(file, isDone, isGivenUp); });
    } catch (const GivenUp&) {
        isLoaded = false;
    }
    if (isGivenUp) return false;
    if (!isLoaded) {
        session.ShowMessage(message, kIconStop);
        return false;
    }
    TakeUpHistory(file);
    if (!file.History.Fault.empty()) session.frame->Tell(file.History.Fault);
    if (!stamp.Hash.empty()) takeUpHash(file, stamp);
    file.CopyDoseLogSamples();
    // Older formats contain only the instrument's own figures. Some figures depend on others of the pass before, so
    // there are two passes, as after a download.
    std::vector<KeptFigures> before;
    forEachLog(file, [&before](const clsLog& log) { before.emplace_back(log); });
    if (file.IsOldStyle()) recalculate(file, true);
    recalculate(file, file.IsOldStyle());
    auto figures = before.begin();
    forEachLog(file, [&](const clsLog& log) { recordRecalculation(file, log, *figures++); });
    file.SavedMark = MarkOf(file);
    if (isToHash && stamp.Hash.empty()) hashBeside(file, std::move(stamp), std::move(bytes));
    return true;
}

void WaitForHash(const clsFile& file) {
    if (file.Hashing == nullptr) return;
    const BusyFrame busy(*file.session().frame);
    file.session().pump.runUntil([&file] { return file.Hashing == nullptr; });
}

namespace {

bool open(Session& session, const std::string& name, OpenSource source, bool blnLastFile, const ReadBytes& read) {
    clsFile* file = openFileOfName(session, name);
    std::unique_ptr<clsFile> loaded;
    if (file == nullptr) {
        loaded = std::make_unique<clsFile>(session, name);
        file = loaded.get();
    }
    const bool mayOpen =
        loaded == nullptr || loaded->JustAcquired() || MayOpen(session, name, loaded->Held, loaded->ReadOnly);
    const bool isOpen = mayOpen && FileOpen(*file, read);
    const bool isNew = isOpen && loaded != nullptr;
    if (isNew) addToOpen(session, std::move(loaded));
    if (source != OpenSource::Named) rememberRecentFile(session, file->FileName);
    if (blnLastFile || isNew) refreshWindows(session);
    for (const auto panel : {Frame::Panel::Status, Frame::Panel::Process, Frame::Panel::Error}) {
        session.frame->SetPanel(panel, {});
    }
    loadRows(session, file->FileId);
    return isOpen;
}

} // namespace

clsFile* openFileOfName(const Session& session, const std::string& name) {
    const auto found = std::ranges::find_if(session.OpenFiles, [&](const auto& file) {
        return file->JustAcquired() ? file->FileName == name : isSameFile(file->FileName, name);
    });
    return found == session.OpenFiles.end() ? nullptr : found->get();
}

bool OpenFile(Session& session, const std::string& name, OpenSource source, bool blnLastFile, const ReadBytes& read) {
    const std::size_t before = session.OpenFiles.size();
    try {
        return refusingWithoutMemory([&] { return open(session, name, source, blnLastFile, read); });
    } catch (const RuntimeError& error) {
        const bool isInTrees = session.OpenFiles.size() > before;
        session.OpenFiles.resize(before); // a document that has not become whole is none
        if (isInTrees) refreshWindows(session);
        session.ShowMessage(ReplaceText(session.LoadText(Text::UnableToOpen), "^", name) + ": " + error.what(),
                            kIconStop);
        return false;
    }
}

clsFile& TakeUp(Session& session, std::unique_ptr<clsFile> file) {
    clsFile& open = *file;
    addToOpen(session, std::move(file));
    refreshWindows(session);
    loadRows(session, open.FileId);
    return open;
}

void OpenFiles(Session& session, const std::vector<std::string>& names, OpenSource source) {
    for (const std::string& name : names)
        OpenFile(session, name, source, &name == &names.back());
    ShowOpened(session, names);
}

void ShowOpened(Session& session, const std::vector<std::string>& names) {
    std::string first;
    std::set<std::string> logs;
    for (const std::string& name : names) {
        const clsFile* const file = openFileOfName(session, name);
        if (file == nullptr) continue;
        const std::vector<std::string> keys = logKeys(*file);
        if (first.empty() && !keys.empty()) first = keys.front();
        logs.insert(keys.begin(), keys.end());
    }
    if (!logs.empty()) session.frame->ChooseLog(first, logs.size() == 1);
}

std::string recentFileKey(int number) {
    return "LastFile" + std::to_string(number);
}

void rememberRecentFile(Session& session, const std::string& name) {
    std::erase_if(session.RecentFiles, [&](const std::string& recent) { return isSameFile(recent, name); });
    session.RecentFiles.insert(session.RecentFiles.begin(), name);
    if (session.RecentFiles.size() > kRecentFiles) session.RecentFiles.resize(kRecentFiles);
    try {
        for (std::size_t i = 0; i < session.RecentFiles.size(); ++i)
            session.state->write(kPreferences, recentFileKey(static_cast<int>(i) + 1), session.RecentFiles[i]);
    } catch (const RuntimeError&) {
        // It is remembered until the program ends; what was to be opened or saved must not fail for that.
    }
}

std::string fileNameOf(std::string title) {
    std::ranges::replace_if(
        title, [](char c) { return c == '/' || c == '\\'; }, '-');
    return title;
}

std::string saveErrorText(const Session& session, const RuntimeError& error, const std::string& name) {
    return std::to_string(error.Number) + ": " + error.what() + "\r\n\r\n" +
           ReplaceText(session.LoadText(Text::ErrorSaving), "^", name);
}

namespace {

// No: it is not to be saved; Failed: it could not be written; Theirs: the file that another program wrote is to be
// taken
enum class Saved { Yes, No, Failed, Theirs };

OnConflict conflictOf(Session& session, const clsFile& file) {
    bool isChanged = false;
    waitFor(session, [&] { isChanged = hasOtherContent(file.FileName, file.OnDisk, true); });
    return isChanged ? AskAboutConflict(session, file.FileName) : OnConflict::GoOn;
}

// Writes the document under its name and tells what else came of it.
void writeNamed(Session& session, clsFile& file) {
    std::string backup, historyFault;
    waitFor(session, [&] {
        backup = SaveWithBackup(session, file.FileName, [&] {
            historyFault = FileSave(file);
            return file.OnDisk.Hash;
        });
    });
    if (!backup.empty()) session.frame->Tell(ReplaceText(session.LoadText(Text::BackupMade), "^", backup));
    if (!historyFault.empty())
        session.ShowMessage(ReplaceText(session.LoadText(Text::HistoryNotSaved), "^", historyFault), kIconExclamation);
}

Saved saveOrRaise(Session& session, clsFile& file, bool bSaveAs, const AskSaveName& askName) {
    if (session.Options.PreventEmptySaving && hasEmptyCollection(file)) {
        session.ShowMessage(session.LoadText(Text::FilesWithoutLogsNotSaved), kIconInformation);
        return Saved::No;
    }
    WaitForHash(file);
    bool needsName = file.FileName.empty() || file.JustAcquired() || file.IsOldStyle() || file.ReadOnly || bSaveAs;
    if (!needsName && !IsChanged(file)) return Saved::Yes;
    if (!needsName) {
        const OnConflict conflict = conflictOf(session, file);
        if (conflict == OnConflict::Later) return Saved::No;
        if (conflict == OnConflict::Theirs) return Saved::Theirs;
        needsName = conflict == OnConflict::SaveAs;
    }
    if (needsName) {
        if (file.IsOldStyle()) session.ShowMessage(session.LoadText(Text::NotCompatibleAfterSaving), kIconInformation);
        std::optional<std::string> name = askFreeName(session, file, askName);
        if (!name) return Saved::No;
        file.FileName = *std::move(name);
    }
    writeNamed(session, file);
    if (needsName) {
        file.ReadOnly = !HoldFile(session, file);
        rememberRecentFile(session, file.FileName);
        session.frame->RebuildExplorerTrees();
    }
    session.frame->EnableMenusAndButtons();
    return Saved::Yes;
}

Saved save(Session& session, clsFile& file, bool bSaveAs, const AskSaveName& askName) {
    std::optional<std::string> nameBefore;
    const DocumentMark markBefore = file.SavedMark;
    try {
        return refusingWithoutMemory([&] {
            nameBefore = file.FileName;
            return saveOrRaise(session, file, bSaveAs, askName);
        });
    } catch (const RuntimeError& error) {
        session.ShowMessage(saveErrorText(session, error, file.FileName), kIconExclamation);
        if (nameBefore) file.FileName = *std::move(nameBefore); // there is no file with the new name
        file.SavedMark = markBefore;
        session.frame->RebuildExplorerTrees();
        session.frame->EnableMenusAndButtons();
        return Saved::Failed;
    }
}

} // namespace

bool SaveFile(Session& session, clsFile& file, bool bSaveAs, const AskSaveName& askName) {
    const Saved saved = save(session, file, bSaveAs, askName);
    if (saved == Saved::Theirs) TakeTheirs(session, file);
    return saved == Saved::Yes;
}

bool CloseFiles(Session& session, clsFile* objThisFile, const AskSaveName& askName) {
    std::vector<clsFile*> files;
    for (const auto& file : session.OpenFiles) {
        if (objThisFile == nullptr || objThisFile == file.get()) files.push_back(file.get());
    }
    std::vector<clsLog*> withRows;
    for (clsFile* file : files) {
        file->ToBeSaved = false;
        if (const std::vector<clsLog*> logs = logsOfUnsavedRows(*file); !logs.empty()) {
            const std::string question =
                ReplaceText(session.LoadText(Text::AskSaveExposureRows), "^", file->ShortenedFileName());
            const Button answer = session.ShowMessage(question, kButtonsYesNoCancel | kIconQuestion);
            if (answer == Button::Cancel) return false;
            file->ToBeSaved = answer == Button::Yes;
            if (file->ToBeSaved) withRows.insert(withRows.end(), logs.begin(), logs.end());
        }
        if (file->ToBeSaved || !IsChanged(*file)) continue;
        const std::string question =
            ReplaceText(session.LoadText(Text::AskSaveChanges), "^", file->ShortenedFileName());
        const Button answer = session.ShowMessage(question, kButtonsYesNoCancel | kIconQuestion);
        if (answer == Button::Cancel) return false;
        file->ToBeSaved = answer == Button::Yes;
    }
    for (clsLog* log : withRows)
        log->SaveDoseCalc = true;
    std::erase_if(files, [](const clsFile* file) { return !file->ToBeSaved; });
    const auto isIdle = [&session] { return noLogIsBusy(session); };
    if (!files.empty() && !session.frame->WaitUntil(session.pump, session.LoadText(Text::SavedWhenLoaded), isIdle))
        return false;
    for (clsFile* file : files) {
        Saved saved = save(session, *file, false, askName);
        while (saved == Saved::Failed)
            saved = save(session, *file, true, askName); // another place may have room for it
        if (saved == Saved::No) return false;
    }
    return true;
}

bool CloseFile(Session& session, clsFile* objThisFile, const AskSaveName& askName) {
    if (!CloseFiles(session, objThisFile, askName)) return false;
    const bool wasBusy = !noLogIsBusy(session);
    std::erase_if(session.OpenFiles,
                  [&](const auto& file) { return objThisFile == nullptr || objThisFile == file.get(); });
    if (wasBusy && noLogIsBusy(session))
        session.frame->SetPanel(Frame::Panel::Status, {}); // no event will clear the panel any more
    refreshWindows(session);
    return true;
}

} // namespace kestrane

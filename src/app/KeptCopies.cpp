#include "app/KeptCopies.h"

#include "model/DocumentHistory.h"
#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>

namespace kestrane {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr std::string_view kLockEnding = ".lock"; // beside the folder
constexpr std::string_view kBeingMade = ".new-";  // the beginning of the name of a folder that has no lock yet

std::string notePathOf(const std::string& copy) {
    return pathOf(copy).replace_extension(".json").string();
}

void writeNote(const std::string& copy, const CopyNote& note) {
    const Json json = {{"name", note.Name},
                       {"file", note.File},
                       {"time", note.Time},
                       {"version", note.Version},
                       {"difference", note.Difference},
                       {"size", note.OnDisk.Size},
                       {"modified", note.OnDisk.Modified},
                       {"sha256", note.OnDisk.Hash},
                       {"old-style", note.IsOldStyle},
                       {"for-later", note.IsForLater}};
    const std::string text = json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    writeFileAtomically(notePathOf(copy), [&](const FileSink& sink) { sink(text); });
}

// A note that is missing or damaged must not cost the copy.
CopyNote readNote(const std::string& copy) {
    CopyNote note;
    try {
        const Json json = Json::parse(readFile(notePathOf(copy))->view());
        note.Name = json.at("name");
        note.File = json.at("file");
        note.Time = json.at("time");
        note.Version = json.at("version");
        note.Difference = json.at("difference");
        note.OnDisk = {json.at("size"), json.at("modified"), json.at("sha256")};
        note.IsOldStyle = json.at("old-style");
        note.IsForLater = json.at("for-later");
        return note;
    } catch (const RuntimeError&) {
    } catch (const Json::exception&) {
    }
    note = {};
    note.Name = pathOf(copy).filename().string();
    return note;
}

void removeCopy(const std::string& copy) {
    std::error_code ignored; // what stays is offered again, or removed with its folder
    for (const std::string& path : {copy, historyNameOf(copy), notePathOf(copy)})
        fs::remove(pathOf(path), ignored);
}

bool isCopy(const fs::path& path) {
    return path.extension() == kDataFileCopy || path.extension() == kAssessmentCopy;
}

std::vector<std::string> filesIn(const std::string& folder, bool (*isWanted)(const fs::path&)) {
    std::vector<std::string> files;
    std::error_code failed; // then there are none
    for (fs::directory_iterator at(pathOf(folder), failed), end; !failed && at != end; at.increment(failed))
        if (isWanted(at->path())) files.push_back(at->path().generic_string());
    return files;
}

bool isTooOld(const std::string& copy, const CopyNote& note) {
    if (!note.IsForLater) return false;
    std::error_code failed;
    const auto keptSince = fs::last_write_time(pathOf(notePathOf(copy)), failed);
    return !failed && fs::file_time_type::clock::now() - keptSince > std::chrono::days(KeptCopies::kDaysKept);
}

// Whether the document was saved after all, just before the program ended.
bool isAsItsFile(const std::string& copy, const CopyNote& note) {
    std::error_code failed;
    if (note.File.empty() || fs::file_size(pathOf(note.File), failed) != fs::file_size(pathOf(copy), failed) || failed)
        return false;
    try {
        return sha256OfFile(note.File) == sha256OfFile(copy);
    } catch (const RuntimeError&) {
        return false;
    }
}

// Removes a folder whose lock is held, and gives the lock up.
void removeLocked(const std::string& folder, std::shared_ptr<FileLock>& lock) {
    std::error_code ignored; // what stays is offered, since the lock is free then
    fs::remove_all(pathOf(folder), ignored);
    lock.reset();
}

std::shared_ptr<FileLock> lockOf(const std::string& folder) {
    try {
        return FileLock::take(folder + std::string(kLockEnding));
    } catch (const RuntimeError&) {
        return nullptr; // it cannot be told whether its program is running
    }
}

} // namespace

std::string KeptCopies::PathFor(int number, std::string_view extension) {
    if (folder_.empty()) {
        makeFolderOf(root_ + "x");
        // It gets its name when its lock is held, so that nobody takes it for one that was left. The lock is beside it
        // because some systems rename no folder that has an open file.
        const std::string made = makeUniqueFolder(root_ + std::string(kBeingMade));
        const std::string folder = root_ + made.substr(root_.size() + kBeingMade.size());
        try {
            lock_ = FileLock::take(folder + std::string(kLockEnding));
            if (const int error = renameFile(made, folder); error != 0) raiseSystemError(error);
        } catch (const RuntimeError&) {
            std::error_code ignored; // the reason that is told is the one above
            fs::remove(pathOf(made), ignored);
            lock_.reset();
            throw;
        }
        folder_ = folder + "/";
    }
    return folder_ + std::to_string(number) + std::string(extension);
}

// The note is first: a note without a copy is nothing, but a copy without a note would not know its file.
void KeptCopies::Write(const std::string& path, const CopyNote& note,
                       const std::function<void(const FileSink&)>& content) {
    writeNote(path, note);
    writeFileAtomically(path, content);
}

void KeptCopies::Remove(int number) {
    if (folder_.empty()) return;
    for (const std::string_view extension : {kDataFileCopy, kAssessmentCopy})
        removeCopy(PathFor(number, extension));
}

void KeptCopies::RemoveAll() {
    if (folder_.empty()) return;
    folder_.pop_back(); // the "/"
    removeLocked(std::exchange(folder_, {}), lock_);
}

std::vector<LeftCopy> KeptCopies::Left() {
    std::vector<LeftCopy> copies;
    const auto isFolder = [](const fs::path& path) {
        std::error_code failed;
        return !path.filename().string().starts_with('.') && fs::is_directory(path, failed);
    };
    for (const std::string& folder : filesIn(root_, isFolder)) {
        if (folder + "/" == folder_) continue;
        if (!left_.contains(folder)) {
            const std::shared_ptr<FileLock> lock = lockOf(folder);
            if (lock == nullptr) continue;
            left_[folder] = lock;
        }
        for (const std::string& path : filesIn(folder, isCopy)) {
            const LeftCopy copy{readNote(path), path};
            isTooOld(path, copy.Note) || isAsItsFile(path, copy.Note) ? removeCopy(path) : copies.push_back(copy);
        }
    }
    std::ranges::sort(copies, std::ranges::greater{}, [](const LeftCopy& copy) { return copy.Note.Time; });
    return copies;
}

void KeptCopies::Adopt(const LeftCopy& copy, int number) {
    const std::string path = PathFor(number, pathOf(copy.Path).extension().string());
    std::error_code ignored; // the note may be missing; a copy that cannot be moved stays where it is
    fs::rename(pathOf(notePathOf(copy.Path)), pathOf(notePathOf(path)), ignored);
    fs::rename(pathOf(historyNameOf(copy.Path)), pathOf(historyNameOf(path)), ignored);
    fs::rename(pathOf(copy.Path), pathOf(path), ignored);
}

void KeptCopies::KeepForLater(LeftCopy copy) {
    if (std::exchange(copy.Note.IsForLater, true)) return;
    try {
        writeNote(copy.Path, copy.Note);
    } catch (const RuntimeError&) {
        // It stays as if nobody had seen it.
    }
}

void KeptCopies::Discard(const LeftCopy& copy) {
    removeCopy(copy.Path);
}

void KeptCopies::Release() {
    for (auto& [folder, lock] : left_)
        if (filesIn(folder, isCopy).empty()) removeLocked(folder, lock);
    left_.clear();
}

} // namespace kestrane

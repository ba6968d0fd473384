#include "files/Loaders.h"

#include "files/HistoryFile.h"
#include "files/MachineLog.h"
#include "files/ProjectFile.h"
#include "files/SoundFiles.h"
#include "files/XmlReader.h"
#include "files/XmlWriter.h"
#include "model/Session.h"
#include "platform/AtomicFile.h"
#include "platform/FileStamp.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <new>

namespace kestrane {

namespace {

// A loader reads a file of its format. Otherwise it sets message and returns false, or raises the reason why the file
// cannot be read.
using Loader = bool (*)(clsFile& file, const std::shared_ptr<FileBytes>& bytes, std::string& message);

std::string unableToOpen(const clsFile& file) {
    return ReplaceText(file.session().LoadText(Text::UnableToOpen), "^", file.FileName);
}

bool FileOpenCsv(clsFile& file, const std::shared_ptr<FileBytes>& bytes, std::string&) {
    ReadSoundCsv(file, behindMark(bytes->view()));
    return file.OldStyle = true;
}

bool FileOpenSound(clsFile& file, const std::shared_ptr<FileBytes>& bytes, std::string&) {
    ReadSoundFile(file, behindMark(bytes->view()));
    return file.OldStyle = true;
}

bool FileOpenLog(clsFile& file, const std::shared_ptr<FileBytes>& bytes, std::string& message) {
    return file.OldStyle = ReadMachineLog(file, behindMark(bytes->view()), message);
}

bool FileOpenProject(clsFile& file, const std::shared_ptr<FileBytes>& bytes, std::string& message) {
    file.OldStyle = false;
    if (ReadProject(file, behindMark(bytes->view()))) return true;
    message = unableToOpen(file);
    return false;
}

bool FileOpenXml(clsFile& file, const std::shared_ptr<FileBytes>& bytes, std::string& message) {
    const std::shared_ptr<XmlDocument> document = XmlDocument::load(bytes, message);
    if (document == nullptr) return false;
    file.OldStyle = false;
    GetData(file, document);
    return true;
}

// Raises when rows of the file have not been read: saving would overwrite them.
void refuseToLoseIntervals(const clsFile& file) {
    forEachLog(file, [&file](const clsLog& log) {
        if (log.IntervalsToLoad) throw RuntimeError(kErrorApplication, file.session().LoadText(Text::StillLoading));
        if (!log.HasUnreadIntervals) return;
        throw RuntimeError(kErrorApplication,
                           ReplaceText(file.session().LoadText(Text::IntervalsNotRead), "^", log.Name));
    });
}

// The hash of the file that a save is about to replace, which may have been changed since it was opened; empty for
// none.
std::string hashToReplace(clsFile& file) {
    if (!file.History.IsWanted || !isRegularFile(file.FileName)) return {};
    std::string hash = hashedStampOf(file.FileName).Hash; // none when it may be written to but not read
    if (!hash.empty() && file.FileName == file.History.DataFile) NoticeChange(file, hash);
    return hash;
}

constexpr std::array<Loader, 5> kLoaders = {FileOpenCsv, FileOpenSound, FileOpenLog, FileOpenProject, FileOpenXml};

struct LoaderOrder {
    std::string_view extension; // empty for any other extension
    std::array<int, 5> loaders; // numbered from 1
};

constexpr LoaderOrder kOrders[] = {
    {".csv", {1, 5, 4, 2, 3}}, {".zdf", {1, 5, 4, 2, 3}}, {".zdo", {1, 5, 4, 2, 3}}, {".zd2", {2, 5, 4, 1, 3}},
    {".zd4", {2, 5, 4, 1, 3}}, {".log", {3, 5, 4, 2, 1}}, {".zdp", {4, 5, 3, 2, 1}}, {"", {5, 4, 3, 2, 1}},
};

const std::array<int, 5>& orderFor(const std::string& fileName) {
    std::string extension = fileName.substr(fileName.size() < 4 ? 0 : fileName.size() - 4);
    for (char& c : extension)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return std::find_if(std::begin(kOrders), std::end(kOrders) - 1,
                        [&](const LoaderOrder& order) { return order.extension == extension; })
        ->loaders;
}

bool attempt(Loader loader, clsFile& file, const std::shared_ptr<FileBytes>& bytes, std::string& message) {
    file.InstrumentDatas.clear();
    try {
        return loader(file, bytes, message);
    } catch (const RuntimeError& error) {
        message = unableToOpen(file) + ": " + error.what();
    } catch (const std::bad_alloc&) {
        message = unableToOpen(file) + ": Out of memory";
    }
    return false;
}

} // namespace

bool LoadDocument(clsFile& file, std::string& message, const ReadBytes& read) {
    message.clear();
    file.InstrumentDatas.clear();
    std::shared_ptr<FileBytes> bytes;
    try {
        bytes = read(file.FileName);
    } catch (const RuntimeError& error) {
        message = unableToOpen(file) + ": " + error.what();
        return false;
    }
    if (isRegularFile(file.FileName)) file.History = ReadHistory(file.session(), file.FileName);
    bool isFirst = true;
    for (const int number : orderFor(file.FileName)) {
        std::string reason;
        const bool ok = attempt(kLoaders[static_cast<std::size_t>(number) - 1], file, bytes, reason);
        if (ok && (isFirst || !file.InstrumentDatas.empty())) return true;
        if (isFirst) message = reason;
        isFirst = false;
    }
    file.InstrumentDatas.clear();
    return false;
}

bool AreRowsRead(const clsFile& file) {
    bool areRead = true;
    forEachLog(file, [&](const clsLog& log) { areRead = areRead && !log.IntervalsToLoad && !log.HasUnreadIntervals; });
    return areRead;
}

void WriteDocument(const clsFile& file, const FileSink& sink) {
    clsStringBuffer out(sink);
    SetTagData(file, true, out);
    out.append("\n");
    out.flush();
}

std::string FileSave(clsFile& file) {
    refuseToLoseIntervals(file);
    const std::string before = hashToReplace(file);
    Sha256 hash;
    writeFileAtomically(file.FileName, [&](const FileSink& sink) {
        WriteDocument(file, [&](std::string_view piece) {
            hash.add(piece);
            sink(piece);
        });
    });
    file.OnDisk = stampOf(file.FileName);
    file.OnDisk.Hash = hash.text();
    file.SavedMark = MarkOf(file);
    file.Changed = false;
    file.Edits.markSaved();
    file.OldStyle = false;
    if (!file.History.IsWanted || !isRegularFile(file.FileName)) return {};
    try {
        AppendHistory(file, before);
        return {};
    } catch (const RuntimeError& error) {
        return error.what();
    }
}

bool IsChanged(clsFile& file) {
    if (!file.Changed) file.Changed = MarkOf(file) != file.SavedMark;
    return file.Changed;
}

} // namespace kestrane

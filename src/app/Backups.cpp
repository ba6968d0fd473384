#include "app/Backups.h"

#include "platform/AtomicFile.h"
#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <vector>

namespace kestrane {

namespace {

constexpr std::size_t kHashesKept = 1000;

std::string listPath(const Session& session) {
    return session.StateFolder + "written-by-" KESTRANE_VERSION_TEXT ".txt";
}

// One hash a line, the oldest first. A list that cannot be read costs no more than a backup too many.
std::vector<std::string> hashesOf(const Session& session) {
    std::vector<std::string> hashes;
    try {
        const auto bytes = readFile(listPath(session));
        std::istringstream text{std::string(bytes->view())};
        for (std::string line; std::getline(text, line);)
            hashes.push_back(line);
    } catch (const RuntimeError&) {
        hashes.clear();
    }
    return hashes;
}

void remember(const Session& session, const std::string& hash) {
    std::vector<std::string> hashes = hashesOf(session);
    std::erase(hashes, hash);
    hashes.push_back(hash);
    if (hashes.size() > kHashesKept) hashes.erase(hashes.begin(), hashes.end() - kHashesKept);
    try {
        makeFolderOf(listPath(session));
        writeFileAtomically(listPath(session), [&](const FileSink& sink) {
            for (const std::string& line : hashes)
                sink(line + "\n");
        });
    } catch (const RuntimeError&) {
        // As above.
    }
}

// Where the file system cannot give a second name, the file is copied.
void keepAs(const std::string& path, const std::string& backup) {
    if (giveSecondName(path, backup)) return;
    if (fileExists(backup)) return; // another program was quicker
    const auto bytes = readFile(path);
    writeFileAtomically(backup, [&](const FileSink& sink) { sink(bytes->view()); });
}

bool isForeign(const Session& session, const std::string& path) {
    const std::vector<std::string> own = hashesOf(session);
    return std::ranges::find(own, sha256OfFile(path)) == own.end();
}

} // namespace

std::string SaveWithBackup(const Session& session, const std::string& path, const std::function<std::string()>& save) {
    const std::string backup = path + ".bak";
    const bool isToBeKept =
        !session.StateFolder.empty() && fileExists(path) && !fileExists(backup) && isForeign(session, path);
    if (isToBeKept) keepAs(path, backup);
    try {
        const std::string hash = save();
        if (!session.StateFolder.empty()) remember(session, hash);
    } catch (const RuntimeError&) {
        std::error_code ignored; // the file itself is still there
        if (isToBeKept) std::filesystem::remove(pathOf(backup), ignored);
        throw;
    }
    return isToBeKept ? backup : std::string();
}

} // namespace kestrane

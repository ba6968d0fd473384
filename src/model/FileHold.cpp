#include "model/FileHold.h"

#include "model/Session.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"

#include <filesystem>
#include <utility>

namespace kestrane {

namespace {

// However a file is named, its lock has one name.
std::string lockPathOf(const Session& session, const std::string& file) {
    std::error_code failed;
    const std::filesystem::path real = std::filesystem::weakly_canonical(pathOf(file), failed);
    return session.StateFolder + "locks/" + sha256Of(failed ? file : real.string()) + ".lock";
}

} // namespace

bool HoldFile(const Session& session, const std::string& path, std::shared_ptr<FileLock>& held) {
    if (session.StateFolder.empty()) return true;
    held.reset();
    try {
        const std::string lock = lockPathOf(session, path);
        makeFolderOf(lock);
        held = FileLock::take(lock);
        return held != nullptr;
    } catch (const RuntimeError&) {
        return true;
    }
}

bool HoldRenamed(const Session& session, const std::string& from, const std::string& to,
                 std::shared_ptr<FileLock>& held) {
    std::error_code failed;
    const bool isLink = std::filesystem::is_symlink(pathOf(from), failed); // the file behind it keeps its name
    if (isLink || lockPathOf(session, from) == lockPathOf(session, to)) return true;
    std::shared_ptr<FileLock> next;
    if (!HoldFile(session, to, next)) return false;
    held = std::move(next);
    return true;
}

bool IsHeldElsewhere(const Session& session, const std::string& path) {
    if (session.StateFolder.empty()) return false;
    try {
        const std::string lock = lockPathOf(session, path);
        return fileExists(lock) && FileLock::take(lock) == nullptr;
    } catch (const RuntimeError&) {
        return false;
    }
}

} // namespace kestrane

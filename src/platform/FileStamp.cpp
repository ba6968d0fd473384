#include "platform/FileStamp.h"

#include "platform/RuntimeError.h"
#include "platform/Sha256.h"

namespace kestrane {

FileStamp hashedStampOf(const std::string& path) {
    FileStamp stamp = stampOf(path);
    if (!stamp.IsKnown()) return stamp;
    try {
        stamp.Hash = sha256OfFile(path);
    } catch (const RuntimeError&) {
        return {};
    }
    return stamp;
}

bool hasOtherContent(const std::string& path, const FileStamp& stamp, bool isThorough) {
    if (!stamp.IsKnown()) return false;
    const FileStamp now = stampOf(path);
    if (!now.IsKnown()) return false;
    if (now.Size != stamp.Size) return true;
    if (now.Modified == stamp.Modified && !isThorough) return false;
    try {
        return !stamp.Hash.empty() && sha256OfFile(path) != stamp.Hash;
    } catch (const RuntimeError&) {
        return false;
    }
}

} // namespace kestrane

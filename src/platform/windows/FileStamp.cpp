#include "platform/FileStamp.h"

#include "platform/windows/FileTimes.h"
#include "platform/windows/Wide.h"

namespace kestrane {

FileStamp stampOf(const std::string& path) {
    FileStamp stamp;
    const Handle file = openToRead(path);
    BY_HANDLE_FILE_INFORMATION about{};
    if (!file.isOpen() || GetFileType(file.get()) != FILE_TYPE_DISK ||
        GetFileInformationByHandle(file.get(), &about) == 0)
        return stamp;
    stamp.Size = static_cast<std::int64_t>(about.nFileSizeHigh) << 32 | about.nFileSizeLow;
    stamp.Modified = nanosecondsOf(about.ftLastWriteTime);
    return stamp;
}

} // namespace kestrane

// What a report of a fault needs of the system: to be called at the fault, and a file that can be written then. The
// functions of the file take neither memory nor a lock.
#pragma once

#include <string>
#include <string_view>

namespace kestrane {

// The file of a report, empty at first. Without a file, what is put is lost.
class ReportFile {
public:
    explicit ReportFile(const char* path);
    ~ReportFile(); // waits until the report is on the disk
    ReportFile(const ReportFile&) = delete;
    ReportFile& operator=(const ReportFile&) = delete;

    void put(std::string_view text);
    void putStack(); // the functions that were running, a line each

private:
    int file_;
};

// From now on a fault of the program calls report with its kind ("signal 11") and then ends the program as it would
// have ended.
void catchFaults(void (*report)(std::string_view kind));

std::string processNumber(); // of this program, by which the system knows it

} // namespace kestrane

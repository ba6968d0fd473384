// The files of recovery. Each running program has a folder of its own for the copies of its unsaved documents, with a
// lock that the system gives up when the program ends, however it ends. A folder whose lock is free was left by a
// program that did not end as it should.
//
// A copy is a data file or an assessment ("1.xml", "2.kxa") with a note beside it ("1.json") that says whose copy it
// is. A data file has a history, too ("1.xml.history.jsonl"): what was done since its own file was saved.
#pragma once

#include "platform/AtomicFile.h"
#include "platform/FileLock.h"
#include "platform/FileStamp.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

constexpr std::string_view kDataFileCopy = ".xml";
constexpr std::string_view kAssessmentCopy = ".kxa";

struct CopyNote {
    std::string Name;       // of the document, as its user knows it
    std::string File;       // its own file; empty when it was never saved
    std::string Time;       // when the copy was made, in local time: yyyy-mm-dd hh:mm:ss
    std::string Version;    // of the program that made it
    std::string Difference; // in words: what the copy has that the file has not
    FileStamp OnDisk;       // of its own file when the document was read or saved
    bool IsOldStyle = false;
    bool IsForLater = false; // the user has seen it and left it; the days count from then on
};

// A copy that was left behind.
struct LeftCopy {
    CopyNote Note;
    std::string Path;

    bool IsAssessment() const { return Path.ends_with(kAssessmentCopy); }
};

class KeptCopies {
public:
    // root is the folder of the folders, with "/" at its end. Nothing is created before the first copy.
    explicit KeptCopies(std::string root) : root_(std::move(root)) {}

    // The path for copy number of this program, whose folder is created when it is missing. Raises the system's error.
    std::string PathFor(int number, std::string_view extension);

    // Writes a copy and its note, each whole at every moment. Raises the system's error; the copy before then stays.
    // May be called on any thread.
    static void Write(const std::string& path, const CopyNote& note,
                      const std::function<void(const FileSink&)>& content);

    void Remove(int number); // whatever there is of it

    void RemoveAll(); // with the folder of this program: nothing is left to be kept

    // What was left behind, the newest first. The folders stay locked until Release, so that no other program offers
    // the same. Copies that were kept for later more than kDaysKept days ago are removed, and those that are as their
    // own file is. A note that cannot be read is replaced by one with the name of the copy.
    std::vector<LeftCopy> Left();

    static constexpr int kDaysKept = 7;

    void Adopt(const LeftCopy& copy, int number); // it is a copy of this program from now on
    static void KeepForLater(LeftCopy copy);
    static void Discard(const LeftCopy& copy);

    void Release(); // gives up the folders that Left has locked, and removes those that are empty

private:
    std::string root_, folder_;
    std::shared_ptr<FileLock> lock_;
    std::map<std::string, std::shared_ptr<FileLock>> left_; // by folder
};

} // namespace kestrane

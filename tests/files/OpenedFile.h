// A data file of a given content in a folder of its own, and the document that loading it gives.
#pragma once

#include "TestSession.h"
#include "files/Loaders.h"
#include "platform/TemporaryFolder.h"

#include <memory>
#include <string>

namespace kestrane {

// The text of a data file whose one collection holds the given "log" elements.
inline std::string dataFile(const std::string& logs, const std::string& detail = "instrument-name=\"Corvane\"") {
    return "<?xml version=\"1.0\"?><instruments><instrument-data><instrument-detail " + detail + "/><logs>" + logs +
           "</logs></instrument-data></instruments>";
}

struct OpenedFile : TestSession {
    TemporaryFolder folder;
    clsFile file;
    std::string message;
    bool isOpen;

    explicit OpenedFile(const std::string& content, const std::string& name = "a.xml", Locale locale = {}) :
        TestSession(std::move(locale)), file(session, folder.file(name)) {
        writeText(file.FileName, content);
        isOpen = LoadDocument(file, message);
    }

    clsLog& log(LogMode mode = modeBroadband) { return *file.InstrumentDatas.at(0)->logsOf(mode).at(0); }

    // Loads the rows of a log here and now.
    static void loadRows(clsLog& log) {
        if (log.IntervalNodes == nullptr) return;
        log.LogIntervals.setArraySize(log.IntervalNodes->Count());
        for (const RowRange& range : log.LoadRanges) {
            log.LogIntervals.copyData(log.IntervalNodes->load(log.Mode(), log.IsChannelBOn, range.From, range.To),
                                      range.From, range.To);
        }
        log.IntervalsToLoad = false;
    }
};

} // namespace kestrane

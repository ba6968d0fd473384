#include "views/LogHistory.h"

#include "TestSession.h"
#include "model/LogIdentity.h"
#include "model/Session.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// Two instruments that were started at the same time, whose logs have the same name.
struct TwoInstruments : TestSession {
    clsFile file{session, "/data/shift.xml"};

    TwoInstruments() {
        for (const char* serial : {"A1", "B2"}) {
            auto& data = *file.InstrumentDatas.emplace_back(std::make_unique<clsInsData>(session));
            data.InsSerial = serial;
            addLog(data);
        }
    }

    void addLog(clsInsData& data) const {
        clsLog log(data.session());
        log.Mode(modeBroadband);
        log.Name = "Broadband 1";
        log.StartDate = {3, 6, 2024};
        log.StartTime = {9, 0, 0};
        log.LogId = static_cast<std::int32_t>(data.Locations.size()) + 1;
        data.append(log, kAtEnd);
    }

    clsInsData& data(std::size_t i) { return *file.InstrumentDatas.at(i); }

    clsLog& log(std::size_t i) { return *data(i).Locations.front(); }

    void add(const std::string& what, const std::string& name, const std::string& identity, const std::string& after) {
        HistoryLine line = historyLine(session, what);
        line.Log = name;
        line.Identity = identity;
        line.Before = what == "Rename" ? "Broadband 1" : "";
        line.After = after;
        file.History.add(line);
    }

    // What was done to a log; a "?" behind what may have been done to another one.
    std::string changes(std::size_t i) {
        std::string text;
        for (const LogChange& change : changesOf(file, data(i), log(i)))
            text += change.Line.What + (change.IsCertain ? "|" : "?|");
        return text;
    }
};

TEST(LogHistory, ALogHasItsOwnChangesWhateverItIsCalled) {
    TwoInstruments two;
    const std::string first = "A1, Broadband, 2024-06-03 09:00:00", second = "B2, Broadband, 2024-06-03 09:00:00";
    EXPECT_EQ(identityOf(two.file, two.log(1)), second);
    two.add("Old", "Broadband 1", {}, {}); // of before lines had an identity
    two.add("Paste", {}, {}, "Broadband 1");
    two.add("Settings", "Broadband 1", first, {});
    two.add("Rename", "Night", second, "Night");
    two.log(1).Name = "Night";
    two.add("Older", "Night", {}, {});
    EXPECT_EQ(two.changes(0), "Old?|Paste|Settings|");
    EXPECT_EQ(two.changes(1), "Old?|Paste|Rename|Older|") << "the name was that of both";
    EXPECT_EQ(logsOfLines(two.file, two.file.History.lines()),
              (std::vector<std::string>{"Broadband 1", "", "Broadband 1 [" + first + "]", "Night", "Night"}));

    two.data(0).InsSerial = "C3"; // as if it had been moved there
    EXPECT_EQ(two.changes(0), "Old?|Paste|Settings?|");

    two.data(0).InsSerial = "A1";
    two.addLog(two.data(0)); // a copy
    EXPECT_EQ(two.changes(0), "Old?|Paste|Settings?|");
}

} // namespace
} // namespace kestrane

#include "ErrorOf.h"
#include "TestSession.h"
#include "model/clsFile.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace kestrane {
namespace {

struct InstrumentDataTest : testing::Test, TestSession {
    clsInsData data{session};

    std::unique_ptr<clsLog> logOf(const std::string& name, std::int16_t id, LogMode mode = modeBroadband) {
        auto log = std::make_unique<clsLog>(session);
        log->Mode(mode);
        log->Name = name;
        log->LogId = id;
        log->Selected = true;
        return log;
    }

    static std::string names(const LogCollection& logs) {
        std::string text;
        for (const auto& log : logs)
            text += log->Name;
        return text;
    }
};

TEST_F(InstrumentDataTest, LogsArePlacedBehindTheirNeighbour) {
    struct Case {
        std::vector<std::pair<const char*, std::int16_t>> logs;
        int after;
        const char* order; // with X, Y, Z pasted one at a time
    };

    const Case cases[] = {{{}, 0, "XYZ"},
                          {{}, 5, "XYZ"},
                          {{{"a", 4}, {"b", 5}, {"c", 6}}, 5, "abXYZc"},
                          {{{"a", 4}, {"b", 5}}, 5, "abXYZ"},
                          {{{"a", 4}, {"b", 5}}, 7, "abXYZ"},
                          {{{"a", 4}, {"b", 5}}, 0, "XYZab"},
                          {{{"a", 0}, {"b", 4}}, 0, "aXYZb"},
                          {{{"a", 0}, {"b", 0}}, 0, "abXYZ"},
                          {{{"a", 4}, {"n", 0}, {"b", 5}}, 4, "anXYZb"}};
    for (const Case& c : cases) {
        data.Octaves.clear();
        for (const auto& [name, id] : c.logs)
            data.Octaves.push_back(logOf(name, id, modeFullOctave));
        for (const char* name : {"X", "Y", "Z"})
            data.append(*logOf(name, 9, modeFullOctave), c.after);
        EXPECT_EQ(names(data.Octaves), c.order);
    }
    EXPECT_TRUE(data.Locations.empty() && data.ThirdOctaves.empty());

    const auto log = logOf("copied", 9);
    data.append(*log, 0);
    EXPECT_EQ(data.Locations.at(0)->LogId, 0);
    EXPECT_FALSE(data.Locations.at(0)->Selected);
    EXPECT_TRUE(log->Selected);
    data.append(logOf("moved", 9, modeThirdOctave), 0);
    EXPECT_EQ(data.ThirdOctaves.at(0)->LogId, 9);
    EXPECT_TRUE(data.ThirdOctaves.at(0)->Selected);
}

TEST_F(InstrumentDataTest, CollectionsArePlacedBehindTheirNeighbour) {
    data.Locations.push_back(logOf("a", 1));
    for (const auto& [after, order] : {std::pair(5, "45XY6"), {7, "456XY"}, {0, "YX456"}}) {
        clsFile file(session, "a.xml");
        for (const char* name : {"4", "5", "6"}) {
            file.InstrumentDatas.push_back(std::make_unique<clsInsData>(session));
            file.InstrumentDatas.back()->NameX = name;
            file.InstrumentDatas.back()->InsDataId = static_cast<std::int16_t>(name[0] - '0');
        }
        for (const char* name : {"X", "Y"}) {
            data.NameX = name;
            data.InsDataId = 9;
            file.append(data, data.NameX == "X", after);
        }
        std::string names;
        for (const auto& collection : file.InstrumentDatas) {
            names += collection->NameX;
            if (collection->Locations.empty()) continue;
            EXPECT_EQ(collection->InsDataId + collection->Locations[0]->LogId, 0);
            EXPECT_EQ(collection->Locations[0]->Selected, collection->NameX == "X")
                << "only what was cut stays selected";
        }
        EXPECT_EQ(names, order);
    }
}

TEST_F(InstrumentDataTest, FilesAreNamedAndRenamed) {
    const std::pair<const char*, const char*> names[] = {
        {"a.xml", "a.xml"}, {"C:\\data\\a.xml", "a.xml"}, {"/data/a.xml", "a.xml"}, {"C:\\d/a.xml", "a.xml"}, {"", ""}};
    for (const auto& [name, shortened] : names) {
        const clsFile file(session, name);
        EXPECT_EQ(file.ShortenedFileName(), shortened);
        EXPECT_EQ(file.JustAcquired(), file.FileName == shortened);
    }

    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.file("sub"));
    writeText(folder.file("a.xml"), "a");
    writeText(folder.file("taken.xml"), "taken");
    clsFile file(session, folder.file("a.xml"));
    file.RenameFile("b.xml");
    EXPECT_EQ(file.FileName, folder.file("b.xml"));
    file.RenameFile(".xml");
    EXPECT_EQ(file.FileName, folder.file(".xml"));
    file.RenameFile(folder.file("sub/c.xml"));
    EXPECT_EQ(readText(folder.file("sub/c.xml")), "a");
    file.RenameFile(folder.file("sub/c.xml"));
    EXPECT_EQ(errorOf([&] { file.RenameFile(folder.file("taken.xml")); }), EEXIST);
    EXPECT_EQ(errorOf([&] { file.RenameFile(folder.file("none/c.xml")); }), ENOENT);
    EXPECT_EQ(file.FileName, folder.file("sub/c.xml"));
    EXPECT_EQ(readText(folder.file("taken.xml")), "taken");

    clsFile acquired(session, "Download 1");
    acquired.RenameFile("taken.xml");
    EXPECT_EQ(acquired.FileName, "taken.xml");
}

} // namespace
} // namespace kestrane

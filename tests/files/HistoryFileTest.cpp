#include "files/HistoryFile.h"

#include "files/OpenedFile.h"
#include "model/LogParameters.h"
#include "platform/Sha256.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace kestrane {
namespace {

struct KeptHistory : ::testing::Test {
    OpenedFile first{dataFile("<log name=\"a\"/><log name=\"b\"/>")};
    std::string name = historyNameOf(first.file.FileName);

    // What the lines of a file's history say was done.
    static std::string deeds(const clsFile& file) {
        std::string text;
        for (const HistoryLine& line : file.History.lines())
            text += line.What + "|";
        return text;
    }

    // The document of the first file, read again.
    std::unique_ptr<clsFile> reopened(const std::string& path) {
        auto file = std::make_unique<clsFile>(first.session, path);
        EXPECT_TRUE(LoadDocument(*file, first.message));
        TakeUpHistory(*file);
        CheckHistory(*file, sha256OfFile(path));
        return file;
    }

    void add(const std::string& what) { first.file.History.add(historyLine(first.session, what)); }
};

TEST_F(KeptHistory, ComesBackWithTheRemarksOfItsLogsAndOnlyGrows) {
    add("One");
    clsLog& second = *first.file.InstrumentDatas.front()->Locations.at(1);
    second.CriterionDose = 85;
    second.ExchangeDose = 3;
    second.CutReason = "Radio \"on\" \xC3\xA4";
    second.UserCalibration = {9400, 9465, -30};
    second.DoseETCumA.Value(40); // the instrument's own
    second.DoseMTCumA.Value(30);
    second.DoseMTCumA.CalcValue(20); // computed since, and read back as if it had been reported
    EXPECT_EQ(FileSave(first.file), "");
    const std::string kept = readText(name);
    add("Two");
    HistoryLine ofLog = historyLine(first.session, "Three");
    ofLog.Identity = "A1, Broadband";
    first.file.History.add(ofLog);
    EXPECT_EQ(FileSave(first.file), "");
    EXPECT_TRUE(readText(name).starts_with(kept));

    const auto again = reopened(first.file.FileName);
    EXPECT_EQ(deeds(*again), "One|Save|Two|Three|Save|");
    EXPECT_EQ(again->History.lines().at(3).Identity, "A1, Broadband");
    EXPECT_EQ(again->History.lines().back().After, sha256OfFile(first.file.FileName));
    const clsLog& log = *again->InstrumentDatas.front()->Locations.at(1);
    EXPECT_EQ(std::tuple(log.CriterionDose, log.ExchangeDose, log.CutReason), std::tuple(85, 3, second.CutReason));
    EXPECT_EQ(log.UserCalibration, second.UserCalibration);
    EXPECT_EQ(log.DoseMTCumA.Value(), 20);
    EXPECT_TRUE(isAsReported(log, kChannelA, eDoseET));
    EXPECT_FALSE(isAsReported(log, kChannelA, eDoseMT));
    EXPECT_EQ(again->InstrumentDatas.front()->Locations.front()->CriterionDose, 0);
}

TEST_F(KeptHistory, AFileThatAnotherProgramChangedIsNoticedOnOpeningAndBeforeItIsReplaced) {
    first.log().CriterionDose = 85;
    FileSave(first.file);
    const std::string saved = readText(first.file.FileName);
    writeText(first.file.FileName, dataFile("<log name=\"x\"/>"));

    const auto again = reopened(first.file.FileName);
    EXPECT_EQ(deeds(*again), "Save|Changed by another program|");
    EXPECT_EQ(again->History.lines().back().Before, sha256Of(saved));
    EXPECT_EQ(again->InstrumentDatas.front()->Locations.front()->CriterionDose, 0); // it may be another log

    FileSave(first.file); // the first document is still open
    EXPECT_EQ(deeds(first.file), "Save|Changed by another program|Save|");
    EXPECT_EQ(first.file.History.lines().back().Before, again->History.lines().back().After);
}

TEST_F(KeptHistory, ARemarkBeyondAllLogsIsOfNone) {
    first.log().CriterionDose = 85;
    FileSave(first.file);
    std::string text = readText(name);
    const std::string place = "\"Position\":0";
    text.replace(text.find(place), place.size(), "\"Position\":4294967296");
    writeText(name, text);
    EXPECT_EQ(reopened(first.file.FileName)->InstrumentDatas.front()->Locations.front()->CriterionDose, 0);
}

TEST_F(KeptHistory, ATornLineIsEndedAndNoLineIsLost) {
    FileSave(first.file);
    writeText(name, readText(name) + R"({"Time":"2026-03-02T10:15:00","What":"Old","Log":"a"})" + "\n" +
                        R"({"Time":"2026-03-02T10:15:00","Wh)");
    auto again = reopened(first.file.FileName);
    FileSave(*again);
    EXPECT_EQ(deeds(*reopened(first.file.FileName)), "Save|Old|A line that cannot be read|Save|");

    writeText(name, R"({"schema":"kestr)"); // the power went while the file was begun
    again = reopened(first.file.FileName);
    EXPECT_EQ(FileSave(*again), "");
    EXPECT_EQ(deeds(*reopened(first.file.FileName)), "Save|");
}

TEST_F(KeptHistory, AForeignOrUnwritableHistoryIsLeftAloneAndTheDocumentSaved) {
    for (const char* foreign : {"my notes\n", "{}\n", "{\"schema\":\"kestrane-history/2\"}\n"}) {
        writeText(name, foreign);
        const auto again = reopened(first.file.FileName);
        EXPECT_EQ(again->History.Fault, "'" + name + "' is not a history of this program.");
        again->InstrumentDatas.front()->NameX += "!";
        EXPECT_EQ(FileSave(*again), again->History.Fault);
        EXPECT_EQ(readText(name), foreign);
        EXPECT_FALSE(IsChanged(*again));
    }
    std::filesystem::remove(name);
    std::filesystem::create_directory(name);
    EXPECT_NE(FileSave(first.file), "");
    first.file.History.IsWanted = false;
    EXPECT_EQ(FileSave(first.file), "");
}

TEST_F(KeptHistory, AnotherNameTakesTheLinesAlongAndBeginsBehindThoseOfWhatItReplaces) {
    add("Elsewhere");
    FileSave(first.file);
    const std::string other = first.folder.file("b.xml");
    writeText(other, dataFile("<log/>"));
    const auto replaced = reopened(other);
    FileSave(*replaced);
    const std::string before = readText(historyNameOf(other));

    first.file.FileName = other;
    FileSave(first.file);
    EXPECT_TRUE(readText(historyNameOf(other)).starts_with(before));
    EXPECT_EQ(deeds(*reopened(other)), "Elsewhere|Save|Save|");

    first.file.RenameFile("c.xml"); // the history goes with the file
    EXPECT_FALSE(std::filesystem::exists(historyNameOf(other)));
    EXPECT_EQ(deeds(*reopened(first.folder.file("c.xml"))), "Elsewhere|Save|Save|");
    writeText(historyNameOf(other), "not to be replaced");
    first.file.RenameFile("b.xml");
    EXPECT_EQ(readText(historyNameOf(other)), "not to be replaced");
}

} // namespace
} // namespace kestrane

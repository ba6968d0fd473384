#include "app/DownloadHPD.h"

#include "TestSession.h"
#include "platform/TemporaryFolder.h"
#include "protection/ProtectorDatabase.h"

#include <gtest/gtest.h>

#include <utility>

namespace kestrane {
namespace {

struct ScriptedHttp : Http {
    HttpAnswer answer;
    std::string address;

    HttpAnswer Get(const std::string& url, std::int64_t, const GoOn& goOn) override {
        address = url;
        return goOn(10, 100) ? answer : HttpAnswer{HttpAnswer::End::Cancelled, {}, {}};
    }
};

struct ScriptedProgress : HPDProgress {
    bool cancels = false;
    int shown = 0;

    void Show(std::int64_t, std::int64_t) override { ++shown; }

    bool IsCancelled() override { return cancels; }
};

std::string database(const char* name, std::size_t records) {
    std::vector<clsHP> protectors(records);
    for (clsHP& protector : protectors) {
        protector.Name = name;
        protector.SNR = 30;
    }
    return protectorsText(protectors);
}

struct Update : TestSession {
    TemporaryFolder folder;
    ProtectorCollection protectors;
    ScriptedHttp http;
    ScriptedProgress progress;
    const std::string old = database("Old", 3);

    Update() {
        protectors.File = folder.file("hpd_hml_db.txt");
        session.protectors = &protectors;
        session.http = &http;
        session.Options.HPDAddress = "  http://hpd.example/db.txt ";
        writeText(protectors.File, old);
        LoadHPD(session);
        http.answer = {HttpAnswer::End::Complete, database("New", 20), {}};
        messages.Answers = {Button::Ok};
    }

    bool run() { return DownloadHPD(session, progress, false); }

    void expectOld() {
        EXPECT_EQ(readText(protectors.File), old);
        ASSERT_EQ(protectors.Protectors.size(), 3U);
        EXPECT_EQ(protectors.Protectors.front().Name, "Old");
    }
};

TEST(DownloadHPD, ReplacesTheFileAndItsRecordsAndKeepsTheOldOne) {
    Update update;
    update.http.answer.Body += "\r\r"; // line ends in any form
    EXPECT_TRUE(update.run());
    EXPECT_EQ(update.http.address, "http://hpd.example/db.txt");
    EXPECT_EQ(update.progress.shown, 2); // from its start, and with what arrived
    EXPECT_EQ(update.protectors.Protectors.size(), 20U);
    EXPECT_EQ(readText(update.protectors.File) + "\r\n", database("New", 20));
    EXPECT_EQ(readText(update.protectors.File + ".bak"), update.old);
    ASSERT_EQ(update.messages.Boxes.size(), 2U);
    EXPECT_EQ(update.messages.Boxes[0].Prompt, "Are you sure you want to replace the hearing protector database?");
    EXPECT_EQ(defaultButtonOf(update.messages.Boxes[0].Flags), Button::Cancel);
    EXPECT_EQ(update.messages.Boxes[1].Prompt, "Download Complete");

    Update first; // there was no database
    std::filesystem::remove(first.protectors.File);
    EXPECT_TRUE(DownloadHPD(first.session, first.progress, true));
    EXPECT_EQ(first.messages.Boxes.size(), 1U);
    EXPECT_EQ(first.progress.shown, 0);
    EXPECT_FALSE(std::filesystem::exists(first.protectors.File + ".bak"));

    Update cut; // by an empty line
    cut.http.answer.Body += "\n" + database("Lost", 1);
    EXPECT_TRUE(cut.run());
    EXPECT_EQ(cut.protectors.Protectors.size(), 20U);
    EXPECT_TRUE(cut.messages.Boxes[1].Prompt.ends_with(cut.protectors.File + ", line 21"));

    Update installed; // which is read until the user has a file of his own
    installed.protectors.Original = std::exchange(installed.protectors.File, installed.folder.file("made/then/db.txt"));
    EXPECT_TRUE(LoadHPD(installed.session));
    EXPECT_FALSE(std::filesystem::exists(installed.folder.file("made")));
    EXPECT_TRUE(installed.run());
    EXPECT_EQ(readText(installed.protectors.File) + "\r\n", database("New", 20));
    EXPECT_EQ(readText(installed.protectors.File + ".bak"), installed.old);
    EXPECT_EQ(readText(installed.protectors.Original), installed.old);
}

TEST(DownloadHPD, AnyFailureLeavesTheOldDatabaseInUse) {
    struct Case {
        HttpAnswer answer;
        const char* message;
        const char* title;
    };

    constexpr auto kNotDownloaded =
        "Hearing Protector Database could not be downloaded!\r\nPlease contact Ordwyn Acoustics";
    constexpr auto kFrom = "A Message From Ordwyn";
    const std::string page = "<html>" + std::string(2000, ' ') + "</html>";
    const Case cases[] = {
        {{HttpAnswer::End::Failed, {}, "HTTP status 404"}, kNotDownloaded, "Kestrane"},
        {{HttpAnswer::End::Complete, database("New", 40).substr(0, 1000), {}}, kNotDownloaded, "Kestrane"},
        {{HttpAnswer::End::Complete, page, {}}, "109: Corrupt file error", kFrom},
        {{HttpAnswer::End::Complete, "\r\n\r\n" + database("New", 20), {}}, "109: Corrupt file error", kFrom},
        {{HttpAnswer::End::Complete, database("New", 20) + "Cut short,0,1", {}}, "109: Corrupt file error", kFrom},
    };
    for (const Case& c : cases) {
        Update update;
        update.http.answer = c.answer;
        EXPECT_FALSE(update.run());
        update.expectOld();
        ASSERT_EQ(update.messages.Boxes.size(), 2U) << c.message;
        EXPECT_EQ(update.messages.Boxes[1].Prompt, c.message);
        EXPECT_EQ(update.messages.Boxes[1].Title, c.title);
    }

    Update unwritable;
    std::filesystem::create_directory(unwritable.protectors.File + ".bak");
    EXPECT_FALSE(unwritable.run());
    unwritable.expectOld();
    EXPECT_EQ(unwritable.messages.Boxes.back().Title, kFrom);
}

TEST(DownloadHPD, KeepsADamagedFileForGood) {
    Update update;
    const std::string damaged = update.old + "too short\r\n" + update.old;
    for (const char* kept : {".damaged", ".damaged2"}) {
        writeText(update.protectors.File, damaged);
        update.messages.Answers = {Button::Ok};
        EXPECT_TRUE(update.run());
        EXPECT_EQ(readText(update.protectors.File + kept), damaged);
    }
    update.messages.Answers = {Button::Ok};
    EXPECT_TRUE(update.run());
    EXPECT_FALSE(std::filesystem::exists(update.protectors.File + ".damaged3")) << "of a whole file there is the .bak";
}

TEST(DownloadHPD, IsGivenUpInSilence) {
    Update asked;
    asked.messages.Answers = {Button::Cancel};
    EXPECT_FALSE(asked.run());
    EXPECT_TRUE(asked.http.address.empty());

    Update stopped;
    stopped.progress.cancels = true;
    EXPECT_FALSE(stopped.run());
    stopped.expectOld();
    EXPECT_EQ(stopped.messages.Boxes.size(), 1U);
}

TEST(LoadHPD, SaysWhatIsWrongWithTheFile) {
    Update update;
    writeText(update.protectors.File, database("New", 2) + "too short");
    EXPECT_FALSE(LoadHPD(update.session));
    EXPECT_EQ(update.messages.Boxes.back().Prompt,
              "109: Corrupt file error\r\n\r\n" + update.protectors.File + ", line 3");
    writeText(update.protectors.File, database("New", 2) + "\r\n" + database("Lost", 1));
    EXPECT_TRUE(LoadHPD(update.session));
    EXPECT_TRUE(update.messages.Boxes.back().Prompt.ends_with(update.protectors.File + ", line 3"));
    std::filesystem::remove(update.protectors.File);
    EXPECT_FALSE(LoadHPD(update.session));
    EXPECT_EQ(update.messages.Boxes.back().Prompt, "File " + update.protectors.File + " not found");
    EXPECT_TRUE(update.protectors.Protectors.empty());
}

} // namespace
} // namespace kestrane

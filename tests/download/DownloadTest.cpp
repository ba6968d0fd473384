#include "SampleInstruments.h"

#include "app/Documents.h"
#include "app/Download.h"
#include "app/Transcripts.h"
#include "files/Loaders.h"
#include "files/XmlWriter.h"
#include "platform/Format.h"
#include "platform/TemporaryFolder.h"
#include "server/LogLoading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace kestrane {
namespace {

const std::vector<SampleInstrument>& instruments() {
    static const std::vector<SampleInstrument> all = {brevik(),          brevik(105),     halcyr(101, 117),
                                                      halcyr(100, 350),  tallix("TR310"), tallix("TR340"),
                                                      merrowan("TR322"), corvane()};
    return all;
}

// One download with everything new. Whatever comes, it ends with logs, or with a message and none.
struct Attempt : ScriptedDownload {
    bool isDone = false;

    explicit Attempt(const SampleInstrument& instrument, const Spoil& spoil = {}, std::function<bool()> cancels = {}) {
        connect(comm, instrument, spoil);
        user.Cancels = cancels ? std::move(cancels) : [this] { return time.Now > std::chrono::hours(1); };
        isDone = DownloadData(services, data);
        EXPECT_EQ(isDone, data.hasLogs());
        EXPECT_TRUE(isDone || !messages.Boxes.empty());
        EXPECT_FALSE(comm.IsOpen());
        EXPECT_TRUE(user.IsClosed);
    }
};

TEST(DownloadTest, CancelEndsItAnywhere) {
    for (const SampleInstrument& instrument : instruments()) {
        for (int looks = 0;; looks += 1 + looks / 64) {
            int look = 0;
            const Attempt attempt(instrument, {}, [&look, looks] { return look++ >= looks; });
            if (attempt.isDone) break;
            ASSERT_EQ(attempt.shown(), attempt.session.LoadText(Text::DownloadAborted));
            ASSERT_EQ(attempt.messages.Boxes.back().Title, attempt.session.LoadText(Text::DownloadAborted));
        }
    }
}

TEST(DownloadTest, ErrorEndsItAtEveryExchange) {
    for (const SampleInstrument& instrument : instruments()) {
        for (int failing = 0;; ++failing) {
            bool isReached = false;
            const Attempt attempt(instrument, [&](int exchange, const std::string& reply) {
                isReached = isReached || exchange == failing;
                return exchange == failing ? std::string(kReplyError) : reply;
            });
            if (!isReached) {
                EXPECT_GT(failing, 2);
                break;
            }
            EXPECT_FALSE(attempt.isDone) << failing;
            EXPECT_EQ(attempt.shown(), attempt.session.LoadText(Text::ErrorDownloading)) << failing;
        }
    }
}

std::vector<std::string> textsOfLogs(const clsFile& file) {
    std::vector<std::string> texts;
    forEachLog(file, [&texts](const clsLog& log) {
        clsStringBuffer text;
        SetTagData(log, true, text);
        texts.push_back(text.getString());
    });
    return texts;
}

// A download that broke off anywhere: its transcript gives logs as they are in the whole one, or none.
TEST(DownloadTest, WhatIsWholeIsReadOutOfATranscript) {
    const TemporaryFolder folder;
    const std::string path = folder.file("transcript.txt");
    for (const SampleInstrument& instrument : instruments()) {
        ScriptedDownload download;
        connect(download.comm, instrument);
        ASSERT_TRUE(DownloadData(download.services, nullptr));
        const std::vector<std::string> whole = textsOfLogs(*download.session.OpenFiles.front());
        const std::string& transcript = download.transcript;
        std::size_t most = 0;
        for (std::size_t cut = 0; cut <= transcript.size(); cut += 1 + transcript.size() / 24) {
            writeText(path, transcript.substr(0, cut));
            ScriptedDownload recovery;
            if (!RecoverDownload(recovery.session, path)) {
                EXPECT_EQ(recovery.messages.Boxes.size(), 1U);
                EXPECT_TRUE(recovery.session.OpenFiles.empty());
                continue;
            }
            const clsFile& file = *recovery.session.OpenFiles.front();
            EXPECT_TRUE(file.JustAcquired());
            EXPECT_EQ(file.History.lines().at(0).What, "Recover Download");
            const std::vector<std::string> texts = textsOfLogs(file);
            for (const std::string& text : texts)
                EXPECT_NE(std::ranges::find(whole, text), whole.end());
            EXPECT_GE(texts.size(), most) << "more of the transcript has no fewer logs";
            most = std::max(most, texts.size());
        }
        writeText(path, transcript);
        ScriptedDownload recovery;
        ASSERT_TRUE(RecoverDownload(recovery.session, path));
        EXPECT_EQ(textsOfLogs(*recovery.session.OpenFiles.front()), whole);
    }
}

// A fault anywhere among the logs, and another attempt: the document is as if nothing had happened, the logs that were
// whole are not asked for again, and all of it can be read out of the transcript.
TEST(DownloadTest, AnotherAttemptGoesOnWithTheLogThatFailed) {
    const TemporaryFolder folder;
    const std::string path = folder.file("transcript.txt");
    std::vector<SampleInstrument> all = instruments();
    all.push_back(binaryInstrument(230, 0, {brevikLog(false), brevikLog(false)}));
    const auto firstBlockOf = [](int log) {
        return bytesOf("020408") + static_cast<char>(log) + bytesOf("000000 50000000 03");
    };
    for (const SampleInstrument& instrument : all) {
        ScriptedDownload unbroken;
        connect(unbroken.comm, instrument);
        ASSERT_TRUE(DownloadData(unbroken.services, nullptr));
        const clsFile& whole = *unbroken.session.OpenFiles.front();
        int takenUp = 0;
        bool isReached = true;
        for (int failing = 0; isReached; ++failing) {
            isReached = false;
            ScriptedDownload download;
            connect(download.comm, instrument, [&](int exchange, const std::string& reply) {
                isReached = isReached || exchange == failing;
                return exchange == failing ? std::string(kReplyError) : reply;
            });
            download.messages.Answers = {Button::Retry};
            const bool isDone = DownloadData(download.services, nullptr);
            if (!isReached || download.messages.Boxes.front().Flags != (kIconStop | kButtonsRetryCancel)) continue;
            ++takenUp;
            ASSERT_TRUE(isDone) << failing;
            const clsFile& file = *download.session.OpenFiles.front();
            EXPECT_EQ(textsOfLogs(file), textsOfLogs(whole)) << failing;
            EXPECT_EQ(file.InstrumentDatas.front()->InsSerial, whole.InstrumentDatas.front()->InsSerial);
            EXPECT_EQ(download.user.Lists.size(), 1U) << "the user has chosen already";
            const auto timesAsked = [&](int log) { return std::ranges::count(download.comm.Sent, firstBlockOf(log)); };
            EXPECT_LE(timesAsked(0) + timesAsked(1), 3);
            writeText(path, download.transcript);
            ScriptedDownload recovery;
            ASSERT_TRUE(RecoverDownload(recovery.session, path)) << failing;
            EXPECT_EQ(textsOfLogs(*recovery.session.OpenFiles.front()), textsOfLogs(whole)) << failing;
        }
        EXPECT_GT(takenUp, 0);
    }
}

// The line goes away behind each log, before anything is asked again.
TEST(DownloadTest, ALogThatWasWholeWhenTheLineWentAwayIsInTheTranscript) {
    const TemporaryFolder folder;
    const SampleInstrument instrument = binaryInstrument(230, 0, {brevikLog(false), brevikLog(false)});
    ScriptedDownload download;
    connect(download.comm, instrument);
    download.services.transcript = [&](std::string_view line) {
        download.transcript += line;
        if (line.ends_with("to the end\n")) download.comm.FaultText = "Unplugged";
        if (line.starts_with("# port ")) download.comm.FaultText.clear();
    };
    download.messages.Answers = {Button::Retry};
    ASSERT_TRUE(DownloadData(download.services, nullptr));
    EXPECT_EQ(download.shown(), "Unplugged");
    writeText(folder.file("transcript.txt"), download.transcript);
    ScriptedDownload recovery;
    ASSERT_TRUE(RecoverDownload(recovery.session, folder.file("transcript.txt")));
    EXPECT_EQ(textsOfLogs(*recovery.session.OpenFiles.front()), textsOfLogs(*download.session.OpenFiles.front()));
}

TEST(DownloadTest, AnotherInstrumentIsNotReadOnInPlaceOfTheFirst) {
    ScriptedDownload download;
    ScriptedComm other(download.time);
    connect(other, merrowan("TR326"));
    bool hasFailed = false;
    connect(download.comm, merrowan("TR322"), [&hasFailed](int exchange, const std::string& reply) {
        hasFailed = hasFailed || exchange == 5;
        return exchange == 5 ? std::string(kReplyError) : reply;
    });
    download.comm.Answer = [&, first = download.comm.Answer](const std::string& sent) {
        other.LineSettings = download.comm.LineSettings;
        return hasFailed ? other.Answer(sent) : first(sent);
    };
    download.messages.Answers = {Button::Retry, Button::Cancel};
    EXPECT_FALSE(DownloadData(download.services, nullptr));
    EXPECT_EQ(download.shown(), download.session.LoadText(Text::OtherLogsOnInstrument));
    EXPECT_EQ(download.messages.Boxes.back().Flags, kIconStop | kButtonsRetryCancel);
    EXPECT_TRUE(download.session.OpenFiles.empty());
}

TEST(DownloadTest, TheLastTranscriptsAreKept) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.file("state/downloads"));
    writeText(folder.file("state/downloads/0 notes.txt"), "the user's own");
    for (std::size_t i = 0; i < KeptTranscript::kKept + 3; ++i) {
        ScriptedDownload download;
        download.session.StateFolder = folder.file("state/");
        const bool isLast = i == KeptTranscript::kKept + 2;
        download.clock.Time += isLast ? -9.0 : static_cast<double>(i); // the clock has been put back
        KeptTranscript kept(download.session);
        download.services.transcript = kept.Sink(download.services.transcript);
        connect(download.comm, brevik());
        ASSERT_TRUE(DownloadData(download.services, nullptr));
        EXPECT_TRUE(kept.IsKept());
        EXPECT_EQ(readText(transcriptFolder(download.session) + formatDate(download.clock.Time, "yyyy-mm-dd hh-nn-ss") +
                           ".txt"),
                  download.transcript);
    }
    ScriptedDownload silent; // nothing answers
    silent.session.StateFolder = folder.file("state/");
    KeptTranscript none(silent.session);
    silent.services.transcript = none.Sink(silent.services.transcript);
    EXPECT_FALSE(DownloadData(silent.services, nullptr));
    EXPECT_NE(silent.transcript.find(" > 02010003\n"), std::string::npos);
    EXPECT_FALSE(none.IsKept());
    const auto files = std::filesystem::directory_iterator(folder.file("state/downloads"));
    EXPECT_EQ(std::distance(begin(files), end(files)), static_cast<std::ptrdiff_t>(KeptTranscript::kKept) + 1);
    EXPECT_TRUE(fileExists(folder.file("state/downloads/0 notes.txt")));
}

struct DownloadOutcomeTest : testing::Test, ScriptedDownload {};

TEST_F(DownloadOutcomeTest, AnInstrumentOfNoFamilyIsNone) {
    connect(comm, binaryInstrument(100, 77, {}));
    EXPECT_FALSE(DownloadData(services, data));
    EXPECT_EQ(data.InsName(), "TR77L");
    EXPECT_EQ(shown(), session.LoadText(Text::InstrumentNotResponding));
    EXPECT_EQ(messages.Boxes.back().Flags, kIconStop);
    connect(comm, {"19200,n,8,2", {{bytesOf("0205"), bytesOf("30FE")}}});
    EXPECT_FALSE(IdentifyOnly(services, data));
    EXPECT_EQ(shown(), session.LoadText(Text::NoLogsOnInstrument));
}

TEST_F(DownloadOutcomeTest, ADocumentTakesTheLogsIn) {
    connect(comm, merrowan("TR322"));
    ASSERT_TRUE(DownloadData(services, nullptr));
    ASSERT_EQ(session.OpenFiles.size(), 1U);
    clsFile& file = *session.OpenFiles.front();
    EXPECT_EQ(file.FileName, "Untitled");
    EXPECT_TRUE(file.JustAcquired());
    const HistoryLine begin = file.History.lines().at(0);
    EXPECT_EQ(begin.What + ": " + begin.After,
              "Download: Broadband 1; Broadband 2; Broadband 3; Octave 1; Octave 2; Octave 3");
    ASSERT_EQ(file.InstrumentDatas.size(), 1U);
    clsInsData& first = *file.InstrumentDatas.front();
    EXPECT_EQ(first.Locations[2]->LogId, 3);

    // The same instrument again: its logs go to the collection that is there, and are logs of their own.
    ASSERT_TRUE(DownloadData(services, &file));
    ASSERT_EQ(file.InstrumentDatas.size(), 1U);
    EXPECT_EQ(first.Locations.size(), 6U);
    EXPECT_EQ(first.Octaves.size(), 6U);
    EXPECT_EQ(first.Locations[5]->LogId, 6);
    EXPECT_TRUE(session.IsIdle());

    connect(comm, tallix("TR340")); // another serial number
    ASSERT_TRUE(DownloadData(services, &file));
    EXPECT_EQ(file.InstrumentDatas.size(), 2U);

    comm.Answer = nullptr;
    EXPECT_FALSE(DownloadData(services, nullptr));
    EXPECT_EQ(session.OpenFiles.size(), 1U);
}

// The text of a file, over the line or from the disk, makes the same log.
TEST_F(DownloadOutcomeTest, AMachineLogOpensAsItIsDownloaded) {
    const TemporaryFolder folder;
    const SampleInstrument instrument = corvane();
    connect(comm, instrument);
    ASSERT_TRUE(DownloadData(services, data));
    const std::string& reply = instrument.Answers.at(bytesOf("0206 0341 0331 FF"));
    writeText(folder.file("A1.log"), reply);
    ASSERT_TRUE(OpenFile(session, folder.file("A1.log"), OpenSource::Named, true));
    pump.runUntil([&] { return noLogIsBusy(session); });
    const clsLog& opened = *session.OpenFiles.front()->InstrumentDatas.front()->Locations.front();
    const clsLog& downloaded = *data.Locations.front();
    EXPECT_EQ(opened.DoseHourA, downloaded.DoseHourA);
    EXPECT_EQ(opened.TWACumA, downloaded.TWACumA);
    EXPECT_GT(opened.DoseHourA.CalcValue(), 0);
    EXPECT_FALSE(session.OpenFiles.front()->Changed || IsChanged(*session.OpenFiles.front()));
}

TEST_F(DownloadOutcomeTest, TheClockIsSetOnOldInstrumentsOnly) {
    connect(comm, tallix("XY1")); // an instrument, of no family that is known
    EXPECT_FALSE(SynchronizeClock(services, data));
    EXPECT_EQ(shown(), session.LoadText(Text::OnlyTallixClock));
    comm.Answer = nullptr;
    EXPECT_FALSE(SynchronizeClock(services, data));
    EXPECT_EQ(shown(), session.LoadText(Text::InstrumentNotResponding));
}

} // namespace
} // namespace kestrane

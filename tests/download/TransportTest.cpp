#include "ScriptedLine.h"
#include "Wire.h"

#include "download/Transport.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct TransportTest : testing::Test, ScriptedDownload {
    LogsToRead logs;
    Transport line{services, logs};

    TransportTest() { line.OpenPort({1, "/dev/one", ""}); }

    // Every question is answered by these chunks.
    void answer(std::vector<ScriptedComm::Arrival> chunks) {
        comm.Answer = [chunks](const std::string&) { return chunks; };
    }

    std::string textOfEnd(const std::function<void()>& call) {
        try {
            call();
        } catch (const DownloadEnded& ended) {
            return ended.Message;
        }
        return "no end";
    }
};

TEST_F(TransportTest, CommandsAreFramed) {
    EXPECT_EQ(FrameCommand("00"), bytesOf("02 30303032 3030 3030 03"));
    EXPECT_EQ(FrameCommand("04130509070319"), "\x02"
                                              "000E04130509070319"
                                              "00\x03");
    EXPECT_EQ(FrameCommand(std::string(171, 'x')).substr(1, 4), "00AB");
    EXPECT_EQ(FrameCommand(rawCommand(std::string("\x02\x01\0\x03", 4))), bytesOf("02010003"));
    EXPECT_EQ(FrameCommand(""), "\x02"
                                "000000\x03");
}

TEST_F(TransportTest, AReplyEndsWithSilence) {
    const std::string all256 = [] {
        std::string bytes;
        for (int i = 0; i < 256; ++i)
            bytes += static_cast<char>(i);
        return bytes;
    }();
    answer(
        {{milliseconds(1400), all256}, {milliseconds(2800), std::string(20'000, 'b')}, {milliseconds(4400), "late"}});
    EXPECT_EQ(line.SendCommand("01", true, 1), all256 + std::string(20'000, 'b'));
    EXPECT_GE(time.Now, milliseconds(4300));
    EXPECT_LT(time.Now, milliseconds(4400));
    // What comes late belongs to no question.
    time.Now = milliseconds(4500);
    answer({{milliseconds(10), "own"}});
    EXPECT_EQ(line.SendCommand("01", true, 1), "own");
}

TEST_F(TransportTest, SilenceIsTriedAgainAndThenAsked) {
    messages.Answers = {Button::Retry, Button::Cancel};
    EXPECT_EQ(line.SendCommand("01", false, 3), "");
    EXPECT_EQ(comm.Sent.size(), 6U);
    EXPECT_TRUE(line.IsCancelled());
    ASSERT_EQ(messages.Boxes.size(), 2U);
    EXPECT_EQ(messages.Boxes[0].Prompt, session.LoadText(Text::AskTryAgain));
    EXPECT_EQ(messages.Boxes[0].Title, session.LoadText(Text::ErrorDownloading));
    EXPECT_EQ(messages.Boxes[0].Flags, kButtonsRetryCancel | kIconExclamation);
}

TEST_F(TransportTest, SilentCommandsCloseThePort) {
    EXPECT_EQ(line.SendCommand("01", true, 1), kNoResponse);
    EXPECT_FALSE(comm.IsOpen());
    EXPECT_TRUE(messages.Boxes.empty());
    EXPECT_NEAR(static_cast<double>(time.Now.count()), 1500, 100);
}

TEST_F(TransportTest, CountedRepliesWaitForTheirLength) {
    answer({{milliseconds(10), "ERR"},
            {std::chrono::minutes(10), "OR"},
            {std::chrono::minutes(10) + milliseconds(1000), "xyz"}});
    EXPECT_EQ(line.AskCounted("01", 8), "ERRORxyz");
    answer({{milliseconds(10), "x"}, {std::chrono::seconds(10), "yz"}});
    EXPECT_EQ(line.AskCounted("01", 3), "xyz");
    EXPECT_EQ(user.Last.SilentSeconds, 9) << "as was shown last";
    answer({{milliseconds(10), "ERR"}, {milliseconds(500), "OR"}});
    const milliseconds before = time.Now;
    EXPECT_EQ(textOfEnd([&] { line.AskCounted("01", 8); }), kReplyError);
    EXPECT_GE(time.Now - before, milliseconds(2000));
    EXPECT_EQ(textOfEnd([&] { line.Ask("01"); }), kReplyError);
}

TEST_F(TransportTest, CancelEndsEveryWaitAtOnce) {
    const auto waits = {std::function<void()>([&] { line.Ask("01"); }),
                        std::function<void()>([&] { line.AskCounted("01", 9); }),
                        std::function<void()>([&] { line.WaitUntil([] { return false; }); })};
    for (const auto& wait : waits) {
        const milliseconds pressed = time.Now + milliseconds(700);
        user.Cancels = [&] { return time.Now >= pressed; };
        EXPECT_EQ(textOfEnd(wait), "");
        EXPECT_LT(time.Now - pressed, milliseconds(200));
    }
}

TEST_F(TransportTest, ALineThatGoesAwayEndsTheDownload) {
    answer({{milliseconds(40), "half"}});
    comm.FaultText = "The port was unplugged";
    EXPECT_EQ(textOfEnd([&] { line.SendCommand("01", true, 1); }), comm.FaultText);
    EXPECT_EQ(textOfEnd([&] { line.SendCommandCounted("01", 9); }), comm.FaultText);
}

TEST_F(TransportTest, TheTranscriptTellsAll) {
    line.SetLine("2400,n,8,2");
    answer({{milliseconds(40), bytesOf("30FE")}, {milliseconds(60), bytesOf("00")}});
    line.SendCommandCounted(rawCommand("\x02\x05"), 3);
    line.ShowLabel("two\r\nlines");
    EXPECT_EQ(transcript, "# port 1 /dev/one\n# settings 2400,n,8,2\n+0.000 > 0205\n+0.040 < 30FE\n+0.060 < 00\n"
                          "# two  lines\n");
    EXPECT_EQ(user.Last.BytesReceived, 3);
}

} // namespace
} // namespace kestrane

#include "SampleInstruments.h"

#include "download/Identify.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct IdentifyTest : testing::Test, ScriptedDownload {
    Identification identify() {
        LogsToRead none;
        Transport line(services, none);
        return IdentifyInstrument(line, data);
    }

    // An instrument that gives this answer to one question.
    Identification answered(const std::string& question, const std::string& answer) {
        connect(comm, {question == textFrame("00") ? "2400,n,8,2" : "19200,n,8,2", {{question, answer}}});
        data.InsName("stale");
        data.InsSerial = "stale";
        return identify();
    }
};

const std::string kAskBinary = bytesOf("02010003");
const std::string kAskLines = bytesOf("0205");
const std::string kAskFramed = textFrame("00");

std::string longRecord(std::int32_t version, std::int32_t type) {
    return "abc" + std::string(Record(17).at(0, version).at(4, -1).at(8, type).at(12, 123456));
}

std::string shortRecord(std::int32_t version, std::int32_t type) {
    return "abc" + std::string(Record(12).at(0, version).at(4, type).at(8, 123456));
}

TEST_F(IdentifyTest, AnswersNameTheInstrument) {
    struct Case {
        std::string question, answer;
        const char *name, *serial;
        float firmware;
        int type;
        const char* family;
    };

    const Case cases[] = {
        {kAskBinary, longRecord(230, 0), "Brevik SE", "123456", 2.3F, 0, "Brevik"},
        {kAskBinary, longRecord(105, 1), "Brevik E", "123456", 1.05F, 1, "Brevik"},
        {kAskBinary, longRecord(106, 2), "Brevik S", "123456", 1.06F, 2, "Brevik"},
        {kAskBinary, longRecord(230, 3), "Auravox Essential SE", "123456", 2.3F, 3, "Brevik"},
        {kAskBinary, longRecord(230, 5), "Auravox Essential S", "123456", 2.3F, 5, "Brevik"},
        {kAskBinary, shortRecord(100, 4), "Auravox Essential E", "123456", 1, 4, "Brevik"},
        {kAskBinary, shortRecord(100, 117), "TR312E", "123456", 1, 117, "Halcyr"},
        {kAskBinary, shortRecord(100, 360), "TR360L", "123456", 1, 360, "Halcyr"},
        {kAskBinary, shortRecord(100, 360) + "more", "TR360L", "123456", 1, 360, "Halcyr"},
        {kAskBinary, shortRecord(-1, 70000), "TR70000L", "123456", -0.01F, 0, ""},
        {kAskLines, "*Corvane 5\rC-12\r", "Corvane 5", "C-12", 0, 0, "Corvane"},
        {kAskLines, "\rCORVANE \xB1\rC\r", "CORVANE \u00B1", "C", 0, 0, "Corvane"},
        {kAskLines, "*Corvane\rno end", "Corvane", "", 0, 0, "Corvane"},
        {kAskFramed, textFrame(" 0322TR322 "), "TR322", "", 0, 322, "Merrowan"},
        {kAskFramed, textFrame("0001TR340"), "TR340", "", 0, 1, "Old Tallix"},
    };
    for (const Case& c : cases) {
        const Identification found = answered(c.question, c.answer);
        EXPECT_EQ(data.InsName(), c.name);
        EXPECT_TRUE(found.IsValid) << c.name;
        EXPECT_EQ(found.Message, "") << c.name;
        EXPECT_EQ(data.InsSerial, c.serial) << c.name;
        EXPECT_EQ(data.FirmwareVersion, c.firmware) << c.name;
        EXPECT_EQ(data.InsType, c.type) << c.name;
        const InstrumentFamily* const family = familyOf(data.InsName());
        EXPECT_EQ(family == nullptr ? "" : family->name, c.family) << c.name;
    }
    EXPECT_EQ(data.IsBrevikSE, false);
    answered(kAskBinary, longRecord(230, 0));
    EXPECT_TRUE(data.IsBrevikSE);
}

TEST_F(IdentifyTest, OtherAnswersHaveTheirMessage) {
    const std::string nobody = session.LoadText(Text::InstrumentNotResponding);
    const std::string error{kReplyError};

    struct Case {
        std::string question, answer, message;
    };

    const Case cases[] = {
        {kAskBinary, "abc", nobody},
        {kAskBinary, kAskBinary, nobody}, // an echo
        {kAskBinary, "abcd", error},
        {kAskBinary, shortRecord(100, 117).substr(0, 14), error},
        {kAskBinary, longRecord(100, 117), nobody}, // known in the short form only
        {kAskBinary, longRecord(100, 6), nobody},
        {kAskBinary, "ERROR", error},
        {kAskLines, bytesOf("30FE"), std::string(kNoLogs)},
        {kAskLines, bytesOf("31FE"), nobody},
        {kAskLines, bytesOf("30FE00"), nobody},
        {kAskLines, "*no line end", nobody},
        {kAskFramed, textFrame("x042TR340"), error},
        {kAskFramed, textFrame("042"), nobody},
        {kAskFramed, kAskFramed, nobody}, // an echo
        {kAskFramed, textFrame(""), error},
        {kAskFramed, "1234567", error},
        {kAskFramed, bytesOf("30FE"), nobody},
    };
    for (const Case& c : cases) {
        const Identification found = answered(c.question, c.answer);
        EXPECT_FALSE(found.IsValid) << c.answer;
        EXPECT_EQ(found.Message, c.message) << c.answer;
        EXPECT_EQ(data.InsName(), "") << c.answer;
    }
}

TEST_F(IdentifyTest, AnEchoingLineIsAskedOn) {
    comm.Answer = [&](const std::string& sent) -> std::vector<ScriptedComm::Arrival> {
        if (comm.LineSettings == "19200,n,8,2") return {{milliseconds(5), sent}};
        return {{milliseconds(5), textFrame("0001TR340")}};
    };
    EXPECT_TRUE(identify().IsValid);
    EXPECT_EQ(data.InsName(), "TR340");
}

TEST_F(IdentifyTest, PortsAreTriedInOrder) {
    comm.TheirPorts = {{300, "x", ""}, {7, "c", ""}, {2, "a", ""}, {5, "b", ""}};
    comm.Refused = {2};
    session.Options.SerialPort = 7;
    EXPECT_EQ(identify().Message, session.LoadText(Text::InstrumentNotResponding));
    // Each question has its port opened again, since silence has closed it.
    EXPECT_EQ(comm.Opened, (std::vector<int>{7, 7, 7, 5, 5, 5}));
    EXPECT_NEAR(static_cast<double>(time.Now.count()), 9000, 500);
    EXPECT_FALSE(comm.IsOpen());

    comm.Opened.clear();
    session.Options.SerialPort = 0;
    comm.Answer = [&](const std::string& sent) -> std::vector<ScriptedComm::Arrival> {
        if (comm.Port != 5 || sent != kAskLines) return {};
        return {{milliseconds(5), "*Corvane\r1\r"}};
    };
    EXPECT_TRUE(identify().IsValid);
    EXPECT_EQ(comm.Opened, (std::vector<int>{5, 5}));
}

TEST_F(IdentifyTest, PortsThatCannotBeUsedAreTold) {
    comm.Refused = {1};
    EXPECT_EQ(identify().Message, session.LoadText(Text::NoValidPort) + "\r\n/dev/one: Permission denied");
    comm.TheirPorts.clear();
    EXPECT_EQ(identify().Message, session.LoadText(Text::NoValidPort));

    // One that goes away does not end the search.
    comm.Refused.clear();
    comm.TheirPorts = {{1, "one", ""}, {2, "two", ""}};
    comm.FaultText = "Unplugged";
    EXPECT_EQ(identify().Message, "Unplugged");
    comm.Answer = [&](const std::string&) -> std::vector<ScriptedComm::Arrival> {
        if (comm.Port == 2) return {{milliseconds(0), longRecord(230, 0)}};
        return {};
    };
    comm.FaultText = "";
    EXPECT_TRUE(identify().IsValid);
}

} // namespace
} // namespace kestrane

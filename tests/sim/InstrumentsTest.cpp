#include "sim/BinaryInstrument.h"
#include "sim/CorvaneInstrument.h"
#include "sim/Faults.h"
#include "sim/TallixInstrument.h"

#include "SimTest.h"

#include <sstream>

namespace kestrane {
namespace {

using BinaryInstrumentTest = SimTest;

TEST_F(BinaryInstrumentTest, CountsItsLogsAndRefusesOthers) {
    BinaryInstrument instrument(BinaryFamily::Brevik, holdings("Brevik SE"));
    const std::string count = joined(instrument.answer(bytesOf("02 02 00 03")));
    ASSERT_EQ(count.size(), 8U);
    EXPECT_EQ(count.substr(3, 4), bytesOf("01 00 00 00"));
    for (const char* index : {"01 00 00 00", "FF FF FF FF", "FF FF FF 7F"}) {
        EXPECT_EQ(joined(instrument.answer(bytesOf("02 03 04 " + std::string(index) + " 03"))), "ERROR");
        EXPECT_EQ(joined(instrument.answer(bytesOf("02 04 08 " + std::string(index) + " 50 00 00 00 03"))), "ERROR");
    }
    EXPECT_EQ(joined(instrument.answer(bytesOf("02 04 08 00 00 00 00 FF FF FF 7F 03"))), "ERROR");
}

TEST_F(BinaryInstrumentTest, CommandsComeCutAndAmongNoise) {
    BinaryInstrument instrument(BinaryFamily::Brevik, holdings("Brevik SE"));
    EXPECT_EQ(joined(instrument.answer(bytesOf("55 02 05 02 30 02"))), "");
    EXPECT_EQ(joined(instrument.answer(bytesOf("02 00"))), "");
    EXPECT_EQ(joined(instrument.answer(bytesOf("03 02 02 00 03"))).size(), 16U) << "two at once";
}

struct CorvaneInstrumentTest : SimTest {
    static std::string fetch(const std::string& name) {
        std::string command = bytesOf("02 06");
        for (const char c : name)
            command += std::string("\x03") + c;
        return command + '\xFF';
    }
};

TEST_F(CorvaneInstrumentTest, ListsItsFilesAndGivesThem) {
    Holdings stored = holdings("Corvane 5", "C50331");
    stored.Octaves = {&octave, &octave};
    CorvaneInstrument corvane(stored);
    EXPECT_EQ(joined(corvane.answer(bytesOf("02 01 00 03"))), "") << "a question for other families";
    EXPECT_EQ(joined(corvane.answer(bytesOf("02 04"))).substr(1), "Press\rFan\rFan~3\r\xFE");
    EXPECT_EQ(joined(corvane.answer(bytesOf("02 06 03 50 03"))), "");
    EXPECT_NE(joined(corvane.answer(fetch("Press").substr(5))), "");
    EXPECT_NE(joined(corvane.answer(fetch("Fan~3"))).find(",FULL,Fast,Z,"), std::string::npos);
    EXPECT_EQ(joined(corvane.answer(fetch("None"))), "ERROR");
}

TEST(TallixInstrument, OnlyWholeFramesAreCommands) {
    std::ostringstream clock;
    TallixInstrument tallix({"TR342", "1", {}, {}, {}}, clock);
    EXPECT_EQ(joined(tallix.answer(bytesOf("02 01 00 03 02 05"))), "");
    for (const char* noFrame : {"\2FFFF00",
                                "\2"
                                "00020301\3",
                                "\2"
                                "0002",
                                "030"}) // too long, wrong check, half
        EXPECT_EQ(joined(tallix.answer(noFrame)), "") << noFrame;
    EXPECT_EQ(joined(tallix.answer("0\x03")), "\x02"
                                              "0001"
                                              "1"
                                              "00\x03");
}

TEST(Faults, AreToldInWords) {
    for (const char* text : {"silence", "silence=2", "error", "error=1", "echo", "split", "noise", "cut=0", "hangup=9"})
        EXPECT_TRUE(parseFault(text)) << text;
    for (const char* text : {"", "cut=", "cut=-1", "cut=x", "cut=1x", "echo=1", "Silence", "=1"})
        EXPECT_FALSE(parseFault(text)) << text;
}

} // namespace
} // namespace kestrane

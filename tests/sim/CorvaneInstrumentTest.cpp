#include "sim/CorvaneInstrument.h"

#include "SimTest.h"

namespace kestrane {
namespace {

struct CorvaneInstrumentTest : SimTest {
    static std::string fetch(const std::string& name) {
        std::string command = bytes("02 06");
        for (const char c : name)
            command += std::string("\x03") + c;
        return command + '\xFF';
    }
};

TEST_F(CorvaneInstrumentTest, ListsItsFilesAndGivesThem) {
    log.IsChannelBOn = true;
    log.FreqWeightB("C");
    log.TimeWeightB("Fast");
    log.IsLnNumbersOn = true;
    Holdings stored = holdings("Corvane 5", "C50331");
    stored.Octaves = {&octave, &octave};
    CorvaneInstrument corvane(stored);
    EXPECT_EQ(joined(corvane.answer(bytes("02 01 00 03"))), "") << "a question for other families";
    EXPECT_EQ(joined(corvane.answer(bytes("02 05"))).substr(1), "Corvane 5\rC50331\r");
    EXPECT_EQ(joined(corvane.answer(bytes("02 04"))).substr(1), "Press\rFan\rFan~3\r\xFE");
    EXPECT_EQ(joined(corvane.answer(bytes("02 06 03 50 03"))), "");
    EXPECT_EQ(joined(corvane.answer(fetch("Press").substr(5))),
              "Corvane 5,C50331,04/12/2023,25/11/2024,09:10:11,85,3,SLM,Slow,A,ON,Fast,C,70,120,0,ON,50,10,90,0,0,0,0,"
              "26/11/2024,13:05:07,\r\n"
              "13:05:07,84,64,94,114,0.5,60.2,104.8,0,0,83,86,81,0,0,0,0,88,0,0,115,1,\r\n"
              "13:07:07,86,66,96,116,0.5,62.2,106.8,0,0,85,88,83,0,0,0,0,90,0,0,117,0,\r\n"
              "stoplog,0,26/11/2024,13:09:07,85.25,60.1,96.5,118.2,106.8,0.9,85.3,63.5,109,0,0,80,88,70,0,0,0,0,\r\n");
    const std::string fan = joined(corvane.answer(fetch("Fan")));
    EXPECT_NE(fan.find(",FULL,Fast,Z,OFF,,,"), std::string::npos);
    EXPECT_NE(fan.find("stoplog,0,,00:00:00,60,61,62,63,64,65,66,67,68,69,70,71,0,0,"), std::string::npos) << fan;
    EXPECT_EQ(joined(corvane.answer(fetch("None"))), "ERROR");
}

TEST_F(CorvaneInstrumentTest, WithoutLogsItSaysSo) {
    CorvaneInstrument corvane({"Corvane 5", "C50331", {}, {}, {}});
    EXPECT_EQ(joined(corvane.answer(bytes("02 05"))), bytes("30 FE"));
}

} // namespace
} // namespace kestrane

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
    Holdings stored = holdings("Corvane 5", "C50331");
    stored.Octaves = {&octave, &octave};
    CorvaneInstrument corvane(stored);
    EXPECT_EQ(joined(corvane.answer(bytes("02 01 00 03"))), "") << "a question for other families";
    EXPECT_EQ(joined(corvane.answer(bytes("02 05"))).substr(1), "Corvane 5\rC50331\r");
    EXPECT_EQ(joined(corvane.answer(bytes("02 04"))).substr(1), "Press\rFan\rFan~3\r\xFE");
    EXPECT_EQ(joined(corvane.answer(bytes("02 06 03 50 03"))), "");
    EXPECT_EQ(joined(corvane.answer(fetch("Press").substr(5))).substr(0, 17), "Corvane 5,C50331,");
    EXPECT_NE(joined(corvane.answer(fetch("Fan~3"))).find(",FULL,Fast,Z,"), std::string::npos);
    EXPECT_EQ(joined(corvane.answer(fetch("None"))), "ERROR");
}

TEST_F(CorvaneInstrumentTest, WithoutLogsItSaysSo) {
    CorvaneInstrument corvane({"Corvane 5", "C50331", {}, {}, {}});
    EXPECT_EQ(joined(corvane.answer(bytes("02 05"))), bytes("30 FE"));
}

} // namespace
} // namespace kestrane

#include "SimTest.h"
#include "sim/MerrowanInstrument.h"
#include "sim/TallixInstrument.h"

#include <sstream>

namespace kestrane {
namespace {

struct TextInstrumentsTest : SimTest {
    std::ostringstream clock;

    static std::string ask(Instrument& instrument, const std::string& frame) {
        return joined(instrument.answer("\x02" + frame + "00\x03"));
    }

    // The payload of the one frame that answers.
    static std::string payload(Instrument& instrument, const std::string& frame) {
        const std::string reply = ask(instrument, frame);
        if (reply.size() < 8 || reply[0] != '\x02' || reply.substr(reply.size() - 3) != "00\x03") return "no frame";
        EXPECT_EQ(std::stoul(reply.substr(1, 4), nullptr, 16), reply.size() - 8);
        return reply.substr(5, reply.size() - 8);
    }
};

TEST_F(TextInstrumentsTest, ADosimeterOfTheTallixFamily) {
    TallixInstrument tallix(holdings("TR342", "A4471"), clock);
    EXPECT_EQ(ask(tallix, "000200"), "\x02"
                                     "00090342TR34200\x03");
    EXPECT_EQ(payload(tallix, "000203"), "A4471");
    EXPECT_EQ(payload(tallix, "000201"), "0001000000000");
    EXPECT_EQ(payload(tallix, "000802000100"), "0002" // rows
                                               "042C" // 106.8 %
                                               "0355" // 85.3 dB
                                               "0009" // 0.9 %
                                               "027B" // 63.5 dB
                                               "000000"
                                               "00"   // no overload
                                               "02"   // minutes
                                               "0086" // 13.4 % an hour
                                               "000000000000"
                                               "0355" // 85.25 dB
                                               "1.075"
                                               "U" // 85 dB
                                               "0D0507"
                                               "1A0B18");
    EXPECT_EQ(payload(tallix, "000802000101"), "00050005");
    EXPECT_EQ(ask(tallix, "000802000103"), "ERROR") << "a dosimeter keeps no levels";
    EXPECT_EQ(ask(tallix, "000802000200"), "ERROR");
    EXPECT_EQ(ask(tallix, "000E04130507261124"), "") << "the clock is set without an answer";
    EXPECT_EQ(clock.str(), "clock 130507261124\n");

    log.IsLoggingOverLoaded = true;
    log.Pa2hCumA.Value(123.456F);
    TallixInstrument meter(holdings("TR310"), clock);
    EXPECT_EQ(payload(meter, "000802000103"), "0348035C") << "84 and 86 dB";
    EXPECT_EQ(payload(meter, "000802000100").substr(26, 2), "01");
    EXPECT_EQ(payload(meter, "000802000100").substr(50, 5), "123.5");
}

TEST_F(TextInstrumentsTest, ANoiseAtWorkLogOfTheMerrowanFamily) {
    MerrowanInstrument merrowan(holdings("TR326"));
    EXPECT_EQ(payload(merrowan, "000200"), "0326TR326");
    EXPECT_EQ(payload(merrowan, "000201"), "00"
                                           "01"
                                           "0D05"
                                           "0000"
                                           "1A0B18");
    EXPECT_EQ(payload(merrowan, "000802000100"), "000000"
                                                 "0002"
                                                 "0D0507"
                                                 "1A0B18"
                                                 "0D0907"
                                                 "1A0B18"
                                                 "00" // A
                                                 "00" // Slow
                                                 "1"  // 85 dB
                                                 "0"  // 3 dB
                                                 "0355"
                                                 "042C"
                                                 "0442"
                                                 "03C5"
                                                 "0D0601"
                                                 "1A0B18"
                                                 "049E"
                                                 "0D0602"
                                                 "1A0B18");
    EXPECT_EQ(payload(merrowan, "000802000101"), "0D05"
                                                 "0005"
                                                 "0348"
                                                 "03AC"
                                                 "0D0809"
                                                 "0474"
                                                 "0D080B"
                                                 "00"
                                                 "0D07"
                                                 "0005"
                                                 "035C"
                                                 "03C0"
                                                 "0D0809"
                                                 "0488"
                                                 "0D080B"
                                                 "00");
    EXPECT_EQ(ask(merrowan, "000802000000"), "ERROR");
}

TEST_F(TextInstrumentsTest, AnEnvironmentalLogAndOctavesOfTheMerrowanFamily) {
    log.LocationType(EnvironmentLocation);
    log.FreqWeightA("C");
    log.TimeWeightA("Impulse");
    log.Criterion = 90;
    log.Exchange = 5;
    Holdings both = holdings("TR352");
    both.Octaves = {&octave};
    MerrowanInstrument merrowan(both);
    EXPECT_EQ(payload(merrowan, "000201").substr(2, 2), "02");
    const std::string cumulative = payload(merrowan, "000802000100");
    EXPECT_EQ(cumulative.substr(34, 6), "020201");
    EXPECT_EQ(cumulative.substr(40), "0355"
                                     "03C5"
                                     "0D0601"
                                     "1A0B18"
                                     "0259"
                                     "0D0603"
                                     "1A0B18"
                                     "0370"
                                     "0000"
                                     "02BC"
                                     "0000000000"
                                     "0442");
    EXPECT_EQ(payload(merrowan, "000802000101").substr(42), "0D07"
                                                            "035C"
                                                            "03C0"
                                                            "0D0809"
                                                            "0294"
                                                            "0D080A"
                                                            "0370"
                                                            "0000"
                                                            "033E"
                                                            "00");
    EXPECT_EQ(payload(merrowan, "000205"), "0001");
    std::string record = "026C"
                         "0276"
                         "0280"
                         "028A"
                         "0294"
                         "029E"
                         "02A8"
                         "02B2"
                         "02BC"
                         "02C6" // 62 to 71 dB
                         "0D0507"
                         "1A0B18"
                         "00"
                         "01"
                         "01";
    record.resize(82, '0');
    EXPECT_EQ(payload(merrowan, "000206"), record);
    MerrowanInstrument plain(holdings("TR320"));
    EXPECT_EQ(ask(plain, "000205"), "ERROR") << "this model keeps no octaves";
}

TEST_F(TextInstrumentsTest, OnlyWholeFramesAreCommands) {
    TallixInstrument tallix({"TR342", "1", {}, {}, {}}, clock);
    EXPECT_EQ(payload(tallix, "000201"), "") << "no logs are an empty list";
    EXPECT_EQ(joined(tallix.answer(bytes("02 01 00 03 02 05"))), "");
    EXPECT_EQ(joined(tallix.answer("\x02"
                                   "FFFF"
                                   "00")),
              "")
        << "too long to be one";
    EXPECT_EQ(joined(tallix.answer("\x02"
                                   "000203"
                                   "01\x03")),
              "")
        << "the check field is wrong";
    EXPECT_EQ(joined(tallix.answer("\x02"
                                   "0002")),
              "");
    EXPECT_EQ(joined(tallix.answer("030")), "");
    EXPECT_EQ(joined(tallix.answer("0\x03")), "\x02"
                                              "0001"
                                              "1"
                                              "00\x03");
}

} // namespace
} // namespace kestrane

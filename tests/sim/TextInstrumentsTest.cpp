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

TEST_F(TextInstrumentsTest, WhatAModelDoesNotKeepIsRefused) {
    TallixInstrument dosimeter(holdings("TR342", "A4471"), clock);
    TallixInstrument meter(holdings("TR310"), clock);
    MerrowanInstrument merrowan(holdings("TR320"));
    EXPECT_EQ(payload(dosimeter, "000203"), "A4471");
    EXPECT_EQ(payload(meter, "000802000103").size(), 2 * 4U);
    EXPECT_EQ(ask(dosimeter, "000802000103"), "ERROR") << "a dosimeter keeps no levels";
    EXPECT_EQ(ask(dosimeter, "000802000200"), "ERROR") << "there is one log";
    EXPECT_EQ(ask(merrowan, "000802000000"), "ERROR") << "logs count from 1";
    EXPECT_EQ(ask(merrowan, "000205"), "ERROR") << "this model keeps no octaves";
}

TEST_F(TextInstrumentsTest, OnlyWholeFramesAreCommands) {
    TallixInstrument tallix({"TR342", "1", {}, {}, {}}, clock);
    EXPECT_EQ(payload(tallix, "000201"), "") << "no logs are an empty list";
    EXPECT_EQ(joined(tallix.answer(bytes("02 01 00 03 02 05"))), "");
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

} // namespace
} // namespace kestrane

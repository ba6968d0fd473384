#include "sim/BinaryInstrument.h"

#include "SimTest.h"

namespace kestrane {
namespace {

using BinaryInstrumentTest = SimTest;

TEST_F(BinaryInstrumentTest, SaysWhichModelItIs) {
    struct Case {
        BinaryFamily family;
        const char* model;
        const char* record; // firmware, (nothing,) type, serial number 901226
    };

    for (const Case& c : {
             Case{BinaryFamily::Brevik, "Brevik SE", "78 00 00 00 00 00 00 00 00 00 00 00 6A C0 0D 00"},
             Case{BinaryFamily::Brevik, "Auravox Essential S", "78 00 00 00 00 00 00 00 05 00 00 00 6A C0 0D 00"},
             Case{BinaryFamily::BrevikEarly, "Brevik E", "69 00 00 00 01 00 00 00 6A C0 0D 00"},
             Case{BinaryFamily::Halcyr, "TR360L", "D2 00 00 00 68 01 00 00 6A C0 0D 00"},
             Case{BinaryFamily::HalcyrEarly, "TR312E", "64 00 00 00 75 00 00 00 6A C0 0D 00"},
         }) {
        BinaryInstrument instrument(c.family, holdings(c.model));
        const std::string reply = joined(instrument.answer(bytes("02 01 00 03")));
        ASSERT_GT(reply.size(), 4U);
        EXPECT_EQ(reply.substr(3, reply.size() - 4), bytes(c.record)) << c.model;
        EXPECT_NE(reply.substr(0, 4), bytes("02 01 00 03")) << "it would look like an echo";
    }
}

TEST_F(BinaryInstrumentTest, CountsItsLogsAndRefusesOthers) {
    BinaryInstrument instrument(BinaryFamily::Brevik, holdings("Brevik SE"));
    const std::string count = joined(instrument.answer(bytes("02 02 00 03")));
    ASSERT_EQ(count.size(), 8U);
    EXPECT_EQ(count.substr(3, 4), bytes("01 00 00 00"));
    for (const char* index : {"01 00 00 00", "FF FF FF FF", "FF FF FF 7F"}) {
        EXPECT_EQ(joined(instrument.answer(bytes("02 03 04 " + std::string(index) + " 03"))), "ERROR");
        EXPECT_EQ(joined(instrument.answer(bytes("02 04 08 " + std::string(index) + " 50 00 00 00 03"))), "ERROR");
    }
    EXPECT_EQ(joined(instrument.answer(bytes("02 04 08 00 00 00 00 FF FF FF 7F 03"))), "ERROR");
}

TEST_F(BinaryInstrumentTest, CommandsComeCutAndAmongNoise) {
    BinaryInstrument instrument(BinaryFamily::Brevik, holdings("Brevik SE"));
    EXPECT_EQ(joined(instrument.answer(bytes("55 02 05 02 30 02"))), "");
    EXPECT_EQ(joined(instrument.answer(bytes("02 00"))), "");
    EXPECT_EQ(joined(instrument.answer(bytes("03 02 02 00 03"))).size(), 16U) << "two at once";
}

} // namespace
} // namespace kestrane

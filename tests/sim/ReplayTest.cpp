#include "sim/Replay.h"

#include "ErrorOf.h"
#include "download/Wire.h"
#include "sim/Faults.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kestrane {
namespace {

std::string joined(const Reply& reply) {
    std::string all;
    for (const Piece& piece : reply.pieces)
        all += piece.bytes;
    return all;
}

ReplayedInstrument replayed(const std::string& transcript) {
    std::istringstream stream(transcript);
    return ReplayedInstrument(stream);
}

TEST(Replay, WhatWasSentIsAnsweredWithWhatCame) {
    ReplayedInstrument instrument = replayed("# a Corvane, unplugged later\n"
                                             "+0.000 > 02 01 00 03\r\n"
                                             "+1.600 > 0205\n"
                                             "+1.650 < 30 41\n"
                                             "+2.750 < 0D\n"
                                             "\n"
                                             "+3.000 > 0205\n"
                                             "+3.010 < 42\n"
                                             "+4.000 > 0204\n"
                                             "+4.010 < 43\n");
    EXPECT_EQ(joined(instrument.answer(bytesOf("02 01 00 03"))), "");
    EXPECT_EQ(joined(instrument.answer(bytesOf("02"))), "");
    const Reply reply = instrument.answer(bytesOf("05"));
    EXPECT_EQ(joined(reply), "0A\r");
    ASSERT_EQ(reply.pieces.size(), 2U);
    EXPECT_EQ(reply.pieces[0].pause.count(), 50);
    EXPECT_EQ(reply.pieces[1].pause.count(), 1100);
    EXPECT_EQ(joined(instrument.answer(bytesOf("02 04"))), "C") << "a question may be left out";
    EXPECT_EQ(joined(instrument.answer(bytesOf("02 05"))), "0A\r") << "or asked again";
    EXPECT_EQ(joined(instrument.answer(bytesOf("02 05"))), "B");
    EXPECT_EQ(joined(instrument.answer(bytesOf("77 02 04"))), "C") << "what was never sent is passed over";
}

TEST(Replay, NotesTheLineThatIsNoTranscript) {
    for (const char* line : {"0.1 > 02", "+x > 02", "+1.0 = 02", "+1.0 > 0", "+1.0 > 0g", "+1.0", "+", "+nan > 02",
                             "+-1 > 02", "text", "", "# note\n+1.0 < 02\n+1.0 > \n"}) {
        EXPECT_EQ(errorOf([&] { replayed(line); }), kErrorApplication) << line;
    }
}

TEST(Faults, AreToldInWords) {
    for (const char* text : {"silence", "silence=2", "error", "error=1", "echo", "split", "noise", "cut=0", "hangup=9"})
        EXPECT_TRUE(parseFault(text)) << text;
    for (const char* text : {"", "cut", "hangup", "cut=", "cut=-1", "cut=x", "cut=1x", "echo=1", "Silence", "=1"})
        EXPECT_FALSE(parseFault(text)) << text;
}

} // namespace
} // namespace kestrane

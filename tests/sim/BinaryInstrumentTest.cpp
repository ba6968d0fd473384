#include "sim/BinaryInstrument.h"

#include "SimTest.h"

#include <cstring>

namespace kestrane {
namespace {

struct BinaryInstrumentTest : SimTest {
    // All of a log's data block, asked for as programs do.
    static std::string block(BinaryInstrument& instrument, std::size_t from, std::size_t size) {
        std::string data;
        while (data.size() < size) {
            const auto offset = static_cast<std::int32_t>(from + data.size());
            std::string question = bytes("02 04 08 00 00 00 00");
            question.append(reinterpret_cast<const char*>(&offset), sizeof offset).push_back('\x03');
            const std::string reply = joined(instrument.answer(question));
            if (reply.size() <= 4) break;
            data += reply.substr(3, reply.size() - 4);
        }
        return data;
    }

    static std::int32_t wholeAt(const std::string& record, std::size_t offset) {
        std::int32_t value = 0;
        std::memcpy(&value, record.data() + offset, sizeof value);
        return value;
    }

    static double levelAt(const std::string& record, std::size_t offset) {
        double value = 0;
        std::memcpy(&value, record.data() + offset, sizeof value);
        return value;
    }
};

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

TEST_F(BinaryInstrumentTest, AnEntryOfEachGeneration) {
    log.IsChannelBOn = true;
    log.FreqWeightB("Z");
    log.TimeWeightB("Impulse");
    log.Region = "OSHA";
    log.Range = "Medium";
    BinaryInstrument brevik(BinaryFamily::Brevik, holdings("Brevik SE"));
    const std::string reply = joined(brevik.answer(bytes("02 03 04 00 00 00 00 03")));
    ASSERT_EQ(reply.size(), 88U);
    const std::string entry = reply.substr(3);
    EXPECT_EQ(wholeAt(entry, 0x00), 80 + 2 * 104 + 160);
    EXPECT_EQ(wholeAt(entry, 0x14), 0);
    EXPECT_EQ(wholeAt(entry, 0x18), 1);
    EXPECT_EQ(wholeAt(entry, 0x1c), 120);
    EXPECT_EQ(entry.substr(0x20, 18), bytes("0D 05 07 1A 0B 18 09 0A 0B 19 0B 18 00 00 00 04 0C 17"));
    EXPECT_EQ(wholeAt(entry, 0x34), 1);
    EXPECT_EQ(wholeAt(entry, 0x38), 85);
    EXPECT_EQ(wholeAt(entry, 0x3c), 3);
    EXPECT_EQ(wholeAt(entry, 0x40), 70);
    EXPECT_EQ(entry.substr(0x44, 2), bytes("01 02"));
    EXPECT_EQ(wholeAt(entry, 0x48), 1);
    EXPECT_EQ(wholeAt(entry, 0x4c), 1);
    EXPECT_EQ(wholeAt(entry, 0x50), 50);

    log.Threshold = "Off";
    log.Range = "70-140";
    BinaryInstrument early(BinaryFamily::BrevikEarly, holdings("Brevik SE"));
    const std::string earlyEntry = joined(early.answer(bytes("02 03 04 00 00 00 00 03"))).substr(3);
    EXPECT_EQ(earlyEntry.size(), 81U);
    EXPECT_EQ(wholeAt(earlyEntry, 0x00), 76 + 2 * 88 + 128);
    EXPECT_EQ(wholeAt(earlyEntry, 0x34), 85);
    EXPECT_EQ(wholeAt(earlyEntry, 0x3c), -1);
    EXPECT_EQ(wholeAt(earlyEntry, 0x4c), 50);

    BinaryInstrument halcyr(BinaryFamily::HalcyrEarly, holdings("TR360L"));
    const std::string halcyrEntry = joined(halcyr.answer(bytes("02 03 04 00 00 00 00 03"))).substr(3);
    EXPECT_EQ(halcyrEntry.size(), 77U);
    EXPECT_EQ(wholeAt(halcyrEntry, 0x00), 72 + 2 * 112 + 128);
    EXPECT_EQ(wholeAt(halcyrEntry, 0x10), 0);
    EXPECT_EQ(wholeAt(halcyrEntry, 0x14), 2);
    EXPECT_EQ(wholeAt(halcyrEntry, 0x18), 120);
    EXPECT_EQ(halcyrEntry.substr(0x1c, 6), bytes("0D 05 07 1A 0B 18"));
    EXPECT_EQ(wholeAt(halcyrEntry, 0x30), 85);
    EXPECT_EQ(wholeAt(halcyrEntry, 0x48), 50);
}

TEST_F(BinaryInstrumentTest, RecordsOfEachGeneration) {
    log.IsChannelBOn = true;
    log.IsLoggingOverLoaded = true;
    log.LeqCumB.Value(89);
    log.PeakCumB.Value(119);

    struct Offset {
        std::size_t at;
        double level;
    };

    struct Case {
        BinaryFamily family;
        std::size_t from, row, summary, overload;
        std::vector<Offset> rowLevels, summaryLevels; // of the second row, whose Leq is 86
    };

    const Case cases[] = {
        {BinaryFamily::Brevik,
         80,
         104,
         160,
         0x60,
         {{0x00, 86},
          {0x08, 90},
          {0x10, 96},
          {0x20, 66},
          {0x30, 106.8},
          {0x38, 62.2},
          {0x40, 88},
          {0x48, 83},
          {0x50, 85},
          {0x58, 117}},
         {{0x10, 106.8},
          {0x18, 13.4},
          {0x20, 1.075},
          {0x38, 85.25},
          {0x40, 89},
          {0x48, 96.5},
          {0x58, 60.1},
          {0x68, 109},
          {0x70, 85.3},
          {0x78, 88},
          {0x80, 70},
          {0x88, 80},
          {0x90, 119}}},
        {BinaryFamily::BrevikEarly,
         76,
         88,
         128,
         0x50,
         {{0x00, 86},
          {0x08, 90},
          {0x10, 96},
          {0x20, 106.8},
          {0x28, 62.2},
          {0x30, 88},
          {0x38, 83},
          {0x40, 85},
          {0x48, 117}},
         {{0x10, 106.8},
          {0x18, 13.4},
          {0x20, 1.075},
          {0x28, 85.25},
          {0x30, 89},
          {0x38, 96.5},
          {0x48, 109},
          {0x50, 85.3},
          {0x58, 88},
          {0x60, 70},
          {0x68, 80},
          {0x70, 119}}},
        {BinaryFamily::HalcyrEarly,
         72,
         112,
         128,
         0x68,
         {{0x00, 86},
          {0x08, 90},
          {0x10, 96},
          {0x20, 106.8},
          {0x28, 62.2},
          {0x30, 88},
          {0x38, 83},
          {0x40, 85},
          {0x60, 117}},
         {{0x10, 85.25},
          {0x18, 89},
          {0x20, 96.5},
          {0x30, 109},
          {0x38, 85.3},
          {0x40, 88},
          {0x48, 70},
          {0x50, 80},
          {0x58, 106.8},
          {0x68, 13.4},
          {0x70, 119}}},
    };
    for (const Case& c : cases) {
        BinaryInstrument instrument(c.family, holdings("Brevik SE"));
        const std::string data = block(instrument, c.from, 2 * c.row + c.summary);
        ASSERT_EQ(data.size(), 2 * c.row + c.summary);
        const std::string row = data.substr(c.row, c.row);
        for (const Offset& o : c.rowLevels)
            EXPECT_NEAR(levelAt(row, o.at), o.level, 1e-4) << std::hex << o.at;
        EXPECT_EQ(data[c.overload], '\x01');
        EXPECT_EQ(row[c.overload], '\0');
        const std::string summary = data.substr(2 * c.row);
        EXPECT_EQ(summary.substr(0, 6), bytes("0D 09 07 1A 0B 18"));
        EXPECT_EQ(wholeAt(summary, 0x08), 240);
        for (const Offset& o : c.summaryLevels)
            EXPECT_NEAR(levelAt(summary, o.at), o.level, 1e-4) << std::hex << o.at;
        EXPECT_EQ(summary.size() > 0x98 && summary[0x98] == '\x01', c.family == BinaryFamily::Brevik);
    }
}

} // namespace
} // namespace kestrane

#include "protection/ProtectorDatabase.h"

#include "ErrorOf.h"
#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace kestrane {
namespace {

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

const std::string kFull = "Soft, grey plug,0,10.5,2,11,2.1,12,2.2,13,2.3,14,2.4,15,2.5,16,2.6,17,2.7,1,30,25,20,1,27," +
                          std::string("9,1,9,1,9,1,9,1,9,1,9,1,9,1,9,1,1,29");

TEST(ReadProtectors, TakesEachFieldFromItsPlace) {
    std::vector<clsHP> protectors;
    EXPECT_TRUE(readProtectors(kFull + "\r\n\r\n\n", protectors)) << "nothing behind the empty lines";
    EXPECT_FALSE(readProtectors(
        kFull + "\r\nMuff,1," + repeated(",", 16) + ",5,5,5,,5" + repeated(",", 16) + ",,7\r\n\r\nbehind", protectors));
    ASSERT_EQ(protectors.size(), 2U);
    const clsHP& plug = protectors[0];
    EXPECT_EQ(plug.Name, "Soft, grey plug");
    EXPECT_EQ(plug.GetTipeStr(), "Earplug");
    EXPECT_EQ(plug.HPDId, 1);
    EXPECT_FLOAT_EQ(plug.Mean(1), 10.5F);
    EXPECT_FLOAT_EQ(plug.Mean(8), 17);
    EXPECT_FLOAT_EQ(plug.SD(8), 2.7F);
    EXPECT_EQ(plug.High + plug.Medium + plug.Low, 75);
    EXPECT_EQ(plug.SNR, 27);
    EXPECT_EQ(plug.MeanUS(8), 9);
    EXPECT_EQ(plug.SDUS(1), 1);
    EXPECT_EQ(plug.NRR, 29);
    const clsHP& muff = protectors[1]; // figures without their flag are not there
    EXPECT_EQ(muff.GetTipeStr(), "Earmuff");
    EXPECT_EQ(muff.HPDId, 2);
    EXPECT_FALSE(muff.HasOctaves() || muff.HasOctavesUS() || muff.HasHML() || muff.HasSNR() || muff.HasNRR());
    EXPECT_EQ(kErrorIndexOutOfRange, errorOf([&] { static_cast<void>(muff.Mean(0)); }));
    EXPECT_EQ(kErrorIndexOutOfRange, errorOf([&] { static_cast<void>(muff.SDUS(9)); }));
}

TEST(ReadProtectors, ABadLineEndsTheReadingWithTheRecordsBeforeIt) {
    std::vector<clsHP> protectors;
    const std::string few = "Plug" + repeated(",1", 40);
    EXPECT_EQ(kErrorCorruptFile, errorOf([&] { readProtectors(kFull + "\n" + few, protectors); }));
    EXPECT_EQ(protectors.size(), 1U);
    EXPECT_EQ(kErrorTypeMismatch, errorOf([&] { readProtectors("Plug,0,x" + repeated(",", 39), protectors); }));
    EXPECT_TRUE(protectors.empty());
    readProtectors(repeated("a,", 458) + "0" + repeated(",", 40), protectors); // 500 fields: the name holds the rest
    ASSERT_EQ(protectors.size(), 1U);
    EXPECT_EQ(protectors[0].Name.size(), 915U);
}

TEST(ReadProtectors, NamesOfAnOldFileAreRead) {
    std::vector<clsHP> protectors;
    readProtectors("Geh\xF6rschutz,1" + repeated(",", 40), protectors);
    EXPECT_EQ(protectors[0].Name, "Geh\u00F6rschutz");
    readProtectors("\xEF\xBB\xBFPlug,1" + repeated(",", 40), protectors); // as an editor saved it
    EXPECT_EQ(protectors[0].Name, "Plug");
}

TEST(ProtectorFile, SavesAndLoads) {
    const TemporaryFolder folder;
    const std::string path = folder.file("hpd_hml_db.txt");
    std::vector<clsHP> protectors;
    EXPECT_EQ(2, errorOf([&] { loadProtectors(path, protectors); })); // no such file
    readProtectors(kFull, protectors);
    saveProtectors(path, protectors);
    std::vector<clsHP> loaded;
    loadProtectors(path, loaded);
    EXPECT_EQ(protectorsText(loaded), protectorsText(protectors));
    std::filesystem::resize_file(path, (64UL << 20U) + 1); // a hole: too large to be a database
    EXPECT_EQ(kErrorCorruptFile, errorOf([&] { loadProtectors(path, loaded); }));
    EXPECT_TRUE(loaded.empty());
}

TEST(DatabaseText, MakesOneLineEndOfEachForm) {
    struct Case {
        std::string body, text;
    };

    using namespace std::string_literals;
    for (const Case& c :
         {Case{"a\r\nb\nc\rd", "a\r\nb\r\nc\r\nd"}, Case{"a\n\nb", "a\r\n\r\nb"}, Case{"a\r\r\nb", "a\r\n\r\nb"},
          Case{"\na", "\r\na"}, Case{"a\tb\0c\r\n\r\n"s, "abc"}, Case{"\xE9\n", "\xE9"}, Case{"", ""}})
        EXPECT_EQ(databaseText(c.body), c.text);
}

} // namespace
} // namespace kestrane

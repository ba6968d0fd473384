#include "app/ProtectorScreen.h"

#include "TestSession.h"
#include "app/DownloadHPD.h"
#include "platform/TemporaryFolder.h"
#include "protection/Attenuation.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct Screen : TestSession {
    TemporaryFolder folder;
    ProtectorCollection protectors;

    explicit Screen(Locale locale = {}) : TestSession(std::move(locale)) {
        protectors.File = folder.file("db.txt");
        session.protectors = &protectors;
        clsHP& muff = protectors.Protectors.emplace_back();
        muff.Name = "Muff";
        muff.HPDId = 1;
        muff.Tipe = 1;
        for (int band = 1; band <= kProtectorBands; ++band) {
            muff.Mean(band) = 20;
            muff.SD(band) = 4;
        }
        muff.SNR = 27.56F;
        clsHP& plug = protectors.Protectors.emplace_back();
        plug.Name = "Plug";
        plug.HPDId = 2;
        plug.High = 30;
        plug.Medium = 25;
        plug.Low = 20;
        plug.NRR = 21;
    }

    std::string cells(const ProtectorScreen& screen, std::size_t record) {
        std::string text;
        for (const ProtectorCell& cell : screen.Cells(protectors.Protectors[record]))
            text += cell.Text + '|';
        return text;
    }

    std::string lastMessage() const { return messages.Boxes.empty() ? "" : messages.Boxes.back().Prompt; }
};

TEST(ProtectorScreen, ShowsTheColumnsOfItsModeAndLevels) {
    Screen test;
    ProtectorScreen maintenance(test.session);
    EXPECT_EQ(maintenance.Captions(), (std::vector<std::string>{"Name", "Type", "Octave", "HML", "SNR"}));
    EXPECT_EQ(test.cells(maintenance, 0), "Muff|Earmuff|Yes||27.6|");
    EXPECT_EQ(test.cells(maintenance, 1), "Plug|Earplug||30.0 / 25.0 / 20.0||");
    maintenance.ShowUS(true);
    EXPECT_EQ(maintenance.Captions(), (std::vector<std::string>{"Name", "Type", "Octave", "NRR"}));
    EXPECT_EQ(test.cells(maintenance, 1), "Plug|Earplug||21.0|");

    clsLog log(test.session); // C weighted: by SNR alone
    log.FreqWeightA("C");
    log.LeqCumA(0).Value(100);
    ProtectorScreen selection(test.session, log);
    EXPECT_EQ(selection.Correction(), kCorrectionFourDecibels) << "as nothing is stored, in the European mode";
    EXPECT_EQ(test.cells(selection, 0), "Muff|Earmuff|Yes||27.6|76.4|\u25CB acceptable|");
    EXPECT_EQ(test.cells(selection, 1), "Plug|Earplug||30.0 / 25.0 / 20.0|||\u2013 cannot be computed|");
}

TEST(ProtectorScreen, TakesAnOctaveLogInLinearLevels) {
    Screen test;
    clsLog log(test.session);
    log.Mode(modeFullOctave);
    log.FreqWeightA("A");
    log.LeqCumA(log.e("1k")).Value(90);
    log.LeqCumA(log.e("63")).Value(60); // 86.2 without its weighting
    const ProtectorScreen selection(test.session, log);
    // 70 and 66.2 dB behind 20 dB each, and six bands without level, at -20
    EXPECT_NEAR(*selection.Cells(test.protectors.Protectors[0]).at(5).Number, 71.5 + 4, 0.05);
    EXPECT_EQ(log.FreqWeightA(), "A");
    EXPECT_TRUE(test.messages.Boxes.empty());
}

TEST(ProtectorScreen, ChecksTheEntriesInOrder) {
    Screen test;
    ProtectorScreen screen(test.session);
    ProtectorEntries entries;
    const auto refused = [&](std::optional<std::size_t> index) {
        EXPECT_FALSE(screen.Store(entries, index).has_value());
        return test.lastMessage();
    };
    EXPECT_EQ(refused(std::nullopt), "A name has not been entered");
    entries.Name = "  Plug ";
    EXPECT_EQ(refused(0), "This name is already in use!");
    entries.Name = "New";
    EXPECT_EQ(refused(0), "An instrument type has not been entered");
    entries = screen.EntriesOf(&test.protectors.Protectors[0]);
    entries.NRR = "x";
    EXPECT_EQ(refused(0), "The NRR entry must be numeric");
    entries.SNR = "";
    EXPECT_EQ(refused(0), "The SNR entry must be numeric");
    entries.HML[1] = "1e99";
    EXPECT_EQ(refused(0), "All HML entries must be numeric");
    entries.SDUS[7] = "-";
    EXPECT_EQ(refused(0), "All standard deviation entries must be numeric");
    entries.MeanUS[7] = "1,5";
    EXPECT_EQ(refused(0), "All mean entries must be numeric");
    EXPECT_FALSE(test.protectors.IsChanged);
    EXPECT_EQ(screen.AcceptedNumber(" 12.34 ", "1.0"), "12.3");
    EXPECT_EQ(screen.AcceptedNumber("12.x", "1.0"), "1.0");
}

TEST(ProtectorScreen, StoresAndWritesWhatWasEntered) {
    Screen test(Locale{",", "/"});
    ProtectorScreen screen(test.session);
    ProtectorEntries entries = screen.EntriesOf(&test.protectors.Protectors[0]);
    EXPECT_EQ(entries.SNR, "27,6");
    entries.Name = "Muff, large\n";
    entries.Mean[2] = "22,25";
    ASSERT_EQ(screen.Store(entries, 0), 0U);
    EXPECT_EQ(test.protectors.Protectors[0].Name, "Muff, large");
    EXPECT_EQ(test.protectors.Protectors[0].Mean(3), 22.25F);
    EXPECT_EQ(test.protectors.Protectors[0].SNR, 27.56F) << "a box that was left alone does not round";

    entries.Name = "Plug";
    test.messages.Answers = {Button::Cancel, Button::Ok};
    EXPECT_FALSE(screen.Store(entries, std::nullopt).has_value());
    EXPECT_EQ(test.lastMessage(), "Replace: Plug");
    EXPECT_EQ(screen.Store(entries, std::nullopt), 1U);
    EXPECT_EQ(test.protectors.Protectors[1].Tipe, 1);
    entries.Name = "Third";
    EXPECT_EQ(screen.Store(entries, std::nullopt), 2U);
    EXPECT_EQ(test.protectors.Protectors[2].HPDId, 3);

    screen.Close();
    std::vector<clsHP> written;
    loadProtectors(test.protectors.File, written);
    ASSERT_EQ(written.size(), 3U);
    EXPECT_EQ(written[2].Mean(3), 22.25F);

    std::filesystem::remove(test.protectors.File);
    screen.Close();
    EXPECT_FALSE(std::filesystem::exists(test.protectors.File)) << "nothing has changed since";
}

TEST(ProtectorScreen, RowsThatCouldNotBeReadAreNotOverwritten) {
    for (const char* damage : {"short,1\r\n", "\r\n"}) { // in the second of three lines
        Screen test;
        const std::vector<clsHP> one(test.protectors.Protectors.begin(), test.protectors.Protectors.begin() + 1);
        const std::string damaged = protectorsText(one) + damage + protectorsText(test.protectors.Protectors);
        writeText(test.protectors.File, damaged);
        LoadHPD(test.session);
        ProtectorScreen screen(test.session);
        ASSERT_TRUE(screen.IsReadOnly());
        ProtectorEntries entries = screen.EntriesOf(&test.protectors.Protectors[0]);
        entries.Name = "New";
        test.messages.Answers = {Button::Ok};
        EXPECT_FALSE(screen.Delete(0));
        EXPECT_FALSE(screen.Store(entries, std::nullopt));
        test.protectors.IsChanged = true;
        screen.Close();

        std::string name = test.protectors.File;
        const auto ask = [&](const std::string&, const std::string&) { return name; };
        screen.SaveReadable(ask);
        EXPECT_TRUE(test.lastMessage().ends_with("Save what could be read under another name."));
        EXPECT_EQ(readText(test.protectors.File), damaged);
        name = test.folder.file("other.txt");
        screen.SaveReadable(ask);
        EXPECT_EQ(readText(name), protectorsText(one));

        screen.KeepDamaged();
        EXPECT_EQ(screen.Store(entries, std::nullopt), 1U);
        screen.Close();
        EXPECT_EQ(readText(test.protectors.File + ".damaged"), damaged);
        EXPECT_EQ(readText(test.protectors.File), protectorsText(test.protectors.Protectors));
    }
}

} // namespace
} // namespace kestrane

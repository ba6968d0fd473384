#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "resources/TextTable.h"
#include "resources/Texts.h"

namespace kestrane {
namespace {

Texts TextsOf(const char* company, const Wording& wording = {}) {
    return Texts(LoadSoftwareByFirm(company), 3, 0, 12, wording);
}

TEST(LoadText, ExpandsTokensForEachFirm) {
    const Texts ordwyn = TextsOf("Ordwyn {} Acoustics");
    EXPECT_EQ(ordwyn.LoadText(Text::CommandAbout), "&About Kestrane");
    EXPECT_EQ(ordwyn.LoadText(Text::AboutVersion), "Kestrane Version 3.0.12");
    // The longest token first, and the company's own braces are a token of a later step.
    EXPECT_EQ(ordwyn.LoadText(Text::DatabaseNotDownloaded),
              "Hearing Protector Database could not be downloaded!\r\nPlease contact Ordwyn Ordwyn Acoustics");

    const Texts brennock = TextsOf("Brennock Ltd");
    EXPECT_EQ(brennock.LoadText(Text::AboutVersion), "Kestrane Pro Version 3.0.12");
    EXPECT_EQ(brennock.LoadText(Text::CalibrationDue), "Brennock Calibration Due");
}

TEST(LoadText, MapsIdsByFirmAndShowsMissingOnesAsNumbers) {
    const Texts ordwyn = TextsOf("Ordwyn");
    const Texts brennock = TextsOf("Brennock");
    for (int offset = 0; offset <= 11; ++offset) {
        EXPECT_EQ(brennock.LoadText(Text::Id{Text::ContactHomePage + offset}),
                  brennock.LoadText(Text::Id{Text::SecondHomePage + offset}));
        EXPECT_NE(ordwyn.LoadText(Text::Id{Text::ContactHomePage + offset}),
                  brennock.LoadText(Text::Id{Text::ContactHomePage + offset}))
            << offset;
    }
    EXPECT_EQ(ordwyn.LoadText(Text::ContactCompany), "Ordwyn");
    EXPECT_EQ(brennock.LoadText(Text::ContactDocumentReader), ordwyn.LoadText(Text::ContactDocumentReader));

    EXPECT_EQ(brennock.LoadText(Text::OpenFilter), "Brennock Data XML Files (*.xml)|*.xml|All Files (*.*)|*.*");
    EXPECT_NE(ordwyn.LoadText(Text::OpenFilter), brennock.LoadText(Text::OpenFilter));

    EXPECT_EQ(ordwyn.LoadText(Text::Id{9999}), "9999");
    EXPECT_EQ(ordwyn.LoadText(Text::Id{0}), "0");
    EXPECT_EQ(ordwyn.LoadText(Text::Id{-1}), "-1");
}

TEST(LoadText, SpeaksTheLanguageOfTheUse) {
    Texts texts = TextsOf("Ordwyn", {LanguageOf("de"), LanguageOf("fr")});
    EXPECT_EQ(texts.LoadText(Text::AboutTitle), "\u00DCber Kestrane");
    EXPECT_EQ(texts.LoadText(Text::UnableToOpen), "Impossible d\u2019ouvrir ^");
    EXPECT_EQ(texts.LoadText(Text::NoSuchProtector), "Es gibt keinen Geh\u00F6rschutz \u201E^\u201C.");
    EXPECT_EQ(texts.LoadMessage(Text::NoSuchProtector),
              "Il n\u2019y a pas de protecteur auditif \u00AB\u00A0^\u00A0\u00BB.");
    texts.Show(LanguageOf("xx"));
    EXPECT_EQ(texts.LoadText(Text::AboutTitle), "About Kestrane");

    constexpr TextEntry kOne[] = {{Text::AboutTitle, "[$]"}};
    const Texts partly = TextsOf("Ordwyn", {{"zz", "", kOne}, {}});
    EXPECT_EQ(partly.LoadText(Text::AboutTitle), "[Kestrane]");
    EXPECT_EQ(partly.LoadText(Text::Yes), "Yes");
}

// What stands in files and addresses must not depend on the user's language.
TEST(LoadText, NeverTranslatesData) {
    std::vector<TextEntry> other;
    for (const auto& [id, text] : TextTable())
        other.push_back({id, "?"});
    const Language unknown{"zz", "", other};
    const Texts texts = TextsOf("Ordwyn", {unknown, unknown});
    const Texts english = TextsOf("Ordwyn");
    for (const Text::Id id :
         {Text::FileWordBroadband, Text::FileWordFullOctave, Text::FileWordThirdOctave, Text::FileWordNoiseAtWork,
          Text::FileWordEnvironmental, Text::OctaveWord, Text::HistorySaved, Text::ContactHomePage,
          Text::ContactProtectorDatabase, Text::ContactSupport, Text::ContactDocumentReader, Text::SecondShop})
        EXPECT_EQ(texts.LoadText(id), english.LoadText(id)) << id;
    EXPECT_EQ(texts.LoadText(Text::BroadbandMode), "?");
}

TEST(LocaliseCaption, ReplacesPlaceholdersOnly) {
    const Texts texts = TextsOf("Ordwyn");
    EXPECT_EQ(texts.LocaliseCaption("1184-&About ..."), "&About Kestrane");
    EXPECT_EQ(texts.LocaliseCaption(" 9014 -No - really"), "No");
    EXPECT_EQ(texts.LocaliseCaption("12-Volt"), "12");
    for (const char* fixed :
         {"", "-", " - x", "1184", "About - 1184", "1184a-About", "1 184-x", "99999-x", "99999999999-x"})
        EXPECT_EQ(texts.LocaliseCaption(fixed), fixed);
}

TEST(Captions, ReplaceTextAndPlainCaption) {
    EXPECT_EQ(ReplaceText("aXbxcX", "X", "--"), "a--bxc--");
    EXPECT_EQ(ReplaceText("aaa", "aa", "a"), "aa");
    EXPECT_EQ(ReplaceText("^", "^", "^^"), "^^");
    EXPECT_EQ(ReplaceText("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceText("a.b", ".", ""), "ab");

    EXPECT_EQ(PlainCaption("Close A&ll"), "Close All");
    EXPECT_EQ(PlainCaption("Cumulative && Intervals Report"), "Cumulative & Intervals Report");
    EXPECT_EQ(PlainCaption("&&&x&"), "&x");
}

TEST(TextTable, HasWordsForEveryName) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TEXT_NAMES)) {
        if (!entry.path().filename().string().starts_with("TextNames")) continue;
        std::ifstream header(entry.path());
        for (std::string name, sign, number; header >> name;) {
            if (name == "None" || !(header >> std::ws) || header.peek() != '=') continue;
            header >> sign >> number;
            number.erase(0, number.find_first_of("0123456789"));
            EXPECT_TRUE(FindText(Text::Id{std::stoi(number)})) << name;
            ++count;
        }
    }
    EXPECT_EQ(count, std::ssize(TextTable()));
}

} // namespace
} // namespace kestrane

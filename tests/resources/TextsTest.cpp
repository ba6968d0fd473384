#include <gtest/gtest.h>

#include <string>

#include "resources/TextTable.h"
#include "resources/Texts.h"

namespace kestrane {
namespace {

Texts TextsOf(const char* company) {
    return Texts(LoadSoftwareByFirm(company), 3, 0, 12);
}

TEST(LoadText, ExpandsTokensForEachFirm) {
    const Texts ordwyn = TextsOf("Ordwyn {} Acoustics");
    EXPECT_EQ(ordwyn.LoadText(1184), "&About Kestrane");
    EXPECT_EQ(ordwyn.LoadText(3002), "Kestrane Version 3.0.12");
    // The longest token first, and the company's own braces are a token of a later step.
    EXPECT_EQ(ordwyn.LoadText(4836),
              "Hearing Protector Database could not be downloaded!\r\nPlease contact Ordwyn Ordwyn Acoustics");

    const Texts brennock = TextsOf("Brennock Ltd");
    EXPECT_EQ(brennock.LoadText(3002), "Kestrane Pro Version 3.0.12");
    EXPECT_EQ(brennock.LoadText(7102), "Brennock Calibration Due");
}

TEST(LoadText, MapsIdsByFirmAndShowsMissingOnesAsNumbers) {
    const Texts ordwyn = TextsOf("Ordwyn");
    const Texts brennock = TextsOf("Brennock");
    for (int offset = 0; offset <= 11; ++offset) {
        EXPECT_EQ(brennock.LoadText(10001 + offset), brennock.LoadText(10101 + offset));
        EXPECT_NE(ordwyn.LoadText(10001 + offset), brennock.LoadText(10001 + offset)) << offset;
    }
    EXPECT_EQ(ordwyn.LoadText(10003), "Ordwyn");
    EXPECT_EQ(brennock.LoadText(10014), ordwyn.LoadText(10014));

    EXPECT_EQ(brennock.LoadText(6541), "Brennock Data XML Files (*.xml)|*.xml|All Files (*.*)|*.*");
    EXPECT_NE(ordwyn.LoadText(6541), brennock.LoadText(6541));

    EXPECT_EQ(ordwyn.LoadText(9999), "9999");
    EXPECT_EQ(ordwyn.LoadText(0), "0");
    EXPECT_EQ(ordwyn.LoadText(-1), "-1");
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

TEST(TextTable, FindsEveryEntryAndNothingElse) {
    int previous = 0;
    for (const auto& [id, text] : TextTable()) {
        for (int missing = previous + 1; missing < id; ++missing)
            ASSERT_FALSE(FindText(missing)) << missing;
        ASSERT_EQ(FindText(id), text);
        EXPECT_FALSE(text.empty()) << id;
        previous = id;
    }
    EXPECT_FALSE(FindText(previous + 1));
}

} // namespace
} // namespace kestrane

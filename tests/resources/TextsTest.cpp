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
    EXPECT_EQ(brennock.LoadText(6001), "Kestrane Pro");
    EXPECT_EQ(brennock.LoadText(3002), "Kestrane Pro Version 3.0.12");
    EXPECT_EQ(brennock.LoadText(8402), "File not compatible with Kestrane Pro");
    EXPECT_EQ(brennock.LoadText(4501), "Kestrane Explorer");
    EXPECT_EQ(brennock.LoadText(7102), "Brennock Calibration Due");
    EXPECT_EQ(brennock.LoadText(8002),
              "Your Brennock instrument is not responding.\r\n\r\nThe instrument may need placing in COM mode, see "
              "specific user manual for more information.\r\nPlease check all cables are inserted and that all "
              "relevant drivers have been installed.");
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
    EXPECT_EQ(ordwyn.LoadText(6541),
              "Ordwyn Data XML Files (*.xml)|*.xml|Ordwyn Data Project Files (*.zdp)|*.zdp|Ordwyn Corvane Machine Log "
              "Files (*.log)|*.log|Merrowan Ordwyn Sound Files (*.zd2)|*.zd2|Tallix Ordwyn Sound Files "
              "(*.zd4)|*.zd4|Old Ordwyn Sound Files (*.csv;*.zdf;*.zdo)|*.csv;*.zdf;*.zdo|All Files (*.*)|*.*");

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

// Wording where a slip would be seen: double blanks, leading blanks, punctuation, doubled or unlike neighbours.
TEST(TextTable, HoldsTheExactWording) {
    const TextEntry expected[] = {
        {1035, "Close A&ll"},
        {1046, "Cumulative && Intervals Report"},
        {4516, "Remove this dataset from the file.  Are you sure?"},
        {4519, "Remove all octave logs from this dataset?"},
        {4520, "Remove this octave log from this dataset?"},
        {4527, "Third Octave"},
        {4528, "Advanced"},
        {4547, "Noise Rating Level = ^"},
        {4565, "Recalculating this log may take a few minutes.~Do you wish to continue?"},
        {4571, "Recorded on * at ^"},
        {4576, "This log is not Z weighted.  It will be converted for this analysis."},
        {4712, "$$ cannot find the a node with the data you are looking for."},
        {4905, "Apply changes and recalculate the opened log (Yes), or just the zoomed range (No)?"},
        {5015, "...as &nodes"},
        {5038, "Invalid entry - Exposure length must be a number greater than zero and less than or equal to 24"},
        {5042, "Mode:"},
        {5053, "Freq(Hz)"},
        {5068, " indicates this interval has been removed from calculations"},
        {6529, "Do you want to save the changes made to '^'"},
        {6542, "Graphics Files (*.*)|*.*|"},
        {7003, "E&xclude From Display"},
        {7005, "< &Back"},
        {7010, "Interval Range #"},
        {7013, "Invalid range.  The 'from' interval is later than the 'to' interval."},
        {7111, "Ln's Recorded"},
        {8005, "$$ is not receiving a response from the instrument.  Try again?"},
        {8012, "$$ can only synchronize the clock of a TALLIX version instrument"},
        {8016, "Full Octave"},
        {9000, "Error Connecting to Printer"},
        {9303, "* hours"},
        {9304, "1 hour"},
        {9308, "1 sec"},
        {9505, "LE"},
        {9506, "Dose %"},
        {9509, "Dose Per Hour %"},
        {9510, "Dose Hr %"},
        {9514, "Pa2Hr"},
        {9518, "L^eq"},
        {9521, "^peak"},
    };
    for (const auto& [id, text] : expected)
        EXPECT_EQ(FindText(id).value_or("(missing)"), text) << id;
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

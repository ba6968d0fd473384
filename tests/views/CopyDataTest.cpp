#include "views/CopyData.h"

#include "ShownLog.h"
#include "model/clsOptions.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(CopyData, ATableGoesOutWithoutOverloadedRowsAndEscaped) {
    ShownLog shown;
    shown.addRows(3);
    shown.plot(kChannelA, kInterval, {eLeq, eOverload});
    for (const std::size_t row : {0U, 1U, 2U})
        shown.setLevel(Quantity::LeqA, 0, row, 80.04F + static_cast<float>(row));
    IntervalColumns& rows = shown.log.LogIntervals.Columns();
    rows.set<std::uint8_t>(rows.OverloadedA, 1, 1);
    rows.set<std::uint8_t>(rows.isExcluded, 0, 1);
    shown.log.Name = "Yard <1>";
    const ClipboardForms forms = copiedTable(shown.log, IntervalTable(shown.log, kChannelA, {}).copiedRows(), true);
    EXPECT_EQ(forms.Text, "Time\tLAeq\tOverload?\r\n*03/06/24 09:00:00\t80.0\tNo\r\n03/06/24 09:02:00\t82.0\tNo\r\n");
    EXPECT_NE(forms.Html.find("<th scope=\"col\">LAeq</th>"), std::string::npos);
    EXPECT_NE(forms.Html.find("<tr><th scope=\"row\">03/06/24 09:02:00</th><td>82.0</td><td>No</td></tr></table>"),
              std::string::npos);
    EXPECT_TRUE(forms.Html.starts_with("<p>Yard &lt;1&gt;: Criterion Level 90 dB, Exchange Rate 3 dB</p><table"));
    EXPECT_TRUE(forms.Html.ends_with("<p>* indicates this interval has been removed from calculations</p>"));
    EXPECT_TRUE(withLine(forms, "A & B").Text.starts_with("A & B\r\nTime\t"));
    EXPECT_TRUE(withLine(forms, "A & B").Html.starts_with("<p>A &amp; B</p><p>Yard"));

    EXPECT_NE(
        copiedLines("a\t<b> & \"c\"\t\r\n", false)
            .Html.find("<tr><th scope=\"row\">a</th><td>&lt;b&gt; &amp; &quot;c&quot;</td><td></td></tr></table>"),
        std::string::npos);
    EXPECT_EQ(copiedLines("", true).Html.find("<tr>"), std::string::npos);
    const ShownLog octaves(modeFullOctave);
    EXPECT_TRUE(copiedPanel(octaves.log, 4, PanelForm{}).Text.starts_with("125 Hz\r\n"));
}

} // namespace
} // namespace kestrane

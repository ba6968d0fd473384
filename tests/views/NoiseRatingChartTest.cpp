#include "views/NoiseRatingChart.h"

#include "ShownLog.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(NoiseRatingChart, DrawsTheCurvesAndTheLogOnTop) {
    ShownLog shown(modeFullOctave);
    shown.log.LeqCumA("1k").Value(72.5F);
    const auto chart = noiseRatingChart(shown.log);
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->Shape, ChartShape::Line);
    EXPECT_EQ(chart->Title, "Yard Noise Rating Curves");
    EXPECT_EQ(chart->Footnote, "Noise Rating Level = 73    \nNR by the curves (ISO/R 1996:1971) = 72.5");
    EXPECT_FALSE(chart->HasLegend);
    EXPECT_EQ(chart->PrimaryRange->Maximum, 150);
    EXPECT_EQ(chart->RowCount, 9U);
    EXPECT_EQ(chart->RowLabel(5), "1k");
    ASSERT_EQ(chart->Series.size(), 26U);
    EXPECT_EQ(chart->Series[20].Label, "100");
    EXPECT_EQ(chart->Series[20].Values[5], 100);
    EXPECT_EQ(chart->Series.back().Label, "Yard");
    EXPECT_EQ(chart->Series.back().Values[5], 72.5F);
    EXPECT_TRUE(isNullValue(chart->Series.back().Values[0])); // not measured
}

} // namespace
} // namespace kestrane

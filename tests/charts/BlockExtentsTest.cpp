#include "charts/BlockExtents.h"

#include "views/ChartData.h"

#include <gtest/gtest.h>

#include <random>

namespace kestrane {
namespace {

TEST(BlockExtents, AreThoseOfAPlainScan) {
    std::mt19937 random(3);
    std::vector<float> values(1000);
    for (float& value : values)
        value = random() % 5 == 0 ? kNullValue : static_cast<float>(random() % 900) / 10;
    std::fill(values.begin() + 300, values.begin() + 500, kNullValue);
    const BlockExtents extents(values);
    for (int i = 0; i < 5000; ++i) {
        const std::size_t begin = random() % 1000;
        const std::size_t end = random() % 1100;
        Extent expected;
        for (std::size_t row = begin; row < std::min<std::size_t>(end, values.size()); ++row)
            expected.include(values[row]);
        const Extent extent = extents.of(begin, end);
        ASSERT_EQ(extent.isEmpty(), expected.isEmpty()) << begin << ' ' << end;
        ASSERT_EQ(extent.Lowest, expected.Lowest) << begin << ' ' << end;
        ASSERT_EQ(extent.Highest, expected.Highest) << begin << ' ' << end;
    }
    Extent joined;
    joined.include(extents.of(300, 500)); // nothing but missing values
    EXPECT_TRUE(joined.isEmpty());
}

} // namespace
} // namespace kestrane

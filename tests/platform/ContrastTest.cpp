#include "platform/Contrast.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// The pairs are known from the guidelines: 21 is the most, and #767676 is the lightest grey for text on white.
TEST(Contrast, IsThatOfTheGuidelines) {
    EXPECT_DOUBLE_EQ(contrast(0x000000, 0xffffff), 21);
    EXPECT_DOUBLE_EQ(contrast(0x123456, 0x123456), 1);
    EXPECT_NEAR(contrast(0xffffff, 0xff0000), 4.0, 0.005); // 1.05 / (0.2126 + 0.05)
    EXPECT_GE(contrast(0x767676, 0xffffff), 4.5);
    EXPECT_LT(contrast(0x777777, 0xffffff), 4.5);
    EXPECT_DOUBLE_EQ(contrast(0xff767676, 0x00ffffff), contrast(0x767676, 0xffffff)) << "opacity does not count";
}

TEST(Contrast, AColourIsChangedNoFurtherThanNeeded) {
    EXPECT_EQ(readable(0x17191c, 0xffffff), 0x17191cU);
    for (const Rgb ground : {0xffffffU, 0x000000U, 0x777777U, 0xff6464U, 0x2b2d30U}) {
        for (const Rgb colour : {0xff0000U, 0x00ff00U, 0x777777U, 0xffffffU, 0x000000U}) {
            const Rgb shade = readable(colour, ground, 4.5);
            EXPECT_GE(contrast(shade, ground), 4.5) << std::hex << colour << " on " << ground;
        }
    }
    EXPECT_LT(contrast(readable(0xff0000, 0xffffff), 0xffffff), 5) << "it stays red";
}

} // namespace
} // namespace kestrane

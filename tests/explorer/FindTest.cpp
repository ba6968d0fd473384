#include "explorer/Find.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TreeNode node(const char* key, const char* text, std::vector<TreeNode> children = {}) {
    return {key, text, {}, {}, false, std::move(children)};
}

const std::vector<TreeNode> kTree = {
    node("F1", "Yard.xml",
         {node("I1F1", "Meter [17]",
               {node("X1F1", "Broadband", {node("L1I1F1", "Yard north"), node("L2I1F1", "Gr\u00fcner Weg")}),
                node("Y1F1", "Full Octave", {node("O1I1F1", "yard")})})}),
    node("F2", "Night.xml",
         {node("I2F2", "Meter [18]", {node("Z2F2", "Third Octave", {node("T1I2F2", "Yard south")})})})};

// The keys that so many searches in a row give.
std::string found(const FindEntry& entry, int times) {
    NodeSearch search;
    std::string keys;
    for (int i = 0; i < times; ++i)
        keys += (keys.empty() ? "" : " ") + search.Find(kTree, entry).value_or("-");
    return keys;
}

TEST(NodeSearch, GoesThroughTheTreeAndRoundAgain) {
    struct Case {
        FindEntry entry;
        const char* keys; // of five searches
    };

    const Case cases[] = {
        {{"yard"}, "F1 L1I1F1 O1I1F1 T1I2F2 F1"},
        {{"yard", FindIn::Logs}, "L1I1F1 O1I1F1 T1I2F2 L1I1F1 O1I1F1"},
        {{"yard", FindIn::FileNames}, "F1 F1 F1 F1 F1"},
        {{"yard", FindIn::Broadband}, "L1I1F1 L1I1F1 L1I1F1 L1I1F1 L1I1F1"},
        {{"yard", FindIn::FullOctave}, "O1I1F1 O1I1F1 O1I1F1 O1I1F1 O1I1F1"},
        {{"yard", FindIn::ThirdOctave}, "T1I2F2 T1I2F2 T1I2F2 T1I2F2 T1I2F2"},
        {{"Yard", FindIn::All, true}, "F1 L1I1F1 T1I2F2 F1 L1I1F1"},
        {{"YARD", FindIn::All, false, true}, "O1I1F1 O1I1F1 O1I1F1 O1I1F1 O1I1F1"},
        {{"YARD", FindIn::All, true, true}, "- - - - -"},
        {{"meter"}, "I1F1 I2F2 I1F1 I2F2 I1F1"},
        {{"GR\u00dcNER"}, "L2I1F1 L2I1F1 L2I1F1 L2I1F1 L2I1F1"},
        {{"octave"}, "- - - - -"}, // groups are no hits
        {{""}, "- - - - -"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(found(c.entry, 5), c.keys) << c.entry.What << static_cast<int>(c.entry.Where);
}

TEST(NodeSearch, AnotherTextStartsAtTheTopAndALostHitDoesToo) {
    NodeSearch search;
    search.Find(kTree, {"yard"});
    EXPECT_EQ(search.Find(kTree, {"yard"}), "L1I1F1");
    EXPECT_EQ(search.Find(kTree, {"meter"}), "I1F1");
    EXPECT_EQ(search.Find({kTree[1]}, {"meter"}), "I2F2") << "the file of the last hit has been closed";
}

} // namespace
} // namespace kestrane

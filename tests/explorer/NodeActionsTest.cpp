#include "TestSession.h"
#include "explorer/NodeKeys.h"
#include "explorer/NodeRename.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace kestrane {
namespace {

TEST(SittingOnValidNode, EachKindGoesWhereItBelongs) {
    struct Case {
        char source;
        std::string targets;
    };

    const std::string kinds = "FIXLYOZT";
    for (const Case& c : {Case{'F', "F"}, Case{'I', "FI"}, Case{'X', "FIXL"}, Case{'L', "FIXL"}, Case{'Y', "FIYO"},
                          Case{'O', "FIYO"}, Case{'Z', "FIZT"}, Case{'T', "FIZT"}}) {
        for (const char target : kinds) {
            const std::string from = std::string(1, c.source) + "1I1F1";
            const std::string to = std::string(1, target) + "2I1F1";
            EXPECT_EQ(SittingOnValidNode(from, to, {}), c.targets.find(target) != std::string::npos) << from << to;
        }
    }
    EXPECT_FALSE(SittingOnValidNode("L1I1F1", "L1I1F1", {}));
    EXPECT_FALSE(SittingOnValidNode("", "F1", {}));
    EXPECT_FALSE(SittingOnValidNode("L1I1F1", "", ""));
    EXPECT_TRUE(SittingOnValidNode("L1I1F1", "", "F2"));
}

} // namespace
} // namespace kestrane

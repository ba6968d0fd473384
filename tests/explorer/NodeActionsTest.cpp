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

struct OneFile : TestSession {
    OneFile() {
        char name[] = "/tmp/kestrane-rename-XXXXXX";
        folder = mkdtemp(name);
        std::ofstream(folder / "a.xml") << "a";
        std::ofstream(folder / "taken.xml") << "taken";
        session.OpenFiles.push_back(std::make_unique<clsFile>(session, folder / "a.xml"));
        auto data = std::make_unique<clsInsData>(session);
        data->NameX = "Site";
        data->InsSerial = "77";
        data->append(clsLog(session), 0);
        session.OpenFiles.back()->InstrumentDatas.push_back(std::move(data));
        AssignIdentities(session, true, 0);
    }

    ~OneFile() { std::filesystem::remove_all(folder); }

    clsFile& file() { return *session.OpenFiles.front(); }

    std::filesystem::path folder;
};

TEST(NodeRename, GivesEachKindItsName) {
    OneFile one;
    EXPECT_EQ(editableText(one.session, "I1F1"), "Site"); // without the serial that its node shows
    EXPECT_TRUE(renameNode(one.session, "I1F1", "Yard"));
    EXPECT_EQ(one.file().InstrumentDatas.front()->NameX, "Yard");
    EXPECT_TRUE(renameNode(one.session, "L1I1F1", "Morning"));
    EXPECT_EQ(one.file().InstrumentDatas.front()->Locations.front()->Name, "Morning");
    EXPECT_TRUE(renameNode(one.session, "F1", "b.xml"));
    EXPECT_EQ(one.file().FileName, (one.folder / "b.xml").string());
    EXPECT_TRUE(std::filesystem::exists(one.folder / "b.xml"));
    EXPECT_FALSE(renameNode(one.session, "X1F1", "Group"));
    EXPECT_FALSE(renameNode(one.session, "L1I1F1", ""));
    EXPECT_FALSE(renameNode(one.session, "L9I1F1", "gone"));
    EXPECT_TRUE(one.messages.Boxes.empty());
}

TEST(NodeRename, AFileThatCannotBeRenamedKeepsItsName) {
    OneFile one;
    EXPECT_FALSE(renameNode(one.session, "F1", "taken.xml"));
    EXPECT_EQ(one.file().FileName, (one.folder / "a.xml").string());
    ASSERT_EQ(one.messages.Boxes.size(), 1U);
    EXPECT_EQ(one.messages.Boxes.front().Prompt, "17: File exists");
    EXPECT_EQ(one.messages.Boxes.front().Flags, kIconExclamation);
}

} // namespace
} // namespace kestrane

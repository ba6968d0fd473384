#include "explorer/ExplorerState.h"
#include "explorer/NodeKeys.h"
#include "views/Selection.h"

#include "TestSession.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

using Keys = std::vector<std::string>;

class TreeTest : public ::testing::Test, protected TestSession {
protected:
    ExplorerState state;

    clsFile& addFile(const std::string& name, bool isOldStyle = false) {
        session.OpenFiles.push_back(std::make_unique<clsFile>(session, name));
        session.OpenFiles.back()->OldStyle = isOldStyle;
        return *session.OpenFiles.back();
    }

    clsInsData& addData(clsFile& file, const std::vector<LogMode>& modes) {
        file.InstrumentDatas.push_back(std::make_unique<clsInsData>(session));
        clsInsData& data = *file.InstrumentDatas.back();
        data.NameX = "Site";
        data.InsSerial = "A1";
        for (const LogMode mode : modes) {
            auto log = std::make_unique<clsLog>(session);
            log->Mode(mode);
            log->Name = "log";
            data.append(std::move(log), 0);
        }
        return data;
    }

    static void collect(const std::vector<TreeNode>& nodes, Keys& keys, bool expandedOnly) {
        for (const TreeNode& node : nodes) {
            if (!expandedOnly || node.Expanded) keys.push_back(node.Key);
            collect(node.Children, keys, expandedOnly);
        }
    }

    static Keys keysOf(const std::vector<TreeNode>& nodes, bool expandedOnly = false) {
        Keys keys;
        collect(nodes, keys, expandedOnly);
        return keys;
    }

    // Two files of one collection each, with a log of every mode.
    void twoFiles() {
        for (const char* name : {"/a.xml", "/b.xml"})
            addData(addFile(name), {modeBroadband, modeFullOctave, modeThirdOctave});
        AssignIdentities(session, false, 0);
    }
};

TEST_F(TreeTest, IdentitiesAreUniqueOverAllFilesAndKeysLeadBack) {
    twoFiles();
    const clsFile& second = *session.OpenFiles[1];
    const clsInsData& data = *second.InstrumentDatas[0];
    const clsLog& log = *data.ThirdOctaves[0];
    EXPECT_EQ(logKey(log, data, second), "T2I2F2");
    EXPECT_EQ(groupKey(modeFullOctave, data, second), "Y2F2");
    const Node node = resolve(session, "T2I2F2");
    EXPECT_EQ(node.file, &second);
    EXPECT_EQ(node.data, &data);
    EXPECT_EQ(node.log, &log);
    EXPECT_EQ(resolve(session, "Z2F2").data, &data);
    for (const char* key : {"", "T", "F", "F3", "FX", "I1F2", "Z1F2", "X9F1", "L2I2F2x", "-1F1", "F99999999999"})
        EXPECT_EQ(resolve(session, key).data, nullptr) << key;
    for (const char* key : {"L1I2F2", "O1I2F2", "LI2F2", "I2F2", "X2F2"})
        EXPECT_EQ(resolve(session, key).log, nullptr) << key;
}

TEST_F(TreeTest, NewObjectsAndCopiesTakeTheNextIdentityWithoutMoving) {
    twoFiles();
    clsInsData& data = *session.OpenFiles[0]->InstrumentDatas[0];
    clsLog& source = *data.Locations[0];
    data.append(source, 1);
    data.append(source, 1);
    data.Locations[2]->LogId = source.LogId; // as a copy that has kept its identity
    data.Locations[2]->Name = "copy";
    addData(*session.OpenFiles[0], {modeBroadband});
    addFile("/c.xml");

    AssignIdentities(session, true, 0);
    EXPECT_EQ(session.OpenFiles[2]->FileId, 3);
    EXPECT_EQ(data.Locations[1]->LogId, 0) << "the last file only";
    AssignIdentities(session, false, 2);
    EXPECT_EQ(data.Locations[1]->LogId, 0) << "the file asked for only";
    AssignIdentities(session, false, 0);
    EXPECT_EQ(data.Locations[0]->LogId, 1);
    EXPECT_EQ(data.Locations[1]->LogId, 3);
    EXPECT_EQ(data.Locations[2]->LogId, 4);
    EXPECT_EQ(data.Locations[2]->Name, "copy");
    EXPECT_EQ(session.OpenFiles[0]->InstrumentDatas[1]->InsDataId, 3);
    EXPECT_EQ(session.OpenFiles[0]->InstrumentDatas[1]->Locations[0]->LogId, 5);
}

TEST_F(TreeTest, FilesGroupByFormatInTheOrderOfOpening) {
    const std::pair<const char*, bool> files[] = {
        {"/other.csv", true}, {"/a.ZD4", true},  {"/b.zd2", true},  {"/c.log", true},    {"/d.doc", false},
        {"/e.zdp", false},    {"/f.XML", false}, {"/g.xml", false}, {"/new.log", false}, {"xml", true}};
    for (const auto& [name, isOldStyle] : files)
        addFile(name, isOldStyle);
    AssignIdentities(session, false, 0);
    EXPECT_EQ(keysOf(buildTree(session)), (Keys{"F7", "F8", "F6", "F5", "F9", "F4", "F3", "F2", "F1", "F10"}));
}

TEST_F(TreeTest, GroupsOfLogsAndTheTextOfACollection) {
    clsFile& file = addFile("/data/a.xml");
    addData(file, {modeFullOctave, modeBroadband, modeFullOctave});
    addData(file, {});
    AssignIdentities(session, false, 0);
    const std::vector<TreeNode> nodes = buildTree(session);
    EXPECT_EQ(keysOf(nodes), (Keys{"F1", "I1F1", "X1F1", "L1I1F1", "Y1F1", "O1I1F1", "O2I1F1", "I2F1"}));
    EXPECT_EQ(nodes[0].Text, "a.xml");
    EXPECT_EQ(nodes[0].Children[0].Text, "Site [A1]");
    EXPECT_EQ(nodes[0].Children[0].Tag, "A1");
    EXPECT_EQ(nodes[0].Children[0].Children[1].Text, "Full Octave");
    session.Options.FilesOnTreeView = eDisplayFilesBesideLogNames;
    EXPECT_EQ(buildTree(session)[0].Text, "Site [A1] (a.xml)");
    session.Options.FilesOnTreeView = eHideFileNames;
    EXPECT_EQ(buildTree(session)[1].Text, "Site [A1]");
    file.InstrumentDatas.front()->NameX.clear();
    file.InstrumentDatas.front()->InsName("Brevik E");
    EXPECT_EQ(buildTree(session)[0].Text, "Brevik E [A1]");
}

TEST_F(TreeTest, ExpansionIsKeptAndThatOfThirdOctavesOnlyBehindItsOwnFile) {
    twoFiles();

    struct Case {
        std::vector<ShownNode> expanded;
        Keys kept;
    };

    const Case cases[] = {
        {{}, {}},
        {{{"F1", true}, {"I1F1", true}, {"Y1F1", true}}, {"F1", "I1F1", "Y1F1"}},
        {{{"I1F1", true}, {"Z1F1", true}}, {"I1F1", "Z1F1"}},
        {{{"I1F1", true}, {"Z2F2", true}}, {"I1F1"}}, // behind another file's
        {{{"Z2F2", true}}, {}},                       // behind none
        {{{"X9F9", true}, {"F7", true}, {"", true}}, {}},
    };
    for (const Case& c : cases) {
        std::vector<ShownNode> shown = c.expanded;
        for (const std::string& key : keysOf(buildTree(session)))
            shown.push_back({key, false});
        EXPECT_EQ(keysOf(state.RebuildTree(session, shown), true), c.kept);
    }
}

TEST(Selection, RangesAreReadWholeOrNotAtAll) {
    const std::pair<const char*, Keys> cases[] = {{"1-10,25-30", {"1~10", "25~30"}},
                                                  {"7", {"7~7"}},
                                                  {"9-2", {"9~2"}},
                                                  {"", {}},
                                                  {"1-", {}},
                                                  {"1-2,", {}},
                                                  {"a", {}},
                                                  {"1-2;3", {}},
                                                  {"1 - 2", {}},
                                                  {"99999999999999999999", {}}};
    for (const auto& [text, expected] : cases) {
        Keys found;
        for (const RowRange& range : parseRowRanges(text))
            found.push_back(selectionText(range));
        EXPECT_EQ(found, expected) << text;
    }
    EXPECT_TRUE(isRangeOf({1, 5}, 5));
    for (const RowRange& range : {RowRange{0, 5}, RowRange{1, 6}, RowRange{3, 2}})
        EXPECT_FALSE(isRangeOf(range, 5));
}

} // namespace
} // namespace kestrane

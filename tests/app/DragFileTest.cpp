#include "app/DragFile.h"

#include "app/RunningProgram.h"
#include "explorer/NodeKeys.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(DataFileToDrag, HasTheLogAloneWithItsRowsAndItsInstrument) {
    const TemporaryFolder folder;
    RunningProgram program(folder.path());
    const clsFile& file = program.open(SAMPLES_DIR "/machine-survey-octave.xml");
    const clsInsData& data = *file.InstrumentDatas.front();
    const clsLog* last = nullptr;
    forEachLog(data, [&](const clsLog& log) { last = &log; });
    const auto dragged = dataFileOf(program.session, logKey(*last, data, file));
    ASSERT_TRUE(dragged.has_value());
    EXPECT_EQ(dragged->Name, "machine-survey-octave, " + last->Name + ".xml");

    writeText(folder.file("dragged.xml"), dragged->Bytes());
    const clsFile& opened = program.open(folder.file("dragged.xml"));
    ASSERT_EQ(opened.InstrumentDatas.size(), 1U);
    EXPECT_EQ(opened.InstrumentDatas.front()->InsSerial, data.InsSerial);
    std::vector<const clsLog*> logs;
    forEachLog(opened, [&](const clsLog& log) { logs.push_back(&log); });
    ASSERT_EQ(logs.size(), 1U);
    EXPECT_EQ(logs.front()->Name, last->Name);
    EXPECT_EQ(logs.front()->LogIntervals.Count(), last->LogIntervals.Count());

    EXPECT_TRUE(dataFileOf(program.session, fileKey(file)).has_value());
    EXPECT_FALSE(dataFileOf(program.session, groupKey(last->Mode(), data, file)).has_value());
    EXPECT_FALSE(dataFileOf(program.session, "L99I1F1").has_value());
}

TEST(CopyToDrag, IsAPictureElseATable) {
    EXPECT_EQ(fileOfCopy({.Text = "x", .Html = {}, .Png = "png", .Svg = {}}, "Yard")->Name, "Yard.png");
    const auto table = fileOfCopy(
        {.Text = "Time\tLAeq, dB\r\n09:00\t-1.5\r\n-0,3\t+1.2\r\n\"q\"\t=1+1\r\n", .Html = {}, .Png = {}, .Svg = {}},
        "Yard 1/2");
    EXPECT_EQ(table->Name, "Yard 1-2.csv");
    EXPECT_EQ(table->Bytes(), "Time,\"LAeq, dB\"\n09:00,-1.5\n\"-0,3\",+1.2\n\"\"\"q\"\"\",'=1+1\n");
    EXPECT_FALSE(fileOfCopy({}, "Yard").has_value());
}

} // namespace
} // namespace kestrane

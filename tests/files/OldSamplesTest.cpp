// The samples of older formats: each opens under its own name and any other, and is saved as a data file that reads
// back the same.
#include "files/OpenedFile.h"
#include "files/XmlWriter.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct OldSample {
    const char* name;
    LogMode mode; // of its first log
    std::int64_t rows;
    bool isOldStyle = true;
};

constexpr OldSample kSamples[] = {{"bottling-night.log", modeBroadband, 45},
                                  {"extract-fan-octave.log", modeFullOctave, 30},
                                  {"stamping-night.zdp", modeBroadband, 120, false},
                                  {"sawmill-edger.csv", modeBroadband, 60},
                                  {"quarry-house.zdf", modeBroadband, 36},
                                  {"kiln-octave.zdo", modeFullOctave, 0},
                                  {"old-meter.csv", modeBroadband, 0},
                                  {"supply-duct.zd2", modeFullOctave, 0},
                                  {"return-duct.zd4", modeFullOctave, 0}};

std::string sampleText(const OldSample& sample) {
    return readText(std::string(SAMPLES_DIR "/old/") + sample.name);
}

// The figures and rows, without what is named after the file, without what is plotted, which follows from them, and
// without peaks, of which data files give back the count alone.
std::string figuresOf(const clsFile& file) {
    std::string text = DocumentText(file, true);
    for (const auto& [open, close] : {std::pair<std::string_view, std::string_view>("<log name=\"", "\""),
                                      {"<instrument-detail name=\"", "\""},
                                      {"<disp>", "</disp>"},
                                      {"<peak-intvls>", "</peak-intvls>"}}) {
        for (std::size_t at = text.find(open); at != std::string::npos; at = text.find(open, at + 1))
            text.erase(at, text.find(close, at + open.size()) + close.size() - at);
    }
    return text;
}

TEST(OldSamples, OpenUnderAnyName) {
    for (const OldSample& sample : kSamples) {
        const std::string content = sampleText(sample);
        OpenedFile own(content, sample.name);
        ASSERT_TRUE(own.isOpen) << sample.name << own.message;
        const OpenedFile marked("\xEF\xBB\xBF" + content, sample.name); // as an editor saves it
        EXPECT_TRUE(figuresOf(marked.file) == figuresOf(own.file)) << sample.name << marked.message;
        EXPECT_EQ(own.log(sample.mode).LogIntervals.Count(), sample.rows) << sample.name;
        const std::string figures = figuresOf(own.file);
        for (const char* name :
             {"a.csv", "a.zdf", "a.ZDO", "a.zd2", "a.zd4", "a.log", "a.zdp", "a.xml", "a", "a.txt"}) {
            OpenedFile opened(content, name);
            ASSERT_TRUE(opened.isOpen) << sample.name << name << opened.message;
            EXPECT_EQ(opened.file.IsOldStyle(), sample.isOldStyle) << sample.name << name;
            EXPECT_TRUE(figuresOf(opened.file) == figures) << sample.name << name;
        }
    }
}

TEST(OldSamples, ReadBackEqualWhenSaved) {
    for (const OldSample& sample : kSamples) {
        OpenedFile opened(sampleText(sample), sample.name);
        opened.file.FileName = opened.folder.file("a.xml");
        FileSave(opened.file);
        EXPECT_FALSE(opened.file.IsOldStyle());
        OpenedFile again(readText(opened.file.FileName));
        ASSERT_TRUE(again.isOpen) << again.message;
        for (const auto& data : again.file.InstrumentDatas) {
            for (const LogMode mode : {modeBroadband, modeFullOctave}) {
                for (const auto& log : data->logsOf(mode))
                    OpenedFile::loadRows(*log);
            }
        }
        EXPECT_TRUE(figuresOf(again.file) == figuresOf(opened.file)) << sample.name;
    }
}

} // namespace
} // namespace kestrane

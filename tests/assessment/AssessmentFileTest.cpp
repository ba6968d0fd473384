#include "assessment/AssessmentFile.h"

#include "ErrorOf.h"
#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace kestrane {
namespace {

// Every known key, one level deep in each, and an unknown one beside.
constexpr const char* kWhole = R"({"schema": "kestrane-assessment/1", "title": "T", "workplace": "W", "assessor": "A",
 "date": "2026-03-02", "mine": {"a": [1]}, "groups": [
  {"name": "G", "workers": 4, "strategy": "task", "instrument": "class2", "effective_day_h": 8.0, "peak_c": 134.0,
   "tasks": [{"name": "t", "duration_h": 1.5, "duration_range_h": [1.0, 2.0], "peak_c": 135.2, "mine": 1,
     "samples": [70.0, {"file": "a.xml", "log": "L1I1F1", "from": 1, "to": 2, "sha256": "ab", "mine": null}]}],
   "week": [{"day": "Mon", "mine": 2}, {"day": "Tue", "lex8h": 84.3}],
   "protector": {"name": "P", "mode": "niosh", "correction": 2, "spectrum": {"file": "b.xml"}, "reduction_db": 20.0,
     "worn_percent": 90.0, "mine": true}, "mine": "x"},
  {"name": "J", "strategy": "full-day", "instrument": "dosimeter", "samples": [80.0]}]})";

TEST(AssessmentFile, KeepsEveryMemberThereAndBack) {
    const Assessment assessment = assessmentOfText(kWhole);
    EXPECT_EQ(nlohmann::json::parse(assessmentText(assessment)), nlohmann::json::parse(kWhole));
    const AssessmentGroup& group = assessment.Groups.at(0);
    EXPECT_EQ(std::get<LogRows>(group.Tasks.at(0).Samples.at(1)).To, 2);
    EXPECT_EQ(group.Protector->Correction, 2);
    EXPECT_EQ(assessment.Groups.at(1).Strategy, Strategy::FullDay);

    const TemporaryFolder folder;
    const std::string path = folder.file("a.json");
    saveAssessment(path, assessment);
    EXPECT_EQ(assessmentText(loadAssessment(path)), readText(path));
    EXPECT_NE(errorOf([&] { saveAssessment(folder.file("none/a.json"), assessment); }), 0);
}

// The file with each value in turn of the wrong kind: told by its path, or unknown and taken as it is.
void damage(const AssessmentJson& root, AssessmentJson::json_pointer at, const std::string& path, int& told) {
    const AssessmentJson& value = root[at];
    AssessmentJson damaged = root;
    damaged[at] = value.is_boolean() ? AssessmentJson("no") : AssessmentJson(true);
    const bool isKnown = path.find("mine") == std::string::npos;
    try {
        assessmentOfText(damaged.dump());
        EXPECT_FALSE(isKnown) << path;
    } catch (const RuntimeError& error) {
        ++told;
        EXPECT_EQ(error.Number, kErrorAssessment);
        EXPECT_TRUE(isKnown && std::string(error.what()).starts_with(path + ": ")) << error.what();
    }
    for (std::size_t i = 0; value.is_array() && i < value.size(); ++i)
        damage(root, at / i, path + "[" + std::to_string(i) + "]", told);
    if (!value.is_object()) return;
    for (const auto& [key, member] : value.items())
        damage(root, at / key, path + "." + key, told);
}

TEST(AssessmentFile, TellsThePathOfEveryDamagedMember) {
    int told = 0;
    damage(AssessmentJson::parse(kWhole), AssessmentJson::json_pointer(), "$", told);
    EXPECT_EQ(told, 50);
}

TEST(AssessmentFile, TellsWhatIsMissingOrMeansNothing) {
    struct Case {
        const char* at;
        const char* value; // null: the member is taken out
        const char* text;  // null: it may be missing
    };

    constexpr Case kCases[] = {
        {"/schema", nullptr, "$.schema: it is missing"},
        {"/schema", "\"kestrane-assessment/2\"", "$.schema: 'kestrane-assessment/2' has no meaning here"},
        {"/groups", nullptr, "$.groups: it is missing"},
        {"/groups/0/strategy", nullptr, "$.groups[0].strategy: it is missing"},
        {"/groups/0/strategy", "\"job\"", "$.groups[0].samples: it is missing"},
        {"/groups/0/tasks", nullptr, "$.groups[0].tasks: it is missing"},
        {"/groups/0/tasks/0/duration_h", nullptr, "$.groups[0].tasks[0].duration_h: it is missing"},
        {"/groups/0/tasks/0/samples", "null", "$.groups[0].tasks[0].samples: it is missing"},
        {"/groups/0/tasks/0/samples/1/file", nullptr, "$.groups[0].tasks[0].samples[1].file: it is missing"},
        {"/groups/0/tasks/0/samples/1/from", "1.5", "$.groups[0].tasks[0].samples[1].from: a whole number is needed"},
        {"/groups/0/protector/correction", "4", "$.groups[0].protector.correction: a number from 0 to 3 is needed"},
        {"/groups/0/protector/reduction_db", "null", nullptr},
        {"/groups/0/protector/spectrum", nullptr, nullptr},
        {"/groups/0/protector", "null", nullptr},
        {"/groups/0/week", nullptr, nullptr},
        {"/groups/0/workers", nullptr, nullptr},
        {"/groups/0/tasks/0/samples/1/log", nullptr, nullptr},
        {"/title", nullptr, nullptr},
    };
    for (const Case& c : kCases) {
        AssessmentJson json = AssessmentJson::parse(kWhole);
        const AssessmentJson::json_pointer at(c.at);
        if (c.value == nullptr) {
            json[at.parent_pointer()].erase(at.back());
        } else {
            json[at] = AssessmentJson::parse(c.value);
        }
        std::string text;
        try {
            assessmentOfText(json.dump());
        } catch (const RuntimeError& error) {
            text = error.what();
        }
        EXPECT_EQ(text, c.text == nullptr ? "" : c.text) << c.at;
    }
    for (const std::string& text :
         {std::string("{"), std::string(), std::string("\"\xff\""), std::string(100'000, '[')})
        EXPECT_EQ(errorOf([&] { assessmentOfText(text); }), kErrorAssessment);
}

TEST(AssessmentFile, NamesDataFilesRelativeToWhereItGoes) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.file("data"));
    std::filesystem::create_directories(folder.file("all/assessments"));
    writeText(folder.file("data/a.xml"), "abc");
    Assessment assessment = assessmentOfText(kWhole);
    AssessmentGroup& group = assessment.Groups[0];
    LogRows& rows = std::get<LogRows>(group.Tasks[0].Samples[1]);
    rows.File = folder.file("data/a.xml");
    moveDataFiles(assessment, {}, folder.file("all/assessments/a.kxa"));
    EXPECT_EQ(rows.File, "../../data/a.xml");
    moveDataFiles(assessment, folder.file("all/assessments/a.kxa"), folder.file("data/a.kxa"));
    EXPECT_EQ(rows.File, "a.xml");
    std::filesystem::create_directory_symlink(folder.file("all/assessments"), folder.file("link"));
    moveDataFiles(assessment, folder.file("data/a.kxa"), folder.file("link/a.kxa"));
    EXPECT_EQ(rows.File, folder.file("data/a.xml")) << "../data would be that of all";
}

} // namespace
} // namespace kestrane

#include "app/StartUp.h"
#include "assessment/Assess.h"
#include "assessment/AssessmentFile.h"
#include "assessment/Criteria.h"
#include "cli/ChosenLog.h"
#include "cli/Comparing.h"
#include "cli/Jobs.h"
#include "cli/Json.h"
#include "cli/Outputs.h"
#include "cli/Verbs.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"
#include "protection/ProtectorDatabase.h"
#include "reports/AssessmentReport.h"
#include "reports/ReportLanguage.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <sstream>

namespace kestrane {

namespace {

// A figure as JSON; null for a figure that is nothing, and for an empty text.
template <class T>
Json orNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json orNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

// ---- criteria

struct CriteriaOptions {
    std::vector<std::string> files;
    std::string log;
    std::optional<OwnCriterion> own;
};

Json criterionJson(const CriterionFigures& figures) {
    Json limits = Json::array();
    for (const CriterionLimit& limit : figures.Limits) {
        limits.push_back({{"Name", limit.Name},
                          {"Value", limit.Value},
                          {"Unit", limit.IsDose ? "%" : "dB"},
                          {"Exceeded", orNull(limit.Exceeded)}});
    }
    return {{"Name", figures.Name},
            {"Title", figures.Title},
            {"Criterion", orNull(figures.Criterion)},
            {"Threshold", orNull(figures.Threshold)},
            {"Exchange", figures.Exchange},
            {"LEX8h", orNull(figures.LEX8h)},
            {"Dose", orNull(figures.Dose)},
            {"ProjectedDose", orNull(figures.ProjectedDose)},
            {"TWA", orNull(figures.TWA)},
            {"ProjectedTWA", orNull(figures.ProjectedTWA)},
            {"LAVG", orNull(figures.LAVG)},
            {"Basis", figures.IsFromRows ? "rows" : "leq"},
            {"Note", orNull(figures.Note)},
            {"Missing", orNull(figures.Missing)},
            {"Limits", std::move(limits)}};
}

Json criteriaJson(const ChosenLog& chosen, const CriteriaOptions& options) {
    const Criteria found = criteriaOf(*chosen.log, options.own);
    Json all = Json::array();
    for (const CriterionFigures& figures : found.All)
        all.push_back(criterionJson(figures));
    Json json = Json::object();
    if (options.files.size() > 1) json["FileName"] = chosen.file->FileName;
    json.update({{"Key", chosen.key},
                 {"Name", chosen.log->Name},
                 {"Rows", found.Rows},
                 {"MeasuredTime", found.MeasuredHours},
                 {"ExposureTime", singleJson(static_cast<float>(found.ExposureHours))},
                 {"LAeq", orNull(found.LAeq)},
                 {"LCpeak", orNull(found.LCpeak)},
                 {"Criteria", std::move(all)}});
    return json;
}

int criteria(Program& program, const CriteriaOptions& options) {
    return program.forEachFile(options.files, [&](clsFile& file, std::size_t) {
        const auto chosen = chooseLog(program, file, options.log);
        if (!chosen || !hasAllRows(program, *chosen->log)) return false;
        program.print(criteriaJson(*chosen, options));
        return true;
    });
}

// Reads "85,80,3". Returns what is wrong with the text, or an empty text.
std::string readOwn(const std::string& text, std::optional<OwnCriterion>& own) {
    std::istringstream words(text);
    std::vector<double> numbers;
    for (std::string word; std::getline(words, word, ',');)
        numbers.push_back(typedNumber(word, {}).value_or(-1));
    const auto isWithin = [&](std::size_t at, double lowest, double highest) {
        return numbers[at] >= lowest && numbers[at] <= highest;
    };
    if (numbers.size() != 3 || !isWithin(0, 1, 140) || !isWithin(1, 0, 140) || !isWithin(2, 1, 10)) {
        return "a criterion level of 1 to 140 dB, a threshold of 0 to 140 dB and an exchange rate of 1 to 10 dB, such "
               "as 85,80,3";
    }
    own = {numbers[0], numbers[1], numbers[2]};
    return {};
}

RunVerb criteriaVerb(CLI::App& verb) {
    const auto options = std::make_shared<CriteriaOptions>();
    addFiles(verb, options->files);
    addLogKey(verb, options->log);
    verb.add_option("--own", "a criterion of your own, in dB")
        ->type_name("CRITERION,THRESHOLD,EXCHANGE")
        ->check([options](const std::string& text) { return readOwn(text, options->own); });
    return [options](Program& program) { return criteria(program, *options); };
}

// ---- assess

constexpr const char* kStrategies[] = {"task", "job", "full-day"};

Json taskJson(const TaskResult& task) {
    return {{"name", task.Name},
            {"leq", orNull(task.Leq)},
            {"duration_h", orNull(task.Hours)},
            {"contribution", orNull(task.Contribution)},
            {"points", orNull(task.Points)},
            {"share", orNull(task.Share)},
            {"u1a", orNull(task.U1a)},
            {"u1b", orNull(task.U1b)},
            {"c1a", orNull(task.C1a)},
            {"c1b", orNull(task.C1b)}};
}

Json actionJson(const ActionResult& action) {
    return {{"name", action.Name},
            {"limit", action.Limit},
            {"unit", action.IsPeak ? "dB(C)" : "dB"},
            {"state", stateName(action.State)}};
}

Json protectedJson(const ProtectedResult& worn) {
    return {{"method", orNull(worn.Method)},
            {"level", orNull(worn.Level)},
            {"effective", orNull(worn.Effective)},
            {"verdict", verdictName(worn.Verdict)}};
}

Json warningJson(const AssessmentWarning& warning) {
    return {{"code", warning.Code}, {"task", orNull(warning.Task)}, {"text", warning.Text}};
}

Json sourceJson(const SourceResult& source) {
    return {{"file", source.File},         {"sha256", orNull(source.Sha256)}, {"log", orNull(source.Log)},
            {"from", orNull(source.From)}, {"to", orNull(source.To)},         {"leq", orNull(source.Leq)}};
}

template <class Items, class Convert>
Json listJson(const Items& items, Convert convert) {
    Json list = Json::array();
    for (const auto& item : items)
        list.push_back(convert(item));
    return list;
}

Json groupJson(const GroupResult& group) {
    return {{"name", group.Name},
            {"strategy", kStrategies[static_cast<std::size_t>(group.Strategy)]},
            {"lex8h", orNull(group.LEX8h)},
            {"u", orNull(group.Uncertainty)},
            {"U", orNull(group.Expanded)},
            {"upper", orNull(group.Upper)},
            {"points", orNull(group.Points)},
            {"lexw", orNull(group.LEXw)},
            {"peak_c", orNull(group.CPeak)},
            {"tasks", listJson(group.Tasks, taskJson)},
            {"u1", orNull(group.U1)},
            {"c1u1", orNull(group.C1u1)},
            {"u2", group.U2},
            {"u3", group.U3},
            {"actions", listJson(group.Actions, actionJson)},
            {"week_actions", group.WeekActions.empty() ? Json(nullptr) : listJson(group.WeekActions, actionJson)},
            {"protected", group.Protected ? protectedJson(*group.Protected) : Json(nullptr)},
            {"warnings", listJson(group.Warnings, warningJson)},
            {"sources", listJson(group.Sources, sourceJson)}};
}

// The protectors of the installed database, which is read when the first one is asked for.
class InstalledProtectors {
public:
    explicit InstalledProtectors(Session& session) : session_(session) {}

    const clsHP* find(const std::string& name) {
        if (!isRead_) records_ = openDatabase(session_, {});
        isRead_ = true;
        if (!records_) return nullptr;
        const auto& list = records_->Protectors;
        const auto hp = std::find_if(list.begin(), list.end(), [&](const clsHP& item) { return item.Name == name; });
        return hp == list.end() ? nullptr : &*hp;
    }

private:
    Session& session_;
    std::optional<ProtectorCollection> records_;
    bool isRead_ = false;
};

// Empty for a file that cannot be read.
std::string hashOf(const std::string& file) {
    try {
        return sha256OfFile(file);
    } catch (const RuntimeError&) {
        return {};
    }
}

struct AssessOptions {
    std::string file;
    std::string report; // empty: the result is printed
};

int assessFile(Program& program, const AssessOptions& options) {
    const std::string& file = options.file;
    Session& session = program.session;
    program.console.File = file;
    const std::string input = file == "-" ? kStandardInput : fullPath(file);
    // Input from a pipe has no folder of its own: its paths are relative to the working folder.
    const std::string path = std::filesystem::is_regular_file(pathOf(input)) && file != "-" ? input : fullPath("-");
    Assessment assessment;
    try {
        assessment = assessmentOfText(readInput(input)->view());
    } catch (const RuntimeError& error) {
        session.ShowMessage(ReplaceText(session.LoadText(Text::UnableToOpen), "^", file) + "\r\n\r\n" + error.what(),
                            kIconStop);
        return kFailed;
    }
    InstalledProtectors protectors(session);
    Measurements measured;
    const std::vector<std::string> dataFiles = measured.unread(assessment, path);
    if (!options.report.empty()) keepFilesFrom({options.report}, dataFiles);
    for (const std::string& dataFile : dataFiles) {
        const std::string hash = hashOf(dataFile);
        const clsFile* const opened = hash.empty() ? nullptr : program.open(dataFile);
        measured.take(session, assessment, path, dataFile, opened, hash,
                      [&](const std::string& name) { return protectors.find(name); });
        program.closeFiles();
    }
    if (options.report.empty()) {
        const std::vector<GroupResult> results = assess(session, assessment, path, measured);
        return program.print({{"schema", "kestrane-assessment-result/1"},
                              {"edition", kAssessmentEdition},
                              {"groups", listJson(results, groupJson)}});
    }
    const auto layOut = [&](const PageMetrics& paper) {
        return inReportLanguage(session, [&] {
            const auto results = assess(session, assessment, path, measured); // the results hold words
            const AssessmentSubject subject{session, assessment, path, measured, results};
            return std::make_unique<AssessmentReport>(subject, paper);
        });
    };
    const bool isWritten = writePages(program, layOut, options.report);
    return isWritten ? kDone : kFailed;
}

RunVerb assessVerb(CLI::App& verb) {
    const auto options = std::make_shared<AssessOptions>();
    verb.add_option("FILE", options->file, "an assessment; - is standard input")->required();
    verb.add_option("--report", options->report, "write its report to this PDF file instead; - is standard output");
    return [options](Program& program) {
        if (!options->report.empty()) keepFilesFrom({options->report}, {options->file});
        return assessFile(program, *options);
    };
}

constexpr Verb kVerbs[] = {
    {"assess", "compute an exposure assessment", assessVerb},
    {"criteria", "print a log under every exposure criterion", criteriaVerb},
};

} // namespace

std::span<const Verb> assessmentVerbs() {
    return kVerbs;
}

} // namespace kestrane

#include "assessment/LogLevels.h"
#include "calc/RowAnalysis.h"
#include "cli/ChosenLog.h"
#include "cli/Verbs.h"
#include "model/Acoustics.h"
#include "model/RowClock.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "views/Selection.h"

#include <algorithm>
#include <memory>
#include <sstream>

namespace kestrane {

namespace {

using Rows = std::span<const AnalysedRow>;

constexpr double kSecondsOfMinute = 60;

struct AnalysisOptions : LogArguments {
    std::string range, worst, events, percents, width;
    std::vector<std::string> others;
};

template <class T>
Json orNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json orNull(const std::optional<float>& value) {
    return value ? singleJson(*value) : Json(nullptr);
}

// The numbers of a text such as "80,2.5". Raises WrongWords when one of them is not numeric, or too large.
std::vector<double> numbersOf(const std::string& text, const std::string& hint) {
    std::vector<double> numbers;
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, ',');) {
        const auto number = typedNumber(word, {});
        if (!number) throw WrongWords(hint);
        numbers.push_back(*number);
    }
    return numbers;
}

// Adds the weighting to the answer when the log is not A-weighted.
Json labelled(Json answer, const clsLog& log) {
    if (log.FreqWeightA() != "A") answer["Weighting"] = log.FreqWeightA();
    return answer;
}

// ---- the questions

Json rangeAnswer(const clsLog& log, Rows rows, const AnalysisOptions& options) {
    const std::vector<RowRange> ranges = parseRowRanges(options.range);
    const std::int64_t count = log.LogIntervals.Count();
    if (ranges.size() != 1 || !isRangeOf(ranges.front(), count))
        throw WrongWords("--range: rows A-B of 1-" + std::to_string(count));
    const RowRange range = ranges.front();
    const IntervalColumns& columns = log.LogIntervals.Columns();
    const auto first = static_cast<std::size_t>(range.From - 1);
    const auto last = static_cast<std::size_t>(range.To - 1);
    const auto [figures, rest] = rangeFigures(rows, range, log.Criterion, log.Exchange);
    Json answer = labelled({{"From", range.From},
                            {"To", range.To},
                            {"Start", isoTime(rowBegin(columns, first))},
                            {"End", isoTime(rowBegin(columns, last) + rowSeconds(columns, last, log.Interval))},
                            {"Seconds", figures.Seconds},
                            {"LAeq", orNull(figures.LAeq)},
                            {"LE", orNull(figures.LE)},
                            {"Lmax", orNull(figures.Lmax)},
                            {"Lmin", orNull(figures.Lmin)},
                            {"Peak", orNull(figures.Peak)},
                            {"Dose", orNull(figures.Dose)},
                            {"Rest",
                             {{"Seconds", rest.Seconds},
                              {"LAeq", orNull(rest.LAeq)},
                              {"LE", orNull(rest.LE)},
                              {"Dose", orNull(rest.Dose)}}}},
                           log);
    if (log.IsOctaveLog() && log.FreqWeightA() != "A")
        answer["LAeqFromBands"] = orNull(levelsOfRows(log, range, LevelsFrom::Bands).Leq);
    return answer;
}

Json stretchJson(Rows rows, const std::optional<Stretch>& stretch) {
    if (!stretch) return {{"From", nullptr}, {"To", nullptr}, {"Start", nullptr}, {"LAeq", nullptr}};
    const Rows within = rows.subspan(stretch->First, stretch->Behind - stretch->First);
    return {{"From", within.front().Number},
            {"To", within.back().Number},
            {"Start", isoTime(within.front().Begin)},
            {"LAeq", orNull(stretchFigures(within, 0, 0).LAeq)}};
}

Json worstAnswer(const clsLog& log, Rows rows, const AnalysisOptions& options) {
    const std::string hint = "--worst: minutes above 0";
    const auto minutes = numbersOf(options.worst, hint);
    if (minutes.size() != 1 || minutes[0] <= 0) throw WrongWords(hint);
    const WorstStretches worst = worstStretches(rows, minutes[0] * kSecondsOfMinute);
    return labelled({{"Minutes", minutes[0]},
                     {"Loudest", stretchJson(rows, worst.Loudest)},
                     {"Quietest", stretchJson(rows, worst.Quietest)}},
                    log);
}

Json eventsAnswer(const clsLog& log, Rows rows, const AnalysisOptions& options) {
    const std::string hint = "--events: a level in dB and the least seconds, such as 85 or 85,10";
    const auto numbers = numbersOf(options.events, hint);
    if (numbers.empty() || numbers.size() > 2 || (numbers.size() == 2 && numbers[1] < 0)) throw WrongWords(hint);
    const double all = exposureOf(rows);
    Json list = Json::array();
    for (const Stretch& event : eventsOf(rows, {numbers[0], numbers.size() == 2 ? numbers[1] : 0})) {
        const Rows within = rows.subspan(event.First, event.Behind - event.First);
        const StretchFigures figures = stretchFigures(within, 0, 0);
        list.push_back(labelled({{"From", within.front().Number},
                                 {"To", within.back().Number},
                                 {"Start", isoTime(within.front().Begin)},
                                 {"Seconds", figures.Seconds},
                                 {"LAeq", orNull(figures.LAeq)},
                                 {"Lmax", orNull(figures.Lmax)},
                                 {"Share", exposureOf(within) / all}},
                                log));
    }
    return list;
}

Json percentsAnswer(const clsLog& log, Rows rows, const AnalysisOptions& options) {
    const std::string hint = "--ln: percentages from 0 to 100 with commas between, such as 10,50,90";
    const auto percents = numbersOf(options.percents, hint);
    Json levels = Json::object();
    std::istringstream words(options.percents);
    for (const double percent : percents) {
        if (percent < 0 || percent > 100) throw WrongWords(hint);
        std::string word;
        std::getline(words, word, ',');
        levels[word] = orNull(levelExceeded(rows, percent));
    }
    if (percents.empty()) throw WrongWords(hint);
    return labelled(levels, log);
}

Json distributionAnswer(const clsLog& log, Rows rows, const AnalysisOptions& options) {
    constexpr double kFinest = 0.01; // dB; levels are not known more precisely
    const std::string hint = "--distribution: the width of the classes in dB, from 0.01 and so that at most " +
                             std::to_string(kMostClasses) + " classes cover the levels";
    const auto widths = numbersOf(options.width, hint);
    if (widths.size() != 1 || widths[0] < kFinest) throw WrongWords(hint);
    const auto classes = distributionOf(rows, widths[0]);
    if (!classes) throw WrongWords(hint);
    Json list = Json::array();
    for (const LevelClass& item : *classes) {
        const double all = classes->front().Above;
        list.push_back(labelled({{"Level", singleJson(static_cast<float>(item.Level))},
                                 {"Seconds", item.Seconds},
                                 {"Share", all > 0 ? Json(item.Seconds / all) : Json(nullptr)},
                                 {"Above", item.Above}},
                                log));
    }
    return list;
}

// ---- comparing logs

// The file and the log of "shift.xml:L1I1F1", or of a file alone, whose name may contain a colon.
LogArguments logOfWord(const std::string& word) {
    const std::size_t colon = word.rfind(':');
    if (colon == std::string::npos || fileExists(word)) return {word, {}};
    return {word.substr(0, colon), word.substr(colon + 1)};
}

struct Compared {
    Json Logs = Json::array();
    std::vector<AnalysedRow> All;
    std::string Weighting; // of the first log
    bool IsOneWeighting = true;
    std::optional<double> First; // the level that the others differ from
};

// Returns false when a log is not there; the reason has been shown.
bool addCompared(Program& program, const LogArguments& arguments, Compared& compared) {
    const auto chosen = openWholeLog(program, arguments);
    if (!chosen) return false;
    const auto rows = analysedRows(*chosen->log);
    compared.All.insert(compared.All.end(), rows.begin(), rows.end());
    const StretchFigures figures = stretchFigures(rows, 0, 0);
    const std::string weighting = chosen->log->FreqWeightA();
    if (compared.Logs.empty()) {
        compared.First = figures.LAeq;
        compared.Weighting = weighting;
    }
    // Levels of two weightings have no difference and no mean.
    const bool isComparable = weighting == compared.Weighting;
    compared.IsOneWeighting = compared.IsOneWeighting && isComparable;
    std::optional<double> difference;
    if (isComparable && figures.LAeq && compared.First) difference = *figures.LAeq - *compared.First;
    compared.Logs.push_back(labelled({{"FileName", chosen->file->FileName},
                                      {"Key", chosen->key},
                                      {"Seconds", figures.Seconds},
                                      {"LAeq", orNull(figures.LAeq)},
                                      {"Difference", orNull(difference)}},
                                     *chosen->log));
    program.closeFiles();
    return true;
}

int compare(Program& program, const AnalysisOptions& options) {
    program.console.NamesFile = true;
    Compared compared;
    if (!addCompared(program, options, compared)) return kFailed;
    for (const std::string& other : options.others)
        if (!addCompared(program, logOfWord(other), compared)) return kFailed;
    const auto mean = compared.IsOneWeighting ? stretchFigures(compared.All, 0, 0).LAeq : std::nullopt;
    return program.print({{"Logs", compared.Logs}, {"Mean", orNull(mean)}});
}

// ---- the verb

using Answer = Json (*)(const clsLog& log, Rows rows, const AnalysisOptions& options);

struct Question {
    const char* name;
    const char* description;
    std::string AnalysisOptions::*words;
    Answer answer;
};

constexpr Question kQuestions[] = {
    {"--range", "figures of the rows A-B, and of the log without them", &AnalysisOptions::range, rangeAnswer},
    {"--worst", "the loudest and the quietest stretch of so many minutes", &AnalysisOptions::worst, worstAnswer},
    {"--events", "stretches at or above a level that last: LEVEL[,SECONDS]", &AnalysisOptions::events, eventsAnswer},
    {"--ln", "levels exceeded for so many percent of the time: N,N...", &AnalysisOptions::percents, percentsAnswer},
    {"--distribution", "how long the level was in each class of this width, dB", &AnalysisOptions::width,
     distributionAnswer},
};

int analyse(Program& program, const AnalysisOptions& options) {
    if (!options.others.empty()) return compare(program, options);
    const auto chosen = openWholeLog(program, options);
    if (!chosen) return kFailed;
    const auto rows = analysedRows(*chosen->log);
    const auto* const question = std::find_if(std::begin(kQuestions), std::end(kQuestions),
                                              [&](const Question& item) { return !(options.*item.words).empty(); });
    return program.print(question->answer(*chosen->log, rows, options));
}

RunVerb analyseVerb(CLI::App& verb) {
    const auto options = std::make_shared<AnalysisOptions>();
    addLog(verb, *options);
    auto* questions = verb.add_option_group("question")->require_option(1);
    for (const Question& question : kQuestions)
        questions->add_option(question.name, (*options).*question.words, question.description);
    questions->add_option("--compare", options->others, "further logs beside this one: FILE[:KEY]...");
    return [options](Program& program) { return analyse(program, *options); };
}

constexpr Verb kVerbs[] = {{"analyse", "answer a question about the rows of a log", analyseVerb}};

} // namespace

std::span<const Verb> analysisVerbs() {
    return kVerbs;
}

} // namespace kestrane

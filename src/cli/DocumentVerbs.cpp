#include "calc/ExposureTime.h"
#include "calc/FreqWeight.h"
#include "calc/Recalculation.h"
#include "cli/ChosenLog.h"
#include "cli/Jobs.h"
#include "cli/Json.h"
#include "cli/Verbs.h"
#include "explorer/CalculationEntries.h"
#include "explorer/Edits.h"
#include "explorer/NodeEditing.h"
#include "explorer/NodeKeys.h"
#include "model/LogParameters.h"
#include "platform/Numbers.h"
#include "views/Selection.h"

#include <algorithm>
#include <memory>

namespace kestrane {

namespace {

struct DocumentOutput {
    std::string file; // of -o; empty when not given
    bool keepsHistory = false;
};

// Saves the file when output is given, then prints the log.
int finishLog(Program& program, const ChosenLog& chosen, const DocumentOutput& output, bool withIntervals = false) {
    if (!output.file.empty() && !program.saveAs(*chosen.file, output.file)) return kFailed;
    writeLog(program.out(), *chosen.log, chosen.key, withIntervals);
    program.out() << '\n';
    return kDone;
}

void addHistory(CLI::App& verb, bool& keepsHistory) {
    verb.add_flag("--history", keepsHistory,
                  "keep the history of the document beside the output, also where it has none");
}

void addDocumentOutput(CLI::App& verb, DocumentOutput& output) {
    addOutput(verb, output.file, "save the document as this XML data file");
    addHistory(verb, output.keepsHistory);
}

// Opens the log of a verb that changes it.
std::optional<ChosenLog> openToChange(Program& program, const LogArguments& arguments, const DocumentOutput& output) {
    program.KeepsHistory = output.keepsHistory;
    return openWholeLog(program, arguments);
}

void printDocument(Program& program, clsFile& file, bool withIntervals = false) {
    writeDocument(program.out(), file, withIntervals);
    program.out() << '\n';
}

struct ShowOptions {
    std::vector<std::string> files;
    bool withIntervals = false;
};

int show(Program& program, const ShowOptions& options) {
    return program.forEachFile(options.files, [&](clsFile& file, std::size_t) {
        printDocument(program, file, options.withIntervals);
        return true;
    });
}

RunVerb showVerb(CLI::App& verb) {
    const auto options = std::make_shared<ShowOptions>();
    addFiles(verb, options->files);
    verb.add_flag("--intervals", options->withIntervals, "with the rows of every log");
    return [options](Program& program) { return show(program, *options); };
}

struct SaveOptions {
    std::vector<std::string> files;
    OutputArguments outputs;
    bool keepsHistory = false;
};

int save(Program& program, const SaveOptions& options) {
    const auto outputs = outputsOf(options.files, options.outputs, ".xml");
    program.KeepsHistory = options.keepsHistory;
    return program.forEachFile(options.files, [&](clsFile& file, std::size_t i) {
        if (!program.saveAs(file, outputs[i])) return false;
        printDocument(program, file);
        return true;
    });
}

RunVerb saveVerb(CLI::App& verb) {
    const auto options = std::make_shared<SaveOptions>();
    addFiles(verb, options->files);
    addOutputs(verb, options->outputs, "the XML data file to write");
    addHistory(verb, options->keepsHistory);
    return [options](Program& program) { return save(program, *options); };
}

struct MergeOptions {
    std::vector<std::string> files;
    DocumentOutput output;
};

int merge(Program& program, const MergeOptions& options) {
    program.KeepsHistory = options.output.keepsHistory;
    program.console.NamesFile = true;
    std::vector<clsFile*> files;
    for (const std::string& name : options.files) {
        program.console.File = name;
        clsFile* const file = program.open(name);
        if (file == nullptr) return kFailed;
        if (std::find(files.begin(), files.end(), file) != files.end()) {
            throw WrongWords(name + ": is named twice");
        }
        files.push_back(file);
    }
    program.console.File.clear();
    clsFile& into = *files.front();
    for (std::size_t i = 1; i < files.size(); ++i) {
        const clsFile& file = *files[i];
        into.History.IsWanted = into.History.IsWanted || file.History.IsWanted;
        const bool isAdded = PasteNode(program.session, fileKey(file), fileKey(into), false);
        if (!isAdded && !file.InstrumentDatas.empty()) return kFailed;
    }
    if (!program.saveAs(into, options.output.file)) return kFailed;
    printDocument(program, into);
    return kDone;
}

RunVerb mergeVerb(CLI::App& verb) {
    const auto options = std::make_shared<MergeOptions>();
    constexpr int kLeast = 2;
    verb.add_option("FILE", options->files, "data files: the logs of all are added to those of the first")
        ->required()
        ->expected(kLeast, CLI::detail::expected_max_vector_size);
    addOutput(verb, options->output.file, "the XML data file to write")->required();
    addHistory(verb, options->output.keepsHistory);
    return [options](Program& program) { return merge(program, *options); };
}

struct RecalcOptions : LogArguments {
    std::optional<std::int16_t> criterion, exchange;
    std::optional<float> exposure;
    CalcMode mode = kCalcFull;
    DocumentOutput output;
};

int recalc(Program& program, const RecalcOptions& options) {
    const auto chosen = openToChange(program, options, options.output);
    if (!chosen) return kFailed;
    clsLog& log = *chosen->log;
    const bool isNewRule = options.criterion || options.exchange || options.exposure;
    const bool isDone = editLog(log, isNewRule ? Text::StepCalculation : Text::StepRecalculation, [&] {
        setCriterion(log, {options.criterion.value_or(log.Criterion), options.exchange.value_or(log.Exchange)});
        if (options.exposure) log.objLogOptions.ExposureTime = *options.exposure;
        return program.recalculate(log, options.mode);
    });
    if (!isDone) return kFailed;
    return finishLog(program, *chosen, options.output);
}

// The exposure time in hours: a number is hours, however many digits it has. 0 when the entry is not valid.
float exposureOf(const std::string& entry) {
    if (entry.find(':') != std::string::npos) return exposureTimeHours(entry, Locale{});
    return static_cast<float>(typedNumber(entry, Locale{}).value_or(0));
}

std::string checkExposureTime(const std::string& entry) {
    return isExposureTime(exposureOf(entry)) ? "" : "above 0, at most 24 hours";
}

RunVerb recalcVerb(CLI::App& verb) {
    const auto options = std::make_shared<RecalcOptions>();
    addLog(verb, *options);
    verb.add_option("--mode", options->mode, "how to recalculate, 0 to 4; without it, 4 (everything)")
        ->check(CLI::Range(kCalcExposureTime, kCalcFull));
    verb.add_option("--criterion", options->criterion, "criterion level, dB")
        ->check(CLI::Range(kLowestEntry, kHighestCriterion));
    verb.add_option("--exchange", options->exchange, "exchange rate, dB")
        ->check(CLI::Range(kLowestEntry, kHighestExchange));
    verb.add_option_function<std::string>(
            "--exposure", [options](const std::string& entry) { options->exposure = exposureOf(entry); },
            "exposure time: hours, or hours and minutes (7:30)")
        ->check(checkExposureTime);
    addDocumentOutput(verb, options->output);
    return [options](Program& program) { return recalc(program, *options); };
}

struct ZoomOptions : LogArguments {
    std::int64_t from = 0, to = 0;
};

int zoom(Program& program, const ZoomOptions& options) {
    const auto chosen = openWholeLog(program, options);
    if (!chosen) return kFailed;
    const std::int64_t rows = chosen->log->LogIntervals.Count();
    if (!isRangeOf({options.from, options.to}, rows)) {
        program.session.ShowMessage(program.session.LoadText(Text::RangeInvalid), kIconExclamation);
        return kFailed;
    }
    const bool isWhole = options.from == 1 && options.to == rows;
    const std::unique_ptr<clsLog> copy = isWhole ? nullptr : makeZoom(*chosen->log, options.from, options.to);
    clsLog& view = isWhole ? *chosen->log : *copy;
    if (!program.recalculate(view, kCalcAfterZoom)) return kFailed;
    SetPlottableValues(view);
    writeLog(program.out(), view, chosen->key, false);
    program.out() << '\n';
    return kDone;
}

RunVerb zoomVerb(CLI::App& verb) {
    const auto options = std::make_shared<ZoomOptions>();
    addLog(verb, *options);
    verb.add_option("--from", options->from, "first row, from 1")->required();
    verb.add_option("--to", options->to, "last row")->required();
    return [options](Program& program) { return zoom(program, *options); };
}

struct CutOptions : LogArguments {
    std::string include, exclude, reason;
    DocumentOutput output;
};

int cut(Program& program, const CutOptions& options) {
    const bool toBeIncluded = !options.include.empty();
    const std::vector<RowRange> ranges = parseRowRanges(toBeIncluded ? options.include : options.exclude);
    if (ranges.empty()) {
        throw WrongWords("Ranges are written A-B, several with commas between: 1-10,25-30");
    }
    const auto chosen = openToChange(program, options, options.output);
    if (!chosen) return kFailed;
    for (const RowRange& range : ranges) {
        if (isRangeOf(range, chosen->log->LogIntervals.Count())) continue;
        program.session.ShowMessage(
            program.session.LoadText(range.From > range.To ? Text::RangeBackwards : Text::RangeInvalid),
            kIconExclamation);
        return kFailed;
    }
    const bool isDone = editLog(*chosen->log, Text::StepIntervalSelection, [&] {
        setIntervalSelection(*chosen->log, ranges, toBeIncluded);
        chosen->log->CutReason = options.reason;
        return program.recalculate(*chosen->log, kCalcFull);
    });
    if (!isDone) return kFailed;
    return finishLog(program, *chosen, options.output);
}

RunVerb cutVerb(CLI::App& verb) {
    const auto options = std::make_shared<CutOptions>();
    addLog(verb, *options);
    auto* include = verb.add_option("--include", options->include, "rows to include: A-B[,C-D...]");
    auto* exclude = verb.add_option("--exclude", options->exclude, "rows to exclude: A-B[,C-D...]");
    include->excludes(exclude);
    verb.add_option("--reason", options->reason, "why, for the history and the report");
    addDocumentOutput(verb, options->output);
    return [options](Program& program) { return cut(program, *options); };
}

struct WeightOptions : LogArguments {
    std::string weight;
    DocumentOutput output;
    bool withIntervals = false;
};

int weight(Program& program, const WeightOptions& options) {
    const auto chosen = openToChange(program, options, options.output);
    if (!chosen) return kFailed;
    clsLog& log = *chosen->log;
    const std::string before = log.FreqWeightA();
    const bool keepsRows = !options.withIntervals && log.LogIntervals.Count() > 0;
    editLog(log, Text::StepFrequencyWeighting, [&] {
        AdjustFreqWeight(log, options.weight, options.withIntervals);
        return true;
    });
    if (keepsRows && !options.output.file.empty() && log.IsOctaveLog() && log.FreqWeightA() != before)
        program.session.frame->Tell(program.session.LoadText(Text::IntervalsNotConverted));
    return finishLog(program, *chosen, options.output, options.withIntervals);
}

RunVerb weightVerb(CLI::App& verb) {
    const auto options = std::make_shared<WeightOptions>();
    addLog(verb, *options);
    verb.add_option("--to", options->weight, "the frequency weighting")
        ->required()
        ->check(CLI::IsMember({"A", "C", "Z"}));
    verb.add_flag("--intervals", options->withIntervals, "convert the rows, too, and print them");
    addDocumentOutput(verb, options->output);
    return [options](Program& program) { return weight(program, *options); };
}

int history(Program& program, const std::string& name) {
    const clsFile* const file = program.open(name);
    if (file == nullptr || !file->History.Fault.empty()) return kFailed;
    Json lines = Json::array();
    for (const HistoryLine& line : file->History.oldestFirst())
        lines.push_back({{"Time", line.Time},
                         {"What", line.What},
                         {"Log", line.Log},
                         {"Before", line.Before},
                         {"After", line.After},
                         {"Reason", line.Reason}});
    return program.print(lines);
}

RunVerb historyVerb(CLI::App& verb) {
    const auto name = std::make_shared<std::string>();
    addFile(verb, *name);
    return [name](Program& program) { return history(program, *name); };
}

constexpr Verb kVerbs[] = {
    {"show", "print the document", showVerb},
    {"save", "open any format and save the XML data file; print the document", saveVerb},
    {"merge", "add the logs of further files to the first, as dropping them on it does; save and print the document",
     mergeVerb},
    {"recalc", "change what is given, recalculate, and print the log", recalcVerb},
    {"zoom", "print the range of rows as a log of its own, recalculated", zoomVerb},
    {"cut", "set the interval selection, recalculate, and print the log", cutVerb},
    {"weight", "convert the frequency weighting of the bands, and print the log", weightVerb},
    {"history", "print what was changed in the document, the oldest change first", historyVerb},
};

} // namespace

FileJob saveJob() {
    return [](Program& program, clsFile& file, const std::string&, const std::string& output) {
        return program.saveAs(file, output);
    };
}

std::span<const Verb> documentVerbs() {
    return kVerbs;
}

} // namespace kestrane

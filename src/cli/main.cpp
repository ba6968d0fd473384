// kestrane-cli: the program without its windows. Standard output carries the result alone; what the program would show
// in a box goes to standard error. Exit status: 0 done, 1 the operation failed, 2 the call's words are wrong.
#include "app/Documents.h"
#include "app/StartUp.h"
#include "calc/Recalculation.h"
#include "cli/Json.h"
#include "explorer/CumulativePanel.h"
#include "explorer/NodeKeys.h"
#include "explorer/Selection.h"
#include "model/LogParameters.h"
#include "platform/RuntimeError.h"
#include "platform/qt/IniSettings.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <map>
#include <memory>
#include <optional>

namespace kestrane {

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongWords = 2;

struct GlobalOptions {
    std::string company = KESTRANE_COMPANY;
    std::string settingsFile;
    std::optional<std::string> decimalSeparator, dateSeparator;
    std::optional<std::string> answer;
    bool isQuiet = false;
};

struct VerbOptions {
    std::vector<std::string> files;
    std::vector<int> ids;
    std::string log;
    std::string output;
    bool withIntervals = false;
    std::optional<std::int16_t> filesOnTree, criterion, exchange;
    std::optional<float> exposure;
    int mode = kCalcFull;
    std::int64_t from = 0, to = 0;
    std::string include, exclude;
};

// The panel of errors is all that a program without windows shows of the frame.
class ConsoleFrame : public Frame {
public:
    void SetPanel(Panel panel, const std::string& text) override {
        if (panel == Panel::Error && !text.empty()) std::cerr << text << '\n';
    }
};

// The program's session for one call.
class Program {
public:
    explicit Program(const GlobalOptions& options) :
        settings_(settingsOf(options)),
        messages_(std::cerr, answerOf(options)),
        server_(pump_),
        session(options.company, localeOf(options), settings_, messages_, pump_, clock_) {
        session.frame = &frame_;
        session.server = &server_;
        readSettings(session);
    }

    // Opens a file and waits for all work behind it. Null when it did not open; the reason has been shown.
    clsFile* open(const std::string& name) {
        if (!OpenFile(session, fullPath(name), OpenSource::Named, true)) return nullptr;
        pump_.runUntil([&] { return noLogIsBusy(session); });
        return session.OpenFiles.back().get();
    }

    void recalculate(clsLog& log, int mode) {
        RecalcValues(log, mode);
        pump_.runUntil([&] { return !log.IntervalsRecalculating; });
    }

private:
    static IniSettings settingsOf(const GlobalOptions& options) {
        if (!options.settingsFile.empty()) return IniSettings::ofFile(options.settingsFile);
        const std::string name = LoadSoftwareByFirm(options.company).SettingsAppName;
        return IniSettings::ofApplication(name.empty() ? std::string(kApplicationTitle) : name);
    }

    static Locale localeOf(const GlobalOptions& options) {
        Locale locale = systemLocale();
        if (options.decimalSeparator) locale.DecimalSeparator = *options.decimalSeparator;
        if (options.dateSeparator) locale.DateSeparator = *options.dateSeparator;
        return locale;
    }

    static std::optional<Button> answerOf(const GlobalOptions& options) {
        static const std::map<std::string, Button> kAnswers = {{"yes", Button::Yes},
                                                               {"no", Button::No},
                                                               {"ok", Button::Ok},
                                                               {"cancel", Button::Cancel},
                                                               {"retry", Button::Retry}};
        return options.answer ? std::optional(kAnswers.at(*options.answer)) : std::nullopt;
    }

    IniSettings settings_;
    ConsoleMessages messages_;
    HeadlessEventPump pump_;
    SystemClock clock_;
    ConsoleFrame frame_;
    BackgroundServer server_;

public:
    Session session; // last: the logs go before the server that works for them
};

// A log of an opened file, with its key.
struct ChosenLog {
    clsFile* file = nullptr;
    clsLog* log = nullptr;
    std::string key;
};

std::optional<std::string> firstLogKey(const std::vector<TreeNode>& nodes) {
    for (const TreeNode& node : nodes) {
        if (isLogKind(node.Key)) return node.Key;
        if (const auto key = firstLogKey(node.Children)) return key;
    }
    return std::nullopt;
}

std::optional<ChosenLog> openLog(Program& program, const VerbOptions& options) {
    ChosenLog chosen;
    chosen.file = program.open(options.files.front());
    if (chosen.file == nullptr) return std::nullopt;
    chosen.key = options.log.empty() ? firstLogKey(buildTree(program.session)).value_or(std::string()) : options.log;
    chosen.log = resolve(program.session, chosen.key).log;
    if (chosen.log == nullptr) {
        const std::string& name = options.log.empty() ? chosen.file->FileName : options.log;
        program.session.ShowMessage(ReplaceText(program.session.LoadText(8806), "^", name), kIconExclamation);
        return std::nullopt;
    }
    return chosen;
}

bool saveAs(Program& program, clsFile& file, const std::string& output) {
    return SaveFile(program.session, file, true, [&](const std::string&) { return std::optional(fullPath(output)); });
}

// Saves when asked to, then prints the log.
int finishLog(Program& program, const VerbOptions& options, const ChosenLog& chosen) {
    if (!options.output.empty() && !saveAs(program, *chosen.file, options.output)) return kFailed;
    writeLog(std::cout, *chosen.log, chosen.key, options.withIntervals);
    std::cout << '\n';
    return kDone;
}

int show(Program& program, const VerbOptions& options) {
    clsFile* file = program.open(options.files.front());
    if (file == nullptr) return kFailed;
    if (!options.output.empty() && !saveAs(program, *file, options.output)) return kFailed;
    writeDocument(std::cout, *file, options.withIntervals);
    std::cout << '\n';
    return kDone;
}

int tree(Program& program, const VerbOptions& options) {
    if (options.filesOnTree) program.session.Options.FilesOnTreeView = *options.filesOnTree;
    bool isOpen = true;
    for (const std::string& name : options.files)
        isOpen = program.open(name) != nullptr && isOpen;
    if (!isOpen) return kFailed;
    std::cout << treeJson(buildTree(program.session)).dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    return kDone;
}

int recalc(Program& program, const VerbOptions& options) {
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    clsLog& log = *chosen->log;
    if (options.criterion) log.Criterion = *options.criterion;
    if (options.exchange) log.Exchange = *options.exchange;
    if (options.exposure) log.objLogOptions.ExposureTime = *options.exposure;
    program.recalculate(log, options.mode);
    return finishLog(program, options, *chosen);
}

int zoom(Program& program, const VerbOptions& options) {
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    const std::int64_t rows = chosen->log->LogIntervals.Count();
    if (!isRangeOf({options.from, options.to}, rows)) {
        program.session.ShowMessage(program.session.LoadText(4541), kIconExclamation);
        return kFailed;
    }
    const bool isWhole = options.from == 1 && options.to == rows;
    const std::unique_ptr<clsLog> copy = isWhole ? nullptr : makeZoom(*chosen->log, options.from, options.to);
    clsLog& view = isWhole ? *chosen->log : *copy;
    program.recalculate(view, kCalcAfterZoom);
    SetPlottableValues(view);
    writeLog(std::cout, view, chosen->key, options.withIntervals);
    std::cout << '\n';
    return kDone;
}

int cut(Program& program, const VerbOptions& options) {
    const bool toBeIncluded = !options.include.empty();
    const std::vector<RowRange> ranges = parseRowRanges(toBeIncluded ? options.include : options.exclude);
    if (ranges.empty()) {
        std::cerr << "Ranges are written A-B, several with commas between: 1-10,25-30\n";
        return kWrongWords;
    }
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    for (const RowRange& range : ranges) {
        if (isRangeOf(range, chosen->log->LogIntervals.Count())) continue;
        program.session.ShowMessage(program.session.LoadText(range.From > range.To ? 7013 : 4541), kIconExclamation);
        return kFailed;
    }
    setIntervalSelection(*chosen->log, ranges, toBeIncluded);
    program.recalculate(*chosen->log, kCalcFull);
    return finishLog(program, options, *chosen);
}

int text(Program& program, const VerbOptions& options) {
    Json texts = Json::object();
    for (const int id : options.ids)
        texts[std::to_string(id)] = program.session.LoadText(id);
    std::cout << texts.dump() << '\n';
    return kDone;
}

int panel(Program& program, const VerbOptions& options) {
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    Json labels = Json::object();
    for (const PanelLabel& label : shownLabels(*chosen->log, 0))
        labels[label.Name] = label.Text;
    std::cout << labels.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    return kDone;
}

void addFile(CLI::App& verb, VerbOptions& options) {
    verb.add_option("FILE", options.files, "a data file")->required()->expected(1);
}

void addLog(CLI::App& verb, VerbOptions& options) {
    addFile(verb, options);
    verb.add_option("--log", options.log, "the log's tree node key, such as L1I1F1; without it, the first log");
}

void addOutput(CLI::App& verb, VerbOptions& options) {
    verb.add_option("-o", options.output, "save the document as this XML data file");
}

// A verb is its name, what it says of itself, its options, and what it does.
struct Verb {
    const char* name;
    const char* description;
    void (*addOptions)(CLI::App&, VerbOptions&);
    int (*run)(Program&, const VerbOptions&);
};

const Verb kVerbs[] = {
    {"show", "print the document",
     [](CLI::App& verb, VerbOptions& o) {
         addFile(verb, o);
         verb.add_flag("--intervals", o.withIntervals, "with the rows of every log");
     },
     show},
    {"tree", "print the explorer tree",
     [](CLI::App& verb, VerbOptions& o) {
         verb.add_option("FILE", o.files, "data files")->required();
         verb.add_option("--files-on-tree", o.filesOnTree, "0 as nodes, 1 beside the names, 2 not at all")
             ->check(CLI::Range(0, 2));
     },
     tree},
    {"save", "open any format and save the XML data file; print the document",
     [](CLI::App& verb, VerbOptions& o) {
         addFile(verb, o);
         verb.add_option("-o", o.output, "the XML data file to write")->required();
     },
     show},
    {"recalc", "change what is given, recalculate, and print the log",
     [](CLI::App& verb, VerbOptions& o) {
         addLog(verb, o);
         verb.add_option("--mode", o.mode, "how to recalculate, 0 to 4; without it, 4 (everything)");
         verb.add_option("--criterion", o.criterion, "criterion level, dB");
         verb.add_option("--exchange", o.exchange, "exchange rate, dB");
         verb.add_option("--exposure", o.exposure, "exposure time, hours")->check(CLI::NonNegativeNumber);
         addOutput(verb, o);
     },
     recalc},
    {"zoom", "print the range of rows as a log of its own, recalculated",
     [](CLI::App& verb, VerbOptions& o) {
         addLog(verb, o);
         verb.add_option("--from", o.from, "first row, from 1")->required();
         verb.add_option("--to", o.to, "last row")->required();
     },
     zoom},
    {"cut", "set the interval selection, recalculate, and print the log",
     [](CLI::App& verb, VerbOptions& o) {
         addLog(verb, o);
         auto* include = verb.add_option("--include", o.include, "rows to include: A-B[,C-D...]");
         auto* exclude = verb.add_option("--exclude", o.exclude, "rows to exclude: A-B[,C-D...]");
         include->excludes(exclude);
         addOutput(verb, o);
     },
     cut},
    {"text", "print texts of the text table",
     [](CLI::App& verb, VerbOptions& o) { verb.add_option("ID", o.ids, "numbers of texts")->required(); }, text},
    {"panel", "print the labels of the \"Cumultv (Data)\" tab that show a value", addLog, panel},
};

int runVerb(const Verb& verb, const GlobalOptions& globals, const VerbOptions& options) {
    try {
        Program program(globals);
        const int status = verb.run(program, options);
        std::cout.flush();
        if (status == kDone && !std::cout) {
            std::cerr << "The result could not be written.\n";
            return kFailed;
        }
        return status;
    } catch (const RuntimeError& error) {
        std::cerr << kApplicationTitle << ": " << error.Number << ": " << error.what() << '\n';
    } catch (const std::exception& error) {
        std::cerr << kApplicationTitle << ": " << error.what() << '\n';
    }
    return kFailed;
}

int run(int argc, char** argv) {
    GlobalOptions globals;
    VerbOptions options;
    const Verb* chosen = nullptr;
    CLI::App app("Noise analysis without windows", "kestrane-cli");
    app.set_version_flag("--version", "kestrane-cli " KESTRANE_VERSION_TEXT);
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--company", globals.company, "company name of the version data, which chooses the brand");
    app.add_option("--settings", globals.settingsFile, "the settings store: this INI file");
    app.add_option("--decimal-separator", globals.decimalSeparator, "in place of the locale's");
    app.add_option("--date-separator", globals.dateSeparator, "in place of the locale's");
    app.add_option("--answer", globals.answer, "the button pressed on every question")
        ->check(CLI::IsMember({"yes", "no", "ok", "cancel", "retry"}));
    app.add_flag("--quiet", globals.isQuiet, "no progress on standard error");
    for (const Verb& verb : kVerbs) {
        CLI::App* sub = app.add_subcommand(verb.name, verb.description);
        verb.addOptions(*sub, options);
        sub->callback([&chosen, &verb] { chosen = &verb; });
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kWrongWords;
    }
    return runVerb(*chosen, globals, options);
}

} // namespace

} // namespace kestrane

int main(int argc, char** argv) {
    return kestrane::run(argc, argv);
}

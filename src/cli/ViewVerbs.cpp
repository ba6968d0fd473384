#include "calc/NoiseRating.h"
#include "cli/ChosenLog.h"
#include "cli/Comparing.h"
#include "cli/Json.h"
#include "cli/Verbs.h"
#include "explorer/ExplorerTree.h"
#include "platform/Files.h"
#include "views/CumulativePanel.h"
#include "views/DisplayBy.h"
#include "views/IntervalTable.h"
#include "views/LogTabs.h"
#include "views/Selection.h"
#include "views/TimeChart.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>

namespace kestrane {

namespace {

int nothingToShow(Session& session) {
    session.ShowMessage(session.LoadText(Text::NoAvailableData), kIconExclamation);
    return kFailed;
}

struct TreeOptions {
    std::vector<std::string> files;
    std::optional<std::int16_t> filesOnTree;
};

int tree(Program& program, const TreeOptions& options) {
    if (options.filesOnTree) program.session.Options.FilesOnTreeView = *options.filesOnTree;
    program.console.NamesFile = options.files.size() > 1;
    bool areAllOpen = true;
    for (const std::string& name : options.files) {
        program.console.File = name;
        areAllOpen = program.open(name) != nullptr && areAllOpen;
    }
    program.console.File.clear();
    if (!program.session.OpenFiles.empty()) program.print(treeJson(buildTree(program.session)));
    return areAllOpen ? kDone : kFailed;
}

RunVerb treeVerb(CLI::App& verb) {
    const auto options = std::make_shared<TreeOptions>();
    addFiles(verb, options->files);
    verb.add_option("--files-on-tree", options->filesOnTree, "0 as nodes, 1 beside the names, 2 not at all")
        ->check(CLI::Range(0, 2));
    return [options](Program& program) { return tree(program, *options); };
}

RunVerb textVerb(CLI::App& verb) {
    const auto ids = std::make_shared<std::vector<int>>();
    verb.add_option("ID", *ids, "numbers of texts")->required();
    return [ids](Program& program) {
        Json texts = Json::object();
        for (const int id : *ids)
            texts[std::to_string(id)] = program.session.LoadText(Text::Id{id});
        return program.print(texts);
    };
}

struct PanelOptions {
    std::vector<std::string> files;
    std::string log;
};

int panel(Program& program, const PanelOptions& options) {
    return program.forEachFile(options.files, [&](clsFile& file, std::size_t) {
        const auto chosen = chooseLog(program, file, options.log);
        if (!chosen) return false;
        Json labels = Json::object();
        if (options.files.size() > 1) labels["FileName"] = file.FileName;
        for (const PanelLabel& label : shownLabels(*chosen->log, 0))
            labels[label.Name] = valueText(label, {});
        program.print(labels);
        return true;
    });
}

RunVerb panelVerb(CLI::App& verb) {
    const auto options = std::make_shared<PanelOptions>();
    addFiles(verb, options->files);
    addLogKey(verb, options->log);
    return [options](Program& program) { return panel(program, *options); };
}

// Either one band of all parameters, or all bands of one parameter.
struct ChoiceOptions : LogArguments {
    std::string band, parameter;
};

void addChoice(CLI::App& verb, ChoiceOptions& options) {
    auto* band = verb.add_option("--freq", options.band, "all parameters at one band, such as 1k");
    auto* parameter = verb.add_option("--param", options.parameter, "all bands of the parameter with this caption");
    band->excludes(parameter);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::vector<std::string> bandsOf(const clsLog& log) {
    std::vector<std::string> bands;
    for (int band = 1; band <= lastBand(log.Mode()); ++band)
        bands.emplace_back(log.eStr(band));
    return bands;
}

std::vector<std::string> parametersOf(const clsLog& log) {
    std::vector<std::string> captions;
    for (const DisplayEntry& entry : displayByList(log, kByParam))
        captions.push_back(entry.Text);
    return captions;
}

// The message for a choice that the log does not offer; empty when it does.
std::string hintOfChoice(const clsLog& log, const ChoiceOptions& options) {
    const bool isBand = !options.band.empty();
    const std::string& word = isBand ? options.band : options.parameter;
    if (word.empty()) return {};
    if (!log.IsOctaveLog()) return "A broadband log has no bands to choose.";
    const std::vector<std::string> offered = isBand ? bandsOf(log) : parametersOf(log);
    if (std::find(offered.begin(), offered.end(), word) != offered.end()) return {};
    return "'" + word + "' is none of " + joined(offered);
}

DisplayChoice choiceOf(const clsLog& log, const ChoiceOptions& options) {
    if (!options.band.empty()) return {options.band, kNoParameter};
    for (const DisplayEntry& entry : displayByList(log, kByParam))
        if (entry.Text == options.parameter) return entry.Choice;
    return {};
}

struct TableOptions : ChoiceOptions {
    std::string channel = "A";
};

int table(Program& program, const TableOptions& options) {
    const bool isB = options.channel == "B";
    if (isB && !(options.band.empty() && options.parameter.empty())) throw WrongWords("Channel B has no bands.");
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    const clsLog& log = *chosen->log;
    if (isB && !log.IsChannelBOn) throw WrongWords("The log has no channel B.");
    if (const std::string hint = hintOfChoice(log, options); !hint.empty()) throw WrongWords(hint);
    const IntervalTable shown(log, isB ? kChannelB : kChannelA, choiceOf(log, options));
    if (shown.rowCount() == 0) return nothingToShow(program.session);
    shown.write(program.out());
    return kDone;
}

RunVerb tableVerb(CLI::App& verb) {
    const auto options = std::make_shared<TableOptions>();
    addLog(verb, *options);
    addChoice(verb, *options);
    verb.add_option("--channel", options->channel, "A or B; without it, A")->check(CLI::IsMember({"A", "B"}));
    return [options](Program& program) { return table(program, *options); };
}

int noiseRatingOf(Program& program, const LogArguments& arguments) {
    const auto chosen = openLog(program, arguments);
    if (!chosen) return kFailed;
    const NoiseRating rating = noiseRating(*chosen->log);
    if (rating.Rows.empty()) return nothingToShow(program.session);
    Json rows = Json::array();
    for (const clsNoiseRating& row : rating.Rows) {
        const float level = row.Levels.back().SoundLevel();
        Json curve = Json::array();
        for (const clsNoiseRatingLevel& point : row.Levels) {
            if (point.Parent != nullptr) curve.push_back(singleJson(point.SoundLevel()));
        }
        rows.push_back({{"Frequency", row.Frequency()},
                        {"Multiplier", singleJson(row.Multiplier)},
                        {"ConstantNumber", singleJson(row.ConstantNumber)},
                        {"Leq", singleJson(level)},
                        {"Rating", singleJson(row.Rating(level))},
                        {"Curve", std::move(curve)}});
    }
    const std::optional<double> byCurves = ratingByCurves(*chosen->log);
    return program.print({{"Level", rating.Level},
                          {"CurveLevel", byCurves ? Json(*byCurves) : Json(nullptr)},
                          {"Rows", std::move(rows)}});
}

RunVerb noiseRatingVerb(CLI::App& verb) {
    const auto arguments = std::make_shared<LogArguments>();
    addLog(verb, *arguments);
    return [arguments](Program& program) { return noiseRatingOf(program, *arguments); };
}

struct ChartOptions : ChoiceOptions, CompareArguments {
    int tab = eTabFullLog; // LogTab
    std::int64_t interval = 1;
    std::string display = "dB";
    bool is3D = false;
    bool asValues = false;
    std::string picture;
    PictureSize size;
    int dpi = static_cast<int>(kDotsOfInch);
};

// "1000x650", or "16cmx9cm"; what is wrong with it, or nothing.
std::string readSize(const std::string& text, PictureSize& size) {
    const auto read = [](std::string_view word, double& dots) {
        const bool isPaper = word.ends_with("cm");
        if (isPaper) word.remove_suffix(2);
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), dots);
        if (isPaper) dots *= kDotsOfCentimetre;
        return error == std::errc() && end == word.data() + word.size() && isSideOfPicture(dots) &&
               (isPaper || dots == std::floor(dots));
    };
    const std::size_t by = text.find('x');
    const std::string_view words = text;
    if (by != std::string::npos && read(words.substr(0, by), size.Width) && read(words.substr(by + 1), size.Height))
        return {};
    return "width and height in pixels, such as 1000x650, each from 50 to 20000, or on paper, such as 16cmx9cm";
}

std::string checkPictureName(const std::string& path) {
    return openFileNumber(outputPath(path)) || !pictureEnding(path).empty()
               ? ""
               : "a picture's name ends in .png, .svg or .pdf";
}

std::vector<int> chartTabs() {
    std::vector<int> tabs;
    for (const LogTab tab : kAllLogTabs)
        if (tabRow(tab).Chart != nullptr) tabs.push_back(tab);
    return tabs;
}

// Returns false when the user does not want to wait for a long chart in 3D.
bool isWanted(Session& session, const clsLog& log, LogTab tab, const ChartData& chart) {
    if (!tabRow(tab).IsOverTime || !isAskedBefore3D(log, chart.Style)) return true;
    return session.ShowMessage(session.LoadText(Text::Ask3DTakesTime), kButtonsYesNo | kIconQuestion) == Button::Yes;
}

int draw(Program& program, const ChartData& data, const ChartOptions& options) {
    if (options.asValues) {
        program.out() << chartValuesText(data, program.session.locale);
        return kDone;
    }
    const PictureSize size = {options.size.Width, options.size.Height, options.dpi / kDotsOfInch};
    if (hasTooManyPixels(options.picture, size))
        throw WrongWords("a picture has at most " + std::to_string(static_cast<int>(kMostPixels)) + " pixels each way");
    Drawing* const drawing = program.drawing();
    if (drawing == nullptr) return kFailed;
    const bool isWritten = program.write(options.picture, [&](const std::string& path) {
        drawing->savePicture(data, program.session.locale, path, size);
    });
    return isWritten ? kDone : kFailed;
}

int chart(Program& program, const ChartOptions& options) {
    if (!options.picture.empty()) keepFilesFrom({options.picture}, {options.file});
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    Session& session = program.session;
    const clsLog& log = *chosen->log;
    if (const std::string hint = hintOfChoice(log, options); !hint.empty()) throw WrongWords(hint);
    const auto tab = static_cast<LogTab>(options.tab);
    const LogPanels& panels = tabRow(tab).Panels;
    const std::int64_t rows = log.LogIntervals.Count();
    if (panels.IntervalList && rows > 0 && !isRangeOf({options.interval, options.interval}, rows)) {
        session.ShowMessage(session.LoadText(Text::RangeInvalid), kIconExclamation);
        return kFailed;
    }
    std::optional<HPDComparison> compared;
    if (panels.Protector) {
        if (options.protector.empty()) throw WrongWords("Tab 5 needs a --protector.");
        compared = compareLog(program, log, options);
        if (!compared) return kFailed;
    }
    const DisplayMode axis = options.display == "%" ? kByPercent : kByDecibels;
    auto data = chartOfTab(log, tab, {choiceOf(log, options), axis, options.interval, compared ? &*compared : nullptr});
    if (!data) return nothingToShow(session);
    if (options.is3D) data->Style = eChartAs3D;
    if (!isWanted(session, log, tab, *data)) return kFailed;
    return draw(program, *data, options);
}

RunVerb chartVerb(CLI::App& verb) {
    const auto options = std::make_shared<ChartOptions>();
    addLog(verb, *options);
    addChoice(verb, *options);
    verb.add_option("--tab", options->tab,
                    "0 full log, 2 an interval, 3 cumulative, 4 noise rating, 5 compared with a protector")
        ->required()
        ->check(CLI::IsMember(chartTabs()));
    addComparing(verb, *options);
    addProtector(verb, *options);
    addDatabase(verb, *options);
    verb.add_option("--interval", options->interval, "the row that tab 2 shows, from 1; without it, the first");
    verb.add_option("--display", options->display, "what tabs 2 and 3 show: levels (dB) or dose and Pa2Hr (%)")
        ->check(CLI::IsMember({"dB", "%"}));
    verb.add_flag("--3d", options->is3D, "in 3D");
    verb.add_option("--size", "of the picture, in pixels or on paper: 1000x650 (without it), 16cmx9cm")
        ->type_name("WxH")
        ->check([options](const std::string& text) { return readSize(text, options->size); });
    verb.add_option("--dpi", options->dpi, "pixels per inch of a .png picture")
        ->check(CLI::Range(kLowestResolution, kHighestResolution));
    auto* output = verb.add_option_group("output")->require_option(1);
    addOutput(*output, options->picture, "write a picture: .png, .svg or .pdf")->check(checkPictureName);
    output->add_flag("--values", options->asValues, "print the chart's data");
    return [options](Program& program) { return chart(program, *options); };
}

constexpr Verb kVerbs[] = {
    {"tree", "print the explorer tree", treeVerb},
    {"panel", "print the labels of the \"Cumultv (Data)\" tab that show a value", panelVerb},
    {"table", "print the \"Intervals (Table)\" grid, tabs between cells", tableVerb},
    {"chart", "draw what a chart tab shows, or print its values", chartVerb},
    {"noise-rating", "print the noise rating of an octave log", noiseRatingVerb},
    {"text", "print texts of the text table", textVerb},
};

} // namespace

std::span<const Verb> viewVerbs() {
    return kVerbs;
}

} // namespace kestrane

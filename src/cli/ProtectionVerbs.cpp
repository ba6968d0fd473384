#include "app/StartUp.h"
#include "calc/ExposureCalculator.h"
#include "cli/ChosenLog.h"
#include "cli/Json.h"
#include "cli/Verbs.h"
#include "explorer/HPDComparison.h"
#include "platform/RuntimeError.h"
#include "protection/Attenuation.h"
#include "protection/ProtectorDatabase.h"

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <map>
#include <memory>

namespace kestrane {

namespace {

int print(const Json& json) {
    std::cout << json.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    return kDone;
}

int exposure(Program& program, const LogArguments& arguments) {
    const auto chosen = openLog(program, arguments);
    if (!chosen) return kFailed;
    fillExposureRows(*chosen->log);
    const DoseTotals totals = doseTotals(*chosen->log);
    return print({{"Rows", exposureJson(*chosen->log)},
                  {"TotalLeq", singleJson(totals.Leq.Value())},
                  {"TotalDuration", totals.Duration.hh_mm_ss()},
                  {"TotalLex", singleJson(totals.Lex.Value())},
                  {"TotalDose", singleJson(totals.Dose.Value())}});
}

RunVerb exposureVerb(CLI::App& verb) {
    const auto arguments = std::make_shared<LogArguments>();
    addLog(verb, *arguments);
    return [arguments](Program& program) { return exposure(program, *arguments); };
}

Json bandsJson(const clsHP& hp, float (clsHP::*figure)(int) const) {
    Json bands = Json::array();
    for (int i = 1; i <= kProtectorBands; ++i)
        bands.push_back(singleJson((hp.*figure)(i)));
    return bands;
}

Json protectorJson(const clsHP& hp) {
    return {{"HPDId", hp.HPDId},
            {"Name", hp.Name},
            {"Tipe", hp.Tipe},
            {"High", singleJson(hp.High)},
            {"Medium", singleJson(hp.Medium)},
            {"Low", singleJson(hp.Low)},
            {"SNR", singleJson(hp.SNR)},
            {"NRR", singleJson(hp.NRR)},
            {"Mean", bandsJson(hp, &clsHP::Mean)},
            {"SD", bandsJson(hp, &clsHP::SD)},
            {"MeanUS", bandsJson(hp, &clsHP::MeanUS)},
            {"SDUS", bandsJson(hp, &clsHP::SDUS)}};
}

// The database given, else the one in use. Nothing when it cannot be read; the reason has been shown.
std::optional<std::vector<clsHP>> openDatabase(Session& session, const std::string& given) {
    const std::string path = given.empty() ? protectorDatabase() : given;
    std::vector<clsHP> protectors;
    try {
        loadProtectors(path, protectors);
        return protectors;
    } catch (const RuntimeError& error) {
        const bool isMissing = error.Number == ENOENT;
        session.ShowMessage(isMissing ? ReplaceText(session.LoadText(8801), "^", path)
                                      : std::to_string(error.Number) + ": " + error.what(),
                            kIconExclamation);
        return std::nullopt;
    }
}

int list(Program& program, const std::string& database) {
    const auto protectors = openDatabase(program.session, database);
    if (!protectors) return kFailed;
    Json records = Json::array();
    for (const clsHP& hp : *protectors)
        records.push_back(protectorJson(hp));
    return print(records);
}

int save(Program& program, const std::string& database, const std::string& output) {
    const auto protectors = openDatabase(program.session, database);
    if (!protectors) return kFailed;
    saveProtectors(output, *protectors);
    return kDone;
}

struct CompareOptions : LogArguments {
    std::string database, protector;
    std::string mode = "hse";
    std::string method = "Auto";
    int correction = kCorrectionNone;
};

const std::map<std::string, std::int16_t> kModes = {
    {"hse", eHPDModeEUHSE}, {"osha", eHPDModeUSOSHA}, {"niosh", eHPDModeUSNIOSH}};
constexpr const char* kGrades[] = {"green", "orange", "red"};

Json comparisonJson(const HPDComparison& comparison) {
    Json panel = Json::array();
    for (const auto& [label, text] : comparison.Panel)
        panel.push_back({label, text});
    Json bars = Json::array();
    for (const ComparisonBar& bar : comparison.Bars) {
        if (comparison.isByOctaves()) {
            bars.push_back(
                {{"Label", bar.Label}, {"Without", singleJson(bar.Without)}, {"With", singleJson(bar.With)}});
        } else {
            bars.push_back({{"Label", bar.Label}, {"Level", singleJson(bar.Without)}});
        }
    }
    return {{"Method", comparison.Method},
            {"LevelName", comparison.LevelName},
            {"Result", singleJson(comparison.Result)},
            {"Grade", kGrades[static_cast<int>(comparison.Grade)]},
            {"ExceedsLimit", comparison.ExceedsLimit},
            {"ChartTitle", comparison.ChartTitle},
            {"ResultLine", comparison.ResultLine},
            {"Footnote", comparison.Footnote},
            {"Panel", panel},
            {"Bars", bars}};
}

int compare(Program& program, const CompareOptions& options) {
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    const auto protectors = openDatabase(program.session, options.database);
    if (!protectors) return kFailed;
    const auto hp = std::find_if(protectors->begin(), protectors->end(),
                                 [&](const clsHP& record) { return record.Name == options.protector; });
    if (hp == protectors->end()) {
        program.session.ShowMessage(ReplaceText(program.session.LoadText(8808), "^", options.protector),
                                    kIconExclamation);
        return kFailed;
    }
    clsOptions calculation = program.session.Options;
    calculation.HPDCalc = kModes.at(options.mode);
    calculation.HPDCalcMethod = options.method;
    return print(comparisonJson(compareWithProtector(*chosen->log, *hp, calculation, options.correction)));
}

// What runs is the verb's verb that was called.
RunVerb protectorsVerb(CLI::App& verb) {
    const auto chosen = std::make_shared<RunVerb>();
    const auto options = std::make_shared<CompareOptions>();
    const auto output = std::make_shared<std::string>();
    verb.require_subcommand(1);
    const auto add = [&](const char* name, const char* description, RunVerb run) {
        CLI::App* sub = verb.add_subcommand(name, description);
        sub->add_option("--database", options->database, "a protector database, in place of the one in use");
        sub->callback([chosen, run = std::move(run)] { *chosen = run; });
        return sub;
    };
    add("list", "print the records", [options](Program& program) { return list(program, options->database); });
    CLI::App* comparing = add("compare", "compare a log with a protector",
                              [options](Program& program) { return compare(program, *options); });
    addLog(*comparing, *options);
    comparing->add_option("--protector", options->protector, "name of the record")->required();
    comparing->add_option("--mode", options->mode, "hse, osha or niosh")
        ->check(CLI::IsMember({"hse", "osha", "niosh"}));
    comparing->add_option("--method", options->method, "Auto, HML, SNR or NRR")
        ->check(CLI::IsMember({"Auto", "HML", "SNR", "NRR"}));
    comparing->add_option("--correction", options->correction, "0 none, 1 two deviations, 2 4 dB, 3 one deviation")
        ->check(CLI::Range(kCorrectionNone, kCorrectionOneDeviation));
    CLI::App* saving = add("save", "load and rewrite the database",
                           [options, output](Program& program) { return save(program, options->database, *output); });
    saving->add_option("-o", *output, "the file to write")->required();
    return [chosen](Program& program) { return (*chosen)(program); };
}

constexpr Verb kVerbs[] = {
    {"exposure", "print the exposure calculator's rows and totals", exposureVerb},
    {"protectors", "list, compare and save hearing protectors", protectorsVerb},
};

} // namespace

std::span<const Verb> protectionVerbs() {
    return kVerbs;
}

} // namespace kestrane

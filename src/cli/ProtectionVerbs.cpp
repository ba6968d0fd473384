#include "app/DownloadHPD.h"
#include "app/StartUp.h"
#include "calc/ExposureCalculator.h"
#include "cli/ChosenLog.h"
#include "cli/Comparing.h"
#include "cli/Json.h"
#include "cli/Toolkit.h"
#include "cli/Verbs.h"
#include "protection/ProtectorDatabase.h"
#include "protection/Ranking.h"

#include <memory>

namespace kestrane {

namespace {

int exposure(Program& program, const LogArguments& arguments) {
    const auto chosen = openLog(program, arguments);
    if (!chosen) return kFailed;
    fillExposureRows(*chosen->log);
    const DoseTotals totals = doseTotals(*chosen->log);
    return program.print({{"Rows", exposureJson(*chosen->log)},
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

int list(Program& program, const std::string& database) {
    const auto protectors = openDatabase(program.session, database);
    if (!protectors) return kFailed;
    Json records = Json::array();
    for (const clsHP& hp : protectors->Protectors)
        records.push_back(protectorJson(hp));
    return program.print(records);
}

int save(Program& program, const std::string& database, const std::string& output) {
    const auto protectors = openDatabase(program.session, database);
    if (!protectors) return kFailed;
    return SaveReadable(program.session, *protectors, outputPath(output)) ? kDone : kFailed;
}

struct CompareOptions : LogArguments, CompareArguments {};

Json standardJson(const std::vector<StandardFigure>& figures) {
    Json list = Json::array();
    for (const StandardFigure& figure : figures) {
        list.push_back({{"Method", figure.Method},
                        {"Level", figure.Level},
                        {"Rounded", figure.Rounded()},
                        {"Plus4", figure.Plus4()}});
    }
    return list;
}

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
            {"Bars", bars},
            {"Standard", standardJson(comparison.Standard)},
            {"Verdict", verdictName(comparison.Verdict)}};
}

int compare(Program& program, const CompareOptions& options) {
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    const auto comparison = compareLog(program, *chosen->log, options);
    return comparison ? program.print(comparisonJson(*comparison)) : kFailed;
}

int rank(Program& program, const CompareOptions& options) {
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    const auto protectors = openDatabase(program.session, options.database);
    if (!protectors) return kFailed;
    Json list = Json::array();
    for (const RankedProtector& ranked :
         rankProtectors(*chosen->log, protectors->Protectors, comparisonOptions(program, options),
                        static_cast<CorrectionKind>(options.correction))) {
        list.push_back({{"Name", ranked.Protector->Name},
                        {"Type", ranked.Protector->GetTipeStr()},
                        {"Method", ranked.Method},
                        {"Result", singleJson(ranked.Result)},
                        {"Standard", ranked.Standard ? Json(*ranked.Standard) : Json(nullptr)},
                        {"Verdict", verdictName(ranked.Verdict)}});
    }
    return program.print(list);
}

int update(Program& program, const std::string& database) {
    Session& session = program.session;
    ProtectorCollection collection = protectorsIn(database);
    session.protectors = &collection;
    return withLoop([&](EventPump&) {
        HPDProgress unseen;
        return program.reachServers() && DownloadHPD(session, unseen, false) ? kDone : kFailed;
    });
}

// Runs the verb of this verb that was called.
RunVerb protectorsVerb(CLI::App& verb) {
    const auto chosen = std::make_shared<RunVerb>();
    const auto options = std::make_shared<CompareOptions>();
    const auto output = std::make_shared<std::string>();
    const auto url = std::make_shared<std::string>();
    verb.require_subcommand(1);
    const auto add = [&](const char* name, const char* description, RunVerb run) {
        CLI::App* sub = verb.add_subcommand(name, description);
        addDatabase(*sub, *options);
        sub->callback([chosen, run = std::move(run)] { *chosen = run; });
        return sub;
    };
    add("list", "print the records", [options](Program& program) { return list(program, options->database); });
    CLI::App* comparing = add("compare", "compare a log with a protector",
                              [options](Program& program) { return compare(program, *options); });
    addLog(*comparing, *options);
    addComparing(*comparing, *options);
    addProtector(*comparing, *options)->required();
    CLI::App* ranking = add("rank", "compare a log with every protector, best first",
                            [options](Program& program) { return rank(program, *options); });
    addLog(*ranking, *options);
    addComparing(*ranking, *options);
    CLI::App* saving = add("save", "load and rewrite the database",
                           [options, output](Program& program) { return save(program, options->database, *output); });
    addOutput(*saving, *output, "the file to write")->required();
    CLI::App* updating =
        add("update", "replace the database by the one at an address", [options, url](Program& program) {
            if (!url->empty()) program.session.Options.HPDAddress = *url;
            return update(program, options->database);
        });
    updating->add_option("--url", *url, "an address, in place of the one of the settings");
    return [chosen](Program& program) { return (*chosen)(program); };
}

constexpr Verb kVerbs[] = {
    {"exposure", "print the exposure calculator's rows and totals", exposureVerb},
    {"protectors", "list, compare, save and update hearing protectors", protectorsVerb},
};

} // namespace

std::span<const Verb> protectionVerbs() {
    return kVerbs;
}

} // namespace kestrane

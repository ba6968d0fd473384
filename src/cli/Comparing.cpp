#include "cli/Comparing.h"

#include "app/DownloadHPD.h"
#include "app/StartUp.h"
#include "protection/Attenuation.h"
#include "protection/ProtectorDatabase.h"

#include <algorithm>
#include <map>

namespace kestrane {

namespace {

const std::map<std::string, std::int16_t> kModes = {
    {"hse", eHPDModeEUHSE}, {"osha", eHPDModeUSOSHA}, {"niosh", eHPDModeUSNIOSH}};

} // namespace

void addDatabase(CLI::App& verb, CompareArguments& arguments) {
    verb.add_option("--database", arguments.database, "a protector database, in place of the one in use");
}

CLI::Option* addComparing(CLI::App& verb, CompareArguments& arguments) {
    verb.add_option("--mode", arguments.mode, "hse, osha or niosh")->check(CLI::IsMember({"hse", "osha", "niosh"}));
    verb.add_option("--method", arguments.method, "Auto, HML, SNR or NRR")
        ->check(CLI::IsMember({"Auto", "HML", "SNR", "NRR"}));
    verb.add_option("--correction", arguments.correction, "0 none, 1 two deviations, 2 4 dB, 3 one deviation")
        ->check(CLI::Range(kCorrectionNone, kCorrectionOneDeviation));
    return verb.add_option("--protector", arguments.protector, "name of the record");
}

std::optional<ProtectorCollection> openDatabase(Session& session, const std::string& database) {
    ProtectorCollection collection;
    collection.File = database.empty() ? protectorDatabase() : database;
    session.protectors = &collection;
    const bool isLoaded = LoadHPD(session);
    session.protectors = nullptr;
    return isLoaded ? std::optional(std::move(collection)) : std::nullopt;
}

std::optional<HPDComparison> compareLog(Program& program, const clsLog& log, const CompareArguments& arguments) {
    const auto database = openDatabase(program.session, arguments.database);
    if (!database) return std::nullopt;
    const std::vector<clsHP>& protectors = database->Protectors;
    const auto hp = std::find_if(protectors.begin(), protectors.end(),
                                 [&](const clsHP& record) { return record.Name == arguments.protector; });
    if (hp == protectors.end()) {
        program.session.ShowMessage(ReplaceText(program.session.LoadText(8808), "^", arguments.protector),
                                    kIconExclamation);
        return std::nullopt;
    }
    clsOptions calculation = program.session.Options;
    calculation.HPDCalc = kModes.at(arguments.mode);
    calculation.HPDCalcMethod = arguments.method;
    return compareWithProtector(log, *hp, calculation, arguments.correction);
}

} // namespace kestrane

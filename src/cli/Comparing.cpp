#include "cli/Comparing.h"

#include "app/DownloadHPD.h"
#include "app/StartUp.h"
#include "protection/Attenuation.h"
#include "protection/ProtectorDatabase.h"

#include <algorithm>

namespace kestrane {

void addDatabase(CLI::App& verb, CompareArguments& arguments) {
    verb.add_option("--database", arguments.database, "a protector database, in place of the one in use");
}

void addComparing(CLI::App& verb, CompareArguments& arguments) {
    verb.add_option("--mode", arguments.mode, "hse, osha or niosh")->check(CLI::IsMember({"hse", "osha", "niosh"}));
    verb.add_option("--method", arguments.method, "Auto, HML, SNR or NRR")
        ->check(CLI::IsMember({"Auto", "HML", "SNR", "NRR"}));
    verb.add_option("--correction", arguments.correction, "0 none, 1 two deviations, 2 4 dB, 3 one deviation")
        ->check(CLI::Range(kCorrectionNone, kCorrectionOneDeviation));
}

CLI::Option* addProtector(CLI::App& verb, CompareArguments& arguments) {
    return verb.add_option("--protector", arguments.protector, "name of the record");
}

clsOptions comparisonOptions(const Program& program, const CompareArguments& arguments) {
    clsOptions calculation = program.session.Options;
    calculation.HPDCalc = modeOfName(arguments.mode).value_or(eHPDModeEUHSE);
    calculation.HPDCalcMethod = arguments.method;
    return calculation;
}

ProtectorCollection protectorsIn(const std::string& database) {
    if (database.empty()) return protectorsOfUser();
    ProtectorCollection collection;
    collection.File = database;
    return collection;
}

std::optional<ProtectorCollection> openDatabase(Session& session, const std::string& database) {
    ProtectorCollection collection = protectorsIn(database);
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
        program.session.ShowMessage(
            ReplaceText(program.session.texts.LoadMessage(Text::NoSuchProtector), "^", arguments.protector),
            kIconExclamation);
        return std::nullopt;
    }
    return compareWithProtector(log, *hp, comparisonOptions(program, arguments),
                                static_cast<CorrectionKind>(arguments.correction));
}

} // namespace kestrane

#include "app/SettingsDialog.h"

#include "calc/ExposureTime.h"
#include "explorer/Edits.h"
#include "model/Captions.h"
#include "model/LogParameters.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kLastPort = 255;
constexpr const char* kAutomatic = "Auto";

bool isPort(std::int16_t port) {
    return port >= 1 && port <= kLastPort;
}

void endWithSeparator(std::string& folder) {
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\') folder += '/';
}

} // namespace

SettingsDialog::SettingsDialog(Session& session) :
    Edited(session.Options),
    Look(readAppearance(session.settings)),
    Lines(readChartLines(session)),
    session_(session),
    mode_(SettingsMode::All),
    offered_(session.Options.objLogOptions) {}

SettingsDialog::SettingsDialog(Session& session, clsOptions& options) :
    Edited(options), session_(session), mode_(SettingsMode::Explorer), options_(&options) {}

SettingsDialog::SettingsDialog(Session& session, clsLog& log, FigureKind kind) :
    Edited(session.Options),
    Lines(readChartLines(session)),
    session_(session),
    mode_(SettingsMode::Logs),
    log_(&log),
    kind_(kind) {
    Edited.objLogOptions = log.objLogOptions;
    offered_ = displayOptions(log);
}

bool SettingsDialog::HasChannelB() const {
    return log_ == nullptr || log_->IsChannelBOn;
}

bool SettingsDialog::IsOffered(LogChannel channel, FigureKind kind, Parameter parameter) const {
    return offered_.Plottable(channel, kind, parameter) && !isUnusedLn(parameter);
}

std::string SettingsDialog::Caption(Parameter parameter) const {
    return VariableCaption(session_, parameter, kNoChannel, kNoBand, isUnusedLn(parameter) ? nullptr : log_);
}

bool SettingsDialog::isUnusedLn(Parameter parameter) const {
    const int ln = lnOf(parameter);
    return log_ != nullptr && ln != 0 && log_->LnNumberA(ln) == 0;
}

std::optional<SettingsChanges> SettingsDialog::Confirm(const std::string& exposureTimeEntry) {
    if (mode_ != SettingsMode::Explorer && !readExposureTime(exposureTimeEntry)) {
        session_.ShowMessage(session_.LoadText(Text::ExposureLengthInvalid), kIconExclamation,
                             session_.LoadText(Text::Error));
        return std::nullopt;
    }
    Edited.HPDCalcMethod = calcMethodOf(Edited.HPDCalc, Edited.HPDCalcMethod);
    switch (mode_) {
    case SettingsMode::All:
        return confirmAll();
    case SettingsMode::Explorer:
        return confirmExplorer();
    default:
        return confirmLog();
    }
}

// Takes the exposure time. When the entry is the text that was shown, the time keeps its fraction of a second.
bool SettingsDialog::readExposureTime(const std::string& entry) {
    const float entered = exposureTimeHours(entry, session_.locale);
    if (!isExposureTime(entered)) return false;
    float& hours = Edited.objLogOptions.ExposureTime;
    if (exposureTimeText(entered) != exposureTimeText(hours)) hours = entered;
    return true;
}

// Calls store, which writes settings. A failure is told; the settings then last until the program ends.
void SettingsDialog::tryToStore(const std::function<void()>& store) {
    try {
        store();
    } catch (const RuntimeError& error) {
        session_.ShowMessage(ReplaceText(session_.LoadText(Text::SettingsNotStored), "^", error.what()),
                             kIconExclamation, session_.LoadText(Text::Error));
    }
}

bool SettingsDialog::storeLines() {
    if (Lines == readChartLines(session_)) return false;
    tryToStore([this] { storeChartLines(session_, Lines); });
    return true;
}

bool SettingsDialog::storeLook() {
    if (Look == readAppearance(session_.settings)) return false;
    tryToStore([this] { storeAppearance(session_.settings, Look); });
    return true;
}

SettingsChanges SettingsDialog::confirmAll() {
    const bool isLookChanged = storeLook();
    endWithSeparator(Edited.DefaultDataDirectory);
    const bool isDisplayed = storeLines() || Edited.DisplayDifferences(session_.Options) ||
                             Edited.HPDCalc != session_.Options.HPDCalc ||
                             Edited.HPDCalcMethod != session_.Options.HPDCalcMethod;
    session_.Options.Copy(Edited);
    tryToStore([this] { session_.Options.SaveToRegistry(session_.settings); });
    return {true, isDisplayed, false, isLookChanged};
}

SettingsChanges SettingsDialog::confirmExplorer() {
    const bool isTreeChanged = Edited.FilesOnTreeView != options_->FilesOnTreeView;
    options_->Copy(Edited);
    return {isTreeChanged, false, true};
}

SettingsChanges SettingsDialog::confirmLog() {
    const bool areLinesChanged = storeLines();
    editLog(*log_, Text::StepDisplayOptions, [&] {
        clsLogOptions& options = log_->objLogOptions;
        const float hours = std::exchange(Edited.objLogOptions.ExposureTime, options.ExposureTime);
        Edited.objLogOptions.Plottable = options.Plottable; // a recalculation may have ended in the meantime
        options.Copy(Edited.objLogOptions);
        if (hours != options.ExposureTime) changeExposureTime(*log_, hours);
        return true;
    });
    return {false, areLinesChanged, true};
}

std::vector<SerialChoice> serialChoices(const Session& session, std::int16_t chosen) {
    std::vector<PortInfo> ports = session.comm == nullptr ? std::vector<PortInfo>() : session.comm->Ports();
    const auto place =
        std::find_if(ports.begin(), ports.end(), [&](const auto& port) { return port.Number >= chosen; });
    if (isPort(chosen) && (place == ports.end() || place->Number != chosen)) ports.insert(place, {chosen, {}, {}});

    std::vector<SerialChoice> choices = {{session.LoadText(Text::PortAuto), 0}};
    for (const PortInfo& port : ports) {
        std::string text = ReplaceText(session.LoadText(Text::PortNumber), "^", std::to_string(port.Number));
        if (!port.Device.empty()) text = captioned(session, text, port.Device);
        if (!port.Description.empty()) text += ", " + port.Description;
        choices.push_back({std::move(text), static_cast<std::int16_t>(port.Number)});
    }
    return choices;
}

std::size_t serialChoiceOf(const std::vector<SerialChoice>& choices, std::int16_t port) {
    const auto found =
        std::find_if(choices.begin(), choices.end(), [&](const SerialChoice& choice) { return choice.Port == port; });
    return found == choices.end() ? 0 : static_cast<std::size_t>(found - choices.begin());
}

std::vector<LanguageChoice> languageChoices(const Session& session, Text::Id other) {
    std::vector<LanguageChoice> choices = {{session.LoadText(other), {}}};
    for (const Language& language : Languages())
        choices.push_back({std::string(language.Name), std::string(language.Code)});
    return choices;
}

std::vector<std::string> calcMethods(std::int16_t mode) {
    if (mode == eHPDModeEUHSE) return {kAutomatic, "HML", "SNR"};
    if (mode == eHPDModeUSOSHA || mode == eHPDModeUSNIOSH) return {kAutomatic, "NRR"};
    return {kAutomatic};
}

std::string calcMethodOf(std::int16_t mode, const std::string& kept) {
    const std::vector<std::string> methods = calcMethods(mode);
    return std::find(methods.begin(), methods.end(), kept) == methods.end() ? kAutomatic : kept;
}

} // namespace kestrane

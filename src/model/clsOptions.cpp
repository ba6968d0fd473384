#include "model/clsOptions.h"

#include "model/SettingsText.h"

namespace kestrane {

namespace {

// The one list of keys. Calls visit(key, member) for each.
template <class Self, class Visit>
void forEachKey(Self& options, Visit visit) {
    visit("Company", options.CompanyName);
    visit("CompanyLogo", options.CompanyLogoFile);
    visit("ReportIntroduction", options.ReportIntroduction);
    visit("ReportClosing", options.ReportClosing);
    visit("ReportFooter", options.ReportFooter);
    visit("DataPath", options.DefaultDataDirectory);
    visit("SerialPort", options.SerialPort);
    visit("blnPrintIntervals", options.PrintIntervals);
    visit("HomePage", options.HomePage);
    visit("HPD-HML", options.HPDAddress);
    visit("FilesOnTreeView", options.FilesOnTreeView);
    visit("CumulativePanel", options.CumulativePanel);
    visit("PersistSelectedHP", options.PersistSelectedHP);
    visit("EmptySaving", options.PreventEmptySaving);
    visit("CalcFileOpen", options.RecalcOnOpen);
    visit("HPDCalc", options.HPDCalc);
    visit("HPDCalcMethod", options.HPDCalcMethod);
    visit("HPDActionLevel", options.ActionLevel);
    visit(kLanguageKey, options.Language);
    visit("ReportLanguage", options.ReportLanguage);
}

} // namespace

std::vector<std::string> clsOptions::GetFromRegistry(const SettingsStore& store) {
    std::vector<std::string> badKeys;
    forEachKey(*this, [&](std::string_view key, auto& member) { readSetting(store, key, member, badKeys); });
    objLogOptions.GetFromRegistry(store, badKeys);
    return badKeys;
}

void clsOptions::SaveToRegistry(SettingsStore& store) const {
    forEachKey(*this, [&](std::string_view key, const auto& member) { writeSetting(store, key, member); });
    objLogOptions.SaveToRegistry(store);
}

bool clsOptions::DisplayDifferences(const clsOptions& other) const {
    const clsLogOptions& a = objLogOptions;
    const clsLogOptions& b = other.objLogOptions;
    return !(a.NoteFont == b.NoteFont && a.LegendFont == b.LegendFont && a.AxisFont == b.AxisFont &&
             a.TitleFont == b.TitleFont && a.ExposureTime == b.ExposureTime && a.ChartStyle == b.ChartStyle &&
             a.LineWidth == b.LineWidth && a.IsPlotted == b.IsPlotted);
}

} // namespace kestrane

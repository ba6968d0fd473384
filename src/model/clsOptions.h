// The application's settings: read from the store at start, written back when the user confirms the settings dialog.
// Holds the display defaults of new logs. Owned by the session; shared by every explorer.
#pragma once

#include "model/clsLogOptions.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// FilesOnTreeView
constexpr std::int16_t eDisplayFilesAsNodes = 0;
constexpr std::int16_t eDisplayFilesBesideLogNames = 1;
constexpr std::int16_t eHideFileNames = 2;

// What the cumulative panel shows; the setting CumulativePanel.
enum PanelForm : std::int16_t { ePanelBothChannels, ePanelMainChannelA, ePanelAdvanced, ePanelHidden };

// HPDCalc
constexpr std::int16_t eHPDModeEUHSE = 0;
constexpr std::int16_t eHPDModeUSOSHA = 1;
constexpr std::int16_t eHPDModeUSNIOSH = 2;

// The key of the language of the program. It is read before there is a session.
inline constexpr std::string_view kLanguageKey = "Language";

class clsOptions {
public:
    std::string CompanyName;                       // printed on reports
    std::string CompanyLogoFile;                   // path of the logo picture for reports
    std::string ReportIntroduction, ReportClosing; // the company's own words in reports, with line breaks
    std::string ReportFooter;                      // at the foot of each page of a report
    std::string DefaultDataDirectory;
    std::int16_t SerialPort = 1;
    bool PrintIntervals = true; // the default report includes the intervals
    std::string HomePage;
    std::string HPDAddress; // where the protector database is downloaded from
    std::int16_t FilesOnTreeView = eDisplayFilesAsNodes;
    std::int16_t CumulativePanel = ePanelBothChannels;
    bool PersistSelectedHP = true;
    bool PreventEmptySaving = true;
    bool RecalcOnOpen = true;
    std::int16_t HPDCalc = eHPDModeEUHSE;
    std::string HPDCalcMethod = "Auto"; // "Auto", "HML", "SNR" or "NRR"
    std::int16_t ActionLevel = 80;      // dB; a protected level is judged by it: 80 or 85
    std::string Language;               // of the program, by its code ("de"); empty: that of the system
    std::string ReportLanguage;         // of reports; empty: that of the program
    clsLogOptions objLogOptions;

    bool IsUSHPDMode() const { return HPDCalc == eHPDModeUSOSHA || HPDCalc == eHPDModeUSNIOSH; }

    // Reads all keys, each with the present value as the default. Returns the keys whose text could not be converted;
    // their values stay as they are.
    std::vector<std::string> GetFromRegistry(const SettingsStore& store);
    void SaveToRegistry(SettingsStore& store) const;

    void Copy(const clsOptions& other) { *this = other; }

    // Whether something differs that makes it necessary to redraw a log: a font, the shift length, the chart style, the
    // line width, or what is plotted.
    bool DisplayDifferences(const clsOptions& other) const;
};

} // namespace kestrane

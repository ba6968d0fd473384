#pragma once
// The brand table: which firm's product this build is, and the words that follow from that. The main function fills one
// Brand before anything else reads it. This file knows nothing of texts, settings or windows.

#include <string>
#include <string_view>

namespace kestrane {

inline constexpr std::string_view ApplicationTitle = "Kestrane";

struct Brand {
    int FirmIndex = 0;           // 0 or 1
    std::string CompanyName;     // as the build gives it
    std::string SettingsAppName; // application name in the settings store; empty when no firm was recognised
    std::string FirmName;
    std::string FirmKey; // the firm in lower case
    std::string ProductTitle;
    std::string ProductName;
    std::string ManualFile; // a name without a folder
};

// The brand of the firm whose word the company name contains, in upper or lower case. The first firm wins when both
// words are there; with neither, the words are those of firm 0 and SettingsAppName is empty.
Brand LoadSoftwareByFirm(const std::string& companyName);

// Name of a meter of the Brevik family, ordinal 0 to 5; empty for any other ordinal.
std::string InstrumentNameByIndex(int ordinal);

// Whether a name is that of a variant of the Brevik family, of either brand. Blanks and case make no difference.
bool IsBrevikS(std::string_view name);
bool IsBrevikE(std::string_view name);
bool IsBrevikSE(std::string_view name);
bool IsBrevikMeter(std::string_view name);

} // namespace kestrane

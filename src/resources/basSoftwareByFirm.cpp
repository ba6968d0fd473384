#include "resources/basSoftwareByFirm.h"

#include <array>

namespace kestrane {

namespace {

struct Firm {
    std::string_view Key; // the word looked for in the lower-cased company name
    std::string_view Name;
    std::string_view SettingsAppName;
    std::string_view TitleSuffix;
    std::string_view ManualFile;
};

// The settings names and the manual names of the two firms are crossed on purpose: installed copies look for them under
// these names.
constexpr std::array<Firm, 2> Firms{{
    {"ordwyn", "Ordwyn", "Velmora", "", "Kestrane.pdf"},
    {"brennock", "Brennock", "Kestrane", " Pro", "Velmora.pdf"},
}};

// The ordinal modulo 3 is the variant: 0 is SE, 1 is E, 2 is S.
constexpr std::array<std::string_view, 6> BrevikNames{
    "Brevik SE", "Brevik E", "Brevik S", "Auravox Essential SE", "Auravox Essential E", "Auravox Essential S",
};

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::string Squeezed(std::string_view name) {
    std::string squeezed = LowerCase(name);
    std::erase(squeezed, ' ');
    return squeezed;
}

bool IsVariant(std::string_view name, std::size_t variant) {
    const std::string squeezed = Squeezed(name);
    return squeezed == Squeezed(BrevikNames[variant]) || squeezed == Squeezed(BrevikNames[variant + 3]);
}

} // namespace

Brand LoadSoftwareByFirm(const std::string& companyName) {
    const std::string lower = LowerCase(companyName);
    std::size_t index = 0;
    while (index < Firms.size() && lower.find(Firms[index].Key) == std::string::npos)
        ++index;
    const bool recognised = index < Firms.size();
    const Firm& firm = Firms[recognised ? index : 0];

    Brand brand;
    brand.FirmIndex = recognised ? static_cast<int>(index) : 0;
    brand.CompanyName = companyName;
    if (recognised) brand.SettingsAppName = firm.SettingsAppName;
    brand.FirmName = firm.Name;
    brand.FirmKey = firm.Key;
    brand.ProductTitle = std::string(ApplicationTitle).append(firm.TitleSuffix);
    brand.ProductName = brand.ProductTitle;
    brand.ManualFile = firm.ManualFile;
    return brand;
}

std::string InstrumentNameByIndex(int ordinal) {
    if (ordinal < 0 || ordinal >= static_cast<int>(BrevikNames.size())) return {};
    return std::string(BrevikNames[static_cast<std::size_t>(ordinal)]);
}

bool IsBrevikSE(std::string_view name) {
    return IsVariant(name, 0);
}

bool IsBrevikE(std::string_view name) {
    return IsVariant(name, 1);
}

bool IsBrevikS(std::string_view name) {
    return IsVariant(name, 2);
}

bool IsBrevikMeter(std::string_view name) {
    return IsBrevikS(name) || IsBrevikE(name) || IsBrevikSE(name);
}

} // namespace kestrane

#include "model/InstrumentFamilies.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>
#include <string>

namespace kestrane {

namespace {

std::string withoutBlanks(std::string_view name) {
    std::string text(name);
    std::erase(text, ' ');
    return text;
}

template <std::size_t N>
bool beginsWithOneOf(std::string_view name, const std::array<std::string_view, N>& models) {
    const std::string text = withoutBlanks(name);
    return std::any_of(models.begin(), models.end(), [&](std::string_view model) { return text.starts_with(model); });
}

constexpr std::array<std::string_view, 5> kMerrowan = {"TR320", "TR322", "TR324", "TR326", "TR352"};
constexpr std::array<std::string_view, 3> kOldTallix = {"TR310", "TR340", "TR342"};
constexpr std::array<std::string_view, 2> kOldDose = {"TR340", "TR342"};
constexpr std::array<std::string_view, 3> kHalcyr = {"TR312", "TR350", "TR360"};

template <class... Traits>
constexpr unsigned all(Traits... traits) {
    return (0U | ... | static_cast<unsigned>(traits));
}

// The order of the rows is the order in which a name is tried.
constexpr InstrumentFamily kFamilies[] = {
    {Family::Corvane, "Corvane", IsCorvane, all()},
    {Family::Brevik, "Brevik", IsBrevikMeter,
     all(Trait::GoesByExposureTime, Trait::OffersVariants, Trait::ReportsAverages, Trait::KeepsPercentiles,
         Trait::PercentilesBesideRows, Trait::WritesShortForm)},
    {Family::Halcyr, "Halcyr", IsHalcyrMeter,
     all(Trait::KeepsReportedExposure, Trait::NoExposureOnChannelB, Trait::NoLmin, Trait::PercentilesBesideRows)},
    {Family::Merrowan, "Merrowan", IsMerrowan, all()},
    {Family::OldTallix, "Old Tallix", IsOldTallix,
     all(Trait::RecordsPeaks, Trait::TakesClockCommand, Trait::NoModeLine)},
};
static_assert(std::size(kFamilies) == kFamilyCount);

// The traits of models that differ from the rest of their family.
struct ModelTraits {
    bool (*isMember)(std::string_view insName);
    unsigned traits;
};

constexpr ModelTraits kModels[] = {
    {IsBrevikS, all(Trait::WorkOnly)},
    {IsBrevikE, all(Trait::EnvironmentOnly)},
    {IsHalcyrDoseMeter, all(Trait::WorkOnly, Trait::LocationFollowsModel)},
    {IsHalcyrMeter116E, all(Trait::EnvironmentOnly, Trait::LocationFollowsModel)},
    {IsOldDoseMeter, all(Trait::ReportsDoseOnly)},
};

} // namespace

const InstrumentFamily* familyOf(std::string_view insName) {
    const auto* const found = std::find_if(std::begin(kFamilies), std::end(kFamilies),
                                           [&](const InstrumentFamily& family) { return family.isMember(insName); });
    return found == std::end(kFamilies) ? nullptr : found;
}

bool hasTrait(std::string_view insName, Trait trait) {
    const auto has = [&](const auto& row) { // a name is tested only against rows that have the trait
        return (row.traits & static_cast<unsigned>(trait)) != 0 && row.isMember(insName);
    };
    return std::any_of(std::begin(kFamilies), std::end(kFamilies), has) ||
           std::any_of(std::begin(kModels), std::end(kModels), has);
}

bool IsModel(std::string_view name, std::string_view model) {
    return withoutBlanks(name).starts_with(model);
}

bool IsCorvane(std::string_view name) {
    std::string text = withoutBlanks(name);
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text.find("CORVANE") != std::string::npos;
}

bool IsMerrowan(std::string_view name) {
    return !IsCorvane(name) && beginsWithOneOf(name, kMerrowan);
}

bool IsOldTallix(std::string_view name) {
    return !IsCorvane(name) && beginsWithOneOf(name, kOldTallix);
}

bool IsOldDoseMeter(std::string_view name) {
    return IsOldTallix(name) && beginsWithOneOf(name, kOldDose);
}

bool IsHalcyrMeter(std::string_view name) {
    return beginsWithOneOf(name, kHalcyr);
}

bool IsHalcyrMeter116E(std::string_view name) {
    return IsModel(name, "TR312E");
}

bool IsHalcyrDoseMeter(std::string_view name) {
    return IsModel(name, "TR360L");
}

bool IsValidInstrument(std::string_view name) {
    return IsMerrowan(name) || IsOldTallix(name) || IsCorvane(name) || IsHalcyrMeter(name);
}

} // namespace kestrane

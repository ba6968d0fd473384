// The registry of the instrument families: which names belong to each family, and what its instruments do differently
// from the rest. All tests ignore the blanks in a name; apart from the Corvane and Brevik tests they distinguish case.
// The protocol of a family is in download (Download.cpp has a row for each), its simulator in sim.
#pragma once

#include "resources/basSoftwareByFirm.h"

#include <cstddef>
#include <string_view>

namespace kestrane {

enum class Family { Corvane, Brevik, Halcyr, Merrowan, OldTallix };

inline constexpr std::size_t kFamilyCount = 5;

// What some instruments do and most do not. Other code asks for these traits, never for a family.
enum class Trait : unsigned {
    GoesByExposureTime = 1U << 0, // Pa2Hr is that of the exposure time, which the panel shows and the user may change
    OffersVariants = 1U << 1,     // what a log can show depends on the variant of the model and on its location
    ReportsAverages = 1U << 2,    // LAvg and TWA are shown as reported
    KeepsPercentiles = 1U << 3,   // an Ln is kept however short the log is
    KeepsReportedExposure = 1U << 4, // Pa2Hr, dose and dose per hour of a whole log stay as reported
    NoExposureOnChannelB = 1U << 5,  // LEP,d and dose of channel B are 0
    NoLmin = 1U << 6,                // Lmin is never recorded, and Lmax not in a log of noise at work
    PercentilesBesideRows = 1U << 7, // charts show the Ln of the whole run beside that of each row
    RecordsPeaks = 1U << 8,          // logs can hold peak records
    TakesClockCommand = 1U << 9,     // the clock can be set over the line
    ReportsDoseOnly = 1U << 10,      // rows hold doses; Leq follows from LEP,d, and there is no exposure calculator
    WritesShortForm = 1U << 11,      // its logs are saved in the short form, unless the firmware is an early one
    NoModeLine = 1U << 12,           // its sound files state no mode: all of them are of one kind
    WorkOnly = 1U << 13,             // the model measures noise at work alone
    EnvironmentOnly = 1U << 14,      // the model measures environmental noise alone
    LocationFollowsModel = 1U << 15, // the kind of location follows from the model, not from each log
};

struct InstrumentFamily {
    Family family;
    std::string_view name; // as `identify` prints it
    bool (*isMember)(std::string_view insName);
    unsigned traits; // the bits of its Traits
};

// The first family of the registry that the name belongs to; null when it belongs to none.
const InstrumentFamily* familyOf(std::string_view insName);

// Whether a family or model that the name belongs to has the trait. A name that belongs to several has the traits of
// all of them.
bool hasTrait(std::string_view insName, Trait trait);

bool IsModel(std::string_view name, std::string_view model); // whether the name begins with the model's number

bool IsCorvane(std::string_view name);
bool IsMerrowan(std::string_view name);
bool IsOldTallix(std::string_view name);
bool IsOldDoseMeter(std::string_view name);
bool IsHalcyrMeter(std::string_view name);
bool IsHalcyrMeter116E(std::string_view name);
bool IsHalcyrDoseMeter(std::string_view name);
// Whether the name belongs to a family of the registry other than Brevik.
bool IsValidInstrument(std::string_view name);

} // namespace kestrane

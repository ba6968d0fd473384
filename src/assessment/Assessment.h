// The document of an exposure assessment: groups of workers of one exposure, what was measured of them, their week and
// their protector. Plain data as it stands in the file, sensible or not; what can be computed of it is Assess.h. Levels
// are dB, times hours. Other holds the members that this program does not know, and goes with what it was found in.
#pragma once

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kestrane {

using AssessmentJson = nlohmann::ordered_json;

// Rows of a log. Nothing for From or To: from the first, to the last.
struct LogRows {
    std::string File; // absolute, or relative to the folder of the assessment
    std::string Log;  // its tree node key; empty: the file's first log
    std::optional<std::int64_t> From, To;
    std::string Sha256; // of the file as it was measured with; empty: not kept yet
    AssessmentJson Other;
};

using Sample = std::variant<double, LogRows>; // a level, or rows whose LAeq it is

struct AssessmentTask {
    std::string Name;
    double Hours = 0;
    std::optional<std::array<double, 2>> HoursRange; // shortest and longest
    std::optional<double> CPeak;                     // dB(C)
    std::vector<Sample> Samples;
    AssessmentJson Other;
};

struct AssessmentDay {
    std::string Name;
    std::optional<double> LEX8h; // nothing: the group's own day
    AssessmentJson Other;
};

struct AssessmentProtector {
    std::string Name;
    std::string Mode = "hse"; // or "osha", "niosh"
    int Correction = 0;       // kCorrection...
    std::optional<LogRows> Spectrum;
    std::optional<double> Reduction; // dB, in place of what is found on the spectrum
    double WornPercent = 100;        // of the time
    AssessmentJson Other;
};

enum class Strategy { Task, Job, FullDay };
enum class Meter { Class1, Class2, Dosimeter };

struct AssessmentGroup {
    std::string Name;
    std::optional<int> Workers;
    kestrane::Strategy Strategy = kestrane::Strategy::Task;
    Meter Instrument = Meter::Class1;
    std::optional<double> EffectiveDay; // nothing: 8 h, and no sum of times to compare with
    std::optional<double> CPeak;        // dB(C)
    std::vector<AssessmentTask> Tasks;  // of the strategy Task
    std::vector<Sample> Samples;        // of the others
    std::vector<AssessmentDay> Week;    // empty: no week
    std::optional<AssessmentProtector> Protector;
    AssessmentJson Other;
};

struct Assessment {
    std::string Title, Workplace, Assessor, Date;
    std::vector<AssessmentGroup> Groups;
    AssessmentJson Other;
};

} // namespace kestrane

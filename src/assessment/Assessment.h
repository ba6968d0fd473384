// The document of an exposure assessment: groups of workers with the same exposure, what was measured of them, their
// week and their protector. It is plain data as the file has it, sensible or not; Assess.h computes from it. Levels are
// in dB, times in hours. Other keeps the members of an object in the file that this program does not know, so that they
// are saved again.
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

// Rows of a log, both ends included. From is nothing for the first row, To is nothing for the last.
struct LogRows {
    std::string File; // absolute, or relative to the folder of the assessment
    std::string Log;  // its tree node key; empty for the file's first log
    std::optional<std::int64_t> From, To;
    std::string Sha256; // of the file at the time of the assessment; empty when it has not been recorded yet
    AssessmentJson Other;
};

using Sample = std::variant<double, LogRows>; // a level, or rows whose LAeq is the level

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
    std::optional<double> LEX8h; // nothing for the group's own day
    AssessmentJson Other;
};

struct AssessmentProtector {
    std::string Name;
    std::string Mode = "hse"; // or "osha", "niosh"
    int Correction = 0;       // kCorrection...
    std::optional<LogRows> Spectrum;
    std::optional<double> Reduction; // dB; used instead of a reduction computed from Spectrum
    double WornPercent = 100;        // percent of the time
    AssessmentJson Other;
};

enum class Strategy { Task, Job, FullDay };
enum class Meter { Class1, Class2, Dosimeter };

struct AssessmentGroup {
    std::string Name;
    std::optional<int> Workers;
    kestrane::Strategy Strategy = kestrane::Strategy::Task;
    Meter Instrument = Meter::Class1;
    std::optional<double> EffectiveDay; // hours; nothing means 8 h, and then the sum of the tasks' hours is not checked
    std::optional<double> CPeak;        // dB(C)
    std::vector<AssessmentTask> Tasks;  // for the strategy Task
    std::vector<Sample> Samples;        // for the other strategies
    std::vector<AssessmentDay> Week;    // empty when there is no week
    std::optional<AssessmentProtector> Protector;
    AssessmentJson Other;
};

struct Assessment {
    std::string Title, Workplace, Assessor, Date;
    std::vector<AssessmentGroup> Groups;
    AssessmentJson Other;
};

// Calls visit(rows) for the samples of a group, or of an assessment, that are rows of a log, in their order.
template <class Part, class Visit>
void forEachSampleRows(Part& part, Visit visit) {
    if constexpr (requires { part.Groups; }) {
        for (auto& group : part.Groups)
            forEachSampleRows(group, visit);
    } else {
        const auto visitAll = [&](auto& samples) {
            for (auto& sample : samples)
                if (auto* rows = std::get_if<LogRows>(&sample)) visit(*rows);
        };
        visitAll(part.Samples);
        for (auto& task : part.Tasks)
            visitAll(task.Samples);
    }
}

} // namespace kestrane

// Computes an assessment: the day and the week of each group with their uncertainty (ISO 9612:2009), the comparison
// with the values of Directive 2003/10/EC, the worn protector, and what is wrong with the measurement. Levels and
// uncertainties are in dB, times in hours. A figure that cannot be computed is nothing, and a warning says why.
#pragma once

#include "assessment/Measurements.h"
#include "model/Session.h"
#include "protection/Standards.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

constexpr std::string_view kAssessmentEdition = "ISO 9612:2009";

using Figure = std::optional<double>;

struct TaskResult {
    std::string Name;
    Figure Leq, Hours;
    Figure Contribution, Points, Share; // what the task contributes to the day; Share is a fraction of 1
    Figure U1a, U1b, C1a, C1b;
    Figure CPeak; // dB(C)
};

// Undecided: the level is below, but its uncertainty is not known, so nothing says whether the upper limit is, too.
enum class ActionState { Below, WithinUncertainty, Exceeded, NotMeasured, Undecided };

// "below", which also stands for undecided, "within uncertainty", "exceeded", "not measured": readers of results know
// these four, and see that the upper limit is not known.
std::string_view stateName(ActionState state);

struct ActionResult {
    std::string Name;
    double Limit;
    bool IsPeak; // dB(C); else dB
    ActionState State;
    bool IsUnderProtector = false; // it was compared with the level under the protector
};

struct ProtectedResult {
    std::string Method; // that of the comparison or the standard; "given" when the reduction is given; empty for none
    Figure Level;       // LEX,8h less the reduction
    Figure Effective;   // the level when the time without the protector is counted in
    kestrane::Verdict Verdict = kestrane::Verdict::None;
};

struct AssessmentWarning {
    std::string Code;
    std::optional<std::string> Task; // nothing for a warning about the whole group
    std::string Text;

    bool operator==(const AssessmentWarning&) const = default;
};

struct SourceResult {
    std::string File, Sha256, Log; // as the assessment names the file; Sha256 as it is now; empty: could not be read
    std::optional<std::int64_t> From, To;
    Figure Leq;
};

struct GroupResult {
    std::string Name;
    kestrane::Strategy Strategy = kestrane::Strategy::Task;
    Figure LEX8h, Uncertainty /* combined */, Expanded, Upper;
    Figure Points, LEXw, CPeak;
    std::vector<TaskResult> Tasks;
    Figure U1, C1u1;
    double U2 = 0, U3 = 0;
    std::vector<ActionResult> Actions, WeekActions; // of the day; of the week, empty when the group has none
    std::optional<ProtectedResult> Protected;
    std::vector<AssessmentWarning> Warnings; // each warning only once
    std::vector<SourceResult> Sources;
};

// Computes every group. path is that of the assessment, to which the paths of data files are relative. Figures of files
// that have not been read are missing. Raises nothing for data that is missing or makes no sense.
std::vector<GroupResult> assess(const Session& session, const Assessment& assessment, const std::string& path,
                                const Measurements& measured);

} // namespace kestrane

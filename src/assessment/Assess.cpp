#include "assessment/Assess.h"

#include "assessment/Iso9612.h"
#include "assessment/Reaches.h"
#include "assessment/Samples.h"
#include "calc/PossibleLevel.h"
#include "model/Acoustics.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kestrane {

namespace {

constexpr std::size_t kFewestSamples = 3;    // for a task and for full days
constexpr std::size_t kFewestJobSamples = 5; // for a job
constexpr double kWidestSpread = 3;          // dB, between the lowest and the highest of three samples
constexpr double kLargestC1u1 = 3.5;         // dB
constexpr double kSlackOfTimes = 0.25;       // h
constexpr double kSmall = 1e-9;

struct ActionRule {
    Text::Id name;
    double limit;
    bool isPeak;
    bool isWithProtector;
};

constexpr ActionRule kActions[] = {
    {Text::LimitLowerAction, 80, false, false}, {Text::LimitLowerActionPeak, 135, true, false},
    {Text::LimitUpperAction, 85, false, false}, {Text::LimitUpperActionPeak, 137, true, false},
    {Text::LimitValue, 87, false, true},        {Text::LimitValuePeak, 140, true, false},
};

using Task = std::optional<std::string>;

double squared(double x) {
    return x * x;
}

class GroupAssessment {
public:
    GroupAssessment(const Session& session, const AssessmentGroup& group, const SampleSource& samples) :
        session_(session), group_(group), samples_(samples), warnings_(session, out_.Warnings) {}

    GroupResult build() {
        out_.Name = group_.Name;
        out_.Strategy = group_.Strategy;
        out_.U2 = group_.Instrument == Meter::Class1 ? kClass1Uncertainty : kOtherUncertainty;
        out_.U3 = kPositionUncertainty;
        if (group_.Workers && *group_.Workers < 1)
            warnings_.bad({}, Text::WarnWorkersCannotBe, std::to_string(*group_.Workers));
        if (group_.Strategy == Strategy::Task) {
            byTasks();
        } else {
            bySamples();
        }
        peak();
        if (out_.LEX8h) out_.Points = exposurePoints(*out_.LEX8h, kReferenceHours);
        if (out_.Uncertainty) {
            out_.Expanded = kCoverageFactor * *out_.Uncertainty;
            out_.Upper = *out_.LEX8h + *out_.Expanded;
        }
        week();
        protector();
        out_.Actions = actions(out_.LEX8h);
        if (!group_.Week.empty()) out_.WeekActions = actions(out_.LEXw);
        warnings_.add("edition", {}, Text::WarnEdition);
        return std::move(out_);
    }

private:
    // The strategy by tasks.

    void byTasks() {
        if (group_.Tasks.empty()) warnings_.bad({}, Text::WarnNoTasks);
        for (const AssessmentTask& task : group_.Tasks)
            out_.Tasks.push_back(figuresOf(task));
        const bool isWhole = std::all_of(out_.Tasks.begin(), out_.Tasks.end(),
                                         [](const TaskResult& task) { return task.Contribution.has_value(); });
        if (isWhole && !out_.Tasks.empty()) sumUp();
        compareTimes();
    }

    TaskResult figuresOf(const AssessmentTask& task) {
        TaskResult out;
        out.Name = task.Name;
        const SampleLevels samples = samples_.gather(task.Samples, task.Name, warnings_, out_.Sources);
        if (samples.AreAllThere) {
            out.Leq = energyMean(samples.Levels);
            out.U1a = uncertaintyOfMean(samples.Levels);
            checkSamples(samples.Levels, task.Name);
        }
        if (isDuration(task.Hours)) {
            out.Hours = task.Hours;
        } else {
            warnings_.bad(task.Name, Text::WarnDurationCannotBe, warnings_.number(task.Hours));
        }
        out.U1b = ofDuration(task);
        if (out.Leq && out.Hours) {
            out.Contribution = normalisedTo8Hours(*out.Leq, *out.Hours);
            out.Points = exposurePoints(*out.Leq, *out.Hours);
        }
        out.CPeak = ownPeak(task.CPeak, task.Name);
        if (!task.CPeak) out.CPeak = samples.CPeak;
        takeHigher(otherPeak_, samples.OtherPeak);
        return out;
    }

    Figure ofDuration(const AssessmentTask& task) {
        if (!task.HoursRange) return 0;
        const auto [shortest, longest] = *task.HoursRange;
        const std::string range = warnings_.number(shortest) + "-" + warnings_.number(longest);
        if (shortest < 0 || shortest > longest || !isDuration(longest)) {
            warnings_.bad(task.Name, Text::WarnNoRange, range);
            return std::nullopt;
        }
        if (isDuration(task.Hours) && (task.Hours < shortest - kSmall || task.Hours > longest + kSmall))
            warnings_.add("duration-range", task.Name, Text::WarnHoursOutOfRange, warnings_.number(task.Hours), range);
        return uncertaintyOfDuration(shortest, longest);
    }

    void sumUp() {
        double energy = 0;
        double points = 0;
        for (const TaskResult& task : out_.Tasks) {
            energy += energyOf(*task.Contribution);
            points += *task.Points;
        }
        out_.LEX8h = levelOf(energy);
        bool isCertain = true; // true as long as every term can be computed
        double sum = 0;
        std::vector<double> terms;
        for (TaskResult& task : out_.Tasks) {
            task.Share = *task.Points / points;
            task.C1a = levelSensitivity(*task.Leq, *task.Hours, *out_.LEX8h);
            task.C1b = durationSensitivity(*task.C1a, *task.Hours);
            isCertain = isCertain && task.U1a && task.U1b;
            if (!isCertain) continue;
            terms.push_back(squared(*task.C1a) * (squared(*task.U1a) + squared(out_.U2) + squared(out_.U3)) +
                            squared(*task.C1b * *task.U1b));
            sum += terms.back();
        }
        if (!isCertain) return;
        out_.Uncertainty = std::sqrt(sum);
        for (std::size_t i = 0; i < terms.size() && terms.size() > 1; ++i) {
            if (terms[i] > sum / 2 * (1 + kSmall))
                warnings_.add("one-task-dominates", out_.Tasks[i].Name, Text::WarnOneTaskDominates);
        }
    }

    void compareTimes() {
        if (out_.Tasks.empty() || !group_.EffectiveDay || !effectiveDay()) return;
        double sum = 0;
        for (const TaskResult& task : out_.Tasks) {
            if (!task.Hours) return;
            sum += *task.Hours;
        }
        if (std::abs(sum - *group_.EffectiveDay) > kSlackOfTimes + kSmall)
            warnings_.add("time-sum", {}, Text::WarnTasksAndDay, warnings_.number(sum),
                          warnings_.number(*group_.EffectiveDay));
    }

    // The strategies by samples of a job or of whole days.

    void bySamples() {
        const SampleLevels samples = samples_.gather(group_.Samples, {}, warnings_, out_.Sources);
        jobPeak_ = samples.CPeak;
        takeHigher(otherPeak_, samples.OtherPeak);
        const Figure hours = effectiveDay();
        const bool isJob = group_.Strategy == Strategy::Job;
        if (isJob) checkMeasuredTime(samples.MeasuredHours);
        if (!samples.AreAllThere) return;
        const std::size_t count = samples.Levels.size();
        if (isJob && count < kFewestJobSamples) warnings_.add("few-job-samples", {}, Text::WarnFewJobSamples);
        if (!isJob) checkSamples(samples.Levels, {});
        if (hours) out_.LEX8h = normalisedTo8Hours(*energyMean(samples.Levels), *hours);
        out_.U1 = standardDeviation(samples.Levels);
        if (!out_.U1) return;
        out_.C1u1 = samplingUncertainty(count, *out_.U1);
        if (*out_.U1 > kHighestU1) {
            warnings_.add("large-c1u1", {}, Text::WarnDeviation, warnings_.number(*out_.U1));
        } else if (out_.C1u1 && toHundredths(*out_.C1u1) > kLargestC1u1) {
            warnings_.add("large-c1u1", {}, Text::WarnSamplingUncertainty, warnings_.number(*out_.C1u1));
        }
        if (out_.C1u1 && out_.LEX8h)
            out_.Uncertainty = std::sqrt(squared(*out_.C1u1) + squared(out_.U2) + squared(out_.U3));
    }

    void checkSamples(const std::vector<double>& levels, const Task& task) {
        if (levels.size() < kFewestSamples) warnings_.add("few-samples", task, Text::WarnFewSamples);
        const auto [lowest, highest] = std::minmax_element(levels.begin(), levels.end());
        if (levels.size() == kFewestSamples && reaches(*highest - *lowest, kWidestSpread))
            warnings_.add("spread", task, Text::WarnSpread);
    }

    void checkMeasuredTime(const Figure& hours) {
        if (!group_.Workers || *group_.Workers < 1) return;
        const double least = minimumMeasuredHours(*group_.Workers);
        if (!hours || *hours >= least - kSmall) return;
        warnings_.add("measured-time", {},
                      *group_.Workers > kLargestGroup ? Text::WarnMeasuredTooShortOrSplit : Text::WarnMeasuredTooShort,
                      warnings_.number(*hours), warnings_.number(least));
    }

    Figure effectiveDay() {
        const double hours = group_.EffectiveDay.value_or(kReferenceHours);
        if (isDuration(hours)) return hours;
        warnings_.bad({}, Text::WarnDurationCannotBe, warnings_.number(hours));
        return std::nullopt;
    }

    // What all strategies have: peaks, the week, the protector.

    static void takeHigher(Figure& highest, const Figure& figure) {
        if (figure && (!highest || *figure > *highest)) highest = figure;
    }

    Figure ownPeak(const Figure& peak, const Task& task) {
        if (!peak || isLevel(*peak)) return peak;
        warnings_.bad(task, Text::WarnLevelCannotBe, warnings_.number(*peak));
        return std::nullopt;
    }

    void peak() {
        out_.CPeak = ownPeak(group_.CPeak, {});
        if (!group_.CPeak) {
            out_.CPeak = jobPeak_;
            for (const TaskResult& task : out_.Tasks)
                takeHigher(out_.CPeak, task.CPeak);
        }
        if (out_.CPeak) return;
        if (otherPeak_) {
            warnings_.add("no-c-peak", {}, Text::WarnPeakNotCWeighted, warnings_.number(*otherPeak_));
        } else {
            warnings_.add("no-c-peak", {}, Text::WarnNoPeak);
        }
    }

    void week() {
        std::vector<double> days;
        bool isWhole = !group_.Week.empty();
        for (const AssessmentDay& day : group_.Week) {
            // 0 is allowed: a day may have no exposure.
            const bool isBad = day.LEX8h && *day.LEX8h != 0 && !isLevel(*day.LEX8h);
            if (isBad) warnings_.bad({}, Text::WarnLevelCannotBe, warnings_.number(*day.LEX8h));
            const Figure level = day.LEX8h ? day.LEX8h : out_.LEX8h;
            isWhole = isWhole && level && !isBad;
            if (isWhole) days.push_back(*level);
        }
        if (isWhole) out_.LEXw = weeklyExposure(days);
    }

    void protector() {
        if (!group_.Protector) return;
        const AssessmentProtector& worn = *group_.Protector;
        ProtectedResult& result = out_.Protected.emplace();
        const Figure reduction = reductionOf(worn, result);
        const bool isShare = worn.WornPercent >= 0 && worn.WornPercent <= 100;
        if (!isShare) warnings_.bad({}, Text::WarnWornShare, warnings_.number(worn.WornPercent));
        if (!reduction || !out_.LEX8h) return;
        result.Level = *out_.LEX8h - *reduction;
        if (!isShare) return;
        result.Effective = levelPartlyProtected(*out_.LEX8h, *result.Level, worn.WornPercent / 100);
        result.Verdict = verdictOf(*result.Effective, session_.Options.ActionLevel);
    }

    Figure reductionOf(const AssessmentProtector& worn, ProtectedResult& result) {
        if (worn.Reduction) {
            result.Method = "given";
            if (*worn.Reduction == 0 || isLevel(*worn.Reduction)) return worn.Reduction;
            warnings_.bad({}, Text::WarnLevelCannotBe, warnings_.number(*worn.Reduction));
            return std::nullopt;
        }
        const MeasuredProtector* found = samples_.protector(worn, warnings_, out_.Sources);
        if (found == nullptr || !found->IsKnown) {
            if (found != nullptr) warnings_.bad({}, Text::NoSuchProtector, worn.Name);
            return std::nullopt;
        }
        out_.Sources.back().Leq = found->Leq;
        result.Method = found->Method;
        if (found->Leq && found->Level) return *found->Leq - *found->Level;
        warnings_.bad({}, Text::WarnProtectorNotComputed, worn.Name);
        return std::nullopt;
    }

    // The weekly level with the protector, which is assumed to reduce the week's level by as much as the day's.
    Figure underProtector(const Figure& level) const {
        if (!out_.Protected) return level;
        if (!level || !out_.LEX8h || !out_.Protected->Effective) return std::nullopt;
        return *level - (*out_.LEX8h - *out_.Protected->Effective);
    }

    std::vector<ActionResult> actions(const Figure& level) const {
        std::vector<ActionResult> list;
        for (const ActionRule& rule : kActions) {
            const Figure compared = rule.isPeak ? out_.CPeak : rule.isWithProtector ? underProtector(level) : level;
            list.push_back({session_.LoadText(rule.name), rule.limit, rule.isPeak, state(compared, rule),
                            rule.isWithProtector && !rule.isPeak && out_.Protected.has_value()});
        }
        return list;
    }

    ActionState state(const Figure& figure, const ActionRule& rule) const {
        if (!figure) return ActionState::NotMeasured;
        if (reaches(*figure, rule.limit)) return ActionState::Exceeded;
        if (rule.isPeak) return ActionState::Below;
        if (!out_.Expanded) return ActionState::Undecided;
        return reaches(*figure + *out_.Expanded, rule.limit) ? ActionState::WithinUncertainty : ActionState::Below;
    }

    const Session& session_;
    const AssessmentGroup& group_;
    const SampleSource& samples_;
    GroupResult out_;
    Warnings warnings_; // writes to out_.Warnings
    Figure jobPeak_, otherPeak_;
};

} // namespace

std::string_view stateName(ActionState state) {
    constexpr std::string_view kNames[] = {"below", "within uncertainty", "exceeded", "not measured", "below"};
    return kNames[static_cast<std::size_t>(state)];
}

std::vector<GroupResult> assess(const Session& session, const Assessment& assessment, const std::string& path,
                                const Measurements& measured) {
    const SampleSource samples(path, measured);
    std::vector<GroupResult> results;
    for (const AssessmentGroup& group : assessment.Groups)
        results.push_back(GroupAssessment(session, group, samples).build());
    return results;
}

} // namespace kestrane

#include "assessment/Criteria.h"

#include "assessment/LogLevels.h"
#include "assessment/Reaches.h"
#include "calc/BandLevels.h"
#include "calc/CriterionRules.h"
#include "calc/Recalculation.h"
#include "model/Acoustics.h"
#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kEnergyRate = 3;    // dB; at this rate a dose without threshold follows from LAeq
constexpr double kLongestExact = 60; // seconds of a row, for which a dose is exact

std::vector<CriterionRule> rulesOf(const std::optional<OwnCriterion>& own) {
    std::vector<CriterionRule> rules = criterionRules();
    if (own) rules.push_back(ownRule(own->Criterion, own->Threshold, own->Exchange));
    return rules;
}

// The hours of the run of a log that has no rows; 0 when they are not known.
double hoursOfRun(const clsLog& log) {
    try {
        return std::max(getTime(log, 'h', Run::Measured, ExcludedRows::Count), 0.0F);
    } catch (const RuntimeError&) {
        return 0;
    }
}

class SideBySide {
public:
    explicit SideBySide(const clsLog& log) : log_(log), levels_(levelsOfRows(log)) {
        out_.Rows = static_cast<std::int64_t>(levels_.Rows.size());
        const bool hasRows = log.LogIntervals.Count() > 0;
        out_.MeasuredHours = hasRows ? levels_.Hours : hoursOfRun(log);
        out_.ExposureHours = log.objLogOptions.ExposureTime;
        out_.LAeq = hasRows ? levels_.Leq : aWeightedLeq(log);
        out_.LCpeak = levels_.CPeak;
    }

    Criteria build(const std::optional<OwnCriterion>& own) {
        for (const CriterionRule& rule : rulesOf(own))
            out_.All.push_back(figures(rule));
        return std::move(out_);
    }

private:
    std::string text(Text::Id id) const { return log_.session().LoadText(id); }

    // A threshold of 0 dB leaves nothing out.
    static double thresholdOf(const CriterionRule& rule) { return rule.Threshold.value_or(0); }

    static bool followsFromLeq(const CriterionRule& rule) {
        return rule.Exchange == kEnergyRate && thresholdOf(rule) == 0;
    }

    CriterionFigures figures(const CriterionRule& rule) const {
        CriterionFigures out;
        out.Name = rule.Name;
        out.Title = text(rule.Title);
        out.Criterion = rule.Criterion;
        out.Threshold = rule.Threshold;
        out.Exchange = rule.Exchange;
        out.IsFromRows = !levels_.Rows.empty();
        if (rule.Exchange == kEnergyRate && out_.LAeq && out_.ExposureHours > 0)
            out.LEX8h = normalisedTo8Hours(*out_.LAeq, out_.ExposureHours);
        if (rule.Criterion) takeDose(out, rule);
        out.Note = note(rule);
        const bool isFound = rule.Criterion ? out.Dose.has_value() : out.LEX8h.has_value();
        if (!isFound) out.Missing = missing(rule);
        for (const LimitRule& limit : rule.Limits) {
            const auto& figure = limit.IsDose ? out.ProjectedDose : out.LEX8h;
            out.Limits.push_back({text(limit.Name), limit.Value, limit.IsDose,
                                  figure ? std::optional(reaches(*figure, limit.Value)) : std::nullopt});
        }
        return out;
    }

    std::optional<double> dose(const CriterionRule& rule) const {
        if (out_.MeasuredHours <= 0) return std::nullopt;
        const double criterion = *rule.Criterion;
        if (levels_.Rows.empty()) {
            if (!followsFromLeq(rule) || !out_.LAeq || log_.LogIntervals.Count() > 0) return std::nullopt;
            return dosePart(*out_.LAeq, out_.MeasuredHours, {criterion, rule.Exchange});
        }
        double sum = 0;
        for (const RowLevel& row : levels_.Rows) {
            // Compared in single precision, in which levels are kept.
            if (rule.Threshold && static_cast<float>(row.Level) < static_cast<float>(*rule.Threshold)) continue;
            sum += dosePart(row.Level, row.Seconds / 3600, {criterion, rule.Exchange});
        }
        return sum;
    }

    void takeDose(CriterionFigures& out, const CriterionRule& rule) const {
        out.Dose = dose(rule);
        if (!out.Dose) return;
        const double criterion = *rule.Criterion;
        const double perDecade = rule.PerDecade.value_or(decibelsPerDecade(rule.Exchange));
        out.ProjectedDose = *out.Dose * out_.ExposureHours / out_.MeasuredHours;
        if (*out.Dose <= 0) return; // a dose of 0 has no level
        out.TWA = levelOfDose(*out.Dose, criterion, perDecade);
        out.LAVG = averageLevelOfDose(*out.Dose, {criterion, rule.Exchange}, out_.MeasuredHours);
        if (*out.ProjectedDose > 0) out.ProjectedTWA = levelOfDose(*out.ProjectedDose, criterion, perDecade);
    }

    // Says where the levels come from and whether the rows are too long for the criterion.
    std::string note(const CriterionRule& rule) const {
        std::string note;
        const auto add = [&](const std::string& words) { note += (note.empty() ? "" : "; ") + words; };
        const bool isByB = levels_.Origin == LevelsFrom::ChannelB;
        const bool isSlow = (isByB ? log_.TimeWeightB() : log_.TimeWeightA()) == "Slow";
        if (!levels_.Rows.empty() && !followsFromLeq(rule) && rule.Criterion &&
            (levels_.LongestRow > kLongestExact || !isSlow))
            add(ReplaceText(text(Text::BasisApproximate), "^", singleText(static_cast<float>(levels_.LongestRow))));
        if (isByB && out_.LAeq) add(text(Text::BasisChannelB));
        if (levels_.Origin == LevelsFrom::Bands && out_.LAeq) add(text(Text::BasisBands));
        if (const std::string reported = reportedDose(rule); !reported.empty()) add(reported);
        return note;
    }

    // The dose that the instrument itself reported. It is shown only under the criterion, exchange rate and threshold
    // that the instrument was set to.
    std::string reportedDose(const CriterionRule& rule) const {
        const bool isReported = log_.has(Trait::KeepsReportedExposure) && log_.DoseETCumA.Value() != 0 &&
                                (log_.ReportedFigures & reportedBit(kChannelA, eDoseET)) != 0;
        const CriterionRate setTo = reportedRule(log_);
        if (!isReported || rule.Criterion != setTo.Criterion || rule.Exchange != setTo.Exchange) return {};
        const double threshold = isNumeric(log_.Threshold, {}) ? toDouble(log_.Threshold, {}) : 0;
        if (threshold != thresholdOf(rule)) return {};
        return ReplaceText(text(Text::ReportedByInstrument), "^",
                           log_.DoseETCumA.Format(Zeros::Shown, Reading::Reported, "##0.0", log_.session().locale));
    }

    std::string missing(const CriterionRule& rule) const {
        const bool hasNoRows = log_.LogIntervals.Count() == 0;
        if (levels_.Origin == LevelsFrom::Nowhere) return text(Text::NoAWeightedLevel);
        if (hasNoRows && !followsFromLeq(rule) && rule.Criterion) return text(Text::NeedsRows);
        return text(hasNoRows ? (out_.LAeq ? Text::NoMeasuredTime : Text::NoAWeightedLevel) : Text::NoRowsCount);
    }

    const clsLog& log_;
    const LogLevels levels_;
    Criteria out_;
};

} // namespace

Criteria criteriaOf(const clsLog& log, const std::optional<OwnCriterion>& own) {
    return SideBySide(log).build(own);
}

} // namespace kestrane

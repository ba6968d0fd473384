#include "calc/Recalculation.h"

#include "calc/ExposureTime.h"
#include "model/Acoustics.h"
#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace kestrane {

namespace {

enum class Basis { Exposure, Measured };

// The figures of one channel.
struct Channel {
    float leq;
    clsValue& lepdET;
    clsValue& lepdMT;
    clsValue& doseET;
    clsValue& doseMT;
    clsValue& doseHour;
    clsValue& sel;
    clsValue& pa2h;
};

Channel channelA(clsLog& log) {
    return {log.LeqCumA(0).CalcValue(),
            log.LepdETCumA,
            log.LepdMTCumA,
            log.DoseETCumA,
            log.DoseMTCumA,
            log.DoseHourA,
            log.SELCumA,
            log.Pa2hCumA};
}

Channel channelB(clsLog& log) {
    return {log.LeqCumB.CalcValue(), log.LepdETCumB, log.LepdMTCumB, log.DoseETCumB,
            log.DoseMTCumB,          log.DoseHourB,  log.SELCumB,    log.Pa2hCumB};
}

// The calculators of one log. Each keeps a figure that is not 0 unless stored values are overwritten, and leaves the
// figure as it is when the time is not known or the arithmetic fails.
class Calculators {
public:
    explicit Calculators(const clsLog& log) : log_(log) {}

    void lepd(clsValue& figure, float leq, Basis basis) const {
        compute(figure, true, [&]() -> std::optional<double> {
            const float hours = time(basis);
            if (hours == 0) return std::nullopt;
            return clamped(normalisedTo8Hours(leq, hours));
        });
    }

    void leqFromLepd(clsValue& figure, float lepd) const {
        compute(figure, true, [&]() -> std::optional<double> {
            const float hours = time(Basis::Measured);
            if (hours == 0) return std::nullopt;
            return clamped(levelOfNormalised(lepd, hours));
        });
    }

    void dose(clsValue& figure, float leq, Basis basis) const {
        compute(figure, true, [&]() -> std::optional<double> {
            const float hours = time(basis);
            // This is meant: without an exchange rate the level stands for the dose (instrument convention).
            if (log_.Exchange == 0) return leq;
            return doseOf(leq, log_.Rule(), hours);
        });
    }

    void doseHour(clsValue& figure, float doseMT) const {
        compute(figure, false, [&]() -> std::optional<double> {
            const float hours = time(Basis::Measured);
            if (hours == 0) return std::nullopt;
            return dosePerHour(doseMT, hours);
        });
    }

    void sel(clsValue& figure, float leq) const {
        compute(figure, false, [&]() -> std::optional<double> {
            const float seconds = getTime(log_, 's', Run::Measured, ExcludedRows::LeftOut);
            if (seconds == 0) return 0;
            return soundExposureLevel(leq, seconds);
        });
    }

    // Some meters go by the exposure time, all others by the measured time; that is meant.
    void pa2h(clsValue& figure, float leq) const {
        compute(figure, false, [&]() -> std::optional<double> {
            return soundExposure(leq, time(log_.has(Trait::GoesByExposureTime) ? Basis::Exposure : Basis::Measured));
        });
    }

private:
    float time(Basis basis) const {
        return basis == Basis::Exposure ? log_.objLogOptions.ExposureTime
                                        : getTime(log_, 'h', Run::Measured, ExcludedRows::LeftOut);
    }

    static double clamped(double level) { return level < 0 ? 0 : level; }

    template <class Formula>
    void compute(clsValue& figure, bool isNeverNegative, Formula formula) const {
        if (!log_.OverwriteStoredValues && figure.CalcValue() != 0) {
            if (isNeverNegative && figure.CalcValue() < 0) figure.CalcValue(0);
            return;
        }
        try {
            if (const std::optional<double> value = formula()) figure.CalcValue(checkedSingle(*value));
        } catch (const RuntimeError&) { // the figure stays
        }
    }

    const clsLog& log_;
};

// Whether figures are still to be filled in, for the background pass.
bool hasMissingCumulative(const clsLog& log) {
    if (log.OverwriteStoredValues) return log.e("Last") != 0;
    const auto isMissing = [](const clsValue& value) { return value.CalcValue() == 0; };
    if (isMissing(log.SELCumA) || isMissing(log.LepdETCumA) || isMissing(log.DoseETCumA) || isMissing(log.PeakCumA)) {
        return true;
    }
    for (int band = log.e("Last"); band >= 0; --band) {
        if (isMissing(log.LeqCumA(band)) || isMissing(log.LminCumA(band)) || isMissing(log.LmaxCumA(band))) return true;
    }
    return log.IsChannelBOn &&
           (isMissing(log.SELCumB) || isMissing(log.LepdETCumB) || isMissing(log.DoseETCumB) ||
            isMissing(log.PeakCumB) || isMissing(log.LeqCumB) || isMissing(log.LminCumB) || isMissing(log.LmaxCumB));
}

void takeReturned(const clsLog& log, clsValue& figure, float returned) {
    if (returned != 0 && (log.OverwriteStoredValues || figure.CalcValue() == 0)) figure.CalcValue(returned);
}

void finishRecalculation(clsLog& log) {
    Session& session = log.session();
    if (!noLogIsBusy(session)) return;
    session.frame->SetPanel(Frame::Panel::Status, session.LoadText(Text::CalculatingCompleted));
    session.frame->EnableMenusAndButtons();
}

void takeResults(clsLog& log, const RecalcResults& results) {
    log.RecalcThread.reset();
    log.IntervalsRecalculating = false;
    IntervalColumns& rows = log.LogIntervals.Columns();
    rows.isExcluded.drop();
    if (!results.isExcluded.empty()) {
        const auto cells = rows.isExcluded.write(rows.count(), rows.capacity());
        std::copy(results.isExcluded.begin(), results.isExcluded.end(), cells.begin());
    }
    for (int band = 0; band <= log.e("Last"); ++band) {
        const auto at = static_cast<std::size_t>(band);
        takeReturned(log, log.LeqCumA(band), results.zLeqCumA[at]);
        takeReturned(log, log.LminCumA(band), results.zLminCumA[at]);
        takeReturned(log, log.LmaxCumA(band), results.zLmaxCumA[at]);
    }
    takeReturned(log, log.PeakCumA, results.zPeakCumA);
    takeReturned(log, log.LepdETCumA, results.zLepdETCumA);
    if (log.IsChannelBOn) {
        takeReturned(log, log.LeqCumB, results.zLeqCumB);
        takeReturned(log, log.LminCumB, results.zLminCumB);
        takeReturned(log, log.LmaxCumB, results.zLmaxCumB);
        takeReturned(log, log.PeakCumB, results.zPeakCumB);
    }
    CompleteRecalcProcess(log);
    finishRecalculation(log);
}

void takeError(clsLog& log, const ThreadError& error) {
    log.RecalcThread.reset();
    log.IntervalsRecalculating = false;
    log.HasFailedRecalc = true;
    Session& session = log.session();
    session.frame->SetPanel(Frame::Panel::Error,
                            threadErrorText(session, error.iErrNo, error.sDescription, error.iLine));
    finishRecalculation(log);
}

void startBackgroundPass(clsLog& log, const std::function<void()>& ended) {
    log.IntervalsRecalculating = true;
    log.session().frame->EnableMenusAndButtons();
    RecalcRequest request;
    request.rows = log.LogIntervals.Columns();
    request.iCalcMode = log.RecalcMode;
    request.Mode = log.Mode();
    request.IsChannelBOn = log.IsChannelBOn;
    request.CutIntervals = selectionRanges(log.LogIntervals.CutIntervals);
    request.IntervalsToBeIncluded = log.LogIntervals.IntervalsToBeIncluded;
    request.Interval = log.Interval;
    request.Criterion = log.Criterion;
    request.Exchange = log.Exchange;
    request.IsOldDoseMeter = log.has(Trait::ReportsDoseOnly);
    request.OverwriteStoredValues = log.OverwriteStoredValues;
    request.HasMissingCumulative = hasMissingCumulative(log);
    request.IsUnzoomedHalcyr = log.has(Trait::KeepsReportedExposure) && !log.IsZoomed;
    const std::int32_t id = ++log.RecalcID;
    RecalcEvents events;
    events.ThreadRecalcResults = [&log, id, ended](const RecalcResults& results) {
        if (log.RecalcID != id) return;
        takeResults(log, results);
        if (ended) ended();
    };
    events.Error = [&log, id, ended](const ThreadError& error) {
        if (log.RecalcID != id) return;
        takeError(log, error);
        if (ended) ended();
    };
    log.RecalcThread = log.session().server->Recalculate(std::move(request), std::move(events));
}

// Fills in the overall figures of a log without rows: the energy sum of its bands. Lmin and Lmax are summed like Leq,
// although that is no physical minimum or maximum; that is meant (instrument convention).
void sumBands(clsLog& log) {
    for (BandValues* values : {&log.LeqCumA, &log.LminCumA, &log.LmaxCumA}) {
        float sum = 0;
        bool isSeen = false;
        for (int band = 1; band <= values->last(); ++band) {
            const float level = std::as_const(*values)(band).CalcValue();
            if (level == 0) continue;
            sum = static_cast<float>(sum + energyOf(level));
            isSeen = true;
        }
        if (!isSeen) continue;
        clsValue& overall = (*values)(0);
        if (!(overall.CalcValue() == 0 || log.OverwriteStoredValues)) continue;
        try {
            overall.CalcValue(checkedSingle(levelOf(sum)));
        } catch (const RuntimeError&) { // the figure stays
        }
    }
}

void changeExposureTime(clsLog& log) {
    const Calculators calculate(log);
    const Channel a = channelA(log);
    calculate.lepd(a.lepdET, a.leq, Basis::Exposure);
    calculate.dose(a.doseET, a.leq, Basis::Exposure);
    const Channel b = channelB(log);
    if (log.has(Trait::NoExposureOnChannelB)) {
        b.lepdET.CalcValue(0);
        b.doseET.CalcValue(0);
    } else {
        calculate.lepd(b.lepdET, b.leq, Basis::Exposure);
        calculate.dose(b.doseET, b.leq, Basis::Exposure);
    }
    log.RaiseLogValuesChanged();
}

// Whether the dose, the dose per hour and the exposure of channel A are those that the meter reported, whatever the
// rows say.
bool keepsReportedExposure(const clsLog& log) {
    return !log.IsZoomed && log.has(Trait::KeepsReportedExposure);
}

void deriveChannelB(clsLog& log, const Calculators& calculate) {
    const Channel b = channelB(log);
    const bool isWithout = log.has(Trait::NoExposureOnChannelB);
    const auto unlessWithout = [&](clsValue& figure, const auto& calculator) {
        if (isWithout) {
            figure.CalcValue(0);
        } else {
            calculator();
        }
    };
    unlessWithout(b.lepdET, [&] { calculate.lepd(b.lepdET, b.leq, Basis::Exposure); });
    unlessWithout(b.lepdMT, [&] { calculate.lepd(b.lepdMT, b.leq, Basis::Measured); });
    calculate.sel(b.sel, b.leq);
    calculate.pa2h(b.pa2h, b.leq);
    unlessWithout(b.doseET, [&] { calculate.dose(b.doseET, b.leq, Basis::Exposure); });
    calculate.dose(b.doseMT, b.leq, Basis::Measured);
    unlessWithout(b.doseHour, [&] { calculate.doseHour(b.doseHour, b.doseMT.CalcValue()); });
}

// The level of a dose by the log's criterion and exchange rate. 0 for a dose of 0; raises 6 for a negative dose.
float twaOf(const clsLog& log, float dose) {
    return dose == 0 ? 0 : checkedSingle(twaOfDose(dose, log.Rule()));
}

// The figures that depend on the criterion level and the exchange rate, or only on the exchange rate.
struct CriterionFigure {
    Parameter parameter;
    bool byCriterion = true;
};

constexpr CriterionFigure kCriterionFigures[] = {{eDoseET}, {eDoseMT}, {eDoseHour}, {eTWA}, {eLAvg, false}};

bool isOfAnotherCriterion(const clsLog& log, LogChannel channel, Parameter parameter) {
    const auto* const depends =
        std::find_if(std::begin(kCriterionFigures), std::end(kCriterionFigures),
                     [&](const CriterionFigure& figure) { return figure.parameter == parameter; });
    if (log.CriterionDose == 0 || depends == std::end(kCriterionFigures)) return false;
    const bool isOther =
        log.Exchange != log.ExchangeDose || (depends->byCriterion && log.Criterion != log.CriterionDose);
    return isOther && isAsReported(log, channel, parameter);
}

// Whether a figure is what a level gives with the log's exposure time. For a dose, either the log's own criterion or
// the one that the figure was made with will do.
bool follows(const clsLog& log, float figure, Parameter parameter, float level) {
    constexpr double kClose = 1e-4; // as a part of the figure
    const float hours = log.objLogOptions.ExposureTime;
    const auto isFigure = [&](double value) { return std::abs(value - figure) <= kClose * figure; };
    if (parameter == eLepdET) return hours > 0 && isFigure(normalisedTo8Hours(level, hours));
    const auto isDoseBy = [&](DoseRule rule) {
        try {
            return isFigure(rule.Exchange == 0 ? level : doseOf(level, rule, hours));
        } catch (const RuntimeError&) { // there is no dose
            return false;
        }
    };
    return isDoseBy(log.Rule()) ||
           isDoseBy({static_cast<double>(log.CriterionDose), static_cast<double>(log.ExchangeDose)});
}

// Which time a figure marked "(ET)" was made with: the 8 hours that meters go by, the log's other exposure time, or
// neither.
enum class MadeWith { ReferenceTime, ExposureTime, AnotherTime };

// A figure that the program computed and then saved is read as a reported one, and so is its level. So it is enough
// when the figure follows from either level.
MadeWith exposureTimeOf(const clsLog& log, LogChannel channel, Parameter parameter) {
    const float figure = cumulativeValue(log, channel, parameter, 0).CalcValue();
    if (figure == 0 || log.objLogOptions.ExposureTime == static_cast<float>(kReferenceHours))
        return MadeWith::ReferenceTime;
    const clsValue level = cumulativeValue(log, channel, eLeq, 0);
    const bool isMade =
        follows(log, figure, parameter, level.CalcValue()) || follows(log, figure, parameter, level.Value());
    return isMade ? MadeWith::ExposureTime : MadeWith::AnotherTime;
}

bool isOfAnotherExposureTime(const clsLog& log, LogChannel channel, Parameter parameter) {
    return (parameter == eLepdET || parameter == eDoseET) &&
           exposureTimeOf(log, channel, parameter) == MadeWith::AnotherTime;
}

// Derives figures of channel A from its present levels, in a fixed order. With isReportedKept the dose, the dose per
// hour and the exposure of channel A stay as the meter reported them.
void deriveFigures(clsLog& log, bool isReportedKept) {
    const Calculators calculate(log);
    updateTWA(log); // from the exposure dose as it was before this pass; that is meant
    // When the program has computed LEP,d with another exposure time, it is no longer what the meter reported.
    const bool isLepdReported =
        log.has(Trait::ReportsDoseOnly) && exposureTimeOf(log, kChannelA, eLepdET) != MadeWith::ExposureTime;
    if (isLepdReported) {
        calculate.leqFromLepd(log.LeqCumA(0), log.LepdETCumA.CalcValue());
    } else {
        calculate.lepd(log.LepdETCumA, log.LeqCumA(0).CalcValue(), Basis::Exposure);
    }
    const Channel a = channelA(log);
    calculate.lepd(a.lepdMT, a.leq, Basis::Measured);
    calculate.sel(a.sel, a.leq);
    if (!isReportedKept) {
        calculate.pa2h(a.pa2h, a.leq);
        calculate.dose(a.doseET, a.leq, Basis::Exposure);
        calculate.doseHour(a.doseHour, a.doseMT.CalcValue());
    } else if (a.doseET.CalcValue() != a.doseET.Value()) { // it was computed for another exposure time
        calculate.dose(a.doseET, a.leq, Basis::Exposure);
    }
    calculate.dose(a.doseMT, a.leq, Basis::Measured);
}

bool isWeightedAorC(const std::string& weight) {
    return weight == "A" || weight == "C";
}

float nrrFigure(const clsLog& log, const clsValue& a, const clsValue& b) {
    if (isWeightedAorC(log.FreqWeightA())) return a.CalcValue();
    return log.IsChannelBOn && isWeightedAorC(log.FreqWeightB()) ? b.CalcValue() : 0;
}

} // namespace

void RecalcValues(clsLog& log, CalcMode iCalcMode, const std::function<void()>& ended) {
    constexpr std::array kOverwrites = {true, false, false, true, true};
    log.RecalcMode = iCalcMode;
    log.HasFailedRecalc = false;
    if (iCalcMode >= 0 && iCalcMode < static_cast<int>(kOverwrites.size())) {
        log.OverwriteStoredValues = kOverwrites[static_cast<std::size_t>(iCalcMode)];
    }
    if (iCalcMode == kCalcExposureTime) return changeExposureTime(log);
    if (log.LogIntervals.Count() > 0) return startBackgroundPass(log, ended);
    if (iCalcMode == kCalcFromIntervals) return;
    sumBands(log);
    CompleteRecalcProcess(log);
}

void RecalcFromBands(clsLog& log) {
    const bool before = std::exchange(log.OverwriteStoredValues, true);
    sumBands(log);
    deriveFigures(log, false);
    deriveFigures(log, false); // what a pass takes from the dose of the pass before
    log.OverwriteStoredValues = before;
    SetPlottableValues(log);
    log.RaiseLogValuesChanged();
}

void CompleteRecalcProcess(clsLog& log) {
    deriveFigures(log, keepsReportedExposure(log));
    if (log.IsChannelBOn) deriveChannelB(log, Calculators(log));
    if (log.RecalcMode == kCalcUnmarked || log.RecalcMode == kCalcFull) {
        SetPlottableValues(log);
        log.HasWholeFigures = false;
    }
    if (log.RecalcMode == kCalcFull) log.FullyCalculated = true;
    log.RaiseLogValuesChanged();
}

void setCriterion(clsLog& log, CriterionRate chosen) {
    const CriterionRate reported = reportedRule(log);
    log.CriterionDose = reported.Criterion;
    log.ExchangeDose = reported.Exchange;
    log.Criterion = chosen.Criterion;
    log.Exchange = chosen.Exchange;
}

CriterionRate reportedRule(const clsLog& log) {
    const bool isRemembered = log.CriterionDose != 0 || log.ExchangeDose != 0;
    return isRemembered ? CriterionRate{log.CriterionDose, log.ExchangeDose}
                        : CriterionRate{log.Criterion, log.Exchange};
}

std::string reportedNote(const clsLog& log, LogChannel channel, Parameter parameter) {
    const Session& session = log.session();
    std::string madeWith;
    if (isOfAnotherCriterion(log, channel, parameter)) {
        madeWith =
            ReplaceText(ReplaceText(session.LoadText(Text::MadeForCriterion), "^", std::to_string(log.CriterionDose)),
                        "*", std::to_string(log.ExchangeDose));
    }
    if (isOfAnotherExposureTime(log, channel, parameter)) {
        if (!madeWith.empty()) madeWith += ", ";
        madeWith += ReplaceText(session.LoadText(Text::NotForExposureTime), "^",
                                exposureTimeText(log.objLogOptions.ExposureTime));
    }
    return madeWith.empty() ? madeWith : ReplaceText(session.LoadText(Text::AsReported), "^", madeWith);
}

bool isToBeRecalculated(const clsLog& log, LogChannel channel, Parameter parameter) {
    constexpr double kSeen = 0.05; // dB or %; half of the last digit that is shown
    if (log.IsBusy() || log.HasWholeFigures || (parameter != eDoseHour && (parameter != eTWA || channel != kChannelA)))
        return false;
    const Parameter dose = parameter == eTWA ? eDoseET : eDoseMT;
    const bool isAsMeasured = isAsReported(log, channel, parameter) && isAsReported(log, channel, dose);
    const bool isKept = parameter == eDoseHour &&
                        (channel == kChannelA ? keepsReportedExposure(log) : log.has(Trait::NoExposureOnChannelB));
    if (isAsMeasured || isKept) return false;
    const float figure = cumulativeValue(log, channel, parameter, 0).CalcValue();
    try {
        if (parameter == eTWA) return std::abs(CalcTWACumA(log) - figure) > kSeen;
        const float hours = getTime(log, 'h', Run::Measured, ExcludedRows::LeftOut);
        const float measured = cumulativeValue(log, channel, dose, 0).CalcValue();
        return hours != 0 && std::abs(dosePerHour(measured, hours) - figure) > kSeen;
    } catch (const RuntimeError&) { // there is no such figure
        return false;
    }
}

void AmendedDisplayValues(const clsLog& log) {
    log.RaiseLogValuesChanged();
}

void RecalcValues(clsInsData& data, bool bForce) {
    Session& session = data.session();
    forEachLog(data, [&](clsLog& log) {
        bool isWanted = bForce;
        if (!bForce && session.Options.RecalcOnOpen) {
            isWanted = !log.Warn() || session.ShowMessage(session.LoadText(Text::AskRecalculationTakesTime),
                                                          kButtonsYesNo | kIconQuestion) == Button::Yes;
        } else if (!bForce) {
            isWanted = !log.FullyCalculated;
        }
        if (isWanted && log.IntervalsToLoad && !log.LogIntervals.CutIntervals.empty()) {
            log.RecalcWithRows = true;
        } else if (isWanted) {
            RecalcValues(log, kCalcFull);
        } else if (!log.IntervalsToLoad) {
            SetPlottableValues(log);
        }
    });
}

float CalcTWACumA(const clsLog& log) {
    return isWeightedAorC(log.FreqWeightA()) ? twaOf(log, DoseET_NRR(log)) : 0;
}

void updateTWA(clsLog& log) {
    try {
        log.TWACumA.CalcValue(CalcTWACumA(log));
    } catch (const RuntimeError&) { // the figure stays
    }
}

float TWA8CumA(const clsLog& log) {
    if (!isWeightedAorC(log.FreqWeightA())) return 0;
    try {
        const float hours = getTime(log, 'h', Run::Whole, ExcludedRows::LeftOut);
        if (hours == 0) return 0;
        return twaOf(log, checkedSingle(doseIn8Hours(DoseMT_NRR(log), hours)));
    } catch (const RuntimeError&) {
        return 0;
    }
}

float DoseET_NRR(const clsLog& log) {
    return nrrFigure(log, log.DoseETCumA, log.DoseETCumB);
}

float DoseMT_NRR(const clsLog& log) {
    return nrrFigure(log, log.DoseMTCumA, log.DoseMTCumB);
}

float Leq_NRR(const clsLog& log) {
    return nrrFigure(log, log.LeqCumA(0), log.LeqCumB);
}

} // namespace kestrane

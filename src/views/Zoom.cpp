#include "views/Zoom.h"

#include "calc/ExposureTime.h"
#include "calc/Recalculation.h"
#include "model/BusyFrame.h"
#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/Parameters.h"
#include "model/Session.h"
#include "views/Selection.h"

namespace kestrane {

namespace {

// A copy of a range begins with what the meter reported of the whole log. The window says that its figures are those of
// the whole log, so they must be what that shows: rows may be left out of it, and its weighting may be converted. What
// the meter has not reported stays missing, so that it can be filled in from the rows.
void takeShownFigures(clsLog& part, const clsLog& opened) {
    const auto take = [](clsValue& figure, const clsValue& shown) {
        figure.Value(shown.Value() != 0 ? shown.CalcValue() : 0);
    };
    const int last = lastBand(opened.Mode());
    for (const ParameterInfo& info : parameters()) {
        for (int band = 0; info.bands != nullptr && band <= last; ++band)
            take((part.*info.bands)(band), (opened.*info.bands)(band));
        for (const ParameterSource* source : {&info.A, &info.B})
            if (source->cumulative != nullptr) take(part.*source->cumulative, opened.*source->cumulative);
    }
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        for (int band = 0; band <= last; ++band)
            take(part.LnCumA(ln, band), opened.LnCumA(ln, band));
    part.ReportedFigures = reportedFiguresOf(opened);
}

void recalculate(clsLog& log) {
    Session& session = log.session();
    const BusyFrame busy(*session.frame);
    RecalcValues(log, kCalcAfterZoom);
    session.pump.runUntil([&log] { return !log.IntervalsRecalculating; });
}

// For each row of a range 1 when the selection of the log leaves it out, else 0.
std::vector<std::uint8_t> leftOut(const clsLog& log, const RowRange& range) {
    const clsLogIntervals& rows = log.LogIntervals;
    std::vector<std::uint8_t> flags = excludedRows(selectionRanges(rows.CutIntervals), rows.IntervalsToBeIncluded,
                                                   static_cast<std::size_t>(rows.Count()));
    flags.resize(static_cast<std::size_t>(rows.Count()));
    return {flags.begin() + (range.From - 1), flags.begin() + range.To};
}

} // namespace

void Zoom::open(const clsLog& opened) {
    ByTime = false;
    Range = {1, opened.LogIntervals.Count()};
    end();
}

bool Zoom::apply(clsLog& opened) {
    Session& session = opened.session();
    if (opened.IsBusy()) {
        session.ShowMessage(session.LoadText(Text::StillLoading), kIconInformation);
        return false;
    }
    const std::int64_t rows = opened.LogIntervals.Count();
    const RowRange range = ByTime ? Range : RowRange{1, rows};
    if (!isRangeOf(range, rows)) {
        session.ShowMessage(session.LoadText(Text::RangeInvalid), kIconExclamation);
        return false;
    }
    const bool isPart = range.From != 1 || range.To != rows;
    std::unique_ptr<clsLog> part = isPart ? makeZoom(opened, range.From, range.To) : nullptr;
    if (isPart) takeShownFigures(*part, opened);
    clsLog& inView = isPart ? *part : opened;
    const bool isRecalculated = isPart
                                    ? session.ShowMessage(session.LoadText(Text::AskRecalculate),
                                                          kButtonsYesNo | kIconQuestion | kDefaultSecond) == Button::Yes
                                    : session.Options.RecalcOnOpen;
    if (isRecalculated) recalculate(inView);
    if (isPart || isRecalculated) SetPlottableValues(inView);
    Range = applied_ = range;
    copy_ = std::move(part);
    return true;
}

void Zoom::follow(const clsLog& opened) {
    if (!copy_) return;
    copy_->Name = opened.Name;
    copy_->Note = opened.Note;
    copy_->UserCalibration.Before = opened.UserCalibration.Before;
    copy_->UserCalibration.After = opened.UserCalibration.After;
    const bool isOtherTime = copy_->objLogOptions.ExposureTime != opened.objLogOptions.ExposureTime;
    copy_->objLogOptions.Copy(opened.objLogOptions);
    SetPlottableValues(*copy_);
    if (isOtherTime) SetLogExposureTime(*copy_, opened.objLogOptions.ExposureTime);
}

std::string Zoom::otherSelectionLine(const clsLog& opened) const {
    if (!copy_) return {};
    const std::vector<std::uint8_t> ofLog = leftOut(opened, applied_);
    const bool isSame = leftOut(*copy_, {1, copy_->LogIntervals.Count()}) == ofLog;
    return isSame ? std::string() : opened.session().LoadText(Text::OtherSelectionInZoom);
}

void Zoom::RecalculateRange() const {
    if (copy_) RecalcValues(*copy_, kCalcFull);
}

std::string wholeFiguresLine(const clsLog& log) {
    return log.HasWholeFigures ? log.session().LoadText(Text::FiguresOfWholeLog) : std::string();
}

bool isLongZoom(const clsLog& log) {
    return log.IsZoomed && lastsFiveMinutes(log, ExcludedRows::Count);
}

} // namespace kestrane

#include "views/Zoom.h"

#include "calc/ExposureTime.h"
#include "calc/Recalculation.h"
#include "model/BusyFrame.h"
#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "views/Selection.h"

namespace kestrane {

namespace {

void recalculate(clsLog& log) {
    Session& session = log.session();
    const BusyFrame busy(*session.frame);
    RecalcValues(log, kCalcAfterZoom);
    session.pump.runUntil([&log] { return !log.IntervalsRecalculating; });
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

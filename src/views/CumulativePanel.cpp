#include "views/CumulativePanel.h"

#include "calc/BandLevels.h"
#include "calc/CalibrationText.h"
#include "calc/ExposureTime.h"
#include "calc/Recalculation.h"
#include "model/Captions.h"
#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Format.h"

#include <algorithm>
#include <array>

namespace kestrane {

namespace {

// A row of figures, with the names of its labels; "" for a channel that has none.
struct FigureRow {
    PanelSection section;
    Parameter parameter;
    std::string_view labelA;
    std::string_view labelB;
};

constexpr FigureRow kFigures[] = {
    {PanelSection::Levels, eLeq, "lblLeqA", "lblLeqB"},
    {PanelSection::Levels, eLmin, "lblLminA", "lblLminB"},
    {PanelSection::Levels, eLmax, "lblLmaxA", "lblLmaxB"},
    {PanelSection::Levels, ePeak, "lblPeak", "lblPeakB"},
    {PanelSection::Exposure, eLepdET, "lblLepdETA", "lblLepdETB"},
    {PanelSection::Exposure, eLepdMT, "lblLepdMTA", "lblLepdMTB"},
    {PanelSection::Exposure, eDoseET, "lblDoseETA", "lblDoseETB"},
    {PanelSection::Exposure, eDoseMT, "lblDoseMTA", "lblDoseMTB"},
    {PanelSection::Exposure, eDoseHour, "lblDoseHour", "lblDoseHourB"},
    {PanelSection::Levels, eLtm3, "lblLtm3", ""},
    {PanelSection::Levels, eLtm5, "lblLtm5", ""},
    {PanelSection::Exposure, eLe_Sel, "lblLE", "lblLEB"},
    {PanelSection::Exposure, ePa2Hr, "lblPA2hr", "lblPA2hrB"},
};

// The labels that stay blank at a location, for meters that measure different figures at different locations.
constexpr std::array<std::string_view, 5> kBlankAtWork = {"lblLE", "lblPeak", "lblLn", "lblLtm3", "lblLtm5"};
constexpr std::array<std::string_view, 9> kBlankInEnvironment = {
    "lblPeak", "lblLepdETA", "lblLepdMTA", "lblDoseETA", "lblDoseMTA", "lblDoseHour", "lblLtm3", "lblLtm5", "lblPA2hr"};

class Panel {
public:
    Panel(const clsLog& log, int band) :
        log_(log), session_(log.session()), options_(displayOptions(log)), band_(band) {}

    std::vector<PanelRow> rows() {
        for (const FigureRow& row : kFigures) {
            add(row.section, rowCaption(row), {std::string(row.labelA), {}, figure(kChannelA, row)},
                {log_.IsChannelBOn ? std::string(row.labelB) : std::string(), levelCaptionB(row),
                 figure(kChannelB, row)});
            addNotes(row.parameter);
            if (parameterInfo(row.parameter).unit == ParameterUnit::Decibels)
                rows_.back().Unit = session_.LoadText(Text::Decibel);
        }
        reportedAverages();
        add(PanelSection::Levels, session_.LoadText(Text::LnWord), {"lblLn", {}, lnText()});
        add(PanelSection::Exposure, session_.LoadText(Text::ExposureTime),
            {"lblExposureTime", {}, exposureTimeLabel(log_)});
        measurement();
        instrument();
        if (log_.has(Trait::OffersVariants)) blankUnmeasured();
        return std::move(rows_);
    }

private:
    void add(PanelSection section, std::string caption, PanelLabel a, PanelLabel b = {}) {
        a.Caption = caption;
        if (b.Caption.empty()) b.Caption = caption;
        rows_.push_back({section, std::move(caption), {}, std::move(a), std::move(b)});
    }

    void addNotes(Parameter parameter) {
        rows_.back().A.Note = reportedNote(log_, kChannelA, parameter);
        rows_.back().B.Note = reportedNote(log_, kChannelB, parameter);
        if (!isExposureNotAWeighted(log_, kChannelA, parameter)) return;
        std::string& note = rows_.back().A.Note;
        note += (note.empty() ? "(" : " (") + session_.LoadText(Text::NotAWeighted) + ")";
    }

    std::string rowCaption(const FigureRow& row) const {
        switch (row.parameter) {
        case eDoseHour:
            return session_.labels.DoseHourShort;
        case ePa2Hr:
            return session_.LoadText(Text::Pa2HoursPanel);
        default:
            return levelCaption(log_, kChannelA, row.parameter);
        }
    }

    std::string levelCaptionB(const FigureRow& row) const {
        return row.parameter <= ePeak ? levelCaption(log_, kChannelB, row.parameter) : std::string();
    }

    std::string format(const clsValue& value, std::string_view format = {}) const {
        return value.Format(Zeros::Shown, Reading::Computed, format, session_.locale);
    }

    std::string figure(LogChannel channel, const FigureRow& row) const {
        if (channel == kChannelB && (!log_.IsChannelBOn || row.labelB.empty())) return {};
        if (!options_.Plottable(channel, kCumulative, row.parameter)) return {};
        const clsValue value = cumulativeValue(log_, channel, row.parameter, band_);
        return row.parameter == ePa2Hr ? format(value, pa2HoursFormat(value.CalcValue(), {})) : format(value);
    }

    void reportedAverages() {
        std::string lavg;
        std::string twa;
        std::string twa8;
        if (log_.has(Trait::ReportsAverages)) {
            lavg = format(log_.LAvgCumA);
            twa = format(log_.TWACumA);
            if (const float level = TWA8CumA(log_); level != 0) twa8 = formatNumber(level, "##0.0", session_.locale);
        }
        const auto put = [&](PanelSection section, std::string caption, std::string name, std::string text) {
            add(section, std::move(caption), {std::move(name), {}, std::move(text)});
            rows_.back().Unit = session_.LoadText(Text::Decibel);
        };
        put(PanelSection::Levels, session_.labels.LAvg, "lblLAvg", lavg);
        addNotes(eLAvg);
        put(PanelSection::Exposure, session_.labels.TWA, "lblTWA", twa);
        addNotes(eTWA);
        put(PanelSection::Exposure, session_.LoadText(Text::TWA8), "lblTWA8", twa8);
    }

    std::string lnText() const {
        std::string text;
        for (int ln = 1; ln <= NumberOfLns; ++ln) {
            const bool isValid = log_.LnNumberA(ln) != 0 && (log_.has(Trait::KeepsPercentiles) || isCumulativeLn(ln));
            if (!isValid || !options_.Plottable(kChannelA, kCumulative, eLn(ln))) continue;
            if (!text.empty()) text += ' ';
            text += "(L" + std::to_string(log_.LnNumberA(ln)) + ") " + format(log_.LnCumA(ln, band_));
        }
        return text;
    }

    bool isCumulativeLn(int ln) const {
        try {
            return IsLnCumulativeValid(log_, kChannelA, ln);
        } catch (const RuntimeError&) {
            return false;
        }
    }

    void measurement() {
        const auto put = [&](Text::Id caption, std::string name, std::string text) {
            add(PanelSection::Measurement, session_.LoadText(caption), {std::move(name), {}, std::move(text)});
        };
        put(Text::LogStartDate, "lblStartDate", log_.StartDate.Format());
        put(Text::LogStartTime, "lblStartTime", log_.StartTime.hh_mm_ss());
        put(Text::LogEndDate, "lblEndDate", log_.EndDate.Format());
        put(Text::LogEndTime, "lblEndTime", log_.EndTime.hh_mm_ss());
        put(Text::LogLength, "lblLength", LogLengthText(log_));
        put(Text::LogIntervalLength, "lblLogInterval", log_.IntervalText());
        put(Text::OverloadOccurred, "lblOverloaded", log_.IsLoggingOverLoadedText());
        rows_.back().A.IsWarning = log_.IsLoggingOverLoaded;
        put(Text::ModeLabel, "lblMode", modeText());
    }

    void instrument() {
        const auto put = [&](Text::Id caption, std::string name, std::string text, PanelLabel b = {}) {
            add(PanelSection::Instrument, session_.LoadText(caption), {std::move(name), {}, std::move(text)},
                std::move(b));
        };
        const std::string b = log_.IsChannelBOn ? "B" : std::string();
        put(Text::FrequencyWeighting, "lblFrqWgt", log_.FreqWeightA(),
            {b.empty() ? b : "lblFrqWgtB", {}, b.empty() ? b : log_.FreqWeightB()});
        put(Text::TimeWeighting, "lblTimeWgt", log_.TimeWeightA(),
            {b.empty() ? b : "lblTimeWgtB", {}, b.empty() ? b : log_.TimeWeightB()});
        put(Text::Range, "lblRange", log_.Range);
        put(Text::Threshold, "lblThreshold", log_.Threshold);
        put(Text::LastUserCalibration, "lblUserCal", log_.CalibDate.Format());
        if (const std::string levels = calibrationLevels(log_); !levels.empty()) {
            put(Text::CalibrationLabel, "lblCalibration", levels);
            rows_.back().A.IsWarning = log_.UserCalibration.DriftsTooFar();
        }
        if (const std::string offset = calibrationOffset(log_); !offset.empty())
            put(Text::CalibrationOffsetLabel, "lblCalibrationOffset", offset);
        put(Text::FactoryCalibrationDue, "lblFactoryCal", log_.FactoryCalibDate.Format());
    }

    std::string modeText() const {
        std::string location = log_.LocationType();
        if (location == NoiseAtWorkLocation) return session_.LoadText(Text::LocationNaw);
        if (location == EnvironmentLocation) return session_.LoadText(Text::LocationEnv);
        return location;
    }

    void blankUnmeasured() {
        const std::string location = log_.LocationType();
        const auto blank = [&](const auto& names) {
            for (PanelRow& row : rows_) {
                if (std::find(names.begin(), names.end(), row.A.Name) != names.end()) row.A.Text.clear();
            }
        };
        if (location == NoiseAtWorkLocation) blank(kBlankAtWork);
        if (location == EnvironmentLocation) blank(kBlankInEnvironment);
    }

    const clsLog& log_;
    const Session& session_;
    clsLogOptions options_;
    int band_;
    std::vector<PanelRow> rows_;
};

} // namespace

std::string valueText(const PanelLabel& label, const std::string& unit) {
    std::string text = label.Text;
    for (const std::string& part : {unit, label.Note})
        if (!label.Text.empty() && !part.empty()) text += " " + part;
    return text;
}

std::string heardText(const Session& session, const PanelRow& row, LogChannel channel) {
    const bool isB = channel == kChannelB;
    const PanelLabel& label = isB ? row.B : row.A;
    if (label.Text.empty()) return {};
    std::string text = withoutColon(PlainCaption(label.Caption));
    if (!row.B.Name.empty()) text += ", " + session.LoadText(isB ? Text::ChannelB : Text::ChannelA);
    // Percentiles are one label with several levels, which has no unit of its own.
    const std::string unit = row.Section == PanelSection::Levels ? session.LoadText(Text::Decibel) : row.Unit;
    return text + ", " + valueText(label, unit);
}

std::vector<PanelRow> cumulativePanel(const clsLog& log, int band) {
    return Panel(log, band).rows();
}

bool isShownIn(PanelForm panel, PanelSection section) {
    return section != PanelSection::Levels || panel != ePanelAdvanced;
}

bool showsChannelB(PanelForm panel) {
    return panel != ePanelMainChannelA;
}

std::vector<PanelLabel> shownLabels(const clsLog& log, int band) {
    std::vector<PanelLabel> labels;
    for (const PanelRow& row : cumulativePanel(log, band)) {
        for (const PanelLabel& label : {row.A, row.B}) {
            if (!label.Name.empty() && !label.Text.empty()) labels.push_back(label);
        }
    }
    return labels;
}

} // namespace kestrane

// One logged measurement run of one instrument: what the instrument reported for the whole run, its rows, peaks,
// exposure rows and display options. It holds data and display texts only: recalculation is in calc/, background work
// in server/, files in files/. Owned by a clsInsData; used on the owner thread only.
#pragma once

#include "model/Acoustics.h"
#include "model/BackgroundWork.h"
#include "model/BandValues.h"
#include "model/CalcMode.h"
#include "model/Calibration.h"
#include "model/InstrumentFamilies.h"
#include "model/clsDate.h"
#include "model/clsDoseLogSample.h"
#include "model/clsLogIntervals.h"
#include "model/clsLogOptions.h"
#include "model/clsLogShared.h"
#include "model/clsPeak.h"
#include "model/clsTime.h"
#include "model/clsValue.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

struct Session;

// Members of a log that are only carried: copies take them over, and no rule of the program reads them.
struct CarriedLogData {
    std::string strDataStream; // reception buffer of a download
    std::string strEndChars;   // end marker of a download block
    std::string Frq;
    std::int32_t SampleCount = 0;
};

// Everything in a log that a copy takes over, except its rows.
struct LogData : CarriedLogData {
    bool IsZoomed = false;          // this log is a zoomed range of another log
    bool IsParent5Mins = false;     // in a zoomed log: the other log lasts at least five minutes
    bool HasWholeFigures = false;   // in a zoomed log: its cumulative figures are still those of the other log
    bool FullyCalculated = false;   // the cumulative values have been recalculated
    bool SaveDoseCalc = false;      // DoseLogIntervals are to be saved
    bool AreDoseRowsEdited = false; // the user has edited DoseLogIntervals
    Calibration UserCalibration;    // not in the data file, except for what its offset did to the levels
    std::string InsName;
    float FirmwareVersion = 0;
    std::string Threshold, Range, Region; // as the instrument reported them
    std::vector<clsDoseLogSample> DoseLogIntervals;
    std::vector<clsDoseLogSample> KeepDoseLogIntervals; // DoseLogIntervals as loaded
    std::int16_t CriterionDose = 0, ExchangeDose = 0;   // of the reported figures, dB; 0: those of the log
    std::uint64_t ReportedFigures = ~std::uint64_t{0};  // by reportedBit: the figures that may be the instrument's own
    clsLogOptions objLogOptions;
    std::string Name;
    std::int32_t Number = 0; // the log's number on the instrument
    std::int32_t LogId = 0;  // identity within its collection; 0 until it has been given one
    bool Selected = false;
    std::int16_t Criterion = 90; // dB
    std::int16_t Exchange = 3;   // dB
    bool IsChannelBOn = false;
    bool IsLnNumbersOn = false;
    bool IsLoggingOverLoaded = false;
    std::int32_t Interval = 0; // seconds
    bool IsErraticIntervals = false;
    std::vector<clsPeak> Peaks;
    std::string Note;
    std::string CutReason; // why intervals are left out, as the user gave it; not in the data file
    clsDate FactoryCalibDate, CalibDate;
    clsTime CalibTime;
    clsDate StartDate, EndDate;
    clsTime StartTime, EndTime;
    std::int32_t MeasurementTimeFromInstrument = 0; // seconds; 0 when the instrument reports none
    clsDate LminCumDateA, LmaxCumDateA, PeakCumDateA;
    clsTime LminCumTimeA, LmaxCumTimeA, PeakCumTimeA;

    // The figures of channel A by band. LnNumberA says which percentile Ln i (1..10) is; 0 when Ln i is not in use.
    BandValues LeqCumA, LminCumA, LmaxCumA;
    LnValues LnCumA;
    clsValue PeakCumA, DoseETCumA, DoseMTCumA, DoseHourA, LepdETCumA, LepdMTCumA, SELCumA, Pa2hCumA, LAvgCumA, TWACumA,
        Ltm3CumA, Ltm5CumA;
    clsValue LeqCumB, LminCumB, LmaxCumB, PeakCumB, DoseETCumB, DoseMTCumB, LepdETCumB, LepdMTCumB, SELCumB, DoseHourB,
        Pa2hCumB;

    std::int16_t LnNumberA(int ln) const;
    void LnNumberA(int ln, std::int16_t number);

protected:
    std::array<std::int16_t, NumberOfLns> lnNumbers_{};
    std::string freqWeightA_, freqWeightB_, timeWeightA_, timeWeightB_;
};

class clsLog : public LogData {
public:
    // Display options start as a copy of the session's.
    explicit clsLog(Session& session);
    clsLog(const clsLog&) = delete;
    clsLog& operator=(const clsLog&) = delete;

    Session& session() const { return session_; }

    clsLogIntervals LogIntervals;
    std::shared_ptr<clsLogShared> objLogShared; // shared with the rows

    // Background work. The flags say what is going on; what the work consists of is not known here.
    bool IntervalsToLoad = false;
    bool IntervalsLoading = false;
    bool IntervalsRecalculating = false;
    bool HasUnreadIntervals = false; // rows of the file could not be read, so that saving would lose them
    bool RecalcWithRows = false;     // a full recalculation is to run as soon as the rows have come
    bool HasFailedRecalc = false;    // the last recalculation failed, so the figures are those from before it
    std::int32_t RecalcID = 0;       // counts recalculations
    std::shared_ptr<const IntervalSource> IntervalNodes;
    std::vector<RowRange> LoadRanges;
    std::vector<std::shared_ptr<BackgroundWork>> LoadThreads;
    std::shared_ptr<BackgroundWork> RecalcThread;
    int FinishedRanges = 0;

    // How the current recalculation runs or the last one ran.
    CalcMode RecalcMode = kCalcExposureTime;
    bool OverwriteStoredValues = false;

    void RaiseLogValuesChanged() const; // tells the frame that the figures or rows have changed

    bool IsOpen = false; // the tree shows the log with the open image

    DoseRule Rule() const { return {static_cast<double>(Criterion), static_cast<double>(Exchange)}; }

    LogMode Mode() const { return objLogShared->Mode(); }

    void Mode(LogMode mode);      // the figures by band are lost; raises kErrorApplication for an unknown mode
    std::string ModeText() const; // as shown
    std::string ModeWord() const; // as it stands in files: in English

    bool IsOctaveLog() const { return Mode() != modeBroadband; }

    int e(std::string_view bandText) const { return objLogShared->e(bandText); }

    std::string_view eStr(int band) const { return objLogShared->eStr(band); }

    std::string LocationType() const; // the stored code; empty for models that have only one kind of location

    void LocationType(std::string_view code) { objLogShared->LocationType = code; }

    std::string TestLocationType() const; // the stored code; without one, the code that follows from the model

    const std::string& OctaveType() const { return objLogShared->OctaveType; }

    void OctaveType(std::string_view type) { objLogShared->OctaveType = type; }

    const std::string& FreqWeightA() const { return freqWeightA_; } // "A", "C", "Z" or empty

    const std::string& FreqWeightB() const { return freqWeightB_; }

    const std::string& TimeWeightA() const { return timeWeightA_; } // "Fast", "Slow", "Impulse", "10ms" or empty

    const std::string& TimeWeightB() const { return timeWeightB_; }

    void FreqWeightA(std::string_view text);
    void FreqWeightB(std::string_view text);
    void TimeWeightA(std::string_view text);
    void TimeWeightB(std::string_view text);

    // Captions with the weighting of the channel; those of channel B are empty when the log has no channel B.
    std::string LeqTextA() const, LminTextA() const, LmaxTextA() const, PeakTextA() const;
    std::string LeqTextB() const, LminTextB() const, LmaxTextB() const, PeakTextB() const;
    std::string IsLnNumbersOnText() const;
    std::string IsLoggingOverLoadedText() const;
    std::string IntervalText() const;

    bool has(Trait trait) const { return hasTrait(InsName, trait); }

    bool IsBrevikMeter() const, IsBrevikEMeter() const, IsBrevikSMeter() const, IsBrevikSEMeter() const;
    bool IsHalcyrMeter() const, IsHalcyrMeter116E() const, IsHalcyrDoseMeter() const, IsOldDoseMeter() const;

    // Copies the log: everything when intStart is 0, else rows intStart to intEnd, both included. For a range, start
    // and end come from its first and last row, the cumulative figures become those that the instrument reported, and
    // the measurement time is 0, so that it follows from the rows. Background work is not copied; whether rows could
    // not be read is. Raises 9 when rows are out of range and kErrorApplication while the source's rows are still to be
    // loaded.
    void Copy(const clsLog& objPrevLog, std::int64_t intStart, std::int64_t intEnd);

    void CopyDoseLogSamples() { KeepDoseLogIntervals = DoseLogIntervals; }

    bool Warn() const; // the log has so many rows that a recalculation is slow

    bool IsBusy() const { return IntervalsToLoad || IntervalsLoading || IntervalsRecalculating; }

private:
    std::string levelText(const std::string& weight, const std::string& pattern, const std::string& plain) const;
    void takeReportedFigures();

    Session& session_;
};

// A date with its weekday, in the words of the session; empty when it is not set.
std::string LongDate(const Session& session, const clsDate& date);

// A duration such as "1 hour 2 mins 3 secs", without the parts that are 0.
std::string DurationText(const Session& session, std::int64_t hours, std::int64_t mins, std::int64_t secs);

} // namespace kestrane

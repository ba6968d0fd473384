// One logged measurement run of one instrument: what it reported for the whole run, its rows, peaks, exposure rows and
// display options. Data and display texts only: recalculation is in calc/, background work in server/, files in files/.
// Owned by a clsInsData; touched on the owner thread only.
#pragma once

#include "model/BackgroundWork.h"
#include "model/BandValues.h"
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

// Members of a log that are carried: copies take them over, and no rule of the program reads them.
struct CarriedLogData {
    std::string strDataStream; // reception buffer of a download
    std::string strEndChars;   // end marker of a download block
    std::string Frq;
    std::int32_t SampleCount = 0;
};

// Everything of a log that a copy takes over.
struct LogData : CarriedLogData {
    bool IsZoomed = false;          // a zoomed range of another log
    bool IsParent5Mins = false;     // of a zoomed log: the other log lasted at least five minutes
    bool HasWholeFigures = false;   // of a zoomed log: its cumulative figures are still those of the other log
    bool FullyCalculated = false;   // cumulative values have been recalculated
    bool SaveDoseCalc = false;      // DoseLogIntervals are to be saved
    bool AreDoseRowsEdited = false; // the user has made them what they are
    std::string InsName;
    float FirmwareVersion = 0;
    std::string Threshold, Range, Region; // as the instrument reported
    std::vector<clsDoseLogSample> DoseLogIntervals;
    std::vector<clsDoseLogSample> KeepDoseLogIntervals; // as loaded
    std::int16_t CriterionDose = 0, ExchangeDose = 0;   // of the reported figures, dB; 0: the log's own
    clsLogOptions objLogOptions;
    std::string Name;
    std::int32_t Number = 0; // on the instrument
    std::int32_t LogId = 0;  // identity within its collection
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
    clsDate FactoryCalibDate, CalibDate;
    clsTime CalibTime;
    clsDate StartDate, EndDate;
    clsTime StartTime, EndTime;
    std::int32_t MeasurementTimeFromInstrument = 0; // seconds; 0 when the instrument tells none
    clsDate LminCumDateA, LmaxCumDateA, PeakCumDateA;
    clsTime LminCumTimeA, LmaxCumTimeA, PeakCumTimeA;

    // Channel A by band; LnNumberA says which percentile Ln i (1..10) is, 0 for one not in use.
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

    // Background work. The flags say what is going on; the work itself is opaque here.
    bool IntervalsToLoad = false;
    bool IntervalsLoading = false;
    bool IntervalsRecalculating = false;
    bool HasUnreadIntervals = false; // rows of the file could not be read; saving would lose them
    bool RecalcWithRows = false;     // a full recalculation waits for the rows
    bool HasFailedRecalc = false;    // the last recalculation failed: the figures are those from before it
    std::int32_t RecalcID = 0;       // counts recalculations
    std::shared_ptr<const IntervalSource> IntervalNodes;
    std::vector<RowRange> LoadRanges;
    std::vector<std::shared_ptr<BackgroundWork>> LoadThreads;
    std::shared_ptr<BackgroundWork> RecalcThread;
    int FinishedRanges = 0;

    // Of the recalculation under way or done last.
    int RecalcMode = 0;
    bool OverwriteStoredValues = false;

    void RaiseLogValuesChanged() const; // tells the frame that the figures or rows have changed

    bool IsOpen = false; // of the tree: shows the open image

    int Mode() const { return objLogShared->Mode(); }

    void Mode(int mode); // values held are lost; raises kErrorApplication for no mode
    std::string ModeText() const;

    bool IsOctaveLog() const { return Mode() != modeBroadband; }

    int e(std::string_view bandText) const { return objLogShared->e(bandText); }

    std::string_view eStr(int band) const { return objLogShared->eStr(band); }

    std::string LocationType() const; // the stored code; empty for models that have only one

    void LocationType(std::string_view code) { objLogShared->LocationType = code; }

    std::string TestLocationType() const; // the stored code, or the one that such a model has

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

    // Captions with the weighting of the channel; those of channel B are empty without one.
    std::string LeqTextA() const, LminTextA() const, LmaxTextA() const, PeakTextA() const;
    std::string LeqTextB() const, LminTextB() const, LmaxTextB() const, PeakTextB() const;
    std::string IsLnNumbersOnText() const;
    std::string IsLoggingOverLoadedText() const;
    std::string IntervalText() const;

    bool has(Trait trait) const { return hasTrait(InsName, trait); }

    bool IsBrevikMeter() const, IsBrevikEMeter() const, IsBrevikSMeter() const, IsBrevikSEMeter() const;
    bool IsHalcyrMeter() const, IsHalcyrMeter116E() const, IsHalcyrDoseMeter() const, IsOldDoseMeter() const;

    // intStart 0: everything. Else a range of the source, rows intStart to intEnd: start and end come from its rows,
    // the figures start as the source reported them, and its measurement time is its own. Background work is not
    // copied, but whether rows could not be read is. Raises 9 for rows that are not there.
    void Copy(const clsLog& objPrevLog, std::int64_t intStart, std::int64_t intEnd);

    void CopyDoseLogSamples() { KeepDoseLogIntervals = DoseLogIntervals; }

    bool Warn() const; // a recalculation is going to be slow

    bool IsBusy() const { return IntervalsToLoad || IntervalsLoading || IntervalsRecalculating; }

private:
    std::string levelText(const std::string& weight, const std::string& pattern, const std::string& plain) const;
    void takeReportedFigures();

    Session& session_;
};

// "1 hour 2 mins 3 secs" with the parts that are 0 left out.
std::string DurationText(const Session& session, std::int64_t hours, std::int64_t mins, std::int64_t secs);

} // namespace kestrane

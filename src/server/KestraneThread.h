// The background server: worker threads of this program, behind the interface of a companion server. A load object
// reads one range of a log's rows, a recalculation object makes one pass over them; each reports once, as an event on
// the pump. Dropping an object drops its results. Other folders start no thread that outlives a call.
#pragma once

#include "model/BackgroundWork.h"
#include "model/CalcMode.h"
#include "model/IntervalColumns.h"
#include "model/clsLogIntervals.h"
#include "platform/EventPump.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kestrane {

struct ThreadError {
    std::int64_t iErrNo;
    std::string sDescription;
    int iLine; // 0 when unknown
};

struct LoadRequest {
    std::shared_ptr<const IntervalSource> source;
    LogMode Mode = modeBroadband;
    bool IsChannelBOn = false;
    std::int64_t first = 0, last = 0; // rows, both included, counted from 1
};

struct LoadEvents {
    std::function<void(IntervalColumns rows, std::int64_t first, std::int64_t last)> ThreadLoadResults;
    std::function<void(const ThreadError&)> Error;
};

struct RecalcRequest {
    IntervalColumns rows; // shares the log's columns
    LogMode Mode = modeBroadband;
    bool IsChannelBOn = false;
    std::vector<RowRange> CutIntervals;
    bool IntervalsToBeIncluded = false;
    std::int32_t Interval = 0; // seconds

    // Part of the server's interface and only carried: the pass does not read them.
    CalcMode iCalcMode = kCalcExposureTime;
    std::int16_t Criterion = 0, Exchange = 0;
    bool IsOldDoseMeter = false;
    bool OverwriteStoredValues = false;
    bool HasMissingCumulative = false;
    bool IsUnzoomedHalcyr = false;
};

// The figures of the rows that are not left out. A figure is 0 when no row has one, and when it is derived from others
// afterwards.
struct RecalcResults {
    std::vector<std::uint8_t> isExcluded;              // a flag for each row; empty when no row is left out
    std::vector<float> zLeqCumA, zLminCumA, zLmaxCumA; // by band, 0..last
    float zPeakCumA = 0;
    float zLepdETCumA = 0; // taken over only when it is not 0
    float zLeqCumB = 0, zLminCumB = 0, zLmaxCumB = 0, zPeakCumB = 0;

    // Part of the server's interface and only carried: nobody reads them.
    float zDoseETCumA = 0, zDoseETCumB = 0, zLepdETCumB = 0;
};

struct RecalcEvents {
    std::function<void(const RecalcResults&)> ThreadRecalcResults;
    std::function<void(const ThreadError&)> Error;
};

// The pass itself. Leq is the energy mean weighted by row length (the row's own length, else Interval), without absent
// values; Lmin is the smallest value that is not absent; Lmax and Peak are the largest. Raises 6 for a figure that does
// not fit single precision.
RecalcResults recalculateRows(const RecalcRequest& request);

class BackgroundServer {
public:
    // threads 0 stands for one thread for each processor, but at least two.
    explicit BackgroundServer(EventPump& pump, unsigned threads = 0);
    ~BackgroundServer(); // waits for the current work; work that has not begun is given up

    std::shared_ptr<BackgroundWork> Load(LoadRequest request, LoadEvents events);
    std::shared_ptr<BackgroundWork> Recalculate(RecalcRequest request, RecalcEvents events);

    // Runs any other job that must not hold up the owner thread, then posts ended. An error that the job raises is
    // lost: the job must record itself how it ended.
    std::shared_ptr<BackgroundWork> Run(std::function<void()> job, std::function<void()> ended);

private:
    void work();
    void enqueue(std::function<void()> job);

    EventPump& pump_;
    std::mutex mutex_;
    std::condition_variable queued_;
    std::deque<std::function<void()>> jobs_;
    bool isStopping_ = false;
    std::vector<std::thread> threads_;
};

} // namespace kestrane

// The background server: worker threads of this program behind the interface of a companion server. A load object reads
// one range of a log's rows, a recalculation object makes one pass over them; each reports once, as an event on the
// pump. Dropping an object drops its results. The only folder that starts threads.
#pragma once

#include "model/BackgroundWork.h"
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
    int iLine; // 0: unknown
};

struct LoadRequest {
    std::shared_ptr<const IntervalSource> source;
    int Mode = 0;
    bool IsChannelBOn = false;
    std::int64_t first = 0, last = 0; // rows, counted from 1
};

struct LoadEvents {
    std::function<void(IntervalColumns rows, std::int64_t first, std::int64_t last)> ThreadLoadResults;
    std::function<void(const ThreadError&)> Error;
};

struct RecalcRequest {
    IntervalColumns rows; // shares the log's columns
    int Mode = 0;
    bool IsChannelBOn = false;
    std::vector<RowRange> CutIntervals;
    bool IntervalsToBeIncluded = false;
    std::int32_t Interval = 0; // seconds

    // Carried as a part of the server's interface; the pass does not read them.
    int iCalcMode = 0;
    std::int16_t Criterion = 0, Exchange = 0;
    bool IsOldDoseMeter = false;
    bool OverwriteStoredValues = false;
    bool HasMissingCumulative = false;
    bool IsUnzoomedHalcyr = false;
};

// Figures of the rows that are not left out; 0 for one that there is none of, and for those that are derived from
// others afterwards.
struct RecalcResults {
    std::vector<std::uint8_t> isExcluded;              // a flag a row; empty: nothing is left out
    std::vector<float> zLeqCumA, zLminCumA, zLmaxCumA; // by band, 0..last
    float zPeakCumA = 0;
    float zLepdETCumA = 0; // taken over where it is not 0
    float zLeqCumB = 0, zLminCumB = 0, zLmaxCumB = 0, zPeakCumB = 0;

    // Carried as a part of the server's interface; nobody reads them.
    float zDoseETCumA = 0, zDoseETCumB = 0, zLepdETCumB = 0;
};

struct RecalcEvents {
    std::function<void(const RecalcResults&)> ThreadRecalcResults;
    std::function<void(const ThreadError&)> Error;
};

// The pass itself. Leq: energy mean weighted by row length (the row's own, else Interval), absent values skipped; Lmin:
// the smallest that is not absent; Lmax and Peak: the largest. Raises 6 for figures past single precision.
RecalcResults recalculateRows(const RecalcRequest& request);

class BackgroundServer {
public:
    // threads 0: one for each processor, at least two.
    explicit BackgroundServer(EventPump& pump, unsigned threads = 0);
    ~BackgroundServer(); // waits for work under way; work not begun is given up

    std::shared_ptr<BackgroundWork> Load(LoadRequest request, LoadEvents events);
    std::shared_ptr<BackgroundWork> Recalculate(RecalcRequest request, RecalcEvents events);

    // Any other job that must not hold up the owner thread. What it raises is lost: it says itself how it ended.
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

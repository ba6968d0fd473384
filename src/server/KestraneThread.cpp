#include "server/KestraneThread.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace kestrane {

namespace {

// The object that a client holds for its work. Events reach the client only while it holds the object.
struct Held : BackgroundWork {};

// Runs compute on this thread and posts deliver(result), or error when compute raises, to the pump. Does nothing when
// the work has been dropped.
template <class Compute, class Deliver>
void runAndReport(EventPump& pump, const std::weak_ptr<Held>& held, Compute compute, Deliver deliver,
                  const std::function<void(const ThreadError&)>& error) {
    if (held.expired()) return;
    ThreadError failure{0, {}, 0};
    try {
        auto result = std::make_shared<decltype(compute())>(compute());
        pump.post([held, result, deliver] {
            if (const auto alive = held.lock()) deliver(*result);
        });
        return;
    } catch (const RuntimeError& raised) {
        failure = {raised.Number, raised.what(), 0};
    } catch (const std::exception& raised) {
        failure = {kErrorApplication, raised.what(), 0};
    }
    pump.post([held, failure, error] {
        if (const auto alive = held.lock()) error(failure);
    });
}

} // namespace

BackgroundServer::BackgroundServer(EventPump& pump, unsigned threads) : pump_(pump) {
    if (threads == 0) threads = std::max(2U, std::thread::hardware_concurrency());
    for (unsigned i = 0; i < threads; ++i)
        threads_.emplace_back([this] { work(); });
}

BackgroundServer::~BackgroundServer() {
    {
        const std::lock_guard lock(mutex_);
        isStopping_ = true;
        jobs_.clear();
    }
    queued_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void BackgroundServer::work() {
    while (true) {
        std::unique_lock lock(mutex_);
        queued_.wait(lock, [this] { return isStopping_ || !jobs_.empty(); });
        if (isStopping_) return;
        const std::function<void()> job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        job();
    }
}

void BackgroundServer::enqueue(std::function<void()> job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    queued_.notify_one();
}

std::shared_ptr<BackgroundWork> BackgroundServer::Load(LoadRequest request, LoadEvents events) {
    auto held = std::make_shared<Held>();
    enqueue([this, weak = std::weak_ptr(held), request = std::move(request), events = std::move(events)] {
        runAndReport(
            pump_, weak,
            [&] { return request.source->load(request.Mode, request.IsChannelBOn, request.first, request.last); },
            [deliver = events.ThreadLoadResults, first = request.first, last = request.last](IntervalColumns& rows) {
                deliver(std::move(rows), first, last);
            },
            events.Error);
    });
    return held;
}

std::shared_ptr<BackgroundWork> BackgroundServer::Recalculate(RecalcRequest request, RecalcEvents events) {
    auto held = std::make_shared<Held>();
    enqueue([this, weak = std::weak_ptr(held), request = std::move(request), events = std::move(events)] {
        runAndReport(
            pump_, weak, [&] { return recalculateRows(request); },
            [deliver = events.ThreadRecalcResults](const RecalcResults& results) { deliver(results); }, events.Error);
    });
    return held;
}

std::shared_ptr<BackgroundWork> BackgroundServer::Run(std::function<void()> job, std::function<void()> ended) {
    auto held = std::make_shared<Held>();
    enqueue([this, weak = std::weak_ptr(held), job = std::move(job), ended = std::move(ended)] {
        runAndReport(
            pump_, weak,
            [&] {
                job();
                return true;
            },
            [ended](bool) { ended(); }, [ended](const ThreadError&) { ended(); });
    });
    return held;
}

} // namespace kestrane

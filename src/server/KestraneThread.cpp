#include "server/KestraneThread.h"

#include "platform/OutOfMemory.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace kestrane {

namespace {

// The object that a client holds for its work. Events reach the client only while it holds the object.
struct Held : BackgroundWork {};

// Runs compute on this thread and posts deliver(result), or error when compute raises, to the pump. Does nothing when
// the work has been dropped.
// deliver and error are copied without taking memory, so that a lack of it can be reported.
template <class Compute, class Deliver, class Error>
void runAndReport(EventPump& pump, const std::weak_ptr<Held>& held, Compute compute, Deliver deliver, Error error) {
    if (held.expired()) return;
    ThreadError failure{0, {}, 0};
    try {
        auto result = std::make_shared<decltype(compute())>(compute());
        pump.post([held, result, deliver, error] {
            const auto alive = held.lock();
            if (!alive) return;
            try {
                refusingWithoutMemory([&] { deliver(*result); });
            } catch (const RuntimeError& raised) { // the pump must not end with it
                error({raised.Number, raised.what(), 0});
            }
        });
        return;
    } catch (const RuntimeError& raised) {
        failure = {raised.Number, raised.what(), 0};
    } catch (const std::bad_alloc&) {
        failure = {kErrorOutOfMemory, "Out of memory", 0};
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
    const auto shared = std::make_shared<const LoadEvents>(std::move(events));
    enqueue([this, weak = std::weak_ptr(held), request = std::move(request), shared] {
        runAndReport(
            pump_, weak,
            [&] { return request.source->load(request.Mode, request.IsChannelBOn, request.first, request.last); },
            [shared, first = request.first, last = request.last](IntervalColumns& rows) {
                shared->ThreadLoadResults(std::move(rows), first, last);
            },
            [shared](const ThreadError& error) { shared->Error(error); });
    });
    return held;
}

std::shared_ptr<BackgroundWork> BackgroundServer::Recalculate(RecalcRequest request, RecalcEvents events) {
    auto held = std::make_shared<Held>();
    const auto shared = std::make_shared<const RecalcEvents>(std::move(events));
    enqueue([this, weak = std::weak_ptr(held), request = std::move(request), shared] {
        runAndReport(
            pump_, weak, [&] { return recalculateRows(request); },
            [shared](const RecalcResults& results) { shared->ThreadRecalcResults(results); },
            [shared](const ThreadError& error) { shared->Error(error); });
    });
    return held;
}

std::shared_ptr<BackgroundWork> BackgroundServer::Run(std::function<void()> job, std::function<void()> ended) {
    auto held = std::make_shared<Held>();
    const auto shared = std::make_shared<std::function<void()>>(std::move(ended));
    const auto end = [shared] { // once: when ended itself raises, that is no second end
        if (const auto once = std::exchange(*shared, {})) once();
    };
    enqueue([this, weak = std::weak_ptr(held), job = std::move(job), end] {
        runAndReport(
            pump_, weak,
            [&] {
                job();
                return true;
            },
            [end](bool) { end(); }, [end](const ThreadError&) { end(); });
    });
    return held;
}

} // namespace kestrane

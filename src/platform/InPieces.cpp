#include "platform/InPieces.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace kestrane {

unsigned helpersAtMost() {
    return std::min(std::max(2U, std::thread::hardware_concurrency()) - 1, kMostHelpers);
}

void inPieces(std::size_t size, std::size_t piece, const std::function<void(std::size_t begin, std::size_t end)>& work,
              const std::function<void()>& between) {
    if (between) between();
    std::atomic<std::size_t> next = 0;
    std::exception_ptr raised;
    std::mutex raising;
    const auto doPieces = [&](const std::function<void()>& before) {
        try {
            for (std::size_t begin = next.fetch_add(piece); begin < size; begin = next.fetch_add(piece)) {
                if (before) before();
                work(begin, std::min(size, begin + piece));
            }
        } catch (...) {
            next = size;
            const std::lock_guard lock(raising);
            if (!raised) raised = std::current_exception();
        }
    };
    const std::size_t pieces = size / piece + (size % piece != 0 ? 1 : 0);
    std::vector<std::thread> helpers;
    try {
        while (helpers.size() < helpersAtMost() && helpers.size() + 1 < pieces)
            helpers.emplace_back([&doPieces] { doPieces({}); });
    } catch (const std::exception&) { // fewer threads do as well
    }
    doPieces(between);
    for (std::thread& helper : helpers)
        helper.join();
    if (raised) std::rethrow_exception(raised);
}

} // namespace kestrane

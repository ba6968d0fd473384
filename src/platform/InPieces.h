// Work on a long stretch of bytes that does not depend on the order in which its pieces are done.
#pragma once

#include <cstddef>
#include <functional>

namespace kestrane {

constexpr unsigned kMostHelpers = 3; // threads beside the one that calls

// How many threads may help with a job, at most kMostHelpers; as many as there are further processors, but at least
// one.
unsigned helpersAtMost();

// Calls work(begin, end) for pieces that make up [0, size), each of at most `piece` bytes, from several threads at
// once, and returns when all are done. The calling thread works as well, and calls between() first of all and before
// each piece of its own. What work or between raises ends the job: no further piece is begun, and the first error is
// raised here. A job of one piece starts no thread.
void inPieces(std::size_t size, std::size_t piece, const std::function<void(std::size_t begin, std::size_t end)>& work,
              const std::function<void()>& between = {});

} // namespace kestrane

// Fetching a whole resource over HTTP or HTTPS, as an interface: the programs use the one on Qt (platform/connection),
// a test its own.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kestrane {

struct HttpAnswer {
    enum class End { Complete, Failed, Cancelled };

    End end = End::Failed;
    std::string Body;   // the whole body when Complete, else empty
    std::string Reason; // why it Failed, in one line
};

class Http {
public:
    virtual ~Http() = default;

    // Receives the progress in bytes; total is -1 when it is not known. Returns false to give up.
    using GoOn = std::function<bool(std::int64_t received, std::int64_t total)>;

    // Waits for the answer and asks goOn several times a second, also while nothing comes. Redirections are followed;
    // certificates are verified. Complete means status 200 and all of the body that was announced. A body of more than
    // mostBytes fails.
    virtual HttpAnswer Get(const std::string& address, std::int64_t mostBytes, const GoOn& goOn) = 0;
};

} // namespace kestrane

// The line of the simulator: a pseudo-terminal whose other end any program opens as a serial port. Sends at the speed
// of a real line, so that a download takes as long as from the instrument.
#pragma once

#include "sim/Instrument.h"

#include <string>

namespace kestrane {

class Line {
public:
    Line(); // raises the system's error
    ~Line();
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    const std::string& path() const { return path_; } // of the end that is opened

    // Serves until stop, a file handle, can be read, or the instrument hangs up. baud 0: at once, without the pauses of
    // the pieces. A command that comes while an answer is being sent ends the answer.
    void serve(Instrument& instrument, int baud, int stop);

private:
    void waitUntilRead() const;
    void close();

    int own_ = -1;   // the instrument's end
    int other_ = -1; // kept open so that programs can come and go
    std::string path_;
};

} // namespace kestrane

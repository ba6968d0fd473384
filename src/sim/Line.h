// The line of the simulator: a pseudo-terminal, whose other end any program can open as a serial port. It sends at the
// speed of a real line, so that a download takes as long as from an instrument.
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

    const std::string& path() const { return path_; } // of the end that programs open

    // Serves until the file handle stop can be read or the instrument hangs up. baud 0 sends at once, without the
    // pauses between the pieces. A command that comes while an answer is being sent stops that answer.
    void serve(int baud, Instrument& instrument, int stop);

private:
    void waitUntilRead() const;
    void close();

    int own_ = -1;   // the instrument's end
    int other_ = -1; // kept open so that programs can open and close it
    std::string path_;
};

} // namespace kestrane

// Measuring in processes of their own, so that the memory of one measurement is never that of another. The process that
// starts them must stay small, since a child begins with its memory.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace kestrane::bench {

struct Measured {
    double figure = 0;          // what the work returned
    std::size_t peakMemory = 0; // bytes, beyond those of a child that does nothing
};

// Runs work in a child and waits for it. Ends the program when the child fails.
Measured measure(const std::function<double()>& work);

// Runs both in turn, a number of times, and keeps the best of each: the smallest figure and the largest memory.
struct Compared {
    Measured work, yardstick;
};

Compared compare(int times, const std::function<double()>& work, const std::function<double()>& yardstick);

// Seconds that work takes.
double secondsOf(const std::function<void()>& work);

// Keeps the compiler from leaving out what value stands for.
void use(double value);

// One line of the table. Counts the lines that missed their mark.
class Table {
public:
    Table();
    void line(const std::string& what, double figure, double yardstick, const char* unit, bool isAtMost,
              double required);

    int missed() const { return missed_; }

private:
    int missed_ = 0;
};

} // namespace kestrane::bench

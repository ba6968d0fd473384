// While an object of this class lives, the user's interrupt (Ctrl+C) and the system's request to end do not end the
// program but are recorded, so that work can be finished or removed properly.
#pragma once

namespace kestrane {

class Interrupt {
public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    static bool hasCome(); // while an object lived

private:
    void (*before_[2])(int);
};

} // namespace kestrane

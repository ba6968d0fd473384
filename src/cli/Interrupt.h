// While one lives, the user's interrupt (Ctrl+C) and the system's request to end do not end the program, but are noted,
// so that work can be put away.
#pragma once

namespace kestrane {

class Interrupt {
public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    bool hasCome() const;

private:
    void (*before_[2])(int);
};

} // namespace kestrane

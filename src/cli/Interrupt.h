// While one lives, the user's interrupt (Ctrl+C) does not end the program, but is noted, so that work can be put away.
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
    void (*before_)(int);
};

} // namespace kestrane

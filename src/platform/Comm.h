// The serial line of the program: one port that is opened, written to and emptied, and the list of ports that the
// machine has. Bytes travel as strings of one character a byte, unchanged. The programs use the Qt implementation
// (platform/connection), tests one of their own. Touched on the owner thread only.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A port of this machine, by the number that settings and the port scan know it by.
struct PortInfo {
    int Number = 0;          // 1..255
    std::string Device;      // path
    std::string Description; // for people; may be empty
};

class Comm {
public:
    virtual ~Comm() = default;

    virtual std::vector<PortInfo> Ports() const = 0; // in the order of their numbers

    virtual void CommPort(int number) = 0;                  // which port is opened next; 1..255
    virtual void Settings(const std::string& settings) = 0; // such as "19200,n,8,2"; an open port changes at once

    // Raises the system's error, with a text for the user, when the port cannot be opened: it does not exist, the user
    // lacks the permission (the text names the group that has it), or another program is using it.
    virtual void Open() = 0;
    virtual void Close() = 0; // does nothing when the port is closed
    virtual bool IsOpen() const = 0;

    virtual std::size_t InBufferCount() const = 0;   // bytes waiting
    virtual void Flush() = 0;                        // drops the bytes waiting
    virtual void Output(std::string_view bytes) = 0; // raises when the line refuses them
    virtual std::string Input() = 0;                 // takes all bytes waiting

    // Why an open port went away (it was unplugged or hung up), as a text for the user; empty while the port is there.
    // A port that went away is closed.
    virtual std::string Fault() const = 0;
};

} // namespace kestrane

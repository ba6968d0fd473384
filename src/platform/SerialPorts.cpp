#include "platform/SerialPorts.h"

#include <algorithm>
#include <map>

namespace kestrane {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Returns the digits at position without their leading zeros and moves position behind them.
std::string_view takeNumber(std::string_view text, std::size_t& position) {
    while (position < text.size() && text[position] == '0')
        ++position;
    const std::size_t begin = position;
    while (position < text.size() && isDigit(text[position]))
        ++position;
    return text.substr(begin, position - begin);
}

bool isNaturallyLess(std::string_view a, std::string_view b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const std::string_view x = takeNumber(a, i), y = takeNumber(b, j);
            if (x != y) return x.size() != y.size() ? x.size() < y.size() : x < y;
        } else if (a[i] != b[j]) {
            return a[i] < b[j];
        } else {
            ++i;
            ++j;
        }
    }
    return a.size() - i < b.size() - j;
}

} // namespace

std::vector<PortInfo> numberPorts(const std::vector<PortInfo>& machine, const SettingsStore& settings) {
    std::vector<PortInfo> free = machine;
    std::sort(free.begin(), free.end(),
              [](const PortInfo& a, const PortInfo& b) { return isNaturallyLess(a.Device, b.Device); });
    std::map<int, PortInfo> ports;
    for (int number = 1; number <= kLastPort; ++number) {
        const std::string pinned = settings.read("SerialPorts", "COM" + std::to_string(number), {});
        if (pinned.empty()) continue;
        PortInfo port{number, devicePath(pinned), {}};
        const std::string device = trueDevice(port.Device);
        std::erase_if(free, [&](const PortInfo& other) {
            if (trueDevice(other.Device) != device) return false;
            port.Description = other.Description;
            return true;
        });
        ports.emplace(number, std::move(port));
    }
    std::erase_if(free, [&](PortInfo& port) {
        port.Number = ownNumberOf(port.Device);
        return port.Number >= 1 && port.Number <= kLastPort && ports.emplace(port.Number, port).second;
    });
    int number = 1;
    for (PortInfo& port : free) {
        while (ports.contains(number))
            ++number;
        if (number > kLastPort) break;
        port.Number = number;
        ports.emplace(number, std::move(port));
    }
    std::vector<PortInfo> numbered;
    numbered.reserve(ports.size());
    for (auto& [key, port] : ports)
        numbered.push_back(std::move(port));
    return numbered;
}

} // namespace kestrane

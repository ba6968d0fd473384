// The serial line on Qt Serial Port: serial ports, USB adapters and pseudo-terminals alike. Bytes come in and go out
// while the Qt event loop runs. There is no flow control. The texts for the user come from the caller, by number.
#pragma once

#include "platform/Comm.h"
#include "platform/Settings.h"
#include "resources/TextNames.h"

#include <functional>
#include <memory>
#include <string>

class QSerialPort;

namespace kestrane {

class QtComm : public Comm {
public:
    using LoadText = std::function<std::string(Text::Id id)>;

    // The settings store says which numbers are pinned to which devices.
    QtComm(const SettingsStore& settings, LoadText loadText);
    ~QtComm() override;
    QtComm(const QtComm&) = delete;
    QtComm& operator=(const QtComm&) = delete;

    void UseOnly(const std::string& device); // from now on that device is port 1 and the only port

    std::vector<PortInfo> Ports() const override;

    void CommPort(int number) override;
    void Settings(const std::string& settings) override; // raises 13 for a text that is no line setting

    void Open() override;
    void Close() override;
    bool IsOpen() const override;

    std::size_t InBufferCount() const override;
    void Flush() override;
    void Output(std::string_view bytes) override;
    std::string Input() override;

    std::string Fault() const override;

private:
    void applySettings();
    std::string deviceOfPort() const;
    [[noreturn]] void refuse(int error, const std::string& text) const;
    [[noreturn]] void refuseOpening() const;
    void handleError();
    void closeLost();

    const SettingsStore& settings_;
    LoadText loadText_;
    std::string onlyDevice_;
    int number_ = 1;
    std::string line_ = "9600,n,8,1";
    std::string device_; // the device that was opened last
    std::unique_ptr<QSerialPort> port_;
    std::string received_;
    std::string fault_;
};

} // namespace kestrane

// The program's session for one call of the command line: settings, locale and the button pressed on questions by the
// global options, messages on standard error, background work waited for. Owns all services behind the session.
#pragma once

#include "model/Session.h"
#include "platform/qt/IniSettings.h"
#include "platform/qt/QtComm.h"
#include "server/KestraneThread.h"

#include <functional>
#include <iostream>
#include <optional>
#include <string>

namespace kestrane {

// Exit status.
constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongWords = 2;

struct GlobalOptions {
    std::string company = KESTRANE_COMPANY;
    std::string settingsFile;
    std::optional<std::string> decimalSeparator, dateSeparator;
    std::optional<std::string> answer;
    bool isQuiet = false;
};

// The panel of errors is all that a program without windows shows of the frame.
class ConsoleFrame : public Frame {
public:
    void SetPanel(Panel panel, const std::string& text) override {
        if (panel == Panel::Error && !text.empty()) std::cerr << text << '\n';
    }

    void Tell(const std::string& text) override { std::cerr << text << '\n'; }
};

// The computer's time, or one that the call names.
class ConsoleClock : public Clock {
public:
    CalendarTime now() const override { return Fixed ? *Fixed : SystemClock().now(); }

    std::optional<CalendarTime> Fixed;
};

class Program {
public:
    Program(const GlobalOptions& options, EventPump& pump);

    // Opens a file and waits for all work behind it. Null when it did not open, or when the recalculation on opening
    // failed: figures that are known to be wrong are never handed on. The reason has been shown.
    clsFile* open(const std::string& name);

    // False when the recalculation failed; the reason has been shown.
    bool recalculate(clsLog& log, int mode);

    // Saves a document under another name. False when it was not saved; the reason has been shown.
    bool saveAs(clsFile& file, const std::string& output);

    // Runs what writes a file. False when it was not written; the reason has been shown.
    bool write(const std::string& output, const std::function<void()>& writer);

    void UseOnlyPort(const std::string& device) { comm_.UseOnly(device); }

    const bool isQuiet;
    ConsoleClock clock;

private:
    IniSettings settings_;
    ConsoleMessages messages_;
    EventPump& pump_;
    ConsoleFrame frame_;
    BackgroundServer server_;
    QtComm comm_;

public:
    Session session; // last: the logs go before the server that works for them
};

} // namespace kestrane

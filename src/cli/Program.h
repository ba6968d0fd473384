// The program's session for one call of the command line: settings, locale and the button pressed on questions by the
// global options, messages on standard error, background work waited for. Owns all services behind the session.
#pragma once

#include "model/Session.h"
#include "platform/qt/IniSettings.h"
#include "server/KestraneThread.h"

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
};

class Program {
public:
    explicit Program(const GlobalOptions& options);

    // Opens a file and waits for all work behind it. Null when it did not open; the reason has been shown.
    clsFile* open(const std::string& name);

    void recalculate(clsLog& log, int mode);

private:
    IniSettings settings_;
    ConsoleMessages messages_;
    HeadlessEventPump pump_;
    SystemClock clock_;
    ConsoleFrame frame_;
    BackgroundServer server_;

public:
    Session session; // last: the logs go before the server that works for them
};

} // namespace kestrane

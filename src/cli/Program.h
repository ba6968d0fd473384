// The program's session for one call of the command line: settings, locale and the button pressed on questions by the
// global options, messages on standard error, background work waited for. Owns all services behind the session.
#pragma once

#include "cli/Console.h"
#include "cli/Json.h"
#include "cli/Outputs.h"
#include "model/Session.h"
#include "platform/qt/IniSettings.h"
#include "platform/qt/QtComm.h"
#include "server/KestraneThread.h"

#include <functional>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

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
    std::string errors = "text";
    bool isQuiet = false;
};

// The panel of errors is all that a program without windows shows of the frame.
class ConsoleFrame : public Frame {
public:
    explicit ConsoleFrame(const Console& console) : console_(console) {}

    void SetPanel(Panel panel, const std::string& text) override {
        if (panel == Panel::Error && !text.empty()) console_.tell(text);
    }

    void Tell(const std::string& text) override { console_.tell(text); }

private:
    const Console& console_;
};

// The computer's time, or one that the call names.
class ConsoleClock : public Clock {
public:
    CalendarTime now() const override { return Fixed ? *Fixed : SystemClock().now(); }

    std::optional<CalendarTime> Fixed;
};

// Boxes as messages on standard error.
class ConsoleBoxes : public MessageInterface {
public:
    ConsoleBoxes(const Console& console, std::optional<Button> answer) : console_(console), boxes_(text_, answer) {}

    Button show(const std::string& prompt, int flags, const std::string& title) override;

private:
    const Console& console_;
    std::ostringstream text_;
    ConsoleMessages boxes_;
};

class Program {
public:
    Program(const GlobalOptions& options, Console& console, EventPump& pump);

    // Opens a file ("-" is standard input) and waits for all work behind it. Null when it did not open, or when the
    // recalculation on opening failed: figures that are known to be wrong are never handed on. The reason has been
    // shown.
    clsFile* open(const std::string& name);

    // Opens each file, gives it to work, and closes it. A file that does not open, or that work gives false for or
    // raises an error on, does not keep the others from it. The exit status.
    int forEachFile(const std::vector<std::string>& names, const std::function<bool(clsFile&, std::size_t)>& work);

    void closeFiles(); // all, once their work has ended

    // False when the recalculation failed; the reason has been shown.
    bool recalculate(clsLog& log, int mode);

    // Saves a document under another name. False when it was not saved; the reason has been shown.
    bool saveAs(clsFile& file, const std::string& output);

    // Runs what writes a file, with its path. False when it was not written; the reason has been shown.
    bool write(const std::string& output, const std::function<void(const std::string& path)>& writer);

    // Where the result goes: to standard output, or nowhere once a file has been written there.
    std::ostream& out();
    int print(const Json& json); // as one line; kDone

    void UseOnlyPort(const std::string& device) { comm_.UseOnly(device); }

    const bool showsProgress;
    Console& console;
    ConsoleClock clock;

private:
    std::string takeOutput(const std::string& output);

    IniSettings settings_;
    ConsoleBoxes messages_;
    EventPump& pump_;
    ConsoleFrame frame_;
    BackgroundServer server_;
    QtComm comm_;
    std::ostream nowhere_{nullptr};
    bool isOutputTaken_ = false;

public:
    Session session; // last: the logs go before the server that works for them
};

} // namespace kestrane

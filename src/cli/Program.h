// The program's session for one call of the command line: settings, locale and the button pressed on questions come
// from the global options, messages go to standard error, and background work is waited for. It owns all services
// behind the session.
#pragma once

#include "cli/Console.h"
#include "cli/Json.h"
#include "cli/Modules.h"
#include "cli/Outputs.h"
#include "model/Session.h"
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

// A program without windows shows only the frame's panel of errors.
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

// The computer's time, or a time that the call gives.
class ConsoleClock : public Clock {
public:
    CalendarTime now() const override { return Fixed ? *Fixed : SystemClock().now(); }

    std::optional<CalendarTime> Fixed;
};

// Shows boxes as messages on standard error.
class ConsoleBoxes : public MessageInterface {
public:
    ConsoleBoxes(const Console& console, std::optional<Button> answer) : console_(console), boxes_(text_, answer) {}

    Button show(const std::string& prompt, MessageFlags flags, const std::string& title) override;

private:
    const Console& console_;
    std::ostringstream text_;
    ConsoleMessages boxes_;
};

class Program {
public:
    Program(const GlobalOptions& options, Console& console, EventPump& pump);

    // Opens a file ("-" is standard input) and waits until all of its background work has ended. Null when it did not
    // open, and when the recalculation on opening failed, because figures that are known to be wrong must not be passed
    // on. The reason has been shown.
    clsFile* open(const std::string& name);

    // Opens each file, calls work for it and its index, and closes it. A file that does not open, or for which work
    // returns false or raises an error, does not keep the other files from being worked on, but an interrupt does that
    // work has caught. Returns the exit status.
    int forEachFile(const std::vector<std::string>& names, const std::function<bool(clsFile&, std::size_t)>& work);

    void closeFiles(); // closes all files once their background work has ended

    // Recalculates and waits for the end. Returns false when it failed; the reason has been shown.
    bool recalculate(clsLog& log, CalcMode mode);

    // Saves a document under another name. Returns false when it was not saved; the reason has been shown.
    bool saveAs(clsFile& file, const std::string& output);

    // Calls writer with the path of the output. Returns false when the file was not written; the reason has been shown.
    bool write(const std::string& output, const std::function<void(const std::string& path)>& writer);

    // The stream for the result: standard output, or nowhere once a file has been written to standard output.
    std::ostream& out();
    int print(const Json& json); // on one line; returns kDone

    // What draws, or null when the package that draws is not installed; that has been shown then.
    Drawing* drawing();

    // Gives the session the serial ports of the machine, or a device alone as port 1. Returns false when there is no
    // module for them, which has been shown.
    bool reachPorts(const std::string& onlyDevice = {});

    bool reachServers(); // the same for HTTP

    const bool showsProgress;
    bool KeepsHistory = false; // of every document that is saved; else of those that have a history
    Console& console;
    ConsoleClock clock;

private:
    template <class Module>
    Module* moduleOf(std::unique_ptr<Module>& loaded);

    std::string takeOutput(const std::string& output);

    std::unique_ptr<SettingsStore> settings_;
    MemorySettings state_; // a script's outputs are no recent files of the user
    ConsoleBoxes messages_;
    EventPump& pump_;
    ConsoleFrame frame_;
    BackgroundServer server_;
    std::unique_ptr<Drawing> drawing_;
    std::unique_ptr<Connection> connection_;
    std::unique_ptr<Comm> comm_;
    std::unique_ptr<Http> http_;
    std::ostream nowhere_{nullptr};
    bool isOutputTaken_ = false;

public:
    Session session; // must be the last member, so that the logs are destroyed before the server that works for them
};

} // namespace kestrane

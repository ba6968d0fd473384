// The process-wide values of the program in one object, filled at start; a test makes its own. Owns the open documents.
// Services of the platform and of the frame are reached through it and belong to whoever made them.
#pragma once

#include "model/Colour.h"
#include "model/clsFile.h"
#include "model/clsOptions.h"
#include "platform/Clock.h"
#include "platform/Comm.h"
#include "platform/EventPump.h"
#include "platform/Locale.h"
#include "platform/Message.h"
#include "platform/Settings.h"
#include "resources/Texts.h"
#include "resources/basSoftwareByFirm.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kestrane {

// Texts that tables, charts and reports use everywhere, loaded once.
struct LabelTexts {
    explicit LabelTexts(const Texts& texts);

    std::string YesMark, NoMark, Yes, No;
    std::string Leq, Lmin, Lmax, Peak;
    std::string WeightedLeq, WeightedLmin, WeightedLmax, WeightedPeak; // "^" is the weighting letter
    std::string Lepd, LepdET, LepdMT, Dose, DoseET, DoseMT, DoseHour, DoseHourShort;
    std::string ExchangeRate, SEL, LAvg, TWA, Ltm3, Ltm5, Pa2h, Overload;
};

// What the logic asks of the frame. The default does nothing: a program without windows.
class Frame {
public:
    enum class Panel { Status, Process, Error };

    virtual ~Frame() = default;

    virtual void SetPanel(Panel, const std::string& /*text*/) {}

    virtual void ClearPanel(Panel, const std::string& /*text*/) {} // if that is what it says

    // What a command has done that is not to be seen where it was given: in the status bar, or on standard error.
    virtual void Tell(const std::string& /*text*/) {}

    virtual void EnableMenusAndButtons() {}

    virtual void RebuildExplorerTrees() {}

    // Selects a log in the tree of the explorer in front, and shows it there as soon as its rows have come.
    virtual void ChooseLog(const std::string& /*key*/, bool /*isToShow*/) {}

    // Long work is done elsewhere while the caller waits: the user sees that, and can give no command meanwhile.
    virtual void SetBusy(bool /*isBusy*/) {}

    // Runs events until isDone, telling the user what for. False when the user would rather not wait.
    virtual bool WaitUntil(EventPump& pump, const std::string& /*what*/, const std::function<bool()>& isDone) {
        pump.runUntil(isDone);
        return true;
    }

    // The figures or rows of a log have changed: explorers that show it draw it anew.
    virtual void LogValuesChanged(const clsLog& /*log*/) {}
};

class BackgroundServer;     // server/
class Http;                 // platform/
struct ProtectorCollection; // protection/

struct Session {
    Session(const std::string& companyName, Locale locale, SettingsStore& settings, MessageInterface& messages,
            EventPump& pump, Clock& clock);
    ~Session();

    const Brand brand;
    const Texts texts;
    const LabelTexts labels;
    const Locale locale;
    SettingsStore& settings;
    MessageInterface& messages;
    EventPump& pump;
    Clock& clock;
    Frame* frame;                              // never null
    BackgroundServer* server = nullptr;        // null: nothing loads or recalculates in the background
    Comm* comm = nullptr;                      // null: there is no serial line
    Http* http = nullptr;                      // null: nothing can be fetched
    ProtectorCollection* protectors = nullptr; // null: there is no database

    std::string DocumentsFolder; // of the user; empty: not known
    clsOptions Options;
    std::uint64_t EditTurns = 0; // steps done, undone and done again, of all documents
    std::vector<std::unique_ptr<clsFile>> OpenFiles;
    std::vector<std::string> RecentFiles; // at most four names, the most recent first

    std::string LoadText(Text::Id id) const { return texts.LoadText(id); }

    // The one message box. An empty title is the application's; while background work runs the box is system-modal.
    Button ShowMessage(const std::string& prompt, int flags, const std::string& title = {});

    bool IsIdle() const; // no log of any open file is loading or recalculating
    clsFile* fileById(int fileId) const;

    void ForgetFrame() { frame = &windowless_; }

private:
    Frame windowless_;
};

// Calls visit(log) for every log of the open files.
template <class Visit>
void forEachLog(const Session& session, Visit&& visit) {
    for (const auto& file : session.OpenFiles)
        forEachLog(*file, visit);
}

constexpr std::string_view kApplicationTitle = "Kestrane";

} // namespace kestrane

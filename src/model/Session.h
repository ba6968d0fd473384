// All process-wide values of the program in one object, filled at start; a test makes its own. It owns the open
// documents. It gives access to the services of the platform and of the frame, which belong to whoever made them.
#pragma once

#include "model/Colour.h"
#include "model/clsFile.h"
#include "model/clsOptions.h"
#include "platform/Clock.h"
#include "platform/Comm.h"
#include "platform/EventPump.h"
#include "platform/Format.h"
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

// What the logic asks of the main window. This base class does nothing: it stands for a program without windows.
class Frame {
public:
    enum class Panel { Status, Process, Error };

    virtual ~Frame() = default;

    virtual void SetPanel(Panel, const std::string& /*text*/) {}

    virtual void ClearPanel(Panel, const std::string& /*text*/) {} // only if the panel shows this text

    // Reports the effect of a command that cannot be seen where the command was given: in the status bar, or on
    // standard error.
    virtual void Tell(const std::string& /*text*/) {}

    virtual void EnableMenusAndButtons() {}

    virtual void RebuildExplorerTrees() {}

    // Selects a log in the tree of the explorer in front. With isToShow it is also shown there as soon as its rows have
    // come.
    virtual void ChooseLog(const std::string& /*key*/, bool /*isToShow*/) {}

    // Long work is done elsewhere while the caller waits. The user sees that, and cannot give a command meanwhile.
    virtual void SetBusy(bool /*isBusy*/) {}

    // Runs events until isDone, showing the user what is being waited for. False when the user does not want to wait.
    virtual bool WaitUntil(EventPump& pump, const std::string& /*what*/, const std::function<bool()>& isDone) {
        pump.runUntil(isDone);
        return true;
    }

    // Asks a question whose answers have captions of their own, and returns the place of the answer; that behind the
    // last one when the user does not answer.
    virtual std::size_t Choose(const std::string& /*question*/, const std::vector<std::string>& captions) {
        return captions.size();
    }

    // The figures or rows of a log have changed: explorers that show it are to redraw it.
    virtual void LogValuesChanged(const clsLog& /*log*/) {}
};

class BackgroundServer;     // server/
class Http;                 // platform/
struct ProtectorCollection; // protection/

struct Session {
    Session(const std::string& companyName, Locale locale, SettingsStore& settings, MessageInterface& messages,
            EventPump& pump, Clock& clock, const Wording& wording = {});
    ~Session();

    const Brand brand;
    Texts texts; // these three are in the language of the program or, while Speaking lives, in another
    LabelTexts labels;
    DateWords dateWords;
    const Locale locale;
    SettingsStore& settings;
    SettingsStore* state; // what the program remembers by itself; the settings until another store is given
    MessageInterface& messages;
    EventPump& pump;
    Clock& clock;
    Frame* frame;                              // never null
    BackgroundServer* server = nullptr;        // null: nothing loads or recalculates in the background
    Comm* comm = nullptr;                      // null: there is no serial line
    Http* http = nullptr;                      // null: nothing can be fetched
    ProtectorCollection* protectors = nullptr; // null: there is no database

    std::string DocumentsFolder; // of the user; empty: not known
    std::string StateFolder;     // where the program keeps what it must not lose, with "/" at the end; empty: nowhere
    clsOptions Options;
    std::uint64_t EditTurns = 0; // counts the steps done, undone and done again in all documents
    std::vector<std::unique_ptr<clsFile>> OpenFiles;
    std::vector<std::string> RecentFiles; // at most four names, the most recent first

    std::string LoadText(Text::Id id) const { return texts.LoadText(id); }

    // What is shown is in this language from now on; messages stay in theirs.
    void Show(const Language& language);

    // Shows the one message box. An empty title stands for the application's; while background work runs the box is
    // system-modal.
    Button ShowMessage(const std::string& prompt, MessageFlags flags, const std::string& title = {});

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

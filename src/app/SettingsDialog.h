// The decisions of the settings dialog, without its widgets: what each way of opening it edits and offers, and what
// confirming does. The dialog edits a working copy; nothing else changes before Confirm.
#pragma once

#include "app/Appearance.h"
#include "model/Session.h"
#include "views/ChartLines.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

enum class SettingsMode { All, Explorer, Logs };

// What must be done after the dialog has been confirmed.
struct SettingsChanges {
    bool RebuildTrees = false; // of all explorers
    bool ResetTabs = false;    // of all explorers, and the current tab is redrawn
    bool RedrawTab = false;    // the current tab of the explorer that opened the dialog
    bool ShowLook = false;     // the whole program takes on another appearance

    bool operator==(const SettingsChanges&) const = default;
};

// An entry of the list of serial ports; port 0 is the automatic choice.
struct SerialChoice {
    std::string Text;
    std::int16_t Port;

    bool operator==(const SerialChoice&) const = default;
};

class SettingsDialog {
public:
    explicit SettingsDialog(Session& session);                      // all pages: the application's settings
    SettingsDialog(Session& session, clsOptions& options);          // only the page of the explorer
    SettingsDialog(Session& session, clsLog& log, FigureKind kind); // only the page of logs, for one kind of figures

    clsOptions Edited;                      // with a log, its display options are in objLogOptions
    Appearance Look = Appearance::AsSystem; // of the program; confirmed with all pages only
    ChartLines Lines;                       // of the user, for all logs; confirmed except with the page of the explorer

    Session& session() const { return session_; }

    SettingsMode Mode() const { return mode_; }

    // The kind that is shown first (kCumulative, kInterval); with a log it is the only one.
    FigureKind Kind() const { return kind_; }

    bool HasChannelB() const; // false for a log without channel B

    // Whether a parameter is offered: not when it can never be shown and, with a log, not when the log does not have
    // it.
    bool IsOffered(LogChannel channel, FigureKind kind, Parameter parameter) const;
    std::string Caption(Parameter parameter) const;

    // Returns nothing, after a message, when the exposure time is invalid; the page of the explorer does not ask for
    // one. Otherwise the edited settings are stored where they came from; those of the application are also written to
    // the store.
    std::optional<SettingsChanges> Confirm(const std::string& exposureTimeEntry);

private:
    bool isUnusedLn(Parameter parameter) const; // a percentile that the log does not have
    bool readExposureTime(const std::string& entry);
    void tryToStore(const std::function<void()>& store);
    bool storeLines(); // returns whether they have changed
    bool storeLook();  // the same
    SettingsChanges confirmAll();
    SettingsChanges confirmExplorer();
    SettingsChanges confirmLog();

    Session& session_;
    SettingsMode mode_;
    clsOptions* options_ = nullptr; // in mode Explorer
    clsLog* log_ = nullptr;         // in mode Logs
    clsLogOptions offered_;
    FigureKind kind_ = kCumulative;
};

// "AUTO", the ports of this machine with their devices, and the chosen port if it is not among them.
std::vector<SerialChoice> serialChoices(const Session& session, std::int16_t chosen);
// 0, the automatic choice, when the port is not there.
std::size_t serialChoiceOf(const std::vector<SerialChoice>& choices, std::int16_t port);

// A language to choose; an empty code stands for the choice of another: the system, or the program.
struct LanguageChoice {
    std::string Text;
    std::string Code;
};

// The other choice, in the words of a text, and all languages, each by its own name.
std::vector<LanguageChoice> languageChoices(const Session& session, Text::Id other);

// The calculation methods offered in a protector calculation mode, and the one to choose there: the kept one if it is
// offered, else "Auto".
std::vector<std::string> calcMethods(std::int16_t mode);
std::string calcMethodOf(std::int16_t mode, const std::string& kept);

} // namespace kestrane

// The decisions of the settings dialog, without its widgets: what each way of opening it edits and offers, and what
// confirming does. The dialog edits a working copy; nothing outside it changes before Confirm.
#pragma once

#include "model/Session.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

enum class SettingsMode { All, Explorer, Logs };

// What is to be done once the dialog has been confirmed.
struct SettingsChanges {
    bool RebuildTrees = false; // of every explorer
    bool ResetTabs = false;    // of every explorer, and the present one redrawn
    bool RedrawTab = false;    // the present tab of the explorer that opened the dialog

    bool operator==(const SettingsChanges&) const = default;
};

// An entry of the list of serial ports. Port 0 is the automatic choice.
struct SerialChoice {
    std::string Text;
    std::int16_t Port;

    bool operator==(const SerialChoice&) const = default;
};

class SettingsDialog {
public:
    explicit SettingsDialog(Session& session);               // all pages: the application's settings
    SettingsDialog(Session& session, clsOptions& options);   // the page of the explorer alone
    SettingsDialog(Session& session, clsLog& log, int kind); // the page of logs alone, for one kind of figures

    clsOptions Edited; // with a log, its display options stand in objLogOptions

    Session& session() const { return session_; }

    SettingsMode Mode() const { return mode_; }

    // The kind that is edited first (kCumulative, kInterval). With a log it is the only one.
    int Kind() const { return kind_; }

    bool HasChannelB() const; // false for a log without one

    // A parameter that can never be shown is not offered; with a log, one that it does not hold.
    bool IsOffered(int channel, int kind, int parameter) const;
    std::string Caption(int parameter) const;

    // Refuses (nothing), with a message, an exposure time that is none; the page of the explorer alone does not ask for
    // one. Else the edited settings are applied where they came from; those of the application go to the store, too.
    std::optional<SettingsChanges> Confirm(const std::string& exposureTimeEntry);

private:
    bool isUnusedLn(int parameter) const; // a percentile that the log has not got
    bool readExposureTime(const std::string& entry);
    SettingsChanges confirmAll();
    SettingsChanges confirmExplorer();
    SettingsChanges confirmLog();

    Session& session_;
    SettingsMode mode_;
    clsOptions* options_ = nullptr; // of mode Explorer
    clsLog* log_ = nullptr;         // of mode Logs
    clsLogOptions offered_;
    int kind_ = kCumulative;
};

// "AUTO", the ports of this machine with their devices, and the chosen one if it is not among them.
std::vector<SerialChoice> serialChoices(const Session& session, std::int16_t chosen);
std::size_t serialChoiceOf(const std::vector<SerialChoice>& choices, std::int16_t port); // the automatic one for none

// The calculation methods that a protector calculation mode offers, and the one to choose there: the kept one if it is
// offered, else "Auto".
std::vector<std::string> calcMethods(std::int16_t mode);
std::string calcMethodOf(std::int16_t mode, const std::string& kept);

} // namespace kestrane

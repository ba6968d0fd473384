// The protector database screen without its widgets: what its list shows, what may be typed into its boxes, and what
// adding, changing, deleting and choosing a protector do. The screen has two uses: maintaining the database, and
// choosing a protector and a correction to compare a log with. It works on the session's collection of protectors.
#pragma once

#include "model/clsLog.h"
#include "platform/Message.h"
#include "protection/ProtectorDatabase.h"
#include "protection/Standards.h"
#include "resources/TextNames.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// The boxes of a protector with the typed texts.
struct ProtectorEntries {
    using Bands = std::array<std::string, kProtectorBands>;

    std::string Name, Type;
    Bands Mean, SD, MeanUS, SDUS;
    std::array<std::string, 3> HML;
    std::string SNR, NRR;

    bool operator==(const ProtectorEntries&) const = default;
};

// A cell of the list. A figure is sorted by its number.
struct ProtectorCell {
    std::string Text;
    std::optional<float> Number;
    std::optional<kestrane::Verdict> Verdict{}; // of a cell that says it
};

struct ProtectorChoice {
    clsHP Protector;
    CorrectionKind CorrectionFactor;
};

class ProtectorScreen {
public:
    explicit ProtectorScreen(Session& session);           // to maintain the database
    ProtectorScreen(Session& session, const clsLog& log); // to choose a protector for the log
    ~ProtectorScreen();

    Session& session() const { return session_; }

    bool IsSelection() const { return log_ != nullptr; }

    const std::vector<clsHP>& Protectors() const { return collection_.Protectors; }

    // Why the database could not be read to its end; empty when it was. Otherwise nothing in it can be changed until
    // KeepDamaged has copied the file, but the records that were read can be saved under another name.
    const std::string& Damage() const { return collection_.Damage; }

    bool IsReadOnly() const { return IsSelection() || !Damage().empty(); }

    void SaveReadable(const AskText& askName) const; // asks for a name, with a proposal
    void KeepDamaged();                              // says under which name

    // Whether European or US figures are shown; at first, those of the mode in the settings.
    bool IsUS() const { return isUS_; }

    void ShowUS(bool isUS) { isUS_ = isUS; }

    // The list: name, type, a column for each kind of data among the figures shown and, when choosing, the level and
    // the verdict.
    std::vector<std::string> Captions() const;
    std::vector<ProtectorCell> Cells(const clsHP& protector) const;

    // The corrections, when choosing, and the chosen one. At first it is the one that was used last.
    std::vector<std::string> Corrections() const;

    CorrectionKind Correction() const { return correction_; }

    void SetCorrection(const std::string& text);

    // The boxes of a protector; null stands for a new one.
    ProtectorEntries EntriesOf(const clsHP* protector) const;

    // The text of a numeric box after it is left: a number as "##0.0"; when it is no number, before.
    std::string AcceptedNumber(const std::string& entry, const std::string& before) const;

    // The protector that the entries stand for; a figure is 0 when its box contains no number.
    clsHP Draft(const ProtectorEntries& entries) const;

    // Stores the entries in the record at index or, when that is nothing, adds a record. A new record with an existing
    // name replaces that record if the user agrees. Returns the index of the record; nothing, after a message, when it
    // was not stored.
    std::optional<std::size_t> Store(const ProtectorEntries& entries, std::optional<std::size_t> index);

    bool Delete(std::size_t index); // asks first; false when it was not deleted
    // Asks when the entries have been changed.
    bool MayLose(const ProtectorEntries& entries, const clsHP* protector) const;

    // The protector at index and the correction; nothing, after a message, when its level cannot be computed.
    std::optional<ProtectorChoice> Choose(std::size_t index) const;

    // Saves when the screen is closed: the database when it has been changed or, when choosing, the correction.
    void Close();

private:
    std::optional<float> level(const clsHP& protector) const;
    std::string shownNumber(float value) const;
    Text::Id faultOf(const ProtectorEntries& entries, const clsHP* self) const;
    void take(const ProtectorEntries& entries, clsHP& protector) const;
    void writeSafely(const std::function<void()>& write) const; // shows an error that is raised

    Session& session_;
    ProtectorCollection& collection_;
    const clsLog* log_ = nullptr;
    std::unique_ptr<clsLog> linear_; // the log converted for the octave method; null when the log needs no conversion
    bool isUS_;
    CorrectionKind correction_ = kCorrectionNone;
};

} // namespace kestrane

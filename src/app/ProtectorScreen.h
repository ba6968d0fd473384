// The protector database screen without its widgets: what its list shows, what may be typed into its boxes, what
// adding, changing, deleting and choosing a protector does. Shown in two ways: for maintaining the database, and for
// choosing a protector and a correction to compare a log with. Works on the session's collection of protectors.
#pragma once

#include "model/clsLog.h"
#include "platform/Message.h"
#include "protection/ProtectorDatabase.h"
#include "resources/TextNames.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// The boxes of a protector, as typed.
struct ProtectorEntries {
    using Bands = std::array<std::string, kProtectorBands>;

    std::string Name, Type;
    Bands Mean, SD, MeanUS, SDUS;
    std::array<std::string, 3> HML;
    std::string SNR, NRR;

    bool operator==(const ProtectorEntries&) const = default;
};

// A cell of the list; a figure is sorted by its number.
struct ProtectorCell {
    std::string Text;
    std::optional<float> Number;
};

struct ProtectorChoice {
    clsHP Protector;
    int CorrectionFactor;
};

class ProtectorScreen {
public:
    explicit ProtectorScreen(Session& session);           // for maintenance
    ProtectorScreen(Session& session, const clsLog& log); // to choose for the log
    ~ProtectorScreen();

    Session& session() const { return session_; }

    bool IsSelection() const { return log_ != nullptr; }

    const std::vector<clsHP>& Protectors() const { return collection_.Protectors; }

    // Why the database could not be read to its end; empty when it was. Then nothing can be changed in it until
    // KeepDamaged has copied the file; what could be read can be saved under another name.
    const std::string& Damage() const { return collection_.Damage; }

    bool IsReadOnly() const { return IsSelection() || !Damage().empty(); }

    void SaveReadable(const AskText& askName) const; // given a name to propose
    void KeepDamaged();                              // says under which name

    // Which figures are shown, European or US; at first those of the settings' mode.
    bool IsUS() const { return isUS_; }

    void ShowUS(bool isUS) { isUS_ = isUS; }

    // The list: name, type, a column for each form of data of the figures shown, and when choosing, the level.
    std::vector<std::string> Captions() const;
    std::vector<ProtectorCell> Cells(const clsHP& protector) const;

    // The correction, when choosing. At first the one that was used last.
    std::vector<std::string> Corrections() const;

    int Correction() const { return correction_; }

    void SetCorrection(const std::string& text);

    // A protector's boxes (null: of a new one).
    ProtectorEntries EntriesOf(const clsHP* protector) const;

    // A numeric box as it is left: a number as "##0.0", anything else as it was before.
    std::string AcceptedNumber(const std::string& entry, const std::string& before) const;

    // What entries stand for, 0 where a box holds no number.
    clsHP Draft(const ProtectorEntries& entries) const;

    // Stores the entries into the record at index, or adds them (nothing); a new one of a name that is there replaces
    // that record if the user agrees. The index of the record; nothing when it was not stored, the reason shown.
    std::optional<std::size_t> Store(const ProtectorEntries& entries, std::optional<std::size_t> index);

    bool Delete(std::size_t index);                                              // asks first
    bool MayLose(const ProtectorEntries& entries, const clsHP* protector) const; // asks when they have been changed

    // The protector at index with the correction; nothing, and a message, when its level cannot be computed.
    std::optional<ProtectorChoice> Choose(std::size_t index) const;

    // Writes what closing the screen writes: the database when it has been changed, or the correction.
    void Close();

private:
    std::optional<float> level(const clsHP& protector) const;
    std::string shownNumber(float value) const;
    Text::Id faultOf(const ProtectorEntries& entries, const clsHP* self) const;
    void take(const ProtectorEntries& entries, clsHP& protector) const;
    void writeSafely(const std::function<void()>& write) const; // shows what it raises

    Session& session_;
    ProtectorCollection& collection_;
    const clsLog* log_ = nullptr;
    std::unique_ptr<clsLog> linear_; // the log in the weighting of the octave method; null when it is so itself
    bool isUS_;
    int correction_ = 0;
};

} // namespace kestrane

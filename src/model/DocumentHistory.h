// What was done to a document since it was first saved here, a line for each change. The lines that are kept in the
// file beside the data file are read and written by files/HistoryFile.
#pragma once

#include "model/Calibration.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

class EditStep;
struct Session;

// What is known of a log and has no place in the data file.
struct LogRemarks {
    std::uint32_t Position = 0; // of the log in the document, in the order of the tree, from 0
    std::int16_t CriterionDose = 0, ExchangeDose = 0;
    Calibration UserCalibration;
    std::uint64_t ReportedFigures = ~std::uint64_t{0}; // as in LogData
    std::string CutReason;
};

struct HistoryLine {
    std::string Time; // local, "2026-03-02T10:15:00"
    std::string What;
    std::string Log;      // its name then; empty for a change of the whole document
    std::string Identity; // of the log (model/LogIdentity); empty in lines of before there was one
    std::string Before, After, Reason;

    // In a line that says what the data file is: After is its SHA-256, and these are the remarks on its logs.
    std::optional<std::vector<LogRemarks>> OfFile;
};

HistoryLine historyLine(const Session& session, std::string what); // with the time of the session's clock

class DocumentHistory {
public:
    // Adds a line. While the figures of a log are still being computed, what the change did is not yet known: the step
    // that made the line describes it again when it is asked for, until settle() or the next line.
    void add(HistoryLine line, const EditStep* step = nullptr);

    // To be called before anything changes that the newest line describes, and before its step goes.
    void settle();

    std::vector<HistoryLine> lines() const;       // as they were added
    std::vector<HistoryLine> oldestFirst() const; // by their times: logs bring the lines of their document with them
    const HistoryLine* lastOfFile() const;        // the newest line that says what the data file is; null for none

    std::string DataFile; // the data file beside which the history is kept; empty for none yet
    std::size_t Kept = 0; // so many lines, from the first, are kept there
    std::string Fault;    // why the history that is there cannot be used; empty when it can
    bool IsWanted = true; // whether saving the document also writes its history

private:
    std::vector<HistoryLine> lines_;
    const EditStep* step_ = nullptr; // describes the newest line
};

// The name of the file that keeps the history of a data file.
std::string historyNameOf(const std::string& dataFile);

} // namespace kestrane

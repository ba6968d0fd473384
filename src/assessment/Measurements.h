// What data files give to an assessment: the level and the peak of the rows that it names, and the levels under the
// protectors that it names. They are kept while the assessment is edited, so that no file is read for a typed figure.
#pragma once

#include "assessment/Assessment.h"
#include "assessment/LogLevels.h"
#include "model/Session.h"
#include "protection/clsHP.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace kestrane {

// The instrument that a log was measured with. A text is empty when it is not known.
struct MeasuredWith {
    std::string Name, Serial;
    clsDate Calibrated, FactoryDue;
    kestrane::Calibration Calibration; // around the measurement

    bool operator==(const MeasuredWith&) const = default;
};

// A log that is named in an assessment, as far as it was found.
struct MeasuredLog {
    std::string Sha256;  // of the file; empty: it could not be read
    bool IsOpen = false; // the file is a data file
    std::string Log;     // the tree node key of the log; empty: the file does not hold it
    MeasuredWith Instrument;
};

// What rows of a log give.
struct MeasuredRows : MeasuredLog {
    std::int64_t Count = 0; // of all rows of the log; 0 also when not all of them could be read
    LogLevels Levels;       // without the single rows; empty for a range that is not in the log
};

// What a protector does to the log of a spectrum. Levels are in dB.
struct MeasuredProtector : MeasuredLog {
    bool IsKnown = false;             // it is in the database
    std::optional<double> Leq, Level; // LAeq of the log, and what is left of it
    std::string Method;               // of the comparison or the standard
};

using FindProtector = std::function<const clsHP*(const std::string& name)>; // null: there is none

class Measurements {
public:
    // The paths of the data files that an assessment at this path still waits for, each once.
    std::vector<std::string> unread(const Assessment& assessment, const std::string& path) const;

    // Takes what the assessment needs from one of these files. file has all of its rows, or is null when it could not
    // be opened. sha256 is that of its bytes, or empty when they could not be read.
    void take(const Session& session, const Assessment& assessment, const std::string& path,
              const std::string& dataFile, const clsFile* file, const std::string& sha256, const FindProtector& find);

    // These are null when the file has not been read for them yet.
    const MeasuredRows* rows(const std::string& path, const LogRows& rows) const;
    const MeasuredProtector* protector(const std::string& path, const AssessmentProtector& worn) const;

    // The instruments behind the samples of a group, each once.
    std::vector<MeasuredWith> instruments(const AssessmentGroup& group, const std::string& path) const;

    void forget(); // everything, so that the files are read again
    void forgetProtectors();

private:
    using RowsKey =
        std::tuple<std::string, std::string, std::optional<std::int64_t>, std::optional<std::int64_t>>; // file, log
    using ProtectorKey = std::tuple<std::string, std::string, std::string, std::string, int>; // file, log, name, mode

    static RowsKey keyOf(const std::string& path, const LogRows& rows);
    static ProtectorKey keyOf(const std::string& path, const AssessmentProtector& worn);

    std::map<RowsKey, MeasuredRows> rows_;
    std::map<ProtectorKey, MeasuredProtector> protectors_;
};

// Records the hash of the measured file in every sample and spectrum that has none yet.
void keepMeasuredHashes(Assessment& assessment, const std::string& path, const Measurements& measured);

} // namespace kestrane

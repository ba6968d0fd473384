// The levels of a group's samples, typed or taken from logs, and the warnings that arise while they are gathered.
#pragma once

#include "assessment/Assess.h"
#include "resources/TextNames.h"

namespace kestrane {

// Whether a time in hours is possible as a part of a day: above 0 and at most 24.
bool isDuration(double hours);

class Warnings {
public:
    Warnings(const Session& session, std::vector<AssessmentWarning>& list) : session_(session), list_(list) {}

    // Adds a warning. In the text "^" is replaced by first and "*" by second. A warning that is there already is not
    // added again.
    void add(std::string_view code, const std::optional<std::string>& task, Text::Id text,
             const std::string& first = {}, const std::string& second = {});

    // Adds what the calibration of a log has to say, if anything. It names the log, and so no task.
    void addCalibration(const LogRows& rows, const Calibration& calibration);

    // The same with the code for a value that is not possible.
    void bad(const std::optional<std::string>& task, Text::Id text, const std::string& first = {},
             const std::string& second = {});

    // A number as it stands in a warning, with at most two decimals; a very large one with its exponent.
    std::string number(double value) const;

private:
    void add(AssessmentWarning warning);

    const Session& session_;
    std::vector<AssessmentWarning>& list_;
};

struct SampleLevels {
    std::vector<double> Levels;
    bool AreAllThere = true; // when false, no figure can be computed from them
    Figure MeasuredHours;    // nothing unless all samples are rows
    Figure CPeak, OtherPeak; // of their logs
};

// The samples of one assessment.
class SampleSource {
public:
    SampleSource(std::string path, const Measurements& measured) : path_(std::move(path)), measured_(measured) {}

    SampleLevels gather(const std::vector<Sample>& samples, const std::optional<std::string>& task, Warnings& warnings,
                        std::vector<SourceResult>& sources) const;

    // What was measured of a protector on its spectrum; null when its log is not there, which has been warned of. What
    // is known of the log is added to sources.
    const MeasuredProtector* protector(const AssessmentProtector& worn, Warnings& warnings,
                                       std::vector<SourceResult>& sources) const;

private:
    bool isThere(const MeasuredLog* log, const LogRows& rows, const std::optional<std::string>& task,
                 Warnings& warnings, std::vector<SourceResult>& sources) const;
    void take(const LogRows& rows, const std::optional<std::string>& task, Warnings& warnings,
              std::vector<SourceResult>& sources, SampleLevels& out) const;

    std::string path_;
    const Measurements& measured_;
};

} // namespace kestrane

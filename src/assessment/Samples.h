// The levels of a group's samples, typed or taken from logs, and what is to be warned of while they are gathered.
#pragma once

#include "assessment/Assess.h"
#include "resources/TextNames.h"

#include <map>

namespace kestrane {

// A level that can be. 0 stands for none.
bool isLevel(double level);

// A time that can be, of a part of a day.
bool isDuration(double hours);

class Warnings {
public:
    Warnings(const Session& session, std::vector<AssessmentWarning>& list) : session_(session), list_(list) {}

    // text: with ^ and * for the first and the second word. Each warning is kept once.
    void add(std::string_view code, const std::optional<std::string>& task, Text::Id text,
             const std::string& first = {}, const std::string& second = {});

    // For the warning that a value cannot be.
    void bad(const std::optional<std::string>& task, Text::Id text, const std::string& first = {});

    std::string number(double value) const;

private:
    const Session& session_;
    std::vector<AssessmentWarning>& list_;
};

struct SampleLevels {
    std::vector<double> Levels;
    bool AreAllThere = true; // else no figure can be made of them
    Figure MeasuredHours;    // when all of them are rows
    Figure CPeak, OtherPeak; // of their logs
};

// Of one assessment: data files are opened and hashed once.
class SampleSource {
public:
    SampleSource(std::string path, const AssessmentData& data) : path_(std::move(path)), data_(data) {}

    SampleLevels gather(const std::vector<Sample>& samples, const std::optional<std::string>& task, Warnings& warnings,
                        std::vector<SourceResult>& sources);

    // The log of rows; null when it is not there, which has been warned of. What is known of it is added to sources.
    const clsLog* log(const LogRows& rows, const std::optional<std::string>& task, Warnings& warnings,
                      std::vector<SourceResult>& sources);

    const clsHP* protector(const std::string& name) const { return data_.Protector(name); }

private:
    const std::string& hashOf(const std::string& file);
    void take(const LogRows& rows, const std::optional<std::string>& task, Warnings& warnings,
              std::vector<SourceResult>& sources, SampleLevels& out);

    std::string path_;
    const AssessmentData& data_;
    std::map<std::string, std::string> hashes_;
};

} // namespace kestrane

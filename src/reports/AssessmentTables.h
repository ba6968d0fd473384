// What the report of an assessment says about a group, as headings, lines, tables and places to sign. AssessmentReport
// places them on the pages.
#pragma once

#include "assessment/Assess.h"
#include "model/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// What a report is made of. measured and results are those of the assessment.
struct AssessmentSubject {
    const Session& session;
    const Assessment& assessment;
    const std::string& path; // of the assessment; empty: it has never been saved
    const Measurements& measured;
    const std::vector<GroupResult>& results; // one a group
};

struct ReportBlock {
    enum class Kind { Heading, Lines, Table, Sign };

    enum Kind Kind = Kind::Lines;
    std::string Text{};                  // of a heading
    std::vector<std::string> Captions{}; // of a table
    std::vector<std::vector<std::string>>
        Rows{}; // of a table; of lines a caption, which may be empty, and what it is of
};

std::vector<ReportBlock> groupBlocks(const AssessmentSubject& subject, std::size_t group);

// What stands in place of that when there is no group.
std::vector<ReportBlock> blocksWithoutGroup(const AssessmentSubject& subject);

} // namespace kestrane

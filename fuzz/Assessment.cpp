// Any bytes as an exposure assessment. What is read is written as it was read, and can be computed and edited, whatever
// its figures are.
#include "Target.h"
#include "TestSession.h"
#include "assessment/AssessmentFile.h"
#include "assessment/AssessmentShown.h"
#include "platform/RuntimeError.h"

namespace kestrane::fuzz {

namespace {

std::optional<Assessment> read(std::string_view text) {
    try {
        return assessmentOfText(text);
    } catch (const RuntimeError& error) {
        require(error.Number == kErrorAssessment, "an assessment that is none raises 110");
        return std::nullopt;
    }
}

void shown(const Session& session, const Assessment& assessment) {
    const Measurements none;
    const std::vector<GroupResult> results = assess(session, assessment, {}, none);
    require(results.size() == assessment.Groups.size(), "each group has a result");
    const auto rows = assessmentRows(session, assessment, {}, none, results);
    for (std::size_t group = 0; group < results.size(); ++group) {
        spokenResult(session, results[group]);
        exposureScale(session, results[group]);
        shownActions(session, results[group]);
        groupFields(session, assessment, group, {});
        for (const AssessmentRow& row : rows[group].Children)
            require(without(assessment, row.Place).Next.Groups.size() == results.size(), "a row of a group goes alone");
    }
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    static const TestSession kSession;
    const std::optional<Assessment> assessment =
        fuzz::read(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!assessment) return 0;
    const std::string written = assessmentText(*assessment);
    const std::optional<Assessment> back = fuzz::read(written);
    fuzz::require(back && assessmentText(*back) == written, "what is written is read back");
    fuzz::shown(kSession.session, *assessment);
    return 0;
}

// What a report can have beyond its form, as one table: the word on the command line and in the settings, the name in
// the preview, which logs have it, and its pages.
#pragma once

#include "reports/PagedDocument.h"
#include "resources/TextNames.h"

#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>

namespace kestrane {

struct ReportSubject;

enum class ReportPart { Spectrum, NoiseRating, Protector, Exposure, Criteria, History };

using ReportParts = std::set<ReportPart>;

struct ReportPartRow {
    ReportPart Part;
    std::string_view Word;
    Text::Id Caption;
    bool (*IsOf)(const ReportSubject& subject); // whether there is something to print
    // Null when the report places it among its tables.
    std::unique_ptr<PagedDocument> (*Pages)(const ReportSubject& subject, const PageMetrics& metrics);
};

std::span<const ReportPartRow> reportPartRows(); // in the order in which they are printed

// The parts that a text such as "spectrum,history" names; words of no part are left out. And the text of parts.
ReportParts partsOf(std::string_view words);
std::string wordsOf(const ReportParts& parts);

} // namespace kestrane

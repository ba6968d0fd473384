// A report in the language that the settings choose for reports, whatever language the program speaks.
#pragma once

#include "model/Session.h"
#include "reports/PagedDocument.h"

#include <functional>
#include <memory>

namespace kestrane {

// Has a report laid out in the language of reports. Its pages are drawn in it, too. The session must outlive the
// document.
std::unique_ptr<PagedDocument> inReportLanguage(Session& session,
                                                const std::function<std::unique_ptr<PagedDocument>()>& layOut);

} // namespace kestrane

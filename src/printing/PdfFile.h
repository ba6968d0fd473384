// Writes a document as a PDF file with searchable text, embedded fonts, and drawings instead of pixels. The file is
// replaced as a whole or not at all. It is of the kind that archives keep, PDF/A-1b, and the same document printed at
// the same time of the session's clock has the same bytes.
#pragma once

#include "model/Session.h"
#include "printing/Paper.h"
#include "reports/PagedDocument.h"

#include <string>

namespace kestrane {

// Writes the document, which must be laid out for this paper. Returns false when progress ended it; then nothing was
// written. Raises an error when the file cannot be written.
bool writePdf(const Session& session, PagedDocument& document, const Paper& paper, const std::string& path,
              const PageProgress& progress = {});

} // namespace kestrane

// A document as a PDF file: text that can be searched, fonts within, drawings instead of pictures. There is a whole
// file or the old one.
#pragma once

#include "model/Session.h"
#include "printing/Paper.h"
#include "reports/PagedDocument.h"

#include <string>

namespace kestrane {

// The document must be laid out for this paper. False: the progress put an end to it, and nothing was written. Raises
// an error when the file cannot be written.
bool writePdf(const Session& session, PagedDocument& document, const Paper& paper, const std::string& path,
              const PageProgress& progress = {});

} // namespace kestrane

// What becomes of a download: a new document that has no path yet, or more logs in an existing one.
#pragma once

#include "download/Download.h"
#include "model/clsFile.h"

namespace kestrane {

// Downloads into objFile or, when it is null, into a new document, which is opened under a name without a path. When
// the document has a collection with the instrument's serial number, the logs go there. The trees are rebuilt, and the
// first log of a new document is shown. Returns false, after a message, when nothing was downloaded; the documents are
// then unchanged.
bool DownloadData(const DownloadServices& services, clsFile* objFile);

} // namespace kestrane

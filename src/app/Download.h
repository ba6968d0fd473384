// What a document does with a download: a new one that has no path yet, or one that takes the logs in.
#pragma once

#include "download/Download.h"
#include "model/clsFile.h"

namespace kestrane {

// Downloads into objFile, or (null) into a new document, which is opened under a name without a path. Logs of an
// instrument whose serial number the document has go into that collection. Trees are rebuilt, and the first log of a
// new document is shown. False when nothing was downloaded; a message has been shown, and the documents are as they
// were.
bool DownloadData(const DownloadServices& services, clsFile* objFile);

} // namespace kestrane

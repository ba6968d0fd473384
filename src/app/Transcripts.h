// What went over the line in downloads: it is always kept, so that the bytes of a download that breaks off are not
// lost, and the logs that are whole can be read out of it.
#pragma once

#include "download/Transcript.h"
#include "model/Session.h"

#include <cstddef>
#include <fstream>
#include <string>

namespace kestrane {

std::string transcriptFolder(const Session& session); // with "/" at the end

// The transcript of one download, in a file of its own once a byte has been received: where no instrument answers there
// is nothing to be kept.
class KeptTranscript {
public:
    static constexpr std::size_t kKept = 20; // the oldest are removed

    explicit KeptTranscript(const Session& session) : session_(session) {}

    // Passes every line on to further, too. A line is in the file before it is passed on. Without a state folder, or
    // where no file can be made, nothing is kept.
    TranscriptSink Sink(TranscriptSink further);

    bool IsKept() const { return file_.is_open() && file_.good(); }

private:
    void begin();

    const Session& session_;
    std::ofstream file_;
    std::string before_; // the lines before the first byte received
};

// Reads the logs that are whole out of a transcript into a new document, which has no file yet. Returns false, after a
// message, when there are none or the file cannot be read.
bool RecoverDownload(Session& session, const std::string& path);

} // namespace kestrane

// Any bytes as the transcript of a download. The logs that are whole in it become a document that can be saved and
// opened again; a transcript without any is told of.
#include "ScratchFolder.h"
#include "TestSession.h"
#include "app/Transcripts.h"
#include "files/XmlDocument.h"
#include "files/XmlWriter.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    using namespace kestrane::fuzz;
    static const ScratchFolder folder;
    const std::string path = folder.write("transcript.txt", {reinterpret_cast<const char*>(data), size});
    static TestSession test;
    static BackgroundServer server(test.pump, 1);
    test.session.server = &server;
    test.session.OpenFiles.clear();
    test.messages.Boxes.clear();
    if (!RecoverDownload(test.session, path)) {
        require(test.session.OpenFiles.empty() && test.messages.Boxes.size() == 1,
                "what cannot be recovered is told of");
        return 0;
    }
    test.pump.runUntil([&] { return noLogIsBusy(test.session); });
    require(test.session.OpenFiles.size() == 1, "what is recovered is one document");
    std::string reason;
    require(XmlDocument::fromText(DocumentText(*test.session.OpenFiles.front(), true), reason) != nullptr,
            "what is recovered can be saved");
    return 0;
}

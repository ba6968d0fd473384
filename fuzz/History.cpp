// Any bytes as the history beside a data file. Every line that is known stays when lines are added, and a file that is
// no history is never written to.
#include "ScratchFolder.h"
#include "TestSession.h"
#include "files/HistoryFile.h"
#include "files/Loaders.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"

namespace kestrane::fuzz {

namespace {

constexpr const char* kDocument =
    R"(<?xml version="1.0"?><KESTRANE><INS><TIMEHISTORY><INFO><LOGNAME>A</LOGNAME></INFO></TIMEHISTORY></INS></KESTRANE>)";

void work(Session& session, const ScratchFolder& folder, std::string_view content) {
    const std::string dataFile = folder.write("a.xml", kDocument);
    const std::string history = folder.write("a.xml.history.jsonl", content);
    require(history == historyNameOf(dataFile), "the history stands beside its file");
    clsFile file(session, dataFile);
    file.History = ReadHistory(session, dataFile);
    const std::vector<HistoryLine> before = file.History.lines();
    if (!file.History.Fault.empty()) {
        try {
            AppendHistory(file, "");
            require(false, "lines are not added to what is no history");
        } catch (const RuntimeError&) {
            require(readFile(history)->view() == content, "what is no history stays as it is");
        }
        return;
    }
    TakeUpHistory(file);
    CheckHistory(file, "0");
    AppendHistory(file, "");
    const std::vector<HistoryLine> after = ReadHistory(session, dataFile).lines();
    require(after.size() > before.size(), "a save is a line");
    for (std::size_t i = 0; i < before.size(); ++i)
        require(after[i].What == before[i].What && after[i].Reason == before[i].Reason, "a line stays as it was");
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    static TestSession session;
    static const fuzz::ScratchFolder folder;
    fuzz::work(session.session, folder, {reinterpret_cast<const char*>(data), size});
    return 0;
}

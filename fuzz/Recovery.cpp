// Any bytes as what a program left behind: the first byte says whether they are the note or the copy. A damaged note
// never costs the copy, and a copy that cannot be opened stays where it is.
#include "app/Recovery.h"
#include "ScratchFolder.h"
#include "TestSession.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

namespace kestrane::fuzz {

namespace {

constexpr std::string_view kNote =
    R"({"name":"a","file":"","time":"2026-03-02 10:15:00","version":"0.1.0","difference":"","size":0,"modified":0,)"
    R"("sha256":"","old-style":false,"for-later":false})";

void work(const ScratchFolder& state, bool isNote, std::string_view content) {
    static TestSession test;
    static BackgroundServer server(test.pump);
    test.session.server = &server;
    test.messages.Boxes.clear();
    test.session.StateFolder = state.path("");
    const std::string copy = state.write("recovery/left/1.xml", isNote ? "<KESTRANE/>" : content);
    state.write("recovery/left/1.json", isNote ? content : kNote);
    Recovery recovery(test.session, [] { return std::vector<const AssessmentDocument*>(); });
    const std::vector<LeftCopy> found = recovery.Left();
    require(found.size() <= 1, "there is one copy");
    if (found.empty()) { // kept for too long, or as its own file is
        require(isNote, "a copy with a good note is offered");
        return;
    }
    require(!recovery.RowOf(found.front()).Name.empty() || isNote, "a copy has its name");
    recovery.Settle(found, {CopyChoice::Open}, [](AssessmentDocument document) -> const AssessmentDocument& {
        static AssessmentDocument shown = std::move(document);
        return shown;
    });
    test.pump.runUntil([&] { return noLogIsBusy(test.session); });
    if (test.session.OpenFiles.empty()) {
        require(!test.messages.Boxes.empty(), "a copy that cannot be opened is told of");
        require(std::filesystem::exists(copy), "a copy that cannot be opened stays");
    }
    test.session.OpenFiles.clear();
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane::fuzz;
    if (size == 0) return 0;
    static const ScratchFolder state;
    std::filesystem::remove_all(state.path("recovery"));
    std::filesystem::create_directories(state.path("recovery/left"));
    work(state, data[0] % 2 == 0, {reinterpret_cast<const char*>(data) + 1, size - 1});
    return 0;
}

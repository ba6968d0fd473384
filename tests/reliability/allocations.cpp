// Allocations that fail, one at a time: the first, the second, and so on until none fails any more. Opening, saving,
// exporting and reporting must then refuse with a message or an error of ours; the open documents stay as they were,
// and no file is half written.
//
//   allocations [EVERY]     fails only each EVERYth; without it, each
#include "../reports/RecordingPage.h"
#include "TestSession.h"
#include "app/Documents.h"
#include "exports/Export.h"
#include "files/XmlWriter.h"
#include "platform/Files.h"
#include "platform/OutOfMemory.h"
#include "reports/Report.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <new>
#include <string>
#include <unistd.h>

namespace {

std::atomic<std::int64_t> left = 0; // allocations until one fails; below 1: none does
std::atomic<std::uint64_t> made = 0;

void* allocated(std::size_t size) {
    ++made;
    if (left > 0 && --left == 0) throw std::bad_alloc();
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) {
    return allocated(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace kestrane {

namespace {

namespace fs = std::filesystem;

const std::string kSamples = KESTRANE_SOURCE "/samples/";
const std::string kResult = fs::temp_directory_path() / ("kestrane-allocations-" + std::to_string(getpid()) + ".xml");

void require(bool holds, const std::string& what) {
    if (holds) return;
    left = 0;
    std::printf("Does not hold: %s\n", what.c_str());
    std::exit(1);
}

// A session with one document that must stay as it is.
struct Bystander {
    Bystander() : server(test.pump, 1) {
        test.session.server = &server;
        test.session.Options.RecalcOnOpen = true;
        require(OpenFile(test.session, kSamples + "shift-dosimeter.xml", OpenSource::Named, true), "the sample opens");
        finishWork();
        text = DocumentText(document(), true);
        name = document().FileName;
    }

    void finishWork() {
        test.pump.runUntil([&] { return noLogIsBusy(test.session); });
    }

    clsFile& document() const { return *test.session.OpenFiles.front(); }

    void requireUnchanged(const char* what) const {
        require(DocumentText(document(), true) == text, std::string(what) + ": the open document stays as it was");
    }

    TestSession test;
    BackgroundServer server;
    std::string text, name;
};

// What one operation came to: whether it was done, and whether somebody was told when it was not.
struct Outcome {
    bool isDone = false;
    bool isTold = false;
};

using Operation = std::function<Outcome(Bystander&)>;

// An operation whose refusals are errors of ours.
template <class F>
Outcome outcomeOf(F operation) {
    try {
        refusingWithoutMemory(operation);
        return {true, false};
    } catch (const RuntimeError& error) {
        return {false, error.Number == kErrorOutOfMemory};
    }
}

Outcome opened(Bystander& bystander, const std::string& file) {
    Session& session = bystander.test.session;
    const bool isOpen = OpenFile(session, file, OpenSource::Named, true);
    bystander.finishWork();
    left = 0;
    const bool isTold = !bystander.test.messages.Boxes.empty();
    require(session.OpenFiles.size() == (isOpen ? 2 : 1), "what does not open leaves nothing behind");
    session.OpenFiles.resize(1);
    return {isOpen, isTold};
}

Operation opens(const char* file) {
    return [path = kSamples + file](Bystander& bystander) { return opened(bystander, path); };
}

Outcome saved(Bystander& bystander) {
    const bool isSaved =
        SaveFile(bystander.test.session, bystander.document(), true, [](const std::string&) { return kResult; });
    left = 0;
    if (isSaved) {
        const std::string onDisk(readFile(kResult)->view());
        static const std::string whole = onDisk; // of the first save, in which nothing fails
        require(onDisk == whole && whole.find("</instruments>") != std::string::npos, "what counts as saved is whole");
        bystander.document().FileName = bystander.name;
    }
    require(bystander.document().FileName == bystander.name, "a document that was not saved keeps its name");
    fs::remove(kResult);
    return {isSaved, !bystander.test.messages.Boxes.empty()};
}

Outcome exported(Bystander& bystander, ExportFormat format) {
    const Outcome outcome = outcomeOf([&] {
        ExportTable table;
        forEachLog(bystander.document(), [&](const clsLog& log) { table.addRows("a", "b", log); });
        writeExport(table, format, kResult);
    });
    left = 0;
    require(fs::exists(kResult) == outcome.isDone, "an export is there when it is done, and only then");
    fs::remove(kResult);
    return outcome;
}

Outcome reported(Bystander& bystander) {
    const clsFile& file = bystander.document();
    const clsInsData& data = *file.InstrumentDatas.front();
    const clsLog& log = *data.logsOf(modeBroadband).front();
    return outcomeOf([&] {
        const RecordedMetrics paper;
        Report report({file, data, log}, ReportForm::CumulativeAndIntervals, paper);
        RecordingPage page(paper);
        for (std::size_t i = 0; i < report.pageCount(); ++i)
            report.drawPage(page, i);
    });
}

struct Named {
    const char* what;
    Operation operation;
};

const std::array kOperations{
    Named{"open a data file", opens("night-environment.xml")},
    Named{"open a data file with octaves", opens("machine-survey-octave.xml")},
    Named{"open a project of an older format", opens("old/stamping-night.zdp")},
    Named{"open a sound file of an older format", opens("old/quarry-house.zdf")},
    Named{"open the log of a machine", opens("old/bottling-night.log")},
    Named{"open delimited text", opens("old/old-meter.csv")},
    Named{"save", saved},
    Named{"export as CSV", [](Bystander& b) { return exported(b, ExportFormat::Csv); }},
    Named{"export as NDJSON", [](Bystander& b) { return exported(b, ExportFormat::Ndjson); }},
    Named{"report", reported},
};

// Returns how often the operation was tried.
std::uint64_t tryAll(const Named& named, std::uint64_t every) {
    Bystander bystander;
    made = 0;
    require(named.operation(bystander).isDone, std::string(named.what) + " works");
    const std::uint64_t needed = made;
    std::uint64_t tried = 0;
    for (std::uint64_t n = 1; n <= needed; n += every, ++tried) {
        bystander.test.messages.Boxes.clear();
        left = static_cast<std::int64_t>(n);
        const Outcome outcome = named.operation(bystander);
        left = 0;
        require(outcome.isDone || outcome.isTold, std::string(named.what) + ": a refusal is told");
        if (tried % 64 == 0) bystander.requireUnchanged(named.what);
    }
    bystander.requireUnchanged(named.what);
    return tried;
}

} // namespace

} // namespace kestrane

int main(int argc, char** argv) {
    const std::uint64_t every = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1;
    for (const kestrane::Named& named : kestrane::kOperations) {
        std::printf("%s: ", named.what);
        std::fflush(stdout);
        std::printf("%llu failed allocations\n", static_cast<unsigned long long>(kestrane::tryAll(named, every)));
    }
}

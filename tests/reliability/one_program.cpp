// The desktop program without its windows, for write_faults.py, two_programs.py and full_disk.py. It writes one thing:
//     one_program document FILE NAME      opens a data file, names its first collection and saves it
//     one_program autosave FILE NAME      the same, but keeps copies of the unsaved document: "first", then NAME
//     one_program assessment FILE TITLE   opens an assessment, gives it a title and saves it
//     one_program settings FILE VALUE     sets "Value" in a settings file
// Exit status 0 says that it is written, 1 that it is not; then, and when only a part is written, a message is on
// standard error. Faults are injected from the moment when there is something to be written (failing_calls.cpp).
//     one_program steps FILE STATE        does what the lines of standard input say: "open", "name NAME" and "save",
// for a data file or an assessment, and answers each with a line: "done" or "refused", with " asked" when the user was
// asked something. The user keeps what is here, reads a file that is open elsewhere, and gives the name FILE.mine.
// The state folder is "state" beside FILE; for steps, STATE.
#include "TestSession.h"
#include "WatchedFrame.h"
#include "app/Assessments.h"
#include "app/Documents.h"
#include "app/Recovery.h"
#include "explorer/Edits.h"
#include "platform/IniFile.h"
#include "platform/RuntimeError.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <dlfcn.h>

namespace kestrane {
namespace {

void beginFaults() {
    if (void* const begin = dlsym(RTLD_DEFAULT, "beginFaults"); begin != nullptr) reinterpret_cast<void (*)()>(begin)();
}

struct AskedFrame : WatchedFrame {
    int Questions = 0;

    std::size_t Choose(const std::string&, const std::vector<std::string>&) override {
        ++Questions;
        return 0; // what is here is kept
    }
};

struct Program : TestSession {
    AskedFrame frame;
    BackgroundServer server{pump, 2};

    explicit Program(std::string stateFolder) {
        session.frame = &frame;
        session.server = &server;
        session.StateFolder = std::move(stateFolder);
    }

    clsFile* open(const std::string& path) {
        if (!OpenFile(session, path, OpenSource::Named, true)) return nullptr;
        pump.runUntil([&] { return noLogIsBusy(session); });
        return session.OpenFiles.back().get();
    }

    static void name(clsFile& file, const std::string& name) {
        editCollectionName(file, *file.InstrumentDatas.front(), name);
    }

    void tellAll() const {
        for (const auto& box : messages.Boxes)
            std::fprintf(stderr, "%s\n", box.Prompt.c_str());
        for (const std::string& text : frame.Errors)
            std::fprintf(stderr, "%s\n", text.c_str());
    }
};

const AskSaveName kNoName = [](const std::string&) { return std::nullopt; };

void setTitle(AssessmentDocument& document, const std::string& title) {
    Assessment next = document.Now();
    next.Title = title;
    document.Change(Text::StepNote, std::move(next));
}

bool saveDocument(Program& program, const std::string& path, const std::string& name) {
    clsFile* const file = program.open(path);
    if (file == nullptr) return false;
    Program::name(*file, name);
    beginFaults();
    return SaveFile(program.session, *file, false, kNoName);
}

bool keepCopies(Program& program, const std::string& path, const std::string& name) {
    clsFile* const file = program.open(path);
    if (file == nullptr) return false;
    Recovery recovery(program.session, [] { return std::vector<const AssessmentDocument*>(); });
    for (const std::string& each : {std::string("first"), name}) {
        Program::name(*file, each);
        if (each == name) beginFaults();
        recovery.Look();
        program.pump.runUntil([&] { return !recovery.IsWriting(); });
    }
    return program.frame.Errors.empty();
}

bool saveAssessment(Program& program, const std::string& path, const std::string& name) {
    std::optional<AssessmentDocument> document = OpenAssessment(program.session, path, OpenSource::Named);
    if (!document) return false;
    setTitle(*document, name);
    beginFaults();
    return SaveAssessment(program.session, *document, false, kNoName);
}

bool setValue(Program&, const std::string& path, const std::string& text) {
    const std::unique_ptr<IniFile> settings = IniFile::ofCaller(path);
    beginFaults();
    settings->write("Preferences", "Value", text);
    return true;
}

bool step(Program& program, const std::string& path, std::optional<AssessmentDocument>& assessment,
          const std::string& line) {
    const AskSaveName mine = [&](const std::string&) {
        ++program.frame.Questions;
        return std::optional(path + ".mine");
    };
    const bool isAssessment = isNamedAsAssessment(path);
    if (line == "open" && isAssessment)
        return (assessment = OpenAssessment(program.session, path, OpenSource::Named)).has_value();
    if (line == "open") return program.open(path) != nullptr;
    clsFile* const file = isAssessment ? nullptr : program.session.OpenFiles.front().get();
    if (line == "save")
        return file != nullptr ? SaveFile(program.session, *file, false, mine)
                               : SaveAssessment(program.session, *assessment, false, mine);
    const std::string name = line.substr(line.find(' ') + 1);
    file != nullptr ? Program::name(*file, name) : setTitle(*assessment, name);
    return true;
}

int doSteps(const std::string& path, const std::string& folder) {
    Program program(folder);
    std::optional<AssessmentDocument> assessment;
    for (std::string line; std::getline(std::cin, line);) {
        program.messages.Boxes.clear();
        program.frame.Questions = 0;
        const bool isDone = step(program, path, assessment, line);
        const bool isAsked = program.frame.Questions > 0 || !program.messages.Boxes.empty();
        std::cout << (isDone ? "done" : "refused") << (isAsked ? " asked" : "") << std::endl;
    }
    return 0;
}

struct Kind {
    std::string_view name;
    bool (*write)(Program& program, const std::string& path, const std::string& value);
};

constexpr Kind kKinds[] = {
    {"document", saveDocument}, {"autosave", keepCopies}, {"assessment", saveAssessment}, {"settings", setValue}};

int run(std::string_view name, const std::string& path, const std::string& value) {
    if (name == "steps") return doSteps(path, value);
    for (const Kind& kind : kKinds) {
        if (kind.name != name) continue;
        Program program(path.substr(0, path.rfind('/') + 1) + "state/");
        bool isWritten = false;
        try {
            isWritten = kind.write(program, path, value);
        } catch (const RuntimeError& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
        program.tellAll();
        return isWritten ? 0 : 1;
    }
    return 2;
}

} // namespace
} // namespace kestrane

int main(int argc, char** argv) {
    return argc == 4 ? kestrane::run(argv[1], argv[2], argv[3]) : 2;
}

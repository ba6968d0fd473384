#include "app/Download.h"
#include "app/StartUp.h"
#include "app/Transcripts.h"
#include "cli/ConsoleDownload.h"
#include "cli/Json.h"
#include "cli/TimeArgument.h"
#include "cli/Verbs.h"
#include "cli/WholeNumber.h"
#include "download/Identify.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "server/LogLoading.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>

namespace kestrane {

namespace {

struct LineOptions {
    std::string port, transcript;
};

struct DownloadOptions : LineOptions {
    ChosenRows rows;
    std::string output, resume;
    bool withIntervals = false, keepsHistory = false;
};

struct ClockOptions : LineOptions {
    std::optional<CalendarTime> now;
};

CLI::Option* addLine(CLI::App& verb, LineOptions& options) {
    CLI::Option* const port =
        verb.add_option("--port", options.port, "the device: a serial port or pseudo-terminal")->required();
    verb.add_option("--transcript", options.transcript, "keep what goes over the line, with times, in this file");
    return port;
}

// A transcript takes the place of an older one only.
void refuseToReplace(const std::string& path) {
    if (!fileExists(path)) return;
    const auto there = readFile(path);
    if (!there->view().empty() && !there->view().starts_with("# ") && there->view().front() != '+')
        throw WrongWords(path + " is there, and is no transcript");
}

// The line to an instrument during one verb.
class InstrumentLine {
public:
    InstrumentLine(Program& program, const LineOptions& options, ChosenRows rows = {}) :
        program_(program), user_(program.session, clock_, program.showsProgress, std::move(rows)) {
        if (options.transcript.empty()) return;
        refuseToReplace(options.transcript);
        file_.open(pathOf(options.transcript), std::ios::binary | std::ios::trunc);
        if (!file_) raiseSystemError(errno);
    }

    DownloadServices services() {
        TranscriptSink sink;
        if (file_.is_open()) sink = [this](std::string_view line) { file_ << line << std::flush; };
        return {program_.session, *program_.session.comm, user_, clock_, std::move(sink)};
    }

private:
    Program& program_;
    SteadyClock clock_;
    ConsoleDownload user_;
    std::ofstream file_;
};

int ports(Program& program) {
    if (!program.reachPorts()) return kFailed;
    Json list = Json::array();
    for (const PortInfo& port : program.session.comm->Ports())
        list.push_back({{"Number", port.Number}, {"Device", port.Device}, {"Description", port.Description}});
    return program.print(list);
}

int identify(Program& program, const LineOptions& options) {
    if (!program.reachPorts(options.port)) return kFailed;
    InstrumentLine line(program, options);
    clsInsData data(program.session);
    if (!IdentifyOnly(line.services(), data)) return kFailed;
    return program.print({{"InsName", data.InsName()},
                          {"InsSerial", data.InsSerial},
                          {"FirmwareVersion", singleJson(data.FirmwareVersion)},
                          {"InsType", data.InsType},
                          {"Family", familyOf(data.InsName())->name}});
}

// From an instrument, or out of the transcript of a download that broke off.
bool readLogs(Program& program, const DownloadOptions& options) {
    if (!options.resume.empty()) return RecoverDownload(program.session, options.resume);
    if (!program.reachPorts(options.port)) return false;
    InstrumentLine line(program, options, options.rows);
    return DownloadData(line.services(), nullptr);
}

// A place where nothing can be saved is told of before a download that may take an hour.
void requireFolderOf(const std::string& output) {
    const auto folder = pathOf(fullPath(output)).parent_path();
    if (!isStandardOutput(output) && !std::filesystem::is_directory(folder)) raiseSystemError(ENOENT);
}

// What came over the line is kept although some of its figures could not be computed; that is told.
bool areFiguresWhole(const Program& program, const clsFile& file) {
    bool areWhole = true;
    forEachLog(file, [&](const clsLog& log) {
        if (!log.HasFailedRecalc) return;
        areWhole = false;
        program.console.tell(ReplaceText(program.session.LoadText(Text::LogNotRecalculated), "^", log.Name));
    });
    return areWhole;
}

int download(Program& program, const DownloadOptions& options) {
    Session& session = program.session;
    if (!options.resume.empty()) keepFilesFrom({options.output}, {options.resume});
    if (!options.output.empty()) requireFolderOf(options.output);
    if (!readLogs(program, options)) return kFailed;
    session.pump.runUntil([&] { return noLogIsBusy(session); });
    clsFile& file = *session.OpenFiles.back();
    file.History.IsWanted = options.keepsHistory;
    const bool isLost = !options.output.empty() && !program.saveAs(file, options.output);
    writeDocument(program.out(), file, options.withIntervals || isLost);
    program.out() << '\n';
    return areFiguresWhole(program, file) && !isLost ? kDone : kFailed;
}

int syncClock(Program& program, const ClockOptions& options) {
    if (!program.reachPorts(options.port)) return kFailed;
    if (options.now) program.clock.Fixed = options.now;
    InstrumentLine line(program, options);
    clsInsData data(program.session);
    return SynchronizeClock(line.services(), data) ? kDone : kFailed;
}

// Reads "all" or "1,3,4". Returns what is wrong with the text, or an empty text.
std::string readRows(const std::string& text, ChosenRows& rows) {
    rows.reset();
    if (text == "all") return {};
    std::vector<int> numbers;
    for (const std::string& word : CLI::detail::split(text, ',')) {
        const auto number = wholeNumber(word);
        if (!number || *number < 1) return "all, or rows of the list from 1 with commas between: 1,3,4";
        numbers.push_back(*number);
    }
    rows = std::move(numbers);
    return {};
}

RunVerb portsVerb(CLI::App&) {
    return ports;
}

RunVerb identifyVerb(CLI::App& verb) {
    const auto options = std::make_shared<LineOptions>();
    addLine(verb, *options);
    return [options](Program& program) { return identify(program, *options); };
}

RunVerb downloadVerb(CLI::App& verb) {
    const auto options = std::make_shared<DownloadOptions>();
    CLI::Option* const port = addLine(verb, *options);
    port->required(false);
    CLI::Option_group* const from = verb.add_option_group("line", "where the logs come from");
    from->add_option(port);
    CLI::Option* const resume =
        from->add_option("--resume", options->resume,
                         "read all logs that are whole out of this transcript of a download that broke off");
    resume->excludes(verb.get_option("--transcript"));
    from->require_option(1);
    verb.add_option("--logs", "all, or rows of the list of logs from 1, such as 1,3,4; without it, all")
        ->type_name("ROWS")
        ->check([options](const std::string& text) { return readRows(text, options->rows); })
        ->excludes(resume);
    addOutput(verb, options->output, "save the document as this XML data file");
    verb.add_flag("--history", options->keepsHistory, "begin the history beside the output");
    verb.add_flag("--intervals", options->withIntervals, "with the rows of every log");
    return [options](Program& program) { return download(program, *options); };
}

RunVerb syncClockVerb(CLI::App& verb) {
    const auto options = std::make_shared<ClockOptions>();
    addLine(verb, *options);
    verb.add_option("--now", "this time in place of the computer's: yyyy-mm-ddThh:mm:ss")
        ->type_name("TIME")
        ->check([options](const std::string& text) { return readTime(text, options->now); });
    return [options](Program& program) { return syncClock(program, *options); };
}

constexpr Verb kVerbs[] = {
    {"ports", "print the serial ports of this machine", portsVerb},
    {"identify", "print which instrument answers on a port", identifyVerb, true},
    {"download", "download logs of an instrument, and print the document", downloadVerb, true},
    {"sync-clock", "set the clock of an instrument", syncClockVerb, true},
};

} // namespace

std::span<const Verb> downloadVerbs() {
    return kVerbs;
}

} // namespace kestrane

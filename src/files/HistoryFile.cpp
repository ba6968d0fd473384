#include "files/HistoryFile.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/AppendedFile.h"
#include "platform/AtomicFile.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace kestrane {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kHead = R"({"schema":"kestrane-history/1"})";
constexpr std::uintmax_t kLargest = 32 << 20; // bytes that are read

struct TextMember {
    const char* key;
    std::string HistoryLine::*member;
};

constexpr TextMember kTexts[] = {{"Time", &HistoryLine::Time},     {"What", &HistoryLine::What},
                                 {"Log", &HistoryLine::Log},       {"Identity", &HistoryLine::Identity},
                                 {"Before", &HistoryLine::Before}, {"After", &HistoryLine::After},
                                 {"Reason", &HistoryLine::Reason}};
constexpr const char* kLogs = "Logs";   // in a line that says what the data file is
constexpr const char* kSaved = "Saved"; // in such a line
constexpr const char* kPosition = "Position";
constexpr const char* kCriterion = "CriterionDose";
constexpr const char* kExchange = "ExchangeDose";
constexpr const char* kReported = "Reported"; // names of figures
constexpr const char* kCutReason = "CutReason";

struct CalibrationMember {
    const char* key; // its value is in dB
    std::int16_t Calibration::*member;
};

constexpr CalibrationMember kCalibration[] = {{"CalibrationBefore", &Calibration::Before},
                                              {"CalibrationAfter", &Calibration::After},
                                              {"CalibrationOffset", &Calibration::Offset}};

std::string textOf(const Json& json, const char* key) {
    const auto found = json.find(key);
    return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

// 0 for what is no level or rate.
std::int16_t decibelsOf(const Json& json, const char* key) {
    constexpr std::uint64_t kHighest = 1000;
    const auto found = json.find(key);
    if (found == json.end() || !found->is_number_unsigned() || found->get<std::uint64_t>() > kHighest) return 0;
    return found->get<std::int16_t>();
}

// What is no level counts as none.
Calibration calibrationOf(const Json& json) {
    constexpr double kHighest = 200;
    Calibration calibration;
    for (const auto& [key, member] : kCalibration) {
        const auto found = json.find(key);
        if (found == json.end() || !found->is_number()) continue;
        const auto decibels = found->get<double>();
        if (std::abs(decibels) <= kHighest)
            calibration.*member = static_cast<std::int16_t>(std::lround(decibels * kHundredths));
    }
    return calibration;
}

// Calls visit(name, bit) for each cumulative figure that a log can have.
template <class Visit>
void forEachFigure(Visit&& visit) {
    for (const LogChannel channel : kChannels)
        for (const Parameter parameter : kParameters)
            if (const std::string_view name = sourceOf(channel, parameter).cumulativeName; !name.empty())
                visit(name, reportedBit(channel, parameter));
}

std::uint64_t reportedOf(const Json& json) {
    std::uint64_t figures = 0;
    const auto names = json.find(kReported);
    forEachFigure([&](std::string_view name, std::uint64_t bit) {
        if (names != json.end() && std::ranges::find(*names, name) != names->end()) figures |= bit;
    });
    return figures;
}

Json reportedNames(std::uint64_t figures) {
    Json names = Json::array();
    forEachFigure([&](std::string_view name, std::uint64_t bit) {
        if ((figures & bit) != 0) names.push_back(name);
    });
    return names;
}

LogRemarks remarksOf(const Json& json) {
    const auto position = json.find(kPosition);
    const bool isPlaced = position != json.end() && position->is_number_unsigned();
    const std::uint64_t place = isPlaced ? position->get<std::uint64_t>() : UINT32_MAX;
    return {static_cast<std::uint32_t>(std::min<std::uint64_t>(place, UINT32_MAX)),
            decibelsOf(json, kCriterion),
            decibelsOf(json, kExchange),
            calibrationOf(json),
            reportedOf(json),
            textOf(json, kCutReason)};
}

HistoryLine lineOf(const Session& session, std::string_view text) {
    const Json json = Json::parse(text, nullptr, false);
    HistoryLine line;
    for (const auto& [key, member] : kTexts)
        if (json.is_object()) line.*member = textOf(json, key);
    if (line.Time.empty() || line.What.empty()) {
        line = {};
        line.What = session.LoadText(Text::UnreadableHistoryLine);
        return line;
    }
    if (const auto logs = json.find(kLogs); logs != json.end() && logs->is_array()) {
        line.OfFile.emplace();
        if (json.value(kSaved, Json()) == true) line.What = session.LoadText(Text::HistorySaved); // in any language
        for (const Json& log : *logs)
            if (log.is_object()) line.OfFile->push_back(remarksOf(log));
    }
    return line;
}

std::string textOf(const Session& session, const HistoryLine& line) {
    Json json;
    for (const auto& [key, member] : kTexts)
        json[key] = line.*member;
    if (line.OfFile) {
        json[kSaved] = line.What == session.LoadText(Text::HistorySaved);
        Json& logs = json[kLogs] = Json::array();
        for (const LogRemarks& log : *line.OfFile) {
            logs.push_back({{kPosition, log.Position},
                            {kCriterion, log.CriterionDose},
                            {kExchange, log.ExchangeDose},
                            {kReported, reportedNames(log.ReportedFigures)},
                            {kCutReason, log.CutReason}});
            for (const auto& [key, member] : kCalibration)
                if (log.UserCalibration.*member != 0) logs.back()[key] = log.UserCalibration.*member / kHundredths;
        }
    }
    return json.dump(-1, ' ', true, Json::error_handler_t::replace) + "\n"; // ASCII, as the data file is
}

// The bytes of a history; empty when there is no such file. Raises an error when it cannot be read or is none of ours.
// A first line that a power cut has left unfinished is the beginning of a head line.
std::shared_ptr<FileBytes> historyBytes(const Session& session, const std::string& path) {
    const auto refuse = [&](Text::Id text) {
        throw RuntimeError(kErrorApplication, ReplaceText(session.LoadText(text), "^", path));
    };
    std::error_code none;
    if (!std::filesystem::exists(pathOf(path), none)) return std::make_shared<FileBytes>(0);
    if (!std::filesystem::is_regular_file(pathOf(path), none)) refuse(Text::HistoryNotOurs);
    if (std::filesystem::file_size(pathOf(path), none) > kLargest) refuse(Text::HistoryTooLarge);
    std::shared_ptr<FileBytes> bytes = readFile(path);
    if (!kHead.starts_with(bytes->view().substr(0, bytes->view().find('\n')))) refuse(Text::HistoryNotOurs);
    return bytes;
}

std::vector<LogRemarks> remarksOf(const clsFile& file) {
    std::vector<LogRemarks> remarks;
    std::uint32_t position = 0;
    forEachLog(file, [&](const clsLog& log) {
        if (log.CriterionDose != 0 || !log.CutReason.empty() || log.UserCalibration != Calibration())
            remarks.push_back({position, log.CriterionDose, log.ExchangeDose, log.UserCalibration,
                               reportedFiguresOf(log), log.CutReason});
        ++position;
    });
    return remarks;
}

void give(clsLog& log, const LogRemarks& remarks) {
    log.CriterionDose = remarks.CriterionDose;
    log.ExchangeDose = remarks.ExchangeDose;
    log.ReportedFigures = remarks.ReportedFigures;
    log.CutReason = remarks.CutReason;
    log.UserCalibration = remarks.UserCalibration;
}

HistoryLine savedLine(const clsFile& file, const std::string& before, const std::string& after) {
    HistoryLine saved = historyLine(file.session(), file.session().LoadText(Text::HistorySaved));
    saved.Before = before;
    saved.After = after;
    saved.OfFile = remarksOf(file);
    return saved;
}

std::vector<HistoryLine> linesOf(const Session& session, std::string_view text) {
    std::vector<HistoryLine> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view line = text.substr(at, text.find('\n', at) - at);
        at += line.size() + 1;
        if (line == kHead) lines.clear();
        if (!kHead.starts_with(line)) lines.push_back(lineOf(session, line));
    }
    return lines;
}

} // namespace

DocumentHistory ReadHistory(const Session& session, const std::string& dataFile) {
    DocumentHistory history;
    history.DataFile = dataFile;
    try {
        for (HistoryLine& line : linesOf(session, historyBytes(session, historyNameOf(dataFile))->view()))
            history.add(std::move(line));
        history.Kept = history.lines().size();
    } catch (const RuntimeError& error) {
        history.Fault = error.what();
    }
    return history;
}

bool NoticeChange(clsFile& file, const std::string& sha256) {
    const HistoryLine* const last = file.History.lastOfFile();
    if (last == nullptr || last->After == sha256) return false;
    HistoryLine line = historyLine(file.session(), file.session().LoadText(Text::ChangedByOther));
    line.Before = last->After;
    line.After = sha256;
    line.OfFile.emplace();
    file.History.add(std::move(line));
    return true;
}

void TakeUpHistory(clsFile& file) {
    const HistoryLine* const last = file.History.lastOfFile();
    if (last == nullptr) return;
    std::vector<clsLog*> logs;
    forEachLog(file, [&](clsLog& log) { logs.push_back(&log); });
    for (const LogRemarks& remarks : *last->OfFile) {
        if (remarks.Position < logs.size()) give(*logs[remarks.Position], remarks);
    }
}

bool CheckHistory(clsFile& file, const std::string& sha256) {
    if (!NoticeChange(file, sha256)) return false;
    forEachLog(file, [](clsLog& log) { give(log, {}); });
    return true;
}

void WriteHistoryOfCopy(const std::string& copy, const clsFile& document, const std::vector<HistoryLine>& lines,
                        const std::string& sha256) {
    const Session& session = document.session();
    writeFileAtomically(historyNameOf(copy), [&](const FileSink& sink) {
        sink(std::string(kHead) + "\n");
        for (const HistoryLine& line : lines)
            sink(textOf(session, line));
        sink(textOf(session, savedLine(document, {}, sha256)));
    });
}

void AppendHistory(clsFile& file, const std::string& before) {
    DocumentHistory& history = file.History;
    if (history.DataFile != file.FileName) { // it was saved under another name
        history.DataFile = file.FileName;
        history.Kept = 0;
        history.Fault.clear();
    }
    if (!history.Fault.empty()) throw RuntimeError(kErrorApplication, history.Fault);
    history.add(savedLine(file, before, file.OnDisk.Hash));

    const std::string name = historyNameOf(file.FileName);
    if (historyBytes(file.session(), name)->view().empty()) history.Kept = 0; // it has been removed
    const std::vector<HistoryLine> lines = history.lines();
    std::string text = history.Kept == 0 ? std::string(kHead) + "\n" : std::string();
    for (std::size_t line = history.Kept; line < lines.size(); ++line)
        text += textOf(file.session(), lines[line]);
    appendLines(name, text);
    history.Kept = lines.size();
}

} // namespace kestrane

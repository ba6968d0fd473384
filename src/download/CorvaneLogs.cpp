#include "download/CorvaneLogs.h"

#include "download/DownloadedLog.h"
#include "download/WireReader.h"
#include "files/MachineLog.h"
#include "platform/Utf8.h"

#include <utility>
#include <vector>

namespace kestrane {

namespace {

constexpr char kListEnd = '\xFE';

// Returns the names of the files in the instrument's own characters.
std::vector<std::string> readList(Transport& line) {
    line.ShowLabel(line.session().LoadText(Text::DownloadingListOfLogs));
    const std::string reply = line.Ask(rawCommand("\x02\x04"));
    std::string_view text = std::string_view(reply).substr(1);
    text = text.substr(0, text.find(kListEnd));
    std::vector<std::string> names;
    for (std::size_t end = text.find('\r'); end != std::string_view::npos; end = text.find('\r')) {
        names.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return names;
}

// The command that fetches a file: each character of its name follows a byte 03.
std::string fetchCommand(std::string_view name) {
    std::string bytes = "\x02\x06";
    for (const char c : name) {
        bytes += '\x03';
        bytes += c;
    }
    return rawCommand(bytes + '\xFF');
}

// Replaces characters outside 32 to 165 by blanks.
std::string cleaned(std::string_view text) {
    constexpr char32_t kFirst = 32, kLast = 165;
    std::string clean;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = nextCodePoint(text, at);
        appendUtf8(clean, c < kFirst || c > kLast ? U' ' : c);
    }
    return clean;
}

// Takes the only log of a kind out of a file's collection; null when no kind has exactly one log.
std::unique_ptr<clsLog> takeOnlyLog(clsInsData& source) {
    for (const LogMode mode : kLogModes) {
        LogCollection& logs = source.logsOf(mode);
        if (logs.size() == 1) return std::move(logs.front());
    }
    return nullptr;
}

void takeLog(Transport& line, clsInsData& data, std::unique_ptr<clsLog> log, const std::string& name) {
    if (log == nullptr) return;
    finishLog(line, *log);
    log->SaveDoseCalc = true;
    log->Name = name;
    data.logsOf(log->Mode()).push_back(std::move(log));
}

} // namespace

void DownloadCorvaneLogs(Transport& line, clsInsData& data) {
    const std::vector<std::string> names = readList(line);
    AcquireList list{data.InsName(), data.InsSerial, {}, false, false, {}};
    for (const std::string& name : names)
        list.Rows.push_back(wireText(name));
    const AcquireChoice choice = line.ChooseLogs(list);
    bool isIdentified = false;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!choice.Selected[i]) continue;
        const std::string& row = list.Rows[i];
        line.BeginLog(line.session().LoadText(Text::DownloadingLog) + " " + row, 0);
        const std::string reply = wireText(line.Ask(fetchCommand(names[i])));
        clsFile file(line.session(), row);
        std::string message;
        if (!ReadMachineLog(file, reply, message)) {
            line.AddMessage(row, message);
        } else if (!file.InstrumentDatas.empty()) {
            clsInsData& source = *file.InstrumentDatas.front();
            if (!std::exchange(isIdentified, true)) {
                data.InsName(cleaned(source.InsName()));
                data.InsSerial = cleaned(source.InsSerial);
            }
            takeLog(line, data, takeOnlyLog(source), row);
        }
        line.EndLog(i);
    }
}

} // namespace kestrane

#include "cli/ConsoleDownload.h"

#include "app/AcquireDialog.h"

#include <iostream>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr const char* kClearLine = "\r\033[K";

} // namespace

ConsoleDownload::ConsoleDownload(Session& session, const MonotonicClock& clock, bool showsProgress, ChosenRows rows) :
    session_(session),
    report_(session, clock),
    showsProgress_(showsProgress && isatty(STDERR_FILENO) != 0),
    rows_(std::move(rows)) {}

void ConsoleDownload::ShowProgress(const DownloadProgress& progress) {
    if (!showsProgress_) return;
    const ProgressWords words = report_.WordsOf(progress);
    std::cerr << kClearLine << words.Label;
    for (const std::string& part : {words.Log, words.Received, words.TimeLeft})
        if (!part.empty()) std::cerr << "  " << part;
    std::cerr << '\r'; // other output then starts at the beginning of the line
    std::cerr.flush();
}

void ConsoleDownload::CloseProgress() {
    if (showsProgress_) std::cerr << kClearLine;
}

std::optional<AcquireChoice> ConsoleDownload::ChooseLogs(const AcquireList& list) {
    AcquireDialog dialog(list);
    if (rows_) dialog.SelectAll(false);
    for (const int row : rows_.value_or(std::vector<int>())) {
        if (row < 1 || row > static_cast<int>(list.Rows.size())) {
            CloseProgress();
            session_.ShowMessage(ReplaceText(session_.LoadText(Text::NoSuchInstrumentLog), "^", std::to_string(row)),
                                 kIconExclamation);
            return std::nullopt;
        }
        dialog.Select(static_cast<std::size_t>(row) - 1, true);
    }
    return dialog.Choice();
}

bool ConsoleDownload::IsCancelled() const {
    return Interrupt::hasCome();
}

} // namespace kestrane

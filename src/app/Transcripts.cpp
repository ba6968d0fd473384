#include "app/Transcripts.h"

#include "app/Documents.h"
#include "download/Download.h"
#include "download/ReplayedLine.h"
#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "platform/Files.h"
#include "platform/Format.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

namespace kestrane {

namespace {

namespace fs = std::filesystem;

// Whether a file is named as KeptTranscript names its own: by a time, with "+" for each that had the same.
bool isTranscript(const fs::path& path) {
    constexpr std::string_view kForm = "0000-00-00 00-00-00";
    std::string name = path.stem().string();
    std::ranges::replace_if(
        name, [](char c) { return c > '0' && c <= '9'; }, '0');
    return path.extension() == ".txt" && name.starts_with(kForm) &&
           name.find_first_not_of('+', kForm.size()) == std::string::npos;
}

// Makes room for one more.
void removeOldest(const std::string& folder) {
    std::vector<fs::path> files;
    std::error_code failed; // what cannot be removed stays
    for (fs::directory_iterator at(pathOf(folder), failed), end; !failed && at != end; at.increment(failed))
        if (isTranscript(at->path())) files.push_back(at->path());
    std::ranges::sort(files, {}, [](const fs::path& path) { return path.stem(); }); // their names are times
    for (std::size_t i = 0; i + KeptTranscript::kKept <= files.size(); ++i)
        fs::remove(files[i], failed);
}

// Nobody is asked.
class NoMessages : public MessageInterface {
public:
    Button show(const std::string&, MessageFlags flags, const std::string&) override {
        return unansweredButtonOf(flags);
    }
};

// A line that needs no time needs no rest between two looks at it either.
class RestlessPump : public EventPump {
public:
    explicit RestlessPump(EventPump& pump) : pump_(pump) {}

    void post(std::function<void()> event) override { pump_.post(std::move(event)); }

    void yield() override { pump_.yield(); }

    void wait(std::chrono::milliseconds) override { pump_.yield(); }

private:
    EventPump& pump_;
};

// Takes the logs that were not given up yet.
class WholeLogs : public DownloadUser {
public:
    void ShowProgress(const DownloadProgress& progress) override { reading_ = progress.Log; }

    void CloseProgress() override {}

    std::optional<AcquireChoice> ChooseLogs(const AcquireList& list) override {
        if (!selected_) selected_.emplace(list.Rows.size(), true);
        return AcquireChoice{*selected_, withOctaves_ && list.CanFetchOctaves};
    }

    bool IsCancelled() const override { return false; }

    // Gives up the log that was being read when the transcript ended, or, before the first one, the octave logs.
    // Returns false when nothing is left.
    bool GiveUp() {
        int read = std::exchange(reading_, 0);
        if (!selected_ || read == 0) return std::exchange(withOctaves_, false) && selected_;
        for (std::size_t i = 0; i < selected_->size(); ++i) {
            if (!(*selected_)[i] || --read > 0) continue;
            (*selected_)[i] = false;
            break;
        }
        return std::ranges::find(*selected_, true) != selected_->end();
    }

private:
    std::optional<std::vector<bool>> selected_;
    bool withOctaves_ = true;
    int reading_ = 0; // counted from 1 among those selected; 0 before the first
};

// Downloads from the transcript until every log that was chosen is whole. Returns null when none is.
std::unique_ptr<clsInsData> readWhole(Session& reading, std::string_view transcript) {
    WholeLogs user;
    do {
        ReplayedLine line(transcript);
        const LeapingClock clock;
        auto data = std::make_unique<clsInsData>(reading);
        if (DownloadData({reading, line, user, clock, {}}, *data)) return data;
    } while (user.GiveUp());
    return nullptr;
}

} // namespace

std::string transcriptFolder(const Session& session) {
    return session.StateFolder + "downloads/";
}

TranscriptSink KeptTranscript::Sink(TranscriptSink further) {
    return [this, further = std::move(further)](std::string_view line) {
        if (!file_.is_open()) {
            before_ += line;
            if (line.starts_with('+') && line.find(" < ") != std::string_view::npos) begin();
        } else {
            file_ << line << std::flush;
        }
        if (further) further(line);
    };
}

void KeptTranscript::begin() {
    if (session_.StateFolder.empty()) return;
    const std::string folder = transcriptFolder(session_);
    std::string path = folder + formatDate(session_.clock.now(), "yyyy-mm-dd hh-nn-ss");
    while (fileExists(path + ".txt"))
        path += "+";
    try {
        makeFolderOf(path);
    } catch (const RuntimeError&) {
        return;
    }
    removeOldest(folder); // before there is the new one, which is the oldest when the clock has been put back
    file_.open(pathOf(path + ".txt"), std::ios::binary | std::ios::trunc);
    file_ << before_ << std::flush;
}

bool RecoverDownload(Session& session, const std::string& path) {
    NoMessages messages;
    RestlessPump pump(session.pump);
    Session reading(session.brand.CompanyName, session.locale, session.settings, messages, pump, session.clock);
    reading.Options = session.Options;
    reading.server = session.server;
    std::unique_ptr<clsInsData> data;
    try {
        data = readWhole(reading, readFile(path)->view());
        if (data == nullptr) {
            session.ShowMessage(ReplaceText(session.LoadText(Text::NoWholeLog), "^", path), kIconExclamation);
            return false;
        }
    } catch (const RuntimeError& error) {
        session.ShowMessage(path + ": " + error.what(), kIconExclamation);
        return false;
    }
    auto file = std::make_unique<clsFile>(session, session.LoadText(Text::IncompleteDownload));
    file->append(*data, true, kAtEnd);
    recordDownload(*file, Text::HistoryDownloadRecovered);
    const std::vector<std::string> logs = logKeys(TakeUp(session, std::move(file)));
    session.frame->ChooseLog(logs.front(), true);
    return true;
}

} // namespace kestrane

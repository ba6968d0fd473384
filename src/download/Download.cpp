#include "download/Download.h"

#include "calc/Recalculation.h"
#include "download/BinaryLogs.h"
#include "download/CorvaneLogs.h"
#include "download/Identify.h"
#include "download/MerrowanLogs.h"
#include "download/TallixLogs.h"
#include "model/BusyFrame.h"
#include "model/InstrumentFamilies.h"
#include "model/LogParameters.h"
#include "platform/Format.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace kestrane {

namespace {

// Reads what is left of the user's choice. Each log is in data before it counts as read.
using Routine = void (*)(Transport& line, clsInsData& data);

struct Protocol {
    Family family;
    Routine download;
};

constexpr Protocol kProtocols[] = {
    {Family::Corvane, DownloadCorvaneLogs},     {Family::Brevik, DownloadBrevikLogs},
    {Family::Halcyr, DownloadHalcyrLogs},       {Family::Merrowan, DownloadMerrowanLogs},
    {Family::OldTallix, DownloadOldTallixLogs},
};
static_assert(std::size(kProtocols) == kFamilyCount, "every family has its protocol");

Routine routineOf(const InstrumentFamily& family) {
    return std::find_if(std::begin(kProtocols), std::end(kProtocols),
                        [&](const Protocol& protocol) { return protocol.family == family.family; })
        ->download;
}

// What a job over the line results in: its message as described for DownloadEnded, and whether it ran to its end.
struct Outcome {
    std::string Message;
    bool IsDone = false;
};

template <class Job>
Outcome outcomeOf(Job job) {
    try {
        return {job(), true};
    } catch (const DownloadEnded& ended) {
        return {ended.Message, false};
    } catch (const RuntimeError&) { // from decoding: a value does not fit
        return {std::string(kReplyError), false};
    } catch (const std::bad_alloc&) {
        return {std::string(kReplyError), false};
    }
}

std::string textOf(const Session& session, const std::string& message) {
    if (message == kReplyError) return session.LoadText(Text::ErrorDownloading);
    if (message == kNoLogs) return session.LoadText(Text::NoLogsOnInstrument);
    return message;
}

Button CloseDownload(Transport& line, DownloadUser& user, const std::string& message, MessageFlags flags) {
    line.ClosePort();
    user.CloseProgress();
    if (message.empty()) return Button::Ok;
    line.transcript().Note(message);
    return line.session().ShowMessage(message, flags, line.session().LoadText(Text::DownloadAborted));
}

// Ends the download unless an instrument has given its name.
void findInstrument(Transport& line, clsInsData& data) {
    const Identification identification = IdentifyInstrument(line, data);
    if (line.IsCancelled() || !identification.IsValid) throw DownloadEnded{identification.Message};
}

// Identifies the instrument and returns its family. Ends the download when the family is not known, too.
const InstrumentFamily& identify(Transport& line, clsInsData& data) {
    findInstrument(line, data);
    const InstrumentFamily* const family = familyOf(data.InsName());
    if (family == nullptr) throw DownloadEnded{line.session().LoadText(Text::InstrumentNotResponding)};
    return *family;
}

enum class Ended { Whole, BrokenOff, ToRetry };

// Runs the job and closes the download with its outcome. When it has broken off while there are logs to be read, the
// user is asked whether to try again.
template <class Job>
Ended run(const DownloadServices& services, LogsToRead& logs, Job job) {
    Transport line(services, logs);
    Outcome outcome = outcomeOf([&] { return job(line); });
    const bool isDone = outcome.IsDone && !line.IsCancelled();
    const Session& session = services.session;
    const bool isCancelled = line.IsCancelled() || (!isDone && outcome.Message.empty());
    const bool canRetry = !isDone && !isCancelled && logs.IsAnythingLeft();
    const Button answer = CloseDownload(
        line, services.user, isCancelled ? session.LoadText(Text::DownloadAborted) : textOf(session, outcome.Message),
        isCancelled ? kIconInformation : // a user who cancels has made no mistake
            kIconStop | (canRetry ? kButtonsRetryCancel : kButtonsOk));
    if (isDone) return Ended::Whole;
    return canRetry && answer == Button::Retry ? Ended::ToRetry : Ended::BrokenOff;
}

template <class Job>
bool runOnce(const DownloadServices& services, Job job) {
    LogsToRead none;
    return run(services, none, job) == Ended::Whole;
}

// Adds what another attempt has read. The collection is named by the attempt that read the first log.
void takeIn(clsInsData& data, clsInsData& read) {
    if (!data.hasLogs()) data.Copy(read, false);
    for (const LogMode mode : kLogModes)
        std::ranges::move(read.logsOf(mode), std::back_inserter(data.logsOf(mode)));
}

void finishLogs(Session& session, clsInsData& data) {
    const BusyFrame busy(*session.frame);
    RecalcValues(data, true);
    forEachLog(data, [&session](clsLog& log) {
        session.pump.runUntil([&log] { return !log.IntervalsRecalculating; });
        SetPlottableValues(log);
    });
}

std::string clockDigits(const Session& session) {
    return formatDate(session.clock.now(), "hhnnssddmmyy");
}

} // namespace

bool DownloadData(const DownloadServices& services, clsInsData& data) {
    LogsToRead logs;
    Ended ended = Ended::ToRetry;
    for (bool isFirst = true; ended == Ended::ToRetry; isFirst = false) {
        clsInsData read(services.session);
        ended = run(services, logs, [&](Transport& line) {
            if (!isFirst) line.Pause();
            routineOf(identify(line, read))(line, read);
            if (!data.hasLogs() && !read.hasLogs())
                throw DownloadEnded{logs.Messages.empty() ? std::string(kNoLogs) : logs.Messages};
            return logs.Messages;
        });
        takeIn(data, read);
    }
    if (ended == Ended::Whole) {
        finishLogs(services.session, data);
        return true;
    }
    for (const LogMode mode : kLogModes)
        data.logsOf(mode).clear();
    return false;
}

bool IdentifyOnly(const DownloadServices& services, clsInsData& data) {
    return runOnce(services, [&](Transport& line) {
        identify(line, data);
        return std::string();
    });
}

bool SynchronizeClock(const DownloadServices& services, clsInsData& data) {
    return runOnce(services, [&](Transport& line) {
        findInstrument(line, data);
        if (!hasTrait(data.InsName(), Trait::TakesClockCommand))
            throw DownloadEnded{services.session.LoadText(Text::OnlyTallixClock)};
        line.SendOnly("04" + clockDigits(services.session));
        return std::string();
    });
}

} // namespace kestrane

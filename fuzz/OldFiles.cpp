// Any bytes as a file of an older format: the first byte chooses the reader. What is declined leaves the document
// empty; of what is read, rows are no more than the text can hold, levels are numbers, and the document that is written
// reads back and is written the same from then on.
#include "Target.h"
#include "files/Loaders.h"
#include "files/MachineLog.h"
#include "files/MemoryBudget.h"
#include "files/ProjectFile.h"
#include "files/SoundFiles.h"
#include "files/XmlReader.h"
#include "files/XmlWriter.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"

#include <cmath>
#include <string>
#include <string_view>

namespace kestrane::fuzz {

namespace {

using Reader = bool (*)(clsFile& file, std::string_view text);

constexpr Reader kReaders[] = {
    ReadProject,
    [](clsFile& file, std::string_view text) {
        ReadSoundCsv(file, text);
        return true;
    },
    [](clsFile& file, std::string_view text) {
        ReadSoundFile(file, text);
        return true;
    },
    [](clsFile& file, std::string_view text) {
        std::string message;
        const bool isRead = ReadMachineLog(file, text, message);
        require(isRead == message.empty(), "a refusal says why");
        return isRead;
    },
};

struct Program {
    MemorySettings settings;
    ScriptedMessages messages;
    HeadlessEventPump pump;
    SystemClock clock;
    Session session{"Ordwyn Acoustics", Locale(), settings, messages, pump, clock};
};

template <class Visit>
void forEachLogOf(const clsFile& file, Visit visit) {
    for (const auto& data : file.InstrumentDatas) {
        for (const LogMode mode : {modeBroadband, modeFullOctave, modeThirdOctave}) {
            for (const auto& log : data->logsOf(mode))
                visit(*log);
        }
    }
}

// The document of a data file's text, with its rows.
std::string rewritten(Session& session, const std::string& text) {
    std::string reason;
    const auto document = XmlDocument::fromText(text, reason);
    require(document != nullptr, "what was written opens");
    clsFile file(session, "a.xml");
    GetData(file, document);
    forEachLogOf(file, [](clsLog& log) {
        if (log.IntervalNodes == nullptr) return;
        log.LogIntervals.setArraySize(log.IntervalNodes->Count());
        for (const RowRange& range : log.LoadRanges)
            log.LogIntervals.copyData(log.IntervalNodes->load(log.Mode(), log.IsChannelBOn, range.From, range.To),
                                      range.From, range.To);
        log.IntervalsToLoad = false;
    });
    return DocumentText(file, true);
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    using namespace kestrane::fuzz;
    static Program program;
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    clsFile file(program.session, "old.log");
    bool isRead = false;
    try {
        isRead = kReaders[data[0] % std::size(kReaders)](file, text);
    } catch (const RuntimeError&) { // the registry of loaders makes a message of it
        return 0;
    }
    require(isRead || file.InstrumentDatas.empty(), "what is declined leaves nothing");
    forEachLogOf(file, [&](const clsLog& log) {
        const IntervalColumns& rows = log.LogIntervals.Columns();
        require(rows.count() <= text.size(), "rows stand in the text");
        require(rows.touchedBytes() <= 16 * text.size() + kAllowance, "rows take what their text is worth");
        for (const Level& level : rows.levels(Quantity::LeqA, 0))
            require(std::isfinite(level.Value), "a level is a number");
    });
    const std::string again = rewritten(program.session, DocumentText(file, true));
    require(rewritten(program.session, again) == again, "what was read back is written the same");
    return 0;
}

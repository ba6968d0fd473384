#include "model/LogIdentity.h"

namespace kestrane {

std::string identityOf(const clsInsData& data, const clsLog& log) {
    return data.InsSerial.empty() ? kindAndStartOf(log) : data.InsSerial + ", " + kindAndStartOf(log);
}

std::string identityOf(const clsFile& file, const clsLog& log) {
    for (const auto& data : file.InstrumentDatas) {
        bool isHere = false;
        forEachLog(*data, [&](const clsLog& other) { isHere = isHere || &other == &log; });
        if (isHere) return identityOf(*data, log);
    }
    return {};
}

std::string kindAndStartOf(const clsLog& log) {
    if (log.StartDate == clsDate()) return log.ModeWord();
    return log.ModeWord() + ", " + log.StartDate.Format("yyyy-mm-dd") + " " + log.StartTime.hh_mm_ss();
}

const clsLog& openedLog(const clsInsData& data, const clsLog& inView) {
    const clsLog* opened = &inView;
    for (const auto& log : data.logsOf(inView.Mode()))
        if (log->LogId == inView.LogId) opened = log.get();
    return *opened;
}

std::string toldApart(const std::string& name, const std::string& identity) {
    return identity.empty() ? name : name + " [" + identity + "]";
}

} // namespace kestrane

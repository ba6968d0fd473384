#include "views/LogHistory.h"

#include "model/LogIdentity.h"
#include "model/Session.h"

#include <algorithm>
#include <map>
#include <set>

namespace kestrane {

namespace {

// A log of the document, with the name that it had when the line at hand was written.
struct Bearer {
    std::string identity, kindAndStart, name;
    bool isAsked;
};

std::vector<Bearer> bearersOf(const clsFile& file, const clsInsData& asked, const clsLog& log) {
    std::vector<Bearer> bearers;
    const clsLog& opened = openedLog(asked, log);
    bool isThere = false;
    for (const auto& data : file.InstrumentDatas)
        forEachLog(*data, [&](const clsLog& other) {
            const bool isAsked = &other == &opened;
            isThere = isThere || isAsked;
            bearers.push_back({identityOf(*data, other), kindAndStartOf(other), other.Name, isAsked});
        });
    if (!isThere) bearers.push_back({identityOf(asked, log), kindAndStartOf(log), log.Name, true});
    return bearers;
}

// Keeps those for which the rule holds, unless it holds for none.
template <class Rule>
void narrow(std::vector<Bearer*>& bearers, Rule rule) {
    if (std::ranges::any_of(bearers, rule)) std::erase_if(bearers, [&](const Bearer* bearer) { return !rule(bearer); });
}

// The logs of which a line can be. name is what the log was called behind the change.
std::vector<Bearer*> bearersOf(std::vector<Bearer>& all, const HistoryLine& line, const std::string& name) {
    std::vector<Bearer*> found;
    const auto take = [&](auto rule) {
        for (Bearer& bearer : all)
            if (rule(bearer)) found.push_back(&bearer);
    };
    if (line.Identity.empty()) {
        take([&](const Bearer& bearer) { return bearer.name == name; });
        return found;
    }
    take([&](const Bearer& bearer) { return bearer.identity == line.Identity; });
    narrow(found, [&](const Bearer* bearer) { return bearer->name == name; }); // copies of a log
    if (!found.empty()) return found;
    take([&](const Bearer& bearer) { // it was moved to the collection of another instrument
        return bearer.name == name && line.Identity.ends_with(bearer.kindAndStart);
    });
    return found;
}

// Undone and done again, too.
bool isRename(const clsFile& file, const HistoryLine& line) {
    return line.What.ends_with(file.session().texts.LoadData(Text::StepRename));
}

} // namespace

std::vector<LogChange> changesOf(const clsFile& file, const clsInsData& data, const clsLog& log) {
    std::vector<Bearer> all = bearersOf(file, data, log);
    const std::vector<HistoryLine> lines = file.History.oldestFirst();
    std::vector<LogChange> changes;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (line->OfFile && line->What == file.session().LoadText(Text::HistorySaved)) continue;
        const bool isToOtherName = isRename(file, *line);
        const bool isOfAll = line->Log.empty(); // a rename of an older version does not name its log
        const std::vector<Bearer*> bearers = bearersOf(all, *line, isOfAll && isToOtherName ? line->After : line->Log);
        const bool isOfLog = std::ranges::any_of(bearers, &Bearer::isAsked);
        if (isOfLog || isOfAll) changes.push_back({*line, isOfAll || bearers.size() == 1});
        if (!isToOtherName) continue;
        for (Bearer* const bearer : bearers)
            bearer->name = line->Before;
    }
    std::ranges::reverse(changes);
    return changes;
}

std::vector<std::string> logsOfLines(const clsFile& file, const std::vector<HistoryLine>& lines) {
    std::map<std::string, std::set<std::string>> identities; // by name
    for (const auto& data : file.InstrumentDatas)
        forEachLog(*data, [&](const clsLog& log) { identities[log.Name].insert(identityOf(*data, log)); });
    for (const HistoryLine& line : lines) {
        if (line.Identity.empty()) continue;
        identities[line.Log].insert(line.Identity);
        if (isRename(file, line)) identities[line.Before].insert(line.Identity);
    }
    std::vector<std::string> logs;
    logs.reserve(lines.size());
    for (const HistoryLine& line : lines)
        logs.push_back(identities[line.Log].size() > 1 ? toldApart(line.Log, line.Identity) : line.Log);
    return logs;
}

} // namespace kestrane

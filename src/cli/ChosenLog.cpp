#include "cli/ChosenLog.h"

#include "explorer/ExplorerTree.h"
#include "explorer/NodeKeys.h"

namespace kestrane {

namespace {

std::optional<std::string> firstLogKey(const std::vector<TreeNode>& nodes) {
    for (const TreeNode& node : nodes) {
        if (isLogKind(node.Key)) return node.Key;
        if (auto key = firstLogKey(node.Children)) return key;
    }
    return std::nullopt;
}

} // namespace

void addFile(CLI::App& verb, std::string& file) {
    verb.add_option("FILE", file, "a data file; - is standard input")->required();
}

void addFiles(CLI::App& verb, std::vector<std::string>& files) {
    verb.add_option("FILE", files, "data files; - is standard input")->required();
}

void addLogKey(CLI::App& verb, std::string& key) {
    verb.add_option("--log", key, "the log's tree node key, such as L1I1F1; without it, the first log");
}

void addLog(CLI::App& verb, LogArguments& arguments) {
    addFile(verb, arguments.file);
    addLogKey(verb, arguments.log);
}

std::optional<ChosenLog> openLog(Program& program, const LogArguments& arguments) {
    program.console.File = arguments.file;
    clsFile* const file = program.open(arguments.file);
    return file == nullptr ? std::nullopt : chooseLog(program, *file, arguments.log);
}

std::optional<ChosenLog> openWholeLog(Program& program, const LogArguments& arguments) {
    auto chosen = openLog(program, arguments);
    return chosen && hasAllRows(program, *chosen->log) ? chosen : std::nullopt;
}

std::optional<ChosenLog> chooseLog(Program& program, clsFile& file, const std::string& key) {
    ChosenLog chosen;
    chosen.file = &file;
    Session& session = program.session;
    chosen.key = key.empty() ? firstLogKey(buildTree(session)).value_or(std::string()) : key;
    const Node node = resolve(session, chosen.key);
    chosen.data = node.data;
    chosen.log = node.log;
    if (chosen.log == nullptr) {
        const std::string& name = key.empty() ? file.FileName : key;
        session.ShowMessage(ReplaceText(session.LoadText(Text::NoLogOfKey), "^", name), kIconExclamation);
        return std::nullopt;
    }
    return chosen;
}

bool hasAllRows(Program& program, const clsLog& log) {
    if (!log.HasUnreadIntervals) return true;
    Session& session = program.session;
    session.ShowMessage(ReplaceText(session.LoadText(Text::IntervalsNotReadAll), "^", log.Name), kIconExclamation);
    return false;
}

} // namespace kestrane

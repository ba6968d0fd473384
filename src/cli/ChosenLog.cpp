#include "cli/ChosenLog.h"

#include "explorer/ExplorerTree.h"
#include "explorer/NodeKeys.h"

#include <vector>

namespace kestrane {

namespace {

std::optional<std::string> firstLogKey(const std::vector<TreeNode>& nodes) {
    for (const TreeNode& node : nodes) {
        if (isLogKind(node.Key)) return node.Key;
        if (const auto key = firstLogKey(node.Children)) return key;
    }
    return std::nullopt;
}

} // namespace

void addFile(CLI::App& verb, std::string& file) {
    verb.add_option("FILE", file, "a data file")->required();
}

void addLog(CLI::App& verb, LogArguments& arguments) {
    addFile(verb, arguments.file);
    verb.add_option("--log", arguments.log, "the log's tree node key, such as L1I1F1; without it, the first log");
}

std::optional<ChosenLog> openLog(Program& program, const LogArguments& arguments) {
    ChosenLog chosen;
    chosen.file = program.open(arguments.file);
    if (chosen.file == nullptr) return std::nullopt;
    Session& session = program.session;
    chosen.key = arguments.log.empty() ? firstLogKey(buildTree(session)).value_or(std::string()) : arguments.log;
    const Node node = resolve(session, chosen.key);
    chosen.data = node.data;
    chosen.log = node.log;
    if (chosen.log == nullptr) {
        const std::string& name = arguments.log.empty() ? chosen.file->FileName : arguments.log;
        session.ShowMessage(ReplaceText(session.LoadText(8806), "^", name), kIconExclamation);
        return std::nullopt;
    }
    return chosen;
}

} // namespace kestrane

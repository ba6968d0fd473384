#include "explorer/NodeRename.h"

#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "platform/RuntimeError.h"

namespace kestrane {

namespace {

bool renameFile(Session& session, clsFile& file, const std::string& name) {
    try {
        editFileName(file, name);
        return true;
    } catch (const RuntimeError& error) {
        if (error.Number > 0) session.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation);
        return false;
    }
}

} // namespace

bool renameNode(Session& session, const std::string& key, const std::string& newText) {
    if (newText.empty() || newText == editableText(session, key)) return false;
    const Node node = resolve(session, key);
    if (node.log != nullptr) {
        editLogName(*node.file, *node.log, newText);
    } else if (node.data != nullptr && key.starts_with(tINST)) {
        editCollectionName(*node.file, *node.data, newText);
    } else if (node.file != nullptr && key.starts_with(tFILE)) {
        return renameFile(session, *node.file, newText);
    } else {
        return false;
    }
    return true;
}

std::string editableText(const Session& session, const std::string& key) {
    const Node node = resolve(session, key);
    if (node.log != nullptr) return node.log->Name;
    if (node.data != nullptr && key.starts_with(tINST)) return node.data->NameX;
    return node.file != nullptr ? node.file->ShortenedFileName() : std::string();
}

} // namespace kestrane

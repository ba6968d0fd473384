// What is dragged out of the window into a folder, as a file.
#pragma once

#include "model/clsFile.h"
#include "platform/Clipboard.h"

#include <functional>
#include <optional>
#include <string>

namespace kestrane {

struct FileToDrag {
    std::string Name;                   // without a folder
    std::function<std::string()> Bytes; // called at most once, when somebody takes the file
};

// The data file of a node of the tree: a log, the logs of an instrument, or a whole document. Nothing for another node,
// and while rows are loading or recalculated. What the node belongs to must outlive the drag.
std::optional<FileToDrag> dataFileOf(const Session& session, const std::string& key);

// What was copied as a file with a title: a picture (.png) if there is one, else a table (.csv); nothing without both.
std::optional<FileToDrag> fileOfCopy(const ClipboardForms& forms, const std::string& title);

} // namespace kestrane

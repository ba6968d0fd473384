// The documents of the command line as JSON, written piece by piece, so that a document of any size takes little
// memory.
#pragma once

#include "explorer/ExplorerTree.h"
#include "model/clsFile.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <string>
#include <vector>

namespace kestrane {

using Json = nlohmann::ordered_json;

// JSON as text on one line; bytes that are not valid UTF-8 are replaced.
std::string jsonText(const Json& json);

// A single as the number with the shortest text that reads back as it.
Json singleJson(float value);

void writeDocument(std::ostream& out, clsFile& file, bool withIntervals);

// key is the log's tree node key.
void writeLog(std::ostream& out, const clsLog& log, const std::string& key, bool withIntervals);

// The rows of the exposure calculator.
Json exposureJson(const clsLog& log);

Json treeJson(const std::vector<TreeNode>& nodes);

} // namespace kestrane

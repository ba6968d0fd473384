// The documents of the command line as JSON, written as they are walked: a document of any size takes little memory.
#pragma once

#include "explorer/ExplorerTree.h"
#include "model/clsFile.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <string>
#include <vector>

namespace kestrane {

using Json = nlohmann::ordered_json;

// As text on one line; what is not UTF-8 is replaced.
std::string jsonText(const Json& json);

// A single in the shortest form that reads back to it.
Json singleJson(float value);

void writeDocument(std::ostream& out, clsFile& file, bool withIntervals);

// key: the log's tree node key.
void writeLog(std::ostream& out, const clsLog& log, const std::string& key, bool withIntervals);

// The rows of the exposure calculator.
Json exposureJson(const clsLog& log);

Json treeJson(const std::vector<TreeNode>& nodes);

} // namespace kestrane

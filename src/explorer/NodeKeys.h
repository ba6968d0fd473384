// Identities and tree node keys, which are the only way in which an explorer refers to an object. A key consists of a
// letter for the kind of node and the identities of the node and its parents ("L7I2F3"). It may outlive its object, and
// then it resolves to nothing.
#pragma once

#include "model/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

constexpr char tFILE = 'F'; // a data file
constexpr char tINST = 'I'; // an instrument data collection
constexpr char tLOCL = 'X'; // the group of broadband logs
constexpr char tLOCN = 'L'; // a broadband log
constexpr char tOCTL = 'Y'; // the group of full-octave logs
constexpr char tOCTN = 'O'; // a full-octave log
constexpr char tTOCL = 'Z'; // the group of third-octave logs
constexpr char tTOCN = 'T'; // a third-octave log

char groupKind(LogMode mode);
char logKind(LogMode mode);
bool isLogKind(std::string_view key);      // false for an empty key
bool isEditableKind(std::string_view key); // whether its node can be renamed; false for a group and an empty key

std::string fileKey(const clsFile& file);
std::string dataKey(const clsInsData& data, const clsFile& file);
std::string groupKey(LogMode mode, const clsInsData& data, const clsFile& file);
std::string logKey(const clsLog& log, const clsInsData& data, const clsFile& file);

std::vector<std::string> logKeys(const clsFile& file); // in the order of the tree

// The objects that a key stands for; null for those that do not exist or are not named by such a key.
struct Node {
    clsFile* file = nullptr;
    clsInsData* data = nullptr;
    clsLog* log = nullptr;
};

Node resolve(const Session& session, std::string_view key);

// Gives identities to new objects: of the last file only, of the file with intFileId (when above 0), or of all files.
// The order of objects is not changed. A log with the same identity as an earlier one in its collection gets a new one.
// Raises 6 when there is no further identity; the largest for a file is 32767.
void AssignIdentities(Session& session, bool bLastFileOnly, int intFileId);

// Whether the node of sourceKey may be dropped on that of targetKey (when empty, on the selected one). It may never be
// dropped on itself; a log or a group only on a file, on a collection or within its own family.
bool SittingOnValidNode(std::string_view sourceKey, std::string_view targetKey, std::string_view selectedKey);

} // namespace kestrane

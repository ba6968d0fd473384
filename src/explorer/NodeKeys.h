// Identities and tree node keys: the only way an explorer refers to an object. A key is a letter of the node's kind and
// the identities of the node and its parents ("L7I2F3"); it may outlive its object, and then resolves to nothing.
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

char groupKind(int mode);
char logKind(int mode);
bool isLogKind(std::string_view key);      // false for an empty key
bool isEditableKind(std::string_view key); // its node can be renamed: not a group, not an empty key

std::string fileKey(const clsFile& file);
std::string dataKey(const clsInsData& data, const clsFile& file);
std::string groupKey(int mode, const clsInsData& data, const clsFile& file);
std::string logKey(const clsLog& log, const clsInsData& data, const clsFile& file);

std::vector<std::string> logKeys(const clsFile& file); // in the order of the tree

// What a key stands for; null where it names nothing, or nothing of that level.
struct Node {
    clsFile* file = nullptr;
    clsInsData* data = nullptr;
    clsLog* log = nullptr;
};

Node resolve(const Session& session, std::string_view key);

// Gives identities to new objects: of the last file only, of the file intFileId (above 0), or of all. Order is
// untouched. A log that has the identity of another in its collection takes a new one. Raises 6 past the largest
// identity, which is 32767 for a file.
void AssignIdentities(Session& session, bool bLastFileOnly, int intFileId);

// May the node of sourceKey be dropped on that of targetKey (empty: the selected one)? Never on itself; a log or group
// only on a file, a collection or its own family.
bool SittingOnValidNode(std::string_view sourceKey, std::string_view targetKey, std::string_view selectedKey);

} // namespace kestrane

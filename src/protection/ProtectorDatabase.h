// The protector database: a text file with one protector on each line, in 42 comma-separated fields, and with "." in
// numbers whatever the locale. Reading it, writing it, and turning a downloaded body into such a text.
#pragma once

#include "protection/clsHP.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// The protectors in use and the file that they come from. Each program has one collection, which it reaches through the
// session.
struct ProtectorCollection {
    std::string File;              // where the records are kept
    std::string Original;          // the file that is read as long as File does not exist; empty when there is none
    std::vector<clsHP> Protectors; // in the order of the file
    bool IsChanged = false;        // changed and not written yet
    // Why the file could not be read to its end; it is then not written over. Empty when it was read.
    std::string Damage;
};

constexpr std::string_view kDatabaseFile = "hpd_hml_db.txt";
constexpr std::int64_t kErrorCorruptFile = 109;

// Returns the name of the file to read.
const std::string& sourceOf(const ProtectorCollection& collection);

// Empties the collection and reads the records of a text, which are numbered from 1, up to the end or an empty line. A
// name may contain commas. Returns false when there is text behind the empty line. Raises 109 "Corrupt file error" for
// a line with too few fields, and 13 or 6 for a field that is no number; the collection then holds the records before
// that line.
bool readProtectors(std::string_view text, std::vector<clsHP>& protectors);

// The same from a file. Raises the system's error when the file cannot be read, and 109 when it is too large to be a
// database.
bool loadProtectors(const std::string& path, std::vector<clsHP>& protectors);

// True when the file can be read to its end or does not exist.
bool isWholeDatabase(const std::string& path);

// Copies the file to an unused name: its own with ".damaged" behind it, then ".damaged2" and so on. Returns that name;
// raises the system's error.
std::string keepDamagedFile(const std::string& path);

// Keeps the database at from as file + ".bak" before file is replaced; older backups become ".bak2" and ".bak3", and
// the oldest goes. Does nothing when there is no database, or when the newest backup is the same. Raises the system's
// error.
void keepOldDatabase(const std::string& from, const std::string& file);

// The records as lines, each ended by CR LF.
std::string protectorsText(const std::vector<clsHP>& protectors);

// Writes the file atomically and creates its folder when there is none. Raises the system's error and then leaves the
// old file as it was.
void saveProtectors(const std::string& path, const std::vector<clsHP>& protectors);

// The text of a downloaded body: control characters are dropped, every kind of line end becomes CR LF, and there is
// none at the end.
std::string databaseText(std::string_view body);

} // namespace kestrane

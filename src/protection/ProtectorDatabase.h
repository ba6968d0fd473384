// The protector database: a text file, one protector a line of 42 comma-separated fields, numbers with "." whatever the
// locale. Reading, writing, and turning a downloaded body into such a text.
#pragma once

#include "protection/clsHP.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// The protectors in use, with the file that they come from. One for each program, reached through the session.
struct ProtectorCollection {
    std::string File;
    std::vector<clsHP> Protectors; // in the order of the file
    bool IsChanged = false;        // and not written yet
    std::string Damage;            // why the file could not be read to its end; empty: it was. Then it is not written.
};

constexpr std::string_view kDatabaseFile = "hpd_hml_db.txt";
constexpr std::int64_t kErrorCorruptFile = 109;

// Empties the collection and reads the records of a text, numbered from 1, up to its end or an empty line. A name may
// hold commas. False when there is text behind the empty line. Raises 109 "Corrupt file error" for a line of too few
// fields and 13 or 6 for a field that is no number; the records before it are in the collection then.
bool readProtectors(std::string_view text, std::vector<clsHP>& protectors);

// The same from a file. Raises the system's error when it cannot be read, 109 when it is too large to be a database.
bool loadProtectors(const std::string& path, std::vector<clsHP>& protectors);

// The file can be read to its end, or is not there.
bool isWholeDatabase(const std::string& path);

// Copies the file to a name that is free: ".damaged" behind its own, then ".damaged2" and so on. The name; raises the
// system's error.
std::string keepDamagedFile(const std::string& path);

// The lines of the records, CR LF behind each.
std::string protectorsText(const std::vector<clsHP>& protectors);

// Writes the file, atomically. Raises the system's error with the old file as it was.
void saveProtectors(const std::string& path, const std::vector<clsHP>& protectors);

// The text of a downloaded body: control characters dropped, CR LF for each line end in any of its forms, none at the
// end.
std::string databaseText(std::string_view body);

} // namespace kestrane

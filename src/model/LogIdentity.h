// What tells a log from every other log for good, whatever it is called and wherever in a document it stands. Names do
// not: the first log of each instrument has the same.
#pragma once

#include "model/clsFile.h"

#include <string>

namespace kestrane {

// The serial number of the instrument, the kind of log and its start, "B8107, Broadband, 2026-03-02 22:00:00"; what is
// not known is left out. No command changes them; only a copy of a log has the same, and a log without a start shares
// it with others of its kind. It is a key as well as what a reader tells logs apart by, and the same in every language.
std::string identityOf(const clsInsData& data, const clsLog& log);

// The same of a log of a document; empty when it is none of its logs.
std::string identityOf(const clsFile& file, const clsLog& log);

// The end of an identity: what stays of it when the log is moved to the collection of another instrument.
std::string kindAndStartOf(const clsLog& log);

// The log of the collection of which a zoomed range was cut; the log itself when the collection has none such.
const clsLog& openedLog(const clsInsData& data, const clsLog& inView);

// The name of a log with its identity behind it, for where the name alone does not say which one is meant.
std::string toldApart(const std::string& name, const std::string& identity);

} // namespace kestrane

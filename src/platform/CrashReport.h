// What is known of a fault that ends the program, written to a file: version, kind of fault, stack, open files and the
// last commands. It stays on this computer. The texts are kept in memory that is set aside beforehand, because a
// program that has failed cannot be relied on to find any.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kestrane {

// From now on a fault (a signal such as SIGSEGV, or an exception that nobody catches) writes a report into the folder
// and then ends the program as it would have ended. The folder ends with "/". To be called once, on the owner thread.
void installCrashReport(const std::string& folder, std::string_view version);

void noteCommand(std::string_view name); // of the last commands, 20 are reported
void noteOpenFiles(std::string_view names);

// To be done before a program ends because of an exception on the owner thread, where memory is still sound.
void setLastWords(std::function<void()> words);

// Ends the program because of an exception that nobody can answer: report, last words, abort.
[[noreturn]] void endByException() noexcept;

// The reports that programs before this one wrote, moved to the folder of the reports that were told; the newest five
// stay there. Returns the path of the newest new one; empty when there is none.
std::string takeCrashReport(const std::string& folder);

} // namespace kestrane

// The program that is running, as the system knows it.
#pragma once

#include <string>
#include <vector>

namespace kestrane {

// The folder of the program's file, with "/" at the end; "/" when the system does not say.
std::string folderOfProgram();

// The words of the call in UTF-8, without the name of the program.
std::vector<std::string> programArguments(int argc, char** argv);

// Loads a library, which then stays loaded to the end, and returns the address of one of its functions. Null when there
// is no such library or no such function in it.
void* functionOfLibrary(const std::string& path, const char* function);

// Makes the three standard streams safe to use. Each that the caller has closed is opened on nothing; otherwise the
// next file that is opened would take its number. What is written is passed on byte by byte, and writing to a reader
// that has gone is an ordinary error.
void prepareStandardStreams();

// Whether windows can be shown at all, or the toolkit was told what to do in their place.
bool hasDisplay();

} // namespace kestrane

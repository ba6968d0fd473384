// Where verbs write: the arguments -o OUT and -O FOLDER, and the names that outputs of several files get in a folder.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace kestrane {

struct OutputArguments {
    std::string file;   // of -o; "-" is standard output; empty when not given
    std::string folder; // of -O; empty when not given
};

// Adds -o and -O, of which exactly one is required. what describes the output, such as "the PDF file to write".
void addOutputs(CLI::App& verb, OutputArguments& outputs, const std::string& what);

// Accepts the name of a folder that is there, in UTF-8 on every system.
CLI::Validator existingFolder();

// Adds -o alone.
CLI::Option* addOutput(CLI::App& verb, std::string& output, const std::string& what);

// The path that the name given to -o stands for: "-" is standard output.
std::string outputPath(const std::string& name);
bool isStandardOutput(const std::string& name);

// The output for each file: that of -o, or the file's name with another extension (".pdf") in the folder. Raises
// WrongWords when several files would be written to one output.
std::vector<std::string> outputsOf(const std::vector<std::string>& files, const OutputArguments& outputs,
                                   const std::string& extension);

// What is said when two files have one output.
std::string bothWrittenTo(const std::string& rival, const std::string& file, const std::string& output);

// Raises WrongWords when an output would overwrite one of the files that are read.
void keepFilesFrom(const std::vector<std::string>& outputs, const std::vector<std::string>& files);

} // namespace kestrane

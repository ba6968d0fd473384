#include "cli/Outputs.h"

#include "cli/Console.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <map>

namespace kestrane {

namespace {

// The name of the file in the folder, without an extension.
std::string nameIn(const std::string& folder, const std::string& file) {
    const std::string stem = file == "-" ? "stdin" : pathOf(file).stem().string();
    return (pathOf(folder) / pathOf(stem)).generic_string();
}

} // namespace

CLI::Validator existingFolder() {
    const auto refusalOf = [](const std::string& name) {
        std::error_code ignored;
        const auto about = std::filesystem::status(pathOf(name), ignored);
        if (!std::filesystem::exists(about)) return "Directory does not exist: " + name;
        return std::filesystem::is_directory(about) ? std::string() : "Directory is actually a file: " + name;
    };
    return {refusalOf, "DIR"};
}

CLI::Option* addOutput(CLI::App& verb, std::string& output, const std::string& what) {
    return verb.add_option("-o", output, what + "; - is standard output")->type_name("OUT");
}

void addOutputs(CLI::App& verb, OutputArguments& outputs, const std::string& what) {
    auto* group = verb.add_option_group("output")->require_option(1);
    addOutput(*group, outputs.file, what);
    group->add_option("-O", outputs.folder, "the folder to write an output for each file in, under the file's name")
        ->type_name("FOLDER")
        ->check(existingFolder());
}

std::string outputPath(const std::string& name) {
    return name == "-" ? kStandardOutput : name;
}

bool isStandardOutput(const std::string& name) {
    return openFileNumber(outputPath(name)) == 1;
}

std::vector<std::string> outputsOf(const std::vector<std::string>& files, const OutputArguments& outputs,
                                   const std::string& extension) {
    if (outputs.folder.empty() && files.size() > 1)
        throw WrongWords("Several files need a folder for their outputs: -O");
    std::vector<std::string> names;
    std::map<std::string, std::string> taken;
    for (const std::string& file : files) {
        const std::string& name =
            names.emplace_back(outputs.folder.empty() ? outputs.file : nameIn(outputs.folder, file) + extension);
        const auto [other, isNew] = taken.try_emplace(name, file);
        if (!isNew) throw WrongWords(bothWrittenTo(other->second, file, name));
    }
    return names;
}

std::string bothWrittenTo(const std::string& rival, const std::string& file, const std::string& output) {
    std::string words = rival;
    words.append(" and ").append(file).append(" would both be written to ").append(output);
    return words;
}

void keepFilesFrom(const std::vector<std::string>& outputs, const std::vector<std::string>& files) {
    for (const std::string& name : outputs)
        for (const std::string& file : files)
            if (fileExists(name) && !isStandardOutput(name) && isSameFile(name, file))
                throw WrongWords(name + " is one of the files that are read");
}

} // namespace kestrane

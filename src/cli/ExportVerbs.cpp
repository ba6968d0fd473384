#include "cli/ChosenLog.h"
#include "cli/Jobs.h"
#include "cli/Verbs.h"
#include "explorer/NodeKeys.h"
#include "exports/Export.h"

#include <algorithm>
#include <memory>

namespace kestrane {

namespace {

struct ExportOptions {
    std::vector<std::string> files;
    std::string log, format;
    bool isSummary = false;
    OutputArguments outputs;
};

bool addFileTo(ExportTable& table, Program& program, clsFile& file, const std::string& name,
               const ExportOptions& options) {
    std::vector<ChosenLog> logs;
    if (!options.log.empty()) {
        const auto chosen = chooseLog(program, file, options.log);
        if (!chosen) return false;
        logs.push_back(*chosen);
    } else {
        for (const auto& data : file.InstrumentDatas)
            for (const LogCollection* some : {&data->Locations, &data->Octaves, &data->ThirdOctaves})
                for (const auto& log : *some)
                    logs.push_back({&file, data.get(), log.get(), logKey(*log, *data, file)});
    }
    if (!std::all_of(logs.begin(), logs.end(),
                     [&](const ChosenLog& chosen) { return hasAllRows(program, *chosen.log); }))
        return false;
    for (const ChosenLog& chosen : logs) {
        if (options.isSummary) {
            table.addSummary(name, chosen.key, chosen.data->InsSerial, *chosen.log);
        } else {
            table.addRows(name, chosen.key, *chosen.log);
        }
    }
    return true;
}

bool writeTable(Program& program, const ExportTable& table, const ExportOptions& options, const std::string& output) {
    return program.write(output,
                         [&](const std::string& path) { writeExport(table, *exportFormatOf(options.format), path); });
}

bool exportOne(Program& program, clsFile& file, const std::string& name, const std::string& output,
               const ExportOptions& options) {
    ExportTable table;
    return addFileTo(table, program, file, name, options) && writeTable(program, table, options, output);
}

int exportEach(Program& program, const ExportOptions& options) {
    const auto outputs = outputsOf(options.files, options.outputs, "." + options.format);
    keepFilesFrom(outputs, options.files);
    return program.forEachFile(options.files, [&](clsFile& file, std::size_t i) {
        if (!exportOne(program, file, options.files[i], outputs[i], options)) return false;
        if (options.files.size() > 1) program.print({{"FileName", file.FileName}, {"Output", outputs[i]}});
        return true;
    });
}

int exportTogether(Program& program, const ExportOptions& options) {
    keepFilesFrom({options.outputs.file}, options.files);
    ExportTable table;
    std::size_t read = 0;
    const int status = program.forEachFile(options.files, [&](clsFile& file, std::size_t i) {
        const bool isAdded = addFileTo(table, program, file, options.files[i], options);
        read += isAdded ? 1 : 0;
        return isAdded;
    });
    if (read == 0) return kFailed;
    return writeTable(program, table, options, options.outputs.file) ? status : kFailed;
}

RunVerb exportVerb(CLI::App& verb) {
    const auto options = std::make_shared<ExportOptions>();
    addFiles(verb, options->files);
    verb.add_option("--log", options->log, "the log's tree node key, such as L1I1F1; without it, all logs");
    verb.add_option("--format", options->format, "csv, xlsx or ndjson")
        ->required()
        ->check(CLI::IsMember(exportFormats()));
    verb.add_flag("--summary", options->isSummary, "a line for each log in place of its rows");
    addOutputs(verb, options->outputs, "the file to write, with the rows of all files");
    return [options](Program& program) {
        return options->outputs.folder.empty() ? exportTogether(program, *options) : exportEach(program, *options);
    };
}

constexpr Verb kVerbs[] = {{"export", "write the rows of logs as a table for other programs", exportVerb}};

} // namespace

const std::vector<std::string>& exportFormats() {
    static const std::vector<std::string> kFormats = {"csv", "xlsx", "ndjson"};
    return kFormats;
}

FileJob exportJob(const std::string& format) {
    ExportOptions options;
    options.format = format;
    return [options](Program& program, clsFile& file, const std::string& name, const std::string& output) {
        return exportOne(program, file, name, output, options);
    };
}

std::span<const Verb> exportVerbs() {
    return kVerbs;
}

} // namespace kestrane

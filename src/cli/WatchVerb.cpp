#include "app/Documents.h"
#include "app/StartUp.h"
#include "cli/Jobs.h"
#include "cli/Verbs.h"
#include "platform/FileState.h"
#include "platform/Files.h"
#include "platform/Interrupt.h"
#include "platform/Paths.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <thread>

namespace kestrane {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kLook{250}; // between two looks at the folder
constexpr int kQuietLooks = 8;                  // a file that has stayed the same for so many looks is complete

struct WatchOptions {
    std::string folder, work, format = "csv", output;
};

// The files of a folder that are waiting for work. A file is done when its output exists and is not older than the
// file, so that a new watch continues where the last one ended.
class WatchedFolder {
public:
    WatchedFolder(const WatchOptions& options, std::string extension) :
        options_(options), extension_(std::move(extension)) {}

    std::string outputOf(const std::string& file) const {
        return (pathOf(options_.output) / pathOf(pathOf(file).stem().string() + extension_)).generic_string();
    }

    // The files that are complete and not done, sorted by name. Each is returned once for each of its states. Raises
    // the system's error when the folder cannot be read.
    std::vector<std::string> due() {
        std::vector<std::string> names;
        std::map<std::string, Seen> seen;
        for (const fs::directory_entry& entry : fs::directory_iterator(pathOf(options_.folder))) {
            const std::string path = entry.path().generic_string();
            const auto state = stateOfFile(path);
            if (!state || entry.path().filename().string().starts_with('.') || !isNamedAsDataFile(path)) continue;
            Seen& now = seen[path] = seen_.contains(path) ? seen_[path] : Seen{*state};
            now.quietLooks = now.state == *state ? now.quietLooks + 1 : 0;
            now.isTaken = now.isTaken && now.state == *state;
            now.state = *state;
            if (now.isTaken || now.quietLooks < kQuietLooks || isBeingWritten(path) || isDone(path, *state)) continue;
            now.isTaken = true;
            names.push_back(path);
        }
        seen_ = std::move(seen);
        std::sort(names.begin(), names.end());
        return names;
    }

    // Another file of the folder whose output has the same name; empty when there is none.
    std::string rivalOf(const std::string& file) const {
        for (const auto& [other, state] : seen_)
            if (other != file && outputOf(other) == outputOf(file)) return other;
        return {};
    }

private:
    struct Seen {
        FileState state;
        int quietLooks = 0;
        bool isTaken = false; // due() has returned it in this state
    };

    bool isDone(const std::string& path, const FileState& state) const {
        const auto output = stateOfFile(outputOf(path));
        return output && output->Changed >= state.Changed;
    }

    const WatchOptions& options_;
    std::string extension_;
    std::map<std::string, Seen> seen_;
};

FileJob jobOf(Program& program, const WatchOptions& options) {
    if (options.work == "report") return reportJob(program);
    return options.work == "export" ? exportJob(options.format) : saveJob();
}

int watch(Program& program, const WatchOptions& options) {
    if (isSameFile(options.folder, options.output))
        throw WrongWords(
            "The outputs need a folder of their own: in the one that is watched they would be taken for files");
    const std::string extension = options.work == "report" ? ".pdf"
                                  : options.work == "save" ? ".xml"
                                                           : "." + options.format;
    WatchedFolder folder(options, extension);
    const FileJob job = jobOf(program, options);
    if (!job) return kFailed;
    program.console.NamesFile = true;
    for (const Interrupt interrupt; !Interrupt::hasCome(); std::this_thread::sleep_for(kLook)) {
        for (const std::string& name : folder.due()) {
            if (Interrupt::hasCome()) break;
            const std::string output = folder.outputOf(name);
            if (const std::string rival = folder.rivalOf(name); !rival.empty()) {
                program.console.tell(bothWrittenTo(rival, name, output));
                continue;
            }
            program.forEachFile({name}, [&](clsFile& file, std::size_t) {
                if (!job(program, file, name, output)) return false;
                program.print({{"FileName", fullPath(name)}, {"Output", output}});
                program.out().flush();
                return true;
            });
        }
    }
    return kDone;
}

RunVerb watchVerb(CLI::App& verb) {
    const auto options = std::make_shared<WatchOptions>();
    verb.add_option("FOLDER", options->folder, "the folder that data files come to")
        ->required()
        ->check(existingFolder());
    verb.add_option("--do", options->work, "what is done with each: report, export or save")
        ->required()
        ->check(CLI::IsMember({"report", "export", "save"}));
    verb.add_option("--format", options->format, "of an export: csv, xlsx or ndjson; without it, csv")
        ->check(CLI::IsMember(exportFormats()));
    verb.add_option("-O", options->output, "the folder to write the outputs in")
        ->required()
        ->type_name("FOLDER")
        ->check(existingFolder());
    return [options](Program& program) {
        try {
            return watch(program, *options);
        } catch (const fs::filesystem_error&) { // the folder has gone
            const std::string text = program.session.LoadText(Text::FolderCannotBeOpened);
            program.session.ShowMessage(ReplaceText(text, "^", options->folder), kIconStop);
            return kFailed;
        }
    };
}

constexpr Verb kVerbs[] = {{"watch", "work on each data file that comes to a folder", watchVerb}};

} // namespace

std::span<const Verb> watchVerbs() {
    return kVerbs;
}

} // namespace kestrane

#include "cli/ChosenLog.h"
#include "cli/Comparing.h"
#include "cli/Jobs.h"
#include "cli/TimeArgument.h"
#include "cli/Verbs.h"
#include "platform/Interrupt.h"
#include "platform/LocalTime.h"
#include "reports/Report.h"
#include "reports/ReportLanguage.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr const char* kClearLine = "\r\033[K";

struct FormName {
    const char* word;
    ReportForm form;
};

constexpr FormName kForms[] = {{"default", ReportForm::Default},
                               {"cumulative", ReportForm::Cumulative},
                               {"intervals", ReportForm::CumulativeAndIntervals},
                               {"criteria", ReportForm::CumulativeAndCriteria}};

struct ReportOptions : CompareArguments {
    std::vector<std::string> files;
    std::string log;
    std::string form = kForms[0].word;
    std::vector<std::string> with;
    bool isLandscape = false;
    std::optional<CalendarTime> printDate;
    OutputArguments outputs;
};

ReportForm formOf(const ReportOptions& options) {
    return std::find_if(std::begin(kForms), std::end(kForms),
                        [&](const FormName& name) { return name.word == options.form; })
        ->form;
}

// Shows the progress on one line of standard error when that is a terminal. An interrupt ends the report.
PageProgress progressOf(const Program& program) {
    const bool isShown = program.showsProgress && isatty(STDERR_FILENO) != 0;
    return [&session = program.session, isShown](std::size_t drawn, std::size_t pages) {
        const bool goesOn = !Interrupt::hasCome();
        if (!isShown) return goesOn;
        std::cerr << kClearLine;
        if (goesOn && drawn < pages) {
            const std::string words = ReplaceText(session.LoadText(Text::PrintingPage), "^", std::to_string(drawn + 1));
            std::cerr << ReplaceText(words, "*", std::to_string(pages));
        }
        std::cerr.flush();
        return goesOn;
    };
}

// Returns false when the pages were not written or are not complete; the reason has been shown.
bool writePages(Program& program, Drawing& drawing, bool isLandscape, const Drawing::LayOut& layOut,
                const std::string& output) {
    bool isWhole = false;
    const bool isWritten = program.write(output, [&](const std::string& path) {
        isWhole = drawing.writePdf(program.session, isLandscape, layOut, path, progressOf(program));
    });
    return isWritten && isWhole;
}

void tellInterrupt(Program& program, bool isDone) {
    if (!isDone && Interrupt::hasCome())
        program.session.ShowMessage(program.session.LoadText(Text::Interrupted), kIconExclamation);
}

bool reportOne(Program& program, Drawing& drawing, const ChosenLog& chosen, const ReportOptions& options,
               const std::string& output) {
    ReportParts parts;
    for (const std::string& word : options.with)
        parts.merge(partsOf(word));
    ReportSubject subject = {*chosen.file, *chosen.data, *chosen.log};
    if (parts.contains(ReportPart::Protector)) {
        subject.Comparison = compareLog(program, *chosen.log, options);
        if (!subject.Comparison) return false;
    }
    const auto layOut = [&](const PageMetrics& metrics) {
        return inReportLanguage(program.session, [&] {
            subject.Modification = modificationOf(*chosen.log, *chosen.log);
            return std::make_unique<Report>(subject, formOf(options), metrics, parts);
        });
    };
    return writePages(program, drawing, options.isLandscape, layOut, output);
}

int report(Program& program, const ReportOptions& options) {
    const bool isCompared = std::ranges::find(options.with, "protector") != options.with.end();
    if (isCompared && options.protector.empty()) throw WrongWords("The part 'protector' needs --protector NAME");
    const auto outputs = outputsOf(options.files, options.outputs, ".pdf");
    keepFilesFrom(outputs, options.files);
    Drawing* const drawing = program.drawing();
    if (drawing == nullptr) return kFailed;
    if (options.printDate) {
        program.clock.Fixed = options.printDate;
        useUtc(); // the toolkit writes the zone of its own date into the file
    }
    const Interrupt interrupt;
    const int status = program.forEachFile(options.files, [&](clsFile& file, std::size_t i) {
        const auto chosen = chooseLog(program, file, options.log);
        if (!chosen || !reportOne(program, *drawing, *chosen, options, outputs[i])) return false;
        if (options.files.size() > 1) program.print({{"FileName", file.FileName}, {"Output", outputs[i]}});
        return true;
    });
    tellInterrupt(program, status == kDone);
    return status;
}

RunVerb reportVerb(CLI::App& verb) {
    const auto options = std::make_shared<ReportOptions>();
    addFiles(verb, options->files);
    addLogKey(verb, options->log);
    std::vector<std::string> words;
    for (const FormName& name : kForms)
        words.emplace_back(name.word);
    verb.add_option("--form", options->form,
                    "default (intervals as the settings say), cumulative, intervals or criteria")
        ->check(CLI::IsMember(words));
    std::vector<std::string> partWords;
    for (const ReportPartRow& row : reportPartRows())
        partWords.emplace_back(row.Word);
    verb.add_option("--with", options->with,
                    "what else it has, as far as the log has it: spectrum,noise-rating,"
                    "protector,exposure,criteria,history")
        ->delimiter(',')
        ->allow_extra_args(false) // what follows is a FILE
        ->check(CLI::IsMember(partWords));
    addProtector(verb, *options);
    addComparing(verb, *options);
    addDatabase(verb, *options);
    verb.add_flag("--landscape", options->isLandscape, "on paper turned sideways");
    verb.add_option("--print-date", "this time of printing in place of the computer's: yyyy-mm-ddThh:mm:ss")
        ->type_name("TIME")
        ->check([options](const std::string& text) { return readTime(text, options->printDate); });
    addOutputs(verb, options->outputs, "the PDF file to write");
    return [options](Program& program) { return report(program, *options); };
}

constexpr Verb kVerbs[] = {{"report", "print the report of a log as PDF", reportVerb}};

} // namespace

FileJob reportJob(Program& owner) {
    Drawing* const drawing = owner.drawing();
    if (drawing == nullptr) return {};
    return [drawing](Program& program, clsFile& file, const std::string&, const std::string& output) {
        const Interrupt interrupt;
        const auto chosen = chooseLog(program, file, {});
        return chosen && reportOne(program, *drawing, *chosen, {}, output);
    };
}

bool writePages(Program& program, const Drawing::LayOut& layOut, const std::string& output) {
    Drawing* const drawing = program.drawing();
    if (drawing == nullptr) return false;
    const Interrupt interrupt;
    const bool isDone = writePages(program, *drawing, false, layOut, output);
    tellInterrupt(program, isDone);
    return isDone;
}

std::span<const Verb> reportVerbs() {
    return kVerbs;
}

} // namespace kestrane

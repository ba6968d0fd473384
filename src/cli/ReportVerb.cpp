#include "cli/ChosenLog.h"
#include "cli/Interrupt.h"
#include "cli/Verbs.h"
#include "printing/PdfFile.h"
#include "reports/Report.h"

#include <QApplication>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr const char* kClearLine = "\r\033[K";

// What the toolkit remarks on a desktop that is not there is no message of this program.
void keepQuiet(QtMsgType, const QMessageLogContext&, const QString&) {}

struct FormName {
    const char* word;
    ReportForm form;
};

constexpr FormName kForms[] = {{"default", ReportForm::Default},
                               {"cumulative", ReportForm::Cumulative},
                               {"intervals", ReportForm::CumulativeAndIntervals}};

struct ReportOptions : LogArguments {
    std::string form = kForms[0].word;
    bool isLandscape = false;
    std::string output;
};

ReportForm formOf(const ReportOptions& options) {
    return std::find_if(std::begin(kForms), std::end(kForms),
                        [&](const FormName& name) { return name.word == options.form; })
        ->form;
}

// One line on standard error, where that is a terminal. An interrupt puts an end to the report.
PageProgress progressOf(const Program& program, const Interrupt& interrupt) {
    const bool isShown = !program.isQuiet && isatty(STDERR_FILENO) != 0;
    return [&session = program.session, &interrupt, isShown](std::size_t drawn, std::size_t pages) {
        const bool goesOn = !interrupt.hasCome();
        if (!isShown) return goesOn;
        std::cerr << kClearLine;
        if (goesOn && drawn < pages) {
            const std::string words = ReplaceText(session.LoadText(7123), "^", std::to_string(drawn + 1));
            std::cerr << ReplaceText(words, "*", std::to_string(pages));
        }
        std::cerr.flush();
        return goesOn;
    };
}

int report(Program& program, const ReportOptions& options) {
    const auto chosen = openLog(program, options);
    if (!chosen) return kFailed;
    qInstallMessageHandler(keepQuiet);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    std::string name = "kestrane-cli";
    char* words[] = {name.data(), nullptr};
    int count = 1;
    const QApplication application(count, words);
    const Paper paper(a4Paper(options.isLandscape));
    const ReportSubject subject = {*chosen->file, *chosen->data, *chosen->log, isModified(*chosen->log, *chosen->log)};
    Report document(subject, formOf(options), paper);
    const Interrupt interrupt;
    bool isWhole = false;
    const bool isWritten = program.write(options.output, [&] {
        isWhole = writePdf(program.session, document, paper, options.output, progressOf(program, interrupt));
    });
    return isWritten && isWhole ? kDone : kFailed;
}

RunVerb reportVerb(CLI::App& verb) {
    const auto options = std::make_shared<ReportOptions>();
    addLog(verb, *options);
    std::vector<std::string> words;
    for (const FormName& name : kForms)
        words.emplace_back(name.word);
    verb.add_option("--form", options->form, "default (intervals as the settings say), cumulative or intervals")
        ->check(CLI::IsMember(words));
    verb.add_flag("--landscape", options->isLandscape, "on paper turned sideways");
    verb.add_option("-o", options->output, "the PDF file to write")->required();
    return [options](Program& program) { return report(program, *options); };
}

constexpr Verb kVerbs[] = {{"report", "print the report of a log as PDF", reportVerb}};

} // namespace

std::span<const Verb> reportVerbs() {
    return kVerbs;
}

} // namespace kestrane

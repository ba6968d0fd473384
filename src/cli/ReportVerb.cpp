#include "cli/ChosenLog.h"
#include "cli/Verbs.h"
#include "printing/PdfFile.h"
#include "reports/Report.h"

#include <QApplication>

#include <iostream>
#include <map>
#include <memory>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr const char* kClearLine = "\r\033[K";

// What the toolkit remarks on a desktop that is not there is no message of this program.
void keepQuiet(QtMsgType, const QMessageLogContext&, const QString&) {}

struct ReportOptions : LogArguments {
    ReportForm form = ReportForm::Default;
    bool isLandscape = false;
    std::string output;
};

// One line on standard error, where that is a terminal.
PageProgress progressOf(const Program& program) {
    if (program.isQuiet || isatty(STDERR_FILENO) == 0) return {};
    return [&session = program.session](std::size_t drawn, std::size_t pages) {
        std::cerr << kClearLine;
        if (drawn < pages) {
            const std::string words = ReplaceText(session.LoadText(7123), "^", std::to_string(drawn + 1));
            std::cerr << ReplaceText(words, "*", std::to_string(pages));
        }
        std::cerr.flush();
        return true;
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
    Report document(subject, options.form, paper);
    writePdf(program.session, document, paper, options.output, progressOf(program));
    return kDone;
}

RunVerb reportVerb(CLI::App& verb) {
    const auto options = std::make_shared<ReportOptions>();
    addLog(verb, *options);
    const std::map<std::string, ReportForm> forms = {{"default", ReportForm::Default},
                                                     {"cumulative", ReportForm::Cumulative},
                                                     {"intervals", ReportForm::CumulativeAndIntervals}};
    verb.add_option("--form", options->form, "default (intervals as the settings say), cumulative or intervals")
        ->transform(CLI::CheckedTransformer(forms));
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

#include "cli/ChosenLog.h"
#include "cli/Interrupt.h"
#include "cli/Jobs.h"
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

// The toolkit's remarks about a missing desktop are not messages of this program.
void keepQuiet(QtMsgType, const QMessageLogContext&, const QString&) {}

struct FormName {
    const char* word;
    ReportForm form;
};

constexpr FormName kForms[] = {{"default", ReportForm::Default},
                               {"cumulative", ReportForm::Cumulative},
                               {"intervals", ReportForm::CumulativeAndIntervals}};

struct ReportOptions {
    std::vector<std::string> files;
    std::string log;
    std::string form = kForms[0].word;
    bool isLandscape = false;
    OutputArguments outputs;
};

ReportForm formOf(const ReportOptions& options) {
    return std::find_if(std::begin(kForms), std::end(kForms),
                        [&](const FormName& name) { return name.word == options.form; })
        ->form;
}

// Shows the progress on one line of standard error when that is a terminal. An interrupt ends the report.
PageProgress progressOf(const Program& program, const Interrupt& interrupt) {
    const bool isShown = program.showsProgress && isatty(STDERR_FILENO) != 0;
    return [&session = program.session, &interrupt, isShown](std::size_t drawn, std::size_t pages) {
        const bool goesOn = !interrupt.hasCome();
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

// Returns false when the report was not written or is not complete; the reason has been shown.
bool reportOne(Program& program, const ChosenLog& chosen, const ReportOptions& options, const std::string& output,
               const Interrupt& interrupt) {
    const Paper paper(a4Paper(options.isLandscape));
    const ReportSubject subject = {*chosen.file, *chosen.data, *chosen.log, isModified(*chosen.log, *chosen.log)};
    Report document(subject, formOf(options), paper);
    bool isWhole = false;
    const bool isWritten = program.write(output, [&](const std::string& path) {
        isWhole = writePdf(program.session, document, paper, path, progressOf(program, interrupt));
    });
    return isWritten && isWhole;
}

// The environment that drawing needs. There must be only one at a time.
class Toolkit {
public:
    Toolkit() {
        qInstallMessageHandler(keepQuiet);
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_.emplace(count_, words_);
    }

private:
    std::string name_ = "kestrane-cli";
    char* words_[2] = {name_.data(), nullptr};
    int count_ = 1;
    std::optional<QApplication> application_;
};

int report(Program& program, const ReportOptions& options) {
    const auto outputs = outputsOf(options.files, options.outputs, ".pdf");
    keepFilesFrom(outputs, options.files);
    const Toolkit toolkit;
    const Interrupt interrupt;
    return program.forEachFile(options.files, [&](clsFile& file, std::size_t i) {
        const auto chosen = chooseLog(program, file, options.log);
        if (!chosen || !reportOne(program, *chosen, options, outputs[i], interrupt)) return false;
        if (options.files.size() > 1) program.print({{"FileName", file.FileName}, {"Output", outputs[i]}});
        return true;
    });
}

RunVerb reportVerb(CLI::App& verb) {
    const auto options = std::make_shared<ReportOptions>();
    addFiles(verb, options->files);
    addLogKey(verb, options->log);
    std::vector<std::string> words;
    for (const FormName& name : kForms)
        words.emplace_back(name.word);
    verb.add_option("--form", options->form, "default (intervals as the settings say), cumulative or intervals")
        ->check(CLI::IsMember(words));
    verb.add_flag("--landscape", options->isLandscape, "on paper turned sideways");
    addOutputs(verb, options->outputs, "the PDF file to write");
    return [options](Program& program) { return report(program, *options); };
}

constexpr Verb kVerbs[] = {{"report", "print the report of a log as PDF", reportVerb}};

} // namespace

FileJob reportJob() {
    const auto toolkit = std::make_shared<Toolkit>();
    return [toolkit](Program& program, clsFile& file, const std::string&, const std::string& output) {
        const Interrupt interrupt;
        const auto chosen = chooseLog(program, file, {});
        return chosen && reportOne(program, *chosen, {}, output, interrupt);
    };
}

std::span<const Verb> reportVerbs() {
    return kVerbs;
}

} // namespace kestrane

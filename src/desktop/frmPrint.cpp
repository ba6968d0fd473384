#include "desktop/frmPrint.h"

#include "desktop/frmExplorer.h"
#include "desktop/frmPreview.h"
#include "desktop/tabLog.h"
#include "explorer/NodeKeys.h"
#include "platform/RuntimeError.h"
#include "reports/ReportLanguage.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kSection = "Reports";
constexpr std::string_view kParts = "Parts"; // chosen in the preview last

struct ReportRow {
    Command command;
    ReportForm form;
    Text::Id text;
};

constexpr ReportRow kReports[] = {
    {Command::PrintDefault, ReportForm::Default, Text::CommandDefaultReport},
    {Command::PrintCumulative, ReportForm::Cumulative, Text::CommandCumulativeReport},
    {Command::PrintIntervals, ReportForm::CumulativeAndIntervals, Text::CommandIntervalsReport},
    {Command::PrintCriteria, ReportForm::CumulativeAndCriteria, Text::CommandCriteriaReport}};

} // namespace

frmPrint::frmPrint(Session& session, frmExplorer& explorer, QWidget* parent) :
    session_(session), explorer_(explorer), parent_(parent) {}

ReportSubject frmPrint::subject() const {
    const ExplorerState& state = explorer_.State();
    const Node opened = resolve(session_, state.View.Key);
    const clsLog& log = *state.LogInView(session_);
    return {*opened.file,           *opened.data,         log, modificationOf(*opened.log, log),
            state.View.ShowsLegend, state.View.ShowsNote, {},  opened.log};
}

std::unique_ptr<PagedDocument> frmPrint::report(const PageMetrics& paper, ReportForm form) const {
    return inReportLanguage(session_, [&] { return std::make_unique<Report>(subject(), form, paper); });
}

std::unique_ptr<PagedDocument> frmPrint::report(const PageMetrics& paper, ReportForm form, const ReportParts& parts) {
    return inReportLanguage(session_, [&] {
        const LogView& view = explorer_.State().View;
        ReportSubject subject = this->subject();
        if (!comparison_ && view.Protector && parts.contains(ReportPart::Protector))
            comparison_ = compareWithProtector(subject.log, *view.Protector, session_.Options, view.CorrectionFactor);
        subject.Comparison = comparison_;
        return std::make_unique<Report>(subject, form, paper, parts);
    });
}

std::unique_ptr<PagedDocument> frmPrint::view(const PageMetrics& paper) const {
    return explorer_.LogTabs().CurrentView(paper);
}

void frmPrint::print(const LayOut& layOut) {
    PrintProgress progress(session_, parent_);
    printDocument(session_, printers_, parent_, false, layOut, progress.function());
}

void frmPrint::PrintReport(Command command) {
    const ReportRow& row = *std::ranges::find(kReports, command, &ReportRow::command);
    print([&](const PageMetrics& paper) { return report(paper, row.form); });
}

void frmPrint::PrintGraph() {
    if (!explorer_.LogTabs().HasContent()) {
        if (isPrinterThere(session_, printers_))
            session_.ShowMessage(session_.LoadText(Text::NoAvailableData), kIconInformation);
        return;
    }
    print([&](const PageMetrics& paper) { return view(paper); });
}

void frmPrint::ShowPreview() {
    PreviewParts parts{{}, partsOf(session_.state->read(kSection, kParts, {}))};
    for (const ReportPartRow& row : reportPartRows()) {
        const bool isProtector = row.Part == ReportPart::Protector;
        if (isProtector ? explorer_.State().View.Protector.has_value() : row.IsOf(subject()))
            parts.Offered.insert(row.Part);
    }
    std::vector<PreviewChoice> choices;
    for (const ReportRow& row : kReports) {
        if (row.form == ReportForm::CumulativeAndIntervals &&
            explorer_.State().LogInView(session_)->LogIntervals.Count() == 0)
            continue;
        choices.push_back(
            {row.text, [&](const PageMetrics& paper) { return report(paper, row.form, parts.Chosen); }, true});
    }
    if (explorer_.LogTabs().HasContent())
        choices.push_back({Text::CommandCurrentView, [this](const PageMetrics& paper) { return view(paper); }});
    frmPreview(session_, std::move(choices), printers_, parent_, &parts).exec();
    try {
        session_.state->write(kSection, kParts, wordsOf(parts.Chosen));
    } catch (const RuntimeError&) { // then they are not remembered
    }
}

} // namespace kestrane

#include "desktop/frmPrint.h"

#include "desktop/frmExplorer.h"
#include "desktop/frmPreview.h"
#include "desktop/tabLog.h"
#include "explorer/NodeKeys.h"
#include "reports/ReportLanguage.h"

namespace kestrane {

frmPrint::frmPrint(Session& session, frmExplorer& explorer, QWidget* parent) :
    session_(session), explorer_(explorer), parent_(parent) {}

std::unique_ptr<PagedDocument> frmPrint::report(const PageMetrics& paper, ReportForm form) const {
    const ExplorerState& state = explorer_.State();
    const Node opened = resolve(session_, state.View.Key);
    const clsLog& log = *state.LogInView(session_);
    const ReportSubject subject = {*opened.file,           *opened.data,        log, isModified(*opened.log, log),
                                   state.View.ShowsLegend, state.View.ShowsNote};
    return inReportLanguage(session_, [&] { return std::make_unique<Report>(subject, form, paper); });
}

std::unique_ptr<PagedDocument> frmPrint::view(const PageMetrics& paper) const {
    return explorer_.LogTabs().CurrentView(paper);
}

void frmPrint::print(const LayOut& layOut) {
    PrintProgress progress(session_, parent_);
    printDocument(session_, printers_, parent_, false, layOut, progress.function());
}

void frmPrint::PrintReport(ReportForm form) {
    print([&](const PageMetrics& paper) { return report(paper, form); });
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
    struct Form {
        ReportForm form;
        Text::Id text;
    };

    constexpr Form kForms[] = {{ReportForm::Default, Text::CommandDefaultReport},
                               {ReportForm::Cumulative, Text::CommandCumulativeReport},
                               {ReportForm::CumulativeAndIntervals, Text::CommandIntervalsReport},
                               {ReportForm::CumulativeAndCriteria, Text::CommandCriteriaReport}};
    std::vector<PreviewChoice> choices;
    for (const Form& form : kForms) {
        if (form.form == ReportForm::CumulativeAndIntervals &&
            explorer_.State().LogInView(session_)->LogIntervals.Count() == 0)
            continue;
        choices.push_back({form.text, [this, form](const PageMetrics& paper) { return report(paper, form.form); }});
    }
    if (explorer_.LogTabs().HasContent())
        choices.push_back({Text::CommandCurrentView, [this](const PageMetrics& paper) { return view(paper); }});
    frmPreview(session_, std::move(choices), printers_, parent_).exec();
}

} // namespace kestrane

// The print commands: lays out what an explorer window shows, and passes it to a printer or to the preview. An object
// lives as long as one command.
#pragma once

#include "app/Menus.h"
#include "model/Session.h"
#include "printing/Printer.h"
#include "reports/Report.h"

namespace kestrane {

class frmExplorer;

class frmPrint {
public:
    frmPrint(Session& session, frmExplorer& explorer, QWidget* parent);

    void PrintReport(Command command); // one of the commands that print a report
    void PrintGraph();                 // prints the tab in front
    void ShowPreview();

private:
    ReportSubject subject() const;
    std::unique_ptr<PagedDocument> report(const PageMetrics& paper, ReportForm form) const;
    std::unique_ptr<PagedDocument> report(const PageMetrics& paper, ReportForm form, const ReportParts& parts);
    std::unique_ptr<PagedDocument> view(const PageMetrics& paper) const;
    void print(const LayOut& layOut);

    Session& session_;
    frmExplorer& explorer_;
    QWidget* parent_;
    Printers printers_;
    std::optional<HPDComparison> comparison_; // made when it is first needed, because that may show a message
};

} // namespace kestrane

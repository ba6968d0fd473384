#include "printing/Printer.h"

#include "platform/RuntimeError.h"
#include "printing/PdfFile.h"
#include "printing/QtPage.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinterInfo>

namespace kestrane {

namespace {

constexpr std::int64_t kErrorPrinter = 482;

void print(const Session& session, QPrinter& printer, const LayOut& layOut, const PageProgress& progress) {
    printer.setFullPage(true);
    const Paper paper(printer.pageLayout());
    const std::unique_ptr<PagedDocument> document = layOut(paper);
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
        writePdf(session, *document, paper, printer.outputFileName().toStdString(), progress);
        return;
    }
    printer.setDocName(QString::fromStdString(document->Title()));
    QPainter painter;
    if (!painter.begin(&printer)) throw RuntimeError(kErrorPrinter, session.LoadText(7122));
    QtPage page(paper, session.locale, painter, printer.resolution() / kPaperDots, [&] { printer.newPage(); });
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    for (int copy = 0; copy < copies; ++copy) {
        if (copy > 0) page.newPage();
        if (drawPages(*document, page, progress)) continue;
        printer.abort();
        return;
    }
    if (printer.printerState() == QPrinter::Error) throw RuntimeError(kErrorPrinter, session.LoadText(7122));
}

} // namespace

bool Printers::isAnyThere() {
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

bool Printers::choose(QPrinter& printer, QWidget* parent) {
    QPrintDialog dialog(&printer, parent);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize |
                      QAbstractPrintDialog::PrintCollateCopies);
    return dialog.exec() == QDialog::Accepted;
}

void printDocument(Session& session, Printers& printers, QWidget* parent, bool isLandscape, const LayOut& layOut,
                   const PageProgress& progress) {
    try {
        if (!printers.isAnyThere()) throw RuntimeError(kErrorPrinter, session.LoadText(7122));
        QPrinter printer(QPrinter::HighResolution);
        if (isLandscape) printer.setPageOrientation(QPageLayout::Landscape);
        if (printers.choose(printer, parent)) print(session, printer, layOut, progress);
    } catch (const RuntimeError& error) {
        session.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation,
                            session.LoadText(9000));
    }
}

} // namespace kestrane

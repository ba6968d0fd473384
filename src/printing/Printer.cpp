#include "printing/Printer.h"

#include "platform/OutOfMemory.h"
#include "printing/PdfFile.h"
#include "printing/QtPage.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinterInfo>

namespace kestrane {

namespace {

constexpr std::int64_t kErrorPrinter = 482;

// Raises an error when the printer has failed.
void check(const Session& session, bool isDone) {
    if (!isDone) throw RuntimeError(kErrorPrinter, session.LoadText(Text::PrinterTookNotAll));
}

// Returns false when progress ended the drawing.
bool drawCopies(const Session& session, QPrinter& printer, QPainter& painter, const Paper& paper,
                PagedDocument& document, const PageProgress& progress) {
    QtPage page(paper, session.locale, painter, printer.resolution() / kPaperDots,
                [&] { check(session, printer.newPage()); });
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    for (int copy = 0; copy < copies; ++copy) {
        if (copy > 0) page.newPage();
        if (!drawPages(document, page, progress)) return false;
    }
    return true;
}

void print(const Session& session, QPrinter& printer, const LayOut& layOut, const PageProgress& progress) {
    printer.setFullPage(true);
    const Paper paper(printer.pageLayout());
    const std::unique_ptr<PagedDocument> document = layOut(paper);
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
        writePdf(session, *document, paper, printer.outputFileName().toStdString(), progress);
        return;
    }
    if (progress && !progress(0, document->pageCount())) return; // asked before there is a job
    printer.setDocName(QString::fromStdString(document->Title()));
    QPainter painter;
    check(session, painter.begin(&printer));
    if (!drawCopies(session, printer, painter, paper, *document, progress)) {
        // Where the system cannot cancel a job this does nothing, and the pages drawn so far are printed.
        printer.abort();
        return;
    }
    const bool isTaken = painter.end();
    check(session, isTaken && printer.printerState() != QPrinter::Error);
}

void tell(Session& session, const RuntimeError& error) {
    session.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation,
                        session.LoadText(Text::ErrorConnectingToPrinter));
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

bool isPrinterThere(Session& session, Printers& printers) {
    if (printers.isAnyThere()) return true;
    tell(session, RuntimeError(kErrorPrinter, session.LoadText(Text::NoPrinter)));
    return false;
}

void printDocument(Session& session, Printers& printers, QWidget* parent, bool isLandscape, const LayOut& layOut,
                   const PageProgress& progress) {
    if (!isPrinterThere(session, printers)) return;
    try {
        QPrinter printer(QPrinter::HighResolution);
        if (isLandscape) printer.setPageOrientation(QPageLayout::Landscape);
        if (printers.choose(printer, parent)) refusingWithoutMemory([&] { print(session, printer, layOut, progress); });
    } catch (const RuntimeError& error) {
        tell(session, error);
    }
}

} // namespace kestrane

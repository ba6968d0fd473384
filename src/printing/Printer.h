// Prints a document on a printer that the user chooses.
#pragma once

#include "model/Session.h"
#include "printing/Paper.h"
#include "reports/PagedDocument.h"

#include <QPrinter>

#include <functional>
#include <memory>

class QWidget;

namespace kestrane {

// Lays a document out for a paper, which must outlive the document.
using LayOut = std::function<std::unique_ptr<PagedDocument>(const PageMetrics& paper)>;

// The printers of this computer; a test uses its own.
struct Printers {
    virtual ~Printers() = default;
    virtual bool isAnyThere();
    virtual bool choose(QPrinter& printer, QWidget* parent); // with the print dialog; false when cancelled
};

// Returns false, after showing a message, when there is no printer.
bool isPrinterThere(Session& session, Printers& printers);

// Prints a document. The printer, the number of copies and the paper are chosen in the dialog, which starts with
// landscape paper when isLandscape; the printer's own settings are not changed. A user who prints to a file gets the
// file that writePdf makes. Shows a message when something fails.
void printDocument(Session& session, Printers& printers, QWidget* parent, bool isLandscape, const LayOut& layOut,
                   const PageProgress& progress);

} // namespace kestrane

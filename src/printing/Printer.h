// A document on a printer that the user chooses.
#pragma once

#include "model/Session.h"
#include "printing/Paper.h"
#include "reports/PagedDocument.h"

#include <QPrinter>

#include <functional>
#include <memory>

class QWidget;

namespace kestrane {

// Lays a document out for a paper, which outlives it.
using LayOut = std::function<std::unique_ptr<PagedDocument>(const PageMetrics& paper)>;

// The printers of this computer. A test has its own.
struct Printers {
    virtual ~Printers() = default;
    virtual bool isAnyThere();
    virtual bool choose(QPrinter& printer, QWidget* parent); // by the print dialog; false: cancelled
};

// False: there is none, and the user was told.
bool isPrinterThere(Session& session, Printers& printers);

// The printer, the number of copies and the paper are those of the dialog, which begins with paper turned as told; the
// printers' settings stay as they are. A user who prints to a file gets one as writePdf makes it. Tells of what goes
// wrong.
void printDocument(Session& session, Printers& printers, QWidget* parent, bool isLandscape, const LayOut& layOut,
                   const PageProgress& progress);

} // namespace kestrane

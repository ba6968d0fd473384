// The print preview: shows the pages of a report as they will be printed, one at a time and at any size; from here they
// can be printed or saved as a PDF file. What else a report has is chosen beside them.
#pragma once

#include "model/Session.h"
#include "printing/Printer.h"
#include "reports/ReportParts.h"
#include "resources/TextNames.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressDialog;
class QPushButton;
class QScrollArea;
class QSpinBox;
class QToolButton;

namespace kestrane {

// Shows the progress of printing and lets the user cancel it. It appears only when printing takes a while.
class PrintProgress {
public:
    PrintProgress(const Session& session, QWidget* parent);
    ~PrintProgress();

    PageProgress function();

private:
    const Session& session_;
    std::unique_ptr<QProgressDialog> dialog_;
};

struct PreviewChoice {
    Text::Id text; // its name in the list
    LayOut layOut;
    bool HasParts = false; // whether it goes by what is chosen of PreviewParts
};

// What a report can have beyond its form. The user chooses while the preview is open.
struct PreviewParts {
    ReportParts Offered; // those of which there is something to print
    ReportParts Chosen;
};

class frmPreview : public QDialog {
public:
    // parts, if given, must outlive the dialog.
    frmPreview(Session& session, std::vector<PreviewChoice> choices, Printers& printers, QWidget* parent,
               PreviewParts* parts = nullptr);
    ~frmPreview() override;

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // the keys and the wheel on the page

private:
    QWidget* topBar();
    QWidget* bottomBar();
    QWidget* partsBox();
    QToolButton* toolButton(const char* name, Text::Id text, const char* sign);
    void layOut();
    void showPage();
    void tellPage();
    void zoom(double factor);
    void turn(int pages);
    void savePdf();
    void print();

    Session& session_;
    const std::vector<PreviewChoice> choices_;
    Printers& printers_;
    PreviewParts* const parts_;
    std::optional<Paper> paper_;
    std::unique_ptr<PagedDocument> document_;
    double zoom_ = 0; // pixels for each dot of the paper; 0 to fit the width

    QComboBox* cboReport_;
    QWidget* fraParts_;
    QCheckBox* chkLandscape_;
    QSpinBox* spnPage_;
    QLabel* lblPages_;
    QToolButton *cmdBack_, *cmdNext_;
    QScrollArea* area_;
    QLabel* picPage_;
};

} // namespace kestrane

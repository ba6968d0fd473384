// The print preview: the pages of a report one at a time, at any size, as they are going to be printed; from here to
// the printer or into a PDF file.
#pragma once

#include "model/Session.h"
#include "printing/Printer.h"
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

// How far printing has got, with a way to end it. Comes up when it takes a while.
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
    Text::Id text; // its name
    LayOut layOut;
};

class frmPreview : public QDialog {
public:
    frmPreview(Session& session, std::vector<PreviewChoice> choices, Printers& printers, QWidget* parent);
    ~frmPreview() override;

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // keys and wheel of the page

private:
    QWidget* topBar();
    QWidget* bottomBar();
    QToolButton* toolButton(const char* name, Text::Id text, const char* sign);
    void layOut();
    void showPage();
    void zoom(double factor);
    void turn(int pages);
    void savePdf();
    void print();

    Session& session_;
    const std::vector<PreviewChoice> choices_;
    Printers& printers_;
    std::optional<Paper> paper_;
    std::unique_ptr<PagedDocument> document_;
    double zoom_ = 0; // pixels for a dot of the paper; 0: as fits the width

    QComboBox* cboReport_;
    QCheckBox* chkLandscape_;
    QSpinBox* spnPage_;
    QLabel* lblPages_;
    QToolButton *cmdBack_, *cmdNext_;
    QScrollArea* area_;
    QLabel* picPage_;
};

} // namespace kestrane

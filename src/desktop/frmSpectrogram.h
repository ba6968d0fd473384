// The spectrogram of a log with bands, and beside it the spectrum of the row at the cursor, as bars and as
// figures, in a weighting that the user chooses; copied, saved as a picture and printed.
#pragma once

#include "desktop/PrintedChart.h"
#include "platform/Clipboard.h"

#include "model/clsLog.h"

#include <QDialog>

#include <functional>

class QComboBox;

namespace kestrane {

class CellTableModel;
class chaTab;

class frmSpectrogram : public QDialog {
    Q_OBJECT

public:
    struct Owner {
        std::function<void(const ClipboardForms& forms)> copy;
        PrintChart print;
    };

    // The log has a spectrogram, and must outlive the dialog.
    frmSpectrogram(const clsLog& log, Owner owner, QWidget* parent);

private:
    QWidget* spectrumColumn();
    void makeWeights();
    std::string weight() const;
    void showWeighted();
    void showSpectrum();
    void copy() const;

    const clsLog& log_;
    Owner owner_;
    std::size_t row_ = 0; // of the spectrum: the one that was read last
    QComboBox* weights_;
    chaTab* chart_;
    chaTab* spectrum_;
    CellTableModel* figures_; // of the spectrum
};

} // namespace kestrane

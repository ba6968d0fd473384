// Asks for the format, the size on paper and the resolution of a chart's picture, and writes it under a name that the
// user chooses.
#pragma once

#include "app/PictureChoice.h"

#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace kestrane {

class frmPicture : public QDialog {
public:
    // title is the proposal for the name. save writes the picture.
    static void Export(Session& session, const std::string& title, const SavePicture& save, QWidget* parent);

    void accept() override; // asks for the name; the dialog stays open when nothing was written

private:
    frmPicture(Session& session, std::string title, SavePicture save, QWidget* parent);

    PictureChoice choice() const;
    void showPixels();

    Session& session_;
    const std::string title_;
    const SavePicture save_;
    QComboBox* cboFormat_;
    QDoubleSpinBox* spnWidth_;
    QDoubleSpinBox* spnHeight_;
    QSpinBox* spnResolution_;
    QLabel* lblPixels_;
    QPushButton* cmdOK_;
};

} // namespace kestrane

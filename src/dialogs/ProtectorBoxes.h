// The boxes of one protector: name, type, attenuation by band with bars above the boxes, and the figures of the other
// methods. It shows European or US figures; what may be typed is decided in app/ProtectorScreen.
#pragma once

#include "app/ProtectorScreen.h"
#include "resources/TextNames.h"

#include <QWidget>

#include <array>
#include <vector>

class QComboBox;
class QGridLayout;
class QLineEdit;

namespace kestrane {

class AttenuationBars;

class ProtectorBoxes : public QWidget {
public:
    explicit ProtectorBoxes(const ProtectorScreen& screen, QWidget* parent = nullptr);

    void ShowEntries(const ProtectorEntries& entries);
    ProtectorEntries Entries() const;
    void ShowFigures(bool isUS);
    void SetEditable(bool isEditable);
    void FocusName();

private:
    using Bands = std::array<QLineEdit*, kProtectorBands>;

    QLineEdit* numberBox(const QString& name, const QString& spoken);
    void addBands(QGridLayout& grid, int row, Text::Id caption, const char* name, Bands& boxes);
    QWidget* bandsGroup();
    QWidget* figuresRow();
    void showBars();

    const ProtectorScreen& screen_;
    bool isUS_ = false;
    QLineEdit* txtName_;
    QComboBox* cboType_;
    AttenuationBars* bars_;
    Bands mean_{}, sd_{}, meanUS_{}, sdUS_{};
    std::array<QLineEdit*, 3> hml_{};
    QLineEdit* snr_ = nullptr;
    QLineEdit* nrr_ = nullptr;
    std::vector<QLineEdit*> numbers_;
    std::vector<QWidget*> ofEU_, ofUS_; // the widgets that are shown with European and with US figures
};

} // namespace kestrane

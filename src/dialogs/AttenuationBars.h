// The mean attenuation of a protector in octave bands, as bars with a mark one standard deviation up and down, so that
// a figure that does not fit the others stands out. The bars are in columns of equal width.
#pragma once

#include "dialogs/DrawnFigure.h"
#include "protection/clsHP.h"

namespace kestrane {

class AttenuationBars : public DrawnFigure {
public:
    explicit AttenuationBars(QWidget* parent = nullptr);

    void Show(const clsHP& protector, bool isUS);

    void SetGap(int pixels) { gap_ = pixels; } // pixels between the columns

    QSize sizeHint() const override;

protected:
    void draw(QPainter& painter) override;

private:
    clsHP protector_;
    bool isUS_ = false;
    int gap_ = 0;
};

} // namespace kestrane

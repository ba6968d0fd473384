// Keeps the program's dialogs within the screen, whatever its size, scale and font: what does not fit is scrolled, and
// the buttons at the end of a dialog stay in view. The wheel scrolls, and changes a value only where the focus is.
#pragma once

#include <QObject>
#include <QSize>

class QDialog;

namespace kestrane {

class DialogFit : public QObject {
public:
    // Watches every dialog that opens while it lives. room is in pixels; when it is empty, the dialog's screen counts.
    explicit DialogFit(QSize room = {});

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QSize roomFor(const QDialog& dialog) const;

    const QSize room_;
};

} // namespace kestrane

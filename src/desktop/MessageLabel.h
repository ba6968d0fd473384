// A message in the status bar. It takes as many lines as its text needs in the width that it has, so that nothing is
// cut; an empty one leaves its width to the others.
#pragma once

#include <QLabel>
#include <QResizeEvent>

#include <algorithm>

namespace kestrane {

class MessageLabel : public QLabel {
public:
    MessageLabel() {
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        Show({});
    }

    // The text is also the tool tip, and what a screen reader says: the label has no accessible name, and a description
    // only because that of the tool tip has the marks of HTML.
    void Show(const QString& text) {
        setText(text);
        setAccessibleDescription(text);
        setToolTip(text.isEmpty() ? text : Qt::convertFromPlainText(text)); // which is broken into lines
        setMaximumWidth(text.isEmpty() ? 1 : QWIDGETSIZE_MAX);
        fit();
    }

    // The layout of a status bar goes by the least height alone and not by the height for a width.
    bool hasHeightForWidth() const override { return false; }

    QSize sizeHint() const override { return {1, fontMetrics().height()}; }

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        if (event->oldSize().width() != width()) fit();
    }

    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::FontChange) fit();
    }

private:
    void fit() {
        setMinimumHeight(0);                           // the height for a width is never less
        if (width() == 1 && !text().isEmpty()) return; // that of an empty one, which says nothing: the layout comes
        setMinimumHeight(std::max(0, heightForWidth(width()))); // negative before there was any text
    }
};

} // namespace kestrane

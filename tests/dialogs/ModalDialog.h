// Drives a modal dialog as a person would: does something with it once it is open.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace kestrane {

// Runs act on the next dialog that opens. One that is still open then is cancelled.
inline void onDialog(std::function<void(QDialog&)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        act(*dialog);
        if (dialog->isVisible()) dialog->reject();
    });
}

template <class Widget>
Widget& control(QWidget& dialog, const char* name) {
    auto* const found = dialog.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(name);
    return *found;
}

inline void click(QWidget& dialog, const char* name) {
    control<QAbstractButton>(dialog, name).click();
}

// Replaces the text of a field, key by key.
inline void type(QWidget& field, const char* text) {
    field.setFocus();
    QTest::keySequence(&field, QKeySequence::SelectAll);
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, QLatin1String(text));
}

} // namespace kestrane

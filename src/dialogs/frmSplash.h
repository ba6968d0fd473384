// The picture that is shown while the program starts, with the product's name and version. Owned by the start-up.
#pragma once

#include "model/Session.h"

#include <QWidget>

namespace kestrane {

class frmSplash : public QWidget {
public:
    // It has the size of its picture and is centred on the screen. show() does not wait.
    explicit frmSplash(const Session& session);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString product_, version_, purpose_, company_;
    QByteArray picSplash_;
};

} // namespace kestrane

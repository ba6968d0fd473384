// The about box: product and version, the company with its addresses, the licence.
#pragma once

#include "model/Session.h"

#include <QDialog>

class QLayout;

namespace kestrane {

class frmAbout : public QDialog {
public:
    frmAbout(const Session& session, QWidget* parent);

private:
    QLayout* product();
    QLayout* contacts();

    const Session& session_;
};

} // namespace kestrane

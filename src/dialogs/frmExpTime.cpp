#include "dialogs/frmExpTime.h"

#include "calc/ExposureTime.h"
#include "dialogs/Words.h"
#include "explorer/Edits.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kestrane {

frmExpTime::frmExpTime(Session& session, float shiftLength, float measurementTime, QWidget* parent) :
    QDialog(parent),
    session_(session),
    measurementTime_(measurementTime),
    txtExposureTime_(new QLineEdit(QString::fromStdString(exposureTimeText(shiftLength)))) {
    setWindowTitle(loadText(session, 5066));
    nameControl(*txtExposureTime_, "txtExposureTime", loadPlainText(session, 5041));
    txtExposureTime_->selectAll();
    connect(txtExposureTime_, &QLineEdit::editingFinished, this, [this] {
        const std::string entry = txtExposureTime_->text().toStdString();
        txtExposureTime_->setText(QString::fromStdString(shownExposureTime(entry, session_.locale)));
    });
    QDialogButtonBox* const buttons = okAndCancel(session);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const form = new QFormLayout;
    form->addRow(labelOf(session, 5041, *txtExposureTime_), txtExposureTime_);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

void frmExpTime::accept() {
    hours_ = exposureTimeHours(txtExposureTime_->text().toStdString(), session_.locale);
    const int fault = exposureTimeFault(hours_, measurementTime_);
    if (fault == 0) return QDialog::accept();
    session_.ShowMessage(session_.LoadText(fault), kIconExclamation, session_.LoadText(9100));
    txtExposureTime_->setFocus();
    txtExposureTime_->selectAll();
}

bool frmExpTime::getExpTime(Session& session, float sngDefaultShiftLength, float sngMeasurementTime, clsLog& log,
                            QWidget* parent) {
    frmExpTime dialog(session, sngDefaultShiftLength, sngMeasurementTime, parent);
    if (dialog.exec() != QDialog::Accepted) return false;
    editLog(log, kTitleExposureTime, [&] { return changeExposureTime(log, dialog.hours_); });
    return true;
}

} // namespace kestrane

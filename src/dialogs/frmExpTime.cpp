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

QLineEdit* exposureTimeBox(const Session& session, float hours, QLabel& understood) {
    auto* const box = new QLineEdit(QString::fromStdString(exposureTimeText(hours)));
    nameControl(*box, "txtExposureTime", loadPlainText(session, Text::ExposureTimeEdit));
    understood.setObjectName("lblUnderstood");
    understood.setMinimumWidth(
        understood.fontMetrics().horizontalAdvance(loadText(session, Text::ExposureTimeOutOfRange)));
    const auto show = [&session, &understood](const QString& entry) {
        understood.setText(shown(understoodExposureTime(session, entry.toStdString())));
    };
    show(box->text());
    QObject::connect(box, &QLineEdit::textChanged, &understood, show);
    QObject::connect(box, &QLineEdit::editingFinished, box, [&session, box] {
        box->setText(QString::fromStdString(shownExposureTime(box->text().toStdString(), session.locale)));
    });
    return box;
}

frmExpTime::frmExpTime(Session& session, float shiftLength, float measurementTime, QWidget* parent) :
    QDialog(parent), session_(session), measurementTime_(measurementTime) {
    setObjectName("frmExpTime");
    setWindowTitle(loadText(session, Text::ExposureTime));
    auto* const understood = new QLabel;
    txtExposureTime_ = exposureTimeBox(session, shiftLength, *understood);
    txtExposureTime_->selectAll();
    QDialogButtonBox* const buttons = okAndCancel(session);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const form = new QFormLayout;
    form->addRow(labelOf(session, Text::ExposureTimeEdit, *txtExposureTime_), txtExposureTime_);
    form->addRow(QString(), understood);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

void frmExpTime::accept() {
    hours_ = exposureTimeHours(txtExposureTime_->text().toStdString(), session_.locale);
    const Text::Id fault = exposureTimeFault(hours_, measurementTime_);
    if (fault == 0) return QDialog::accept();
    session_.ShowMessage(session_.LoadText(fault), kIconExclamation, session_.LoadText(Text::Error));
    txtExposureTime_->setFocus();
    txtExposureTime_->selectAll();
}

bool frmExpTime::getExpTime(Session& session, float sngDefaultShiftLength, float sngMeasurementTime, clsLog& log,
                            QWidget* parent) {
    frmExpTime dialog(session, sngDefaultShiftLength, sngMeasurementTime, parent);
    if (dialog.exec() != QDialog::Accepted) return false;
    editLog(log, Text::StepExposureTime, [&] { return changeExposureTime(log, dialog.hours_); });
    return true;
}

} // namespace kestrane

#include "dialogs/frmCalibration.h"

#include "calc/CalibrationText.h"
#include "dialogs/Words.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace kestrane {

namespace {

constexpr int kDriftLines = 2;

} // namespace

frmCalibration::frmCalibration(const clsLog& log, QWidget* parent) : QDialog(parent), session_(log.session()) {
    setObjectName("frmCalibration");
    setWindowTitle(shown(ReplaceText(session_.LoadText(Text::CalibrationTitle), "^", log.Name)).simplified());
    const CalibrationEntries entries = calibrationEntries(log);
    auto* const form = new QFormLayout(this);
    auto* const hint = new QLabel(loadText(session_, Text::CalibrationHint));
    hint->setWordWrap(true);
    form->addRow(hint);
    const auto add = [&](Text::Id text, const char* name, const std::string& entry) {
        auto* const box = new QLineEdit(shown(entry));
        nameControl(*box, name, loadPlainText(session_, text));
        form->addRow(labelOf(session_, text, *box), box);
        connect(box, &QLineEdit::textChanged, this, [this] { showDrift(); });
        return box;
    };
    before_ = add(Text::CalibrationBefore, "txtBefore", entries.Before);
    after_ = add(Text::CalibrationAfter, "txtAfter", entries.After);
    offset_ = add(Text::CalibrationOffset, "txtOffset", entries.Offset);
    drift_ = new QLabel;
    drift_->setObjectName("lblDrift"); // without an accessible name, so that its text is read out
    drift_->setWordWrap(true);
    drift_->setMinimumHeight(kDriftLines * fontMetrics().lineSpacing()); // so that the dialog keeps its size
    form->addRow(drift_);
    QDialogButtonBox* const buttons = okAndCancel(session_);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
    showDrift();
    before_->selectAll();
}

CalibrationEntries frmCalibration::entries() const {
    return {before_->text().toStdString(), after_->text().toStdString(), offset_->text().toStdString()};
}

void frmCalibration::showDrift() {
    const std::optional<Calibration> typed = typedCalibration(entries(), session_.locale);
    drift_->setText(shown(typed ? driftText(session_, *typed) : std::string()));
}

void frmCalibration::accept() {
    const std::optional<Calibration> typed = typedCalibration(entries(), session_.locale);
    if (!typed) {
        session_.ShowMessage(session_.LoadText(Text::CalibrationFaulty), kIconExclamation,
                             session_.LoadText(Text::Error));
        return;
    }
    typed_ = *typed;
    QDialog::accept();
}

std::optional<Calibration> frmCalibration::Ask(const clsLog& log, QWidget* parent) {
    frmCalibration dialog(log, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.typed_) : std::nullopt;
}

} // namespace kestrane

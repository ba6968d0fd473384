#include "dialogs/HPDProgressDialog.h"

#include "dialogs/Words.h"

#include <QProgressDialog>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kSteps = 1000;

} // namespace

HPDProgressDialog::HPDProgressDialog(const Session& session, QWidget* parent) : session_(session), parent_(parent) {}

HPDProgressDialog::~HPDProgressDialog() = default;

void HPDProgressDialog::Show(std::int64_t received, std::int64_t total) {
    if (dialog_ == nullptr) {
        const QString label = loadText(session_, Text::DownloadingInProgress);
        dialog_ = std::make_unique<QProgressDialog>(label, loadText(session_, Text::Cancel), 0, kSteps, parent_);
        nameControl(*dialog_, "frmHPDProgress", label);
        dialog_->setWindowTitle(shown(std::string(kApplicationTitle)));
        dialog_->setWindowModality(Qt::ApplicationModal);
        dialog_->setAutoReset(false);
        dialog_->setAutoClose(false);
        dialog_->setMinimumDuration(0);
        dialog_->show();
    }
    dialog_->setMaximum(total > 0 ? kSteps : 0); // without a maximum it shows only that something is going on
    if (total > 0) dialog_->setValue(static_cast<int>(std::min(received, total) * kSteps / total));
}

bool HPDProgressDialog::IsCancelled() {
    return dialog_ != nullptr && dialog_->wasCanceled();
}

void HPDProgressDialog::Close() {
    if (dialog_ != nullptr) dialog_->hide();
}

} // namespace kestrane

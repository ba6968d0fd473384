// Shows the progress of a download of the protector database, and lets the user cancel it.
#pragma once

#include "app/DownloadHPD.h"

#include <memory>

class QProgressDialog;
class QWidget;

namespace kestrane {

class HPDProgressDialog : public HPDProgress {
public:
    HPDProgressDialog(const Session& session, QWidget* parent);
    ~HPDProgressDialog() override;

    void Show(std::int64_t received, std::int64_t total) override;
    bool IsCancelled() override;
    void Close() override;

private:
    const Session& session_;
    QWidget* parent_;
    std::unique_ptr<QProgressDialog> dialog_; // created with the first progress
};

} // namespace kestrane

#include "dialogs/frmProgress.h"

#include "dialogs/Words.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrane {

namespace {

constexpr int kColumns = 56;

QLabel* plainLabel(const char* name) {
    auto* const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

frmProgress::frmProgress(const Session& session, QWidget* parent) :
    QDialog(parent),
    session_(session),
    lblProgress_(plainLabel("lblProgress")),
    barProgress_(new QProgressBar),
    lblLog_(plainLabel("lblLog")),
    lblReceived_(plainLabel("lblReceived")),
    lblTimeLeft_(plainLabel("lblTimeLeft")),
    chkTranscript_(checkBox(session, Text::KeepATranscript, "chkTranscript", false)),
    cmdCancel_(pushButton(session, Text::Cancel, "cmdCancel", loadPlainText(session, Text::Cancel))) {
    setObjectName("frmProgress");
    setWindowTitle(loadText(session, Text::Downloading));
    setWindowModality(Qt::ApplicationModal);
    nameControl(*barProgress_, "barProgress", windowTitle());
    barProgress_->setTextVisible(false);
    lblProgress_->setWordWrap(true);
    lblProgress_->setMinimumWidth(fontMetrics().averageCharWidth() * kColumns);
    chkTranscript_->hide();
    connect(cmdCancel_, &QPushButton::clicked, this, &frmProgress::reject);

    auto* const figures = new QGridLayout;
    figures->addWidget(lblLog_, 0, 0);
    figures->addWidget(lblReceived_, 0, 1, Qt::AlignRight);
    figures->addWidget(lblTimeLeft_, 1, 0, 1, 2);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(chkTranscript_);
    buttons->addStretch(1);
    buttons->addWidget(cmdCancel_);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblProgress_);
    layout->addWidget(barProgress_);
    layout->addLayout(figures);
    layout->addStretch(1);
    layout->addLayout(buttons);
}

void frmProgress::Show(const ProgressWords& words) {
    lblProgress_->setText(shown(words.Label));
    lblLog_->setText(shown(words.Log));
    lblReceived_->setText(shown(words.Received));
    lblTimeLeft_->setText(shown(words.TimeLeft));
    barProgress_->setRange(0, words.Percent ? 100 : 0); // without a range it shows only that something is going on
    barProgress_->setValue(words.Percent.value_or(0));
    if (!isVisible()) show();
}

bool frmProgress::AskTranscript() {
    hasEnded_ = true;
    lblProgress_->setText(loadText(session_, Text::DownloadHasFailed));
    lblTimeLeft_->clear();
    barProgress_->hide();
    chkTranscript_->show();
    cmdCancel_->setText(loadText(session_, Text::CloseButton));
    cmdCancel_->setAccessibleName(loadPlainText(session_, Text::CloseButton));
    cmdCancel_->setDefault(true);
    exec();
    return chkTranscript_->isChecked();
}

void frmProgress::reject() {
    if (hasEnded_) return QDialog::reject();
    isCancelled_ = true;
    cmdCancel_->setEnabled(false);
}

} // namespace kestrane

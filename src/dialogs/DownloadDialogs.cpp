#include "dialogs/DownloadDialogs.h"

#include "dialogs/Words.h"
#include "dialogs/frmAcquire.h"
#include "dialogs/frmProgress.h"
#include "platform/AtomicFile.h"
#include "platform/RuntimeError.h"

#include <QFileDialog>

namespace kestrane {

namespace {

constexpr std::size_t kLargestTranscript = 64U << 20; // bytes; more than the memory of any instrument gives

} // namespace

DownloadDialogs::DownloadDialogs(Session& session, const MonotonicClock& clock, QWidget* parent) :
    session_(session),
    parent_(parent),
    report_(session, clock),
    progress_(std::make_unique<frmProgress>(session, parent)) {}

DownloadDialogs::~DownloadDialogs() = default;

void DownloadDialogs::ShowProgress(const DownloadProgress& progress) {
    progress_->Show(report_.WordsOf(progress));
}

void DownloadDialogs::CloseProgress() {
    progress_->hide();
}

std::optional<AcquireChoice> DownloadDialogs::ChooseLogs(const AcquireList& list) {
    progress_->hide(); // the next label shows it again
    std::optional<AcquireChoice> choice = frmAcquire::ChooseLogs(session_, list, parent_);
    isCancelled_ = !choice;
    return choice;
}

bool DownloadDialogs::IsCancelled() const {
    return isCancelled_ || progress_->IsCancelled();
}

TranscriptSink DownloadDialogs::Transcript() {
    return [this](std::string_view line) {
        hasTraffic_ = hasTraffic_ || line.starts_with('+');
        if (transcript_.size() < kLargestTranscript) transcript_ += line;
    };
}

void DownloadDialogs::OfferTranscript() {
    if (!IsCancelled() && hasTraffic_ && progress_->AskTranscript()) saveTranscript();
}

void DownloadDialogs::saveTranscript() {
    QFileDialog dialog(parent_, loadText(session_, Text::SaveTranscript), shown(session_.Options.DefaultDataDirectory),
                       fileFilter(session_.LoadText(Text::TranscriptFilter)));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("txt");
    dialog.selectFile("transcript.txt");
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
    try {
        writeFileAtomically(dialog.selectedFiles().front().toStdString(),
                            [this](const FileSink& sink) { sink(transcript_); });
    } catch (const RuntimeError& error) {
        session_.ShowMessage(ReplaceText(session_.LoadText(Text::TranscriptNotSaved), "^", error.what()),
                             kIconExclamation);
    }
}

} // namespace kestrane

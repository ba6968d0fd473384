#include "dialogs/frmSimpleEdit.h"

#include "dialogs/Words.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kestrane {

namespace {

constexpr int kLines = 6;
constexpr int kColumns = 56;

} // namespace

std::optional<std::string> frmSimpleEdit::EditNote(const Session& session, const std::string& note, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName("frmSimpleEdit");
    dialog.setWindowTitle(loadText(session, Text::ChartNote));
    auto* const edit = new QPlainTextEdit(shown(note));
    nameControl(*edit, "txtEdit", dialog.windowTitle());
    edit->setTabChangesFocus(true);
    edit->moveCursor(QTextCursor::End);
    const QFontMetrics metrics = edit->fontMetrics();
    edit->setMinimumSize(metrics.averageCharWidth() * kColumns, metrics.lineSpacing() * kLines);
    QDialogButtonBox* const buttons = okAndCancel(session);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* const layout = new QVBoxLayout(&dialog);
    layout->addWidget(edit);
    layout->addWidget(buttons);
    edit->setFocus();
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return edit->toPlainText().toStdString();
}

} // namespace kestrane

#include "dialogs/AskDialogs.h"

#include "dialogs/Words.h"
#include "platform/Files.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace kestrane {

namespace {

// Runs the dialog. Returns the text entered or chosen; nothing when the user cancelled.
std::optional<std::string> run(const Session& session, QInputDialog& dialog, const std::string& prompt) {
    dialog.setWindowTitle(shown(std::string(kApplicationTitle)));
    dialog.setLabelText(shown(prompt));
    dialog.setOkButtonText(loadText(session, Text::Ok));
    dialog.setCancelButtonText(loadText(session, Text::Cancel));
    dialog.sizeHint(); // creates the controls
    const QString spoken = dialog.labelText();
    if (auto* const line = dialog.findChild<QLineEdit*>(); line != nullptr) nameControl(*line, "txtAnswer", spoken);
    if (auto* const list = dialog.findChild<QComboBox*>(); list != nullptr) nameControl(*list, "cboAnswer", spoken);
    for (QAbstractButton* button : dialog.findChild<QDialogButtonBox*>()->buttons()) {
        button->setIcon({});
        nameControl(*button, button->text() == dialog.okButtonText() ? "cmdOK" : "cmdCancel", button->text());
    }
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue().toStdString();
}

} // namespace

AskText textDialog(const Session& session, QWidget* parent) {
    return [&session, parent](const std::string& prompt, const std::string& proposal) {
        QInputDialog dialog(parent);
        dialog.setTextValue(QString::fromStdString(proposal));
        return run(session, dialog, prompt);
    };
}

AskChoice choiceDialog(const Session& session, QWidget* parent) {
    return [&session, parent](const std::string& prompt, const std::vector<std::string>& choices,
                              const std::string& proposal) {
        QInputDialog dialog(parent);
        QStringList texts;
        for (const std::string& choice : choices)
            texts.push_back(shown(choice));
        dialog.setComboBoxItems(texts);
        dialog.setTextValue(shown(proposal));
        return run(session, dialog, prompt);
    };
}

std::size_t chooseAnswer(const Session& session, const std::string& question, const std::vector<std::string>& captions,
                         QWidget* parent) {
    QMessageBox box(QMessageBox::Question, shown(std::string(kApplicationTitle)), shown(question), {}, parent);
    box.setTextFormat(Qt::PlainText);
    std::vector<QAbstractButton*> answers;
    for (const std::string& caption : captions) {
        QPushButton* const button = box.addButton(shown(caption), QMessageBox::ActionRole);
        answers.push_back(button);
        const std::string name = "cmdAnswer" + std::to_string(answers.size());
        nameControl(*button, name.c_str(), shown(PlainCaption(caption)));
    }
    box.setDefaultButton(box.findChild<QPushButton*>("cmdAnswer1"));
    QPushButton* const cancel = box.addButton(loadText(session, Text::Cancel), QMessageBox::RejectRole);
    nameControl(*cancel, "cmdCancel", loadPlainText(session, Text::Cancel));
    box.setEscapeButton(cancel);
    box.exec();
    return static_cast<std::size_t>(std::ranges::find(answers, box.clickedButton()) - answers.begin());
}

std::optional<std::string> askSaveName(Session& session, QWidget* parent, const SaveQuestion& asked) {
    QString name = asked.Proposal;
    while (true) {
        QFileDialog dialog(parent, asked.Title, name, asked.Filter);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setDefaultSuffix(asked.Ending);
        dialog.setOption(QFileDialog::DontConfirmOverwrite); // it does not know of the ending
        dialog.selectFile(name);
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
        name = dialog.selectedFiles().front();
        if (!name.endsWith('.' + asked.Ending, Qt::CaseInsensitive)) name += '.' + asked.Ending;
        const std::string path = name.toStdString();
        const std::string question = ReplaceText(session.LoadText(Text::ExportAskReplace), "^", path);
        if (!fileExists(path) ||
            session.ShowMessage(question, kButtonsYesNo | kIconQuestion | kDefaultSecond) == Button::Yes)
            return path;
    }
}

} // namespace kestrane

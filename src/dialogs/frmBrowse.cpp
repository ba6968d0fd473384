#include "dialogs/frmBrowse.h"

#include "dialogs/Words.h"

#include <QFileDialog>
#include <QFileInfo>

namespace kestrane {

std::string frmBrowse::AskFolder(Session& session, QWidget* parent, const std::string& start) {
    const std::string folder =
        QFileDialog::getExistingDirectory(parent, loadText(session, 4001), QString::fromStdString(start)).toStdString();
    const QFileInfo info(QString::fromStdString(folder));
    if (folder.empty() || (info.isDir() && info.isReadable() && info.isExecutable())) return folder;
    session.ShowMessage(ReplaceText(session.LoadText(4004), "^", folder), kIconExclamation, session.LoadText(9100));
    return {};
}

} // namespace kestrane

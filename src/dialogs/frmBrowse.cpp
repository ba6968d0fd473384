#include "dialogs/frmBrowse.h"

#include "dialogs/Words.h"

#include <QFileDialog>
#include <QFileInfo>

namespace kestrane {

std::string frmBrowse::AskFolder(Session& session, QWidget* parent, const std::string& start) {
    std::string folder = QFileDialog::getExistingDirectory(parent, loadText(session, Text::BrowseForFolder),
                                                           QString::fromStdString(start))
                             .toStdString();
    const QFileInfo info(QString::fromStdString(folder));
    if (folder.empty() || (info.isDir() && info.isReadable() && info.isExecutable())) return folder;
    session.ShowMessage(ReplaceText(session.LoadText(Text::FolderCannotBeOpened), "^", folder), kIconExclamation,
                        session.LoadText(Text::Error));
    return {};
}

} // namespace kestrane

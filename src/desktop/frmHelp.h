// The window of the help: a page, the list of all pages, and the search over them. It stays open beside the others.
#pragma once

#include "app/HelpSearch.h"

#include <QDialog>
#include <QPointer>

class QLineEdit;
class QListWidget;
class QTextBrowser;

namespace kestrane {

class frmHelp : public QDialog {
public:
    // folder has the pages, with "/" at its end.
    frmHelp(const Session& session, const std::string& folder, QWidget* parent);

    // Shows a page of the folder by its path.
    void ShowPage(const std::string& path);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* search();
    QWidget* page();
    void list();              // all pages or, when something is looked for, those that have it
    void openListed(int row); // and marks what was looked for
    void markFound(const QString& sentence);

    const Session& session_;
    std::vector<HelpPage> pages_;
    std::vector<HelpMatch> matches_; // of the rows of the list
    QLineEdit* txtSearch_;
    QListWidget* lstPages_;
    QTextBrowser* browser_;
    QPointer<QWidget> before_; // the window that was active when the help was opened, and is so again behind it
};

} // namespace kestrane

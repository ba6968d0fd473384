// What an explorer window shows while no file is open: the ways to get measurements, the samples, and the tour. It is
// one of the pages of the log view; the frame does what is asked for here.
#pragma once

#include "app/Menus.h"
#include "model/Session.h"
#include "resources/TextNames.h"

#include <QScrollArea>

class QGridLayout;

namespace kestrane {

class StartPage : public QScrollArea {
    Q_OBJECT

public:
    explicit StartPage(const Session& session);

    void ShowFiles(); // the present recent files, and the samples

signals:
    void CommandAsked(kestrane::Command command);
    void RecentAsked(const QString& path);
    void SampleAsked(const QString& path);

private:
    using FileAsked = void (StartPage::*)(const QString&);

    QWidget* commands();
    void fillList(QGridLayout& list, Text::Id heading, const char* name, const std::vector<std::string>& paths,
                  FileAsked asked);

    const Session& session_;
    QGridLayout *recent_, *samples_;
};

} // namespace kestrane

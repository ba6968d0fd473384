#include "cli/ChartPicture.h"

#include "charts/chaTab.h"

#include <QApplication>

namespace kestrane {

namespace {

// The toolkit's remarks about a missing desktop are not messages of this program.
void keepQuiet(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

bool isPictureName(const std::string& path) {
    return chaTab::isPictureName(path);
}

void savePicture(const ChartData& chart, const Locale& locale, const std::string& path, PictureSize size) {
    qInstallMessageHandler(keepQuiet);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    std::string name = "kestrane-cli";
    char* words[] = {name.data(), nullptr};
    int count = 1;
    const QApplication application(count, words);
    chaTab tab(locale);
    tab.setChart(chart);
    tab.savePicture(path, QSize(size.Width, size.Height));
}

} // namespace kestrane

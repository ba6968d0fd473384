#include "Windows.h"

#include "Measure.h"
#include "TestLogs.h"
#include "app/StartUp.h"
#include "desktop/grdTable.h"
#include "desktop/mdiMain.h"
#include "desktop/tvwTreeView.h"

#include <QApplication>
#include <QScrollBar>
#include <QTabBar>

#include <algorithm>
#include <cstdlib>

namespace kestrane::bench {

namespace {

constexpr int kSteps = 50;

void goOffscreen() {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

void chooseFirstLog(const mdiMain& frame) {
    auto& tree = *frame.findChild<tvwTreeView*>();
    tree.setCurrentItem(tree.topLevelItem(0)->child(0)->child(0)->child(0));
    QApplication::processEvents();
}

} // namespace

double startSeconds(const std::string& file) {
    goOffscreen();
    BenchSession bench;
    return secondsOf([&] {
        int count = 0;
        const QApplication application(count, nullptr);
        mdiMain frame(bench.session);
        Main(bench.session, {file});
        bench.finishWork();
        frame.show();
        frame.NewExplorerWindow();
        chooseFirstLog(frame);
        if (frame.grab().isNull()) std::exit(1);
    });
}

double tabSeconds(std::size_t rows) {
    goOffscreen();
    BenchSession bench;
    int count = 0;
    const QApplication application(count, nullptr);
    addDocument(bench.session, "week.xml", modeFullOctave, rows);
    mdiMain frame(bench.session);
    frame.resize(1366, 768);
    frame.show();
    frame.NewExplorerWindow();
    chooseFirstLog(frame);
    auto& bar = *frame.findChild<QTabBar*>("tabLog");
    double slowest = 0;
    for (int tab = bar.count() - 1; tab >= 0; --tab) { // the first one is in front when the log is chosen
        if (!bar.isTabEnabled(tab)) continue;
        slowest = std::max(slowest, secondsOf([&] {
                               bar.setCurrentIndex(tab);
                               QApplication::processEvents();
                               if (frame.grab().isNull()) std::exit(1);
                           }));
    }
    return slowest;
}

double scrollSeconds(std::size_t rows) {
    goOffscreen();
    BenchSession bench;
    int count = 0;
    const QApplication application(count, nullptr);
    const clsFile& file = addDocument(bench.session, "long.xml", modeBroadband, rows);
    grdTable table(bench.session);
    table.resize(1000, 650);
    table.SetTable(IntervalTable(*file.InstrumentDatas.front()->Locations.front(), kChannelA, {}));
    table.show();
    QApplication::processEvents();
    double slowest = 0;
    for (int i = 1; i <= kSteps; ++i) {
        slowest = std::max(slowest, secondsOf([&] {
                               table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum() / kSteps * i);
                               table.viewport()->repaint();
                           }));
    }
    return slowest;
}

} // namespace kestrane::bench

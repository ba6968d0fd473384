#include "ReportPages.h"

#include "Measure.h"
#include "TestLogs.h"
#include "printing/PdfFile.h"
#include "reports/Report.h"

#include <QApplication>

namespace kestrane::bench {

double reportSeconds(std::size_t rows, const std::string& name) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 0;
    const QApplication application(count, nullptr);
    BenchSession bench;
    const clsFile& file = addDocument(bench.session, "long.xml", modeBroadband, rows);
    const clsInsData& data = *file.InstrumentDatas.front();
    return secondsOf([&] {
        const Paper paper(a4Paper(false));
        Report report({file, data, *data.Locations.front()}, ReportForm::CumulativeAndIntervals, paper);
        std::size_t asked = 0;
        writePdf(bench.session, report, paper, name, [&](std::size_t, std::size_t) { return ++asked > 0; });
        use(static_cast<double>(asked));
    });
}

} // namespace kestrane::bench

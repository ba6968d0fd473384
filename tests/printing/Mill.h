// A log of a day at a mill, its report, and the report as a PDF file.
#pragma once

#include "ShownLog.h"
#include "printing/PdfFile.h"
#include "reports/Report.h"

namespace kestrane {

struct Mill : ShownLog {
    clsFile file{session, "/data/mill.xml"};
    clsInsData data{session};

    explicit Mill(std::size_t rows = 200) {
        log.Name = "Mill \xC3\xA9tage 2";
        addRows(rows);
        for (std::size_t row = 0; row < rows; ++row)
            setLevel(Quantity::LeqA, 0, row, 70.5F);
        plot(kChannelA, kInterval, {eLeq});
        log.Note = "Worn on the shoulder";
        session.Options.CompanyName = "R\xC3\xB8yk & Sons";
    }

    std::unique_ptr<PagedDocument> report(const PageMetrics& paper) {
        return std::make_unique<Report>(ReportSubject{file, data, log}, ReportForm::Default, paper);
    }

    bool write(const std::string& path, bool isLandscape = false, const PageProgress& progress = {}) {
        const Paper paper(a4Paper(isLandscape));
        return writePdf(session, *report(paper), paper, path, progress);
    }
};

} // namespace kestrane

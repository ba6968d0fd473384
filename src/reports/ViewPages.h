// What a tab of the log view shows, as pages: its chart at the size of the page, or its figures in columns.
#pragma once

#include "model/clsFile.h"
#include "model/clsLog.h"
#include "model/clsOptions.h"
#include "protection/RankTable.h"
#include "reports/PagedDocument.h"
#include "views/CellTable.h"
#include "views/ChartOnPage.h"
#include "views/DisplayBy.h"
#include "views/LogTab.h"

#include <memory>

namespace kestrane {

// A tab (LogTab) of a log. metrics must outlive the pages.
struct PrintedView {
    const clsFile& file;
    const clsLog& log;
    LogTab tab;
    bool IsModified;
    const PageMetrics& metrics;
    bool IsPart = false;     // of a report
    std::string FileNames{}; // for the foot, of what comes of several files; empty for the name of the file
};

// The chart with a text below it, which may be empty. Without a title, the pages are called after log and tab.
std::unique_ptr<PagedDocument> chartPages(const PrintedView& view, ChartOnPage chart, const std::string& below,
                                          std::string title = {});

// The labels that a form of the panel (ePanelBothChannels and so on) shows for a band.
std::unique_ptr<PagedDocument> panelPages(const PrintedView& view, int band, PanelForm panel);

std::unique_ptr<PagedDocument> exposurePages(const PrintedView& view);

// A ranking of protectors on the log.
std::unique_ptr<PagedDocument> rankPages(const PrintedView& view, const RankTable& ranks);

// A table that a dialog shows, under a title, with a note above it, which may be empty.
std::unique_ptr<PagedDocument> cellPages(const PrintedView& view, const CellTable& table, std::string title,
                                         std::string note);

// The log under every exposure criterion.
std::unique_ptr<PagedDocument> criteriaPages(const PrintedView& view);

// What was changed in the document of the log.
std::unique_ptr<PagedDocument> historyPages(const PrintedView& view);

// The intervals table as it is shown for a channel and a choice of band or parameter.
std::unique_ptr<PagedDocument> tablePages(const PrintedView& view, LogChannel channel, const DisplayChoice& choice);

} // namespace kestrane

// The interval rows of one log in an XML data file: where the background loads them from. Keeps the document in memory
// until the last log that needs it has dropped its rows.
#pragma once

#include "files/XmlDocument.h"
#include "model/BackgroundWork.h"
#include "model/clsLogIntervals.h"
#include "platform/Locale.h"

#include <memory>
#include <vector>

namespace kestrane {

class XmlIntervals : public IntervalSource {
public:
    XmlIntervals(std::shared_ptr<XmlDocument> document, const IntervalsBlock& block, int mode, const Locale& locale);

    std::int64_t Count() const override { return block_.rows; }

    const std::vector<RowRange>& ranges() const { return ranges_; }

    // Reads one of ranges(); raises 9 for any other. Every figure goes in as Value and CalcValue; of elements that
    // stand twice in a row the first counts. Figures of channel B are read only when it is on. Raises 6 for a number
    // that does not fit its type, 7 for rows that take far more memory than text. The text of the range is given back
    // to the system, so each can be loaded once.
    IntervalColumns load(int mode, bool isChannelBOn, std::int64_t from, std::int64_t to) const override;

private:
    std::size_t beginOf(std::int64_t row) const;

    std::shared_ptr<XmlDocument> document_;
    const IntervalsBlock& block_; // of document_
    Locale locale_;
    std::vector<RowRange> ranges_;
    std::vector<std::size_t> begins_; // where each begins, and the last one ends; found before any text is given back
};

// How rows are cut into ranges for loading: each at least 30, 55 or 100 rows by mode, at most seven.
std::vector<RowRange> loadRanges(int mode, std::int64_t rows);

} // namespace kestrane

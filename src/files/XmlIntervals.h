// The interval rows of one log in an XML data file, from which background loading reads them. It keeps the document in
// memory until the last log that needs it has loaded its rows.
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
    XmlIntervals(std::shared_ptr<XmlDocument> document, const IntervalsBlock& block, LogMode mode,
                 const Locale& locale);

    std::int64_t Count() const override { return block_.rows; }

    const std::vector<RowRange>& ranges() const { return ranges_; }

    // Reads one of ranges(); raises 9 for any other range. Every figure is stored as Value and CalcValue; when an
    // element occurs twice in a row, the first one counts. Figures of channel B are read only when isChannelBOn. Raises
    // 6 for a number that does not fit its type, 7 for rows that take far more memory than their text. The memory of
    // the range's text is given back to the system, so each range can be loaded only once.
    IntervalColumns load(LogMode mode, bool isChannelBOn, std::int64_t from, std::int64_t to) const override;

private:
    std::size_t beginOf(std::int64_t row) const;

    std::shared_ptr<XmlDocument> document_;
    const IntervalsBlock& block_; // of document_
    Locale locale_;
    std::vector<RowRange> ranges_;
    // Where each range begins, and where the last one ends; found before any memory is given back.
    std::vector<std::size_t> begins_;
};

// Divides rows into ranges for loading: at most seven, each of at least 100, 55 or 30 rows (broadband, full octave,
// third octave), except that the last one may be shorter. No range for no rows.
std::vector<RowRange> loadRanges(LogMode mode, std::int64_t rows);

} // namespace kestrane

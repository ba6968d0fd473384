#include "files/XmlIntervals.h"

#include "files/XmlElements.h"
#include "files/XmlReader.h"
#include "files/XmlValues.h"
#include "model/clsDate.h"
#include "model/clsTime.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>

namespace kestrane {

namespace {

// Moves the cursor behind the element whose opening tag it has just passed.
void skipElement(XmlCursor& cursor) {
    if (cursor.tag().isEmpty) return;
    for (std::size_t depth = 1; depth > 0;) {
        const auto kind = cursor.next();
        if (kind == XmlCursor::Kind::Open && !cursor.tag().isEmpty) ++depth;
        if (kind == XmlCursor::Kind::Close) --depth;
    }
}

// Moves the cursor behind the opening tag of the next row; there must be one.
void nextRow(XmlCursor& cursor) {
    while (true) {
        if (cursor.next() != XmlCursor::Kind::Open) continue;
        if (cursor.tag().name == "intvl") return;
        skipElement(cursor);
    }
}

// Reads one range of rows into columns. The text has been checked before and is only split up here.
class RowReader {
public:
    // size is the number of bytes of the range's text.
    RowReader(const XmlDocument& document, const Locale& locale, std::size_t size, LogMode mode, bool isChannelBOn,
              IntervalColumns& rows) :
        document_(document),
        text_(document.text()),
        locale_(locale),
        isChannelBOn_(isChannelBOn),
        rows_(rows),
        paid_(size / 2) {
        for (int band = 0; band <= lastBand(mode); ++band)
            bandNames_[bandCount_++] = bandElement(mode, band);
    }

    void read(XmlCursor& cursor, std::size_t row) {
        row_ = row;
        forEachChild(cursor, [&](const XmlTag& tag) {
            if (tag.name == "ca") {
                channelA(cursor);
            } else if (tag.name == "cb" && isChannelBOn_) {
                channelB(cursor);
            } else if (tag.name == "date") {
                date(content(cursor));
            } else if (tag.name == "time") {
                time(rows_.StartTime, content(cursor));
            } else {
                skipElement(cursor);
            }
        });
        charge();
    }

private:
    // Charges the memory of the columns. The text gives its memory back once it has been read, and half of that is
    // taken as paid for the columns.
    void charge() {
        const std::size_t taken = rows_.touchedBytes();
        if (taken <= paid_) return;
        constexpr std::size_t kCopies = 2; // the range itself, and the log that takes it over
        document_.charge(kCopies * (taken - paid_));
        paid_ = taken;
    }

    // Calls visit(tag) for each child of the element whose opening tag the cursor has just passed. visit must move the
    // cursor behind the child.
    template <class Visit>
    void forEachChild(XmlCursor& cursor, Visit visit) {
        while (true) {
            switch (cursor.next()) {
            case XmlCursor::Kind::Open:
                if (!cursor.tag().isEmpty) visit(cursor.tag());
                break;
            case XmlCursor::Kind::Verbatim:
                break;
            default:
                return;
            }
        }
    }

    // The text of the element whose opening tag the cursor has just passed. Moves the cursor behind its closing tag.
    std::string_view content(XmlCursor& cursor) {
        const std::size_t begin = cursor.tag().end;
        auto kind = cursor.next();
        if (kind == XmlCursor::Kind::Close &&
            text_.substr(begin, cursor.tag().begin - begin).find('&') == std::string_view::npos) {
            return text_.substr(begin, cursor.tag().begin - begin);
        }
        for (std::size_t depth = 1; kind != XmlCursor::Kind::End; kind = cursor.next()) {
            if (kind == XmlCursor::Kind::Open && !cursor.tag().isEmpty) ++depth;
            if (kind == XmlCursor::Kind::Close && --depth == 0) break;
        }
        decoded_ = unescapeText(document_.serialised(begin, cursor.tag().begin));
        return decoded_;
    }

    void put(Quantity quantity, int band, std::string_view text) {
        const float value = readLevel(text, locale_);
        if (value == 0 || rows_.level(quantity, band, row_).Value != 0) return;
        rows_.setLevel(quantity, band, row_, {value, value});
    }

    template <class T>
    void set(Column<T>& column, T value) {
        rows_.set(column, row_, value);
    }

    // Reads a level by band; in the short form, only the overall figure.
    void bands(XmlCursor& cursor, Quantity quantity) {
        const std::size_t begin = cursor.tag().end;
        std::size_t expected = 0; // bands usually come in order
        bool hasChildren = false;
        forEachChild(cursor, [&](const XmlTag& tag) {
            hasChildren = true;
            std::size_t band = expected;
            while (band < bandCount_ && bandNames_[band] != tag.name)
                ++band;
            if (band == bandCount_)
                band = static_cast<std::size_t>(std::find(bandNames_.begin(),
                                                          bandNames_.begin() + static_cast<std::ptrdiff_t>(bandCount_),
                                                          tag.name) -
                                                bandNames_.begin());
            if (band == bandCount_) {
                skipElement(cursor);
                return;
            }
            expected = band + 1;
            put(quantity, static_cast<int>(band), content(cursor));
        });
        if (!hasChildren) {
            decoded_ = document_.serialised(begin, cursor.tag().begin);
            put(quantity, 0, decoded_);
        }
    }

    void channelA(XmlCursor& cursor) {
        forEachChild(cursor, [&](const XmlTag& tag) {
            const std::string_view name = tag.name;
            for (const BandedElement& e : kBanded) {
                if (e.name == name) return bands(cursor, e.rows);
            }
            if (name == "peak") return put(Quantity::PeakA, 0, content(cursor));
            if (name == "lmintm") return time(rows_.LminTimeA, content(cursor));
            if (name == "lmaxtm") return time(rows_.LmaxTimeA, content(cursor));
            if (name == "peaktm") return time(rows_.PeakTimeA, content(cursor));
            if (name == "ol") return overload(rows_.OverloadedA, content(cursor));
            for (const RowElement& e : kRowFiguresA) {
                if (e.name == name) return put(e.quantity, 0, content(cursor));
            }
            if (name.starts_with("ln")) {
                for (int ln = 1; ln <= NumberOfLns; ++ln) {
                    if (kLnNames[static_cast<std::size_t>(ln) - 1] == name) return bands(cursor, lnQuantity(ln));
                }
            }
            skipElement(cursor);
        });
    }

    void channelB(XmlCursor& cursor) {
        forEachChild(cursor, [&](const XmlTag& tag) {
            if (tag.name == "ol") return overload(rows_.OverloadedB, content(cursor));
            for (const RowElement& e : kRowFiguresB) {
                if (e.name == tag.name) return put(e.quantity, 0, content(cursor));
            }
            skipElement(cursor);
        });
    }

    void overload(Column<std::uint8_t>& column, std::string_view text) {
        if (readFlag(text, locale_)) set(column, std::uint8_t{1});
    }

    // The date of a row is usually the same as that of the row before.
    void date(std::string_view text) {
        if (text != lastDateText_) {
            clsDate value;
            value.setDate(text, locale_);
            lastDate_ = value.getDate();
            lastDateText_ = text;
        }
        set(rows_.StartDate, lastDate_);
    }

    void time(Column<std::int32_t>& column, std::string_view text) {
        const auto digit = [&](std::size_t i) { return text[i] >= '0' && text[i] <= '9' ? text[i] - '0' : -100; };
        if (text.size() == 8 && text[2] == ':' && text[5] == ':') {
            const int hours = digit(0) * 10 + digit(1);
            const int mins = digit(3) * 10 + digit(4);
            const int secs = digit(6) * 10 + digit(7);
            if (hours >= 0 && mins >= 0 && secs >= 0) {
                set(column, hours * 3600 + mins * 60 + secs);
                return;
            }
        }
        clsTime value;
        try {
            value.setTime(text, locale_);
        } catch (const RuntimeError& error) {
            if (error.Number != kErrorTypeMismatch) throw; // a time without seconds keeps its hours and minutes
        }
        set(column, value.getTimeAsSeconds());
    }

    const XmlDocument& document_;
    std::string_view text_;
    const Locale& locale_;
    bool isChannelBOn_;
    IntervalColumns& rows_;
    std::size_t paid_; // bytes of the columns that have been charged or paid for
    std::array<std::string_view, kBandCount> bandNames_;
    std::size_t bandCount_ = 0;
    std::size_t row_ = 0;
    std::string decoded_;
    std::string lastDateText_;
    CalendarTime lastDate_ = 0;
};

} // namespace

XmlIntervals::XmlIntervals(std::shared_ptr<XmlDocument> document, const IntervalsBlock& block, LogMode mode,
                           const Locale& locale) :
    document_(std::move(document)), block_(block), locale_(locale), ranges_(loadRanges(mode, block.rows)) {
    for (const RowRange& range : ranges_)
        begins_.push_back(beginOf(range.From));
    begins_.push_back(block_.element.contentEnd);
    for (std::size_t n = 0; n < ranges_.size(); ++n)
        document_->hold(begins_[n], begins_[n + 1]);
}

std::size_t XmlIntervals::beginOf(std::int64_t row) const {
    const auto landmark = std::ranges::upper_bound(block_.landmarks, row, {}, &Landmark::row) - 1;
    XmlCursor cursor(document_->text(), landmark->begin, block_.element.contentEnd);
    for (std::int64_t at = landmark->row;; ++at) {
        nextRow(cursor);
        if (at == row) return cursor.tag().begin;
        skipElement(cursor);
    }
}

IntervalColumns XmlIntervals::load(LogMode mode, bool isChannelBOn, std::int64_t from, std::int64_t to) const {
    const auto range =
        std::find_if(ranges_.begin(), ranges_.end(), [&](const RowRange& r) { return r.From == from && r.To == to; });
    if (range == ranges_.end()) raiseIndexOutOfRange();
    const auto at = static_cast<std::size_t>(range - ranges_.begin());
    const std::size_t begin = begins_[at];
    document_->charge(0); // once a document has been refused, no further range is begun
    IntervalColumns rows;
    const auto count = static_cast<std::size_t>(to - from + 1);
    rows.resize(count, count);
    RowReader reader(*document_, locale_, begins_[at + 1] - begin, mode, isChannelBOn, rows);
    XmlCursor cursor(document_->text(), begin, block_.element.contentEnd);
    for (std::size_t row = 0; row < count; ++row) {
        nextRow(cursor);
        if (!cursor.tag().isEmpty) reader.read(cursor, row);
    }
    document_->release(begin, begins_[at + 1]);
    return rows;
}

std::vector<RowRange> loadRanges(LogMode mode, std::int64_t rows) {
    constexpr std::int64_t kLeast[] = {100, 55, 30};
    constexpr std::size_t kMost = 7;
    const std::int64_t size = std::max<std::int64_t>(kLeast[mode], roundToLong(static_cast<double>(rows) / 7));
    std::vector<RowRange> ranges;
    for (std::int64_t from = 1; from <= rows; from += size) {
        const bool isLast = ranges.size() + 1 == kMost;
        ranges.push_back({from, isLast ? rows : std::min(from + size - 1, rows)});
        if (isLast) break;
    }
    return ranges;
}

} // namespace kestrane

// A document laid out in pages. Each page can be drawn on its own and in any order: a printer takes all of them, a
// preview the one that is visible. It holds copies, so it does not change when the log does.
#pragma once

#include "reports/PageDevice.h"

#include <cstddef>
#include <functional>
#include <string>

namespace kestrane {

class PagedDocument {
public:
    virtual ~PagedDocument() = default;

    virtual const std::string& Title() const = 0;

    // The code of the language of its words; empty: that of the program.
    virtual std::string Language() const { return {}; }

    virtual std::size_t pageCount() const = 0;                       // at least 1
    virtual void drawPage(PageDevice& device, std::size_t page) = 0; // counted from 0

    // Makes the numbers of its pages those of a longer document, in which so many pages precede them.
    void placeWithin(std::size_t before, std::size_t all) {
        before_ = before;
        all_ = all;
    }

protected:
    std::size_t numberOf(std::size_t page) const { return before_ + page; } // from 0

    std::size_t lastNumber() const { return all_ == 0 ? pageCount() : all_; }

private:
    std::size_t before_ = 0, all_ = 0;
};

// Called with the number of pages drawn, before each page and at the end. Returns false when no more pages are wanted.
using PageProgress = std::function<bool(std::size_t drawn, std::size_t pages)>;

// Draws all pages. Returns false when progress ended it.
bool drawPages(PagedDocument& document, PageDevice& device, const PageProgress& progress);

} // namespace kestrane

// A document laid out in pages, each of which can be drawn by itself and in any order: a printer takes all of them, a
// preview the one in view. It holds copies, so it stays as it is when the log changes.
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
    virtual std::size_t pageCount() const = 0;                       // at least 1
    virtual void drawPage(PageDevice& device, std::size_t page) = 0; // from 0
};

// Told how many pages are drawn, before each and at the end. False: no more are wanted.
using PageProgress = std::function<bool(std::size_t drawn, std::size_t pages)>;

// False when the progress put an end to it.
bool drawPages(PagedDocument& document, PageDevice& device, const PageProgress& progress);

} // namespace kestrane

#include "reports/PagedDocument.h"

namespace kestrane {

bool drawPages(PagedDocument& document, PageDevice& device, const PageProgress& progress) {
    const std::size_t pages = document.pageCount();
    for (std::size_t page = 0; page < pages; ++page) {
        if (progress && !progress(page, pages)) return false;
        if (page > 0) device.newPage();
        document.drawPage(device, page);
    }
    return !progress || progress(pages, pages);
}

} // namespace kestrane

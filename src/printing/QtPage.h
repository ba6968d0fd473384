// Draws pages on whatever the toolkit can paint on: a printer, a PDF file, the screen.
#pragma once

#include "platform/Locale.h"
#include "printing/Paper.h"
#include "reports/PageDevice.h"

#include <functional>

class QPainter;

namespace kestrane {

class QtPage : public PageDevice {
public:
    // scale is the number of the painter's dots for one of the paper's. next starts another sheet.
    QtPage(const Paper& paper, Locale locale, QPainter& painter, double scale, std::function<void()> next = {});
    ~QtPage() override;
    QtPage(const QtPage&) = delete;
    QtPage& operator=(const QtPage&) = delete;

    void newPage() override;
    void text(double x, double top, std::string_view text, const PageFont& font, PageAlign align) override;
    void rule(double left, double top, double width) override;
    double picture(const std::string& path, const PageBox& box) override;
    double brandPicture(const PageBox& box) override;
    void chart(const ChartOnPage& chart, const PageBox& box) override;

private:
    const Paper& paper_;
    const Locale locale_;
    QPainter& painter_;
    std::function<void()> next_;
};

} // namespace kestrane

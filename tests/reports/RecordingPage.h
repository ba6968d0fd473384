// A page that keeps what is drawn on it. Every character of a text is 0.1 cm wide (0.2 in titles), a line 0.3 cm high.
#pragma once

#include "reports/PagedDocument.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace kestrane {

struct RecordedMetrics : PageMetrics {
    explicit RecordedMetrics(bool isLandscape = false) : landscape(isLandscape) {}

    bool landscape;
    double logoWidth = 6;

    double width() const override { return landscape ? 29.7 : 21; }

    double height() const override { return landscape ? 21 : 29.7; }

    double textWidth(std::string_view text, const PageFont& font) const override {
        const auto isHead = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
        return static_cast<double>(std::count_if(text.begin(), text.end(), isHead)) * font.Points / 70;
    }

    double lineHeight(const PageFont& font) const override { return 0.3 * font.Points / 7; }

    double pictureWidth(const std::string&, const PageBox&) const override { return logoWidth; }

    // What is around a plot takes 2 cm and the legend, of four entries a line.
    double plotHeight(const ChartOnPage& chart, double, double height) const override {
        return height - 2 - 0.3 * static_cast<double>((chart.Data->Series.size() + 3) / 4);
    }

    // There is room for three lines of a note.
    bool cutsNote(const ChartOnPage& chart, double, double) const override {
        return chart.HasFootnote && std::ranges::count(chart.Data->Footnote, '\n') >= 3;
    }
};

struct DrawnText {
    std::size_t page;
    PageBox box;
    std::string text;
    PageFont font;
};

struct DrawnBox {
    std::size_t page;
    PageBox box;
};

class RecordingPage : public PageDevice {
public:
    explicit RecordingPage(const PageMetrics& metrics) : metrics_(metrics) {}

    std::vector<DrawnText> texts;
    std::vector<DrawnBox> charts, pictures;
    std::vector<ChartOnPage> drawnCharts;
    std::vector<std::string> asked; // paths of pictures
    double pictureWidth = 0;        // of any file's picture; 0: no file has one
    std::size_t pages = 1;

    void newPage() override { ++pages; }

    void text(double x, double top, std::string_view text, const PageFont& font, PageAlign align) override {
        const double width = metrics_.textWidth(text, font);
        texts.push_back({pages - 1,
                         {align == PageAlign::Right ? x - width : x, top, width, metrics_.lineHeight(font)},
                         std::string(text),
                         font});
    }

    void rule(double, double, double) override {}

    double picture(const std::string& path, const PageBox& box) override {
        asked.push_back(path);
        if (pictureWidth > 0) pictures.push_back({pages - 1, {box.Left, box.Top, pictureWidth, box.Height}});
        return pictureWidth;
    }

    double brandPicture(const PageBox& box) override {
        pictures.push_back({pages - 1, {box.Left, box.Top, box.Height, box.Height}});
        return box.Height;
    }

    void chart(const ChartOnPage& chart, const PageBox& box) override {
        drawnCharts.push_back(chart);
        charts.push_back({pages - 1, box});
    }

    // The texts of a page, those of a line in one, from left to right with "|" between them.
    std::vector<std::string> lines(std::size_t page) const {
        std::map<long, std::map<double, std::string>> rows;
        for (const DrawnText& drawn : texts) {
            if (drawn.page == page) rows[std::lround(drawn.box.Top * 100)][drawn.box.Left] = drawn.text;
        }
        std::vector<std::string> lines;
        for (const auto& [top, cells] : rows) {
            std::string line;
            for (const auto& [left, text] : cells)
                line += (line.empty() ? "" : "|") + text;
            lines.push_back(line);
        }
        return lines;
    }

    const DrawnText* find(const std::string& text) const {
        const auto found =
            std::find_if(texts.begin(), texts.end(), [&](const DrawnText& drawn) { return drawn.text == text; });
        return found == texts.end() ? nullptr : &*found;
    }

    // What runs out of the margins, or over something else, by its text; empty when all is well.
    std::string faults() const;

private:
    const PageMetrics& metrics_;
};

inline std::string RecordingPage::faults() const {
    constexpr double kMargin = 1.5;
    constexpr double kLeast = 0.01;
    std::vector<DrawnText> all = texts;
    for (const DrawnBox& chart : charts)
        all.push_back({chart.page, chart.box, "chart", {}});
    for (const DrawnBox& picture : pictures)
        all.push_back({picture.page, picture.box, "logo", {}});
    std::string faults;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const PageBox& a = all[i].box;
        if (a.Left < kMargin - kLeast || a.Left + a.Width > metrics_.width() - kMargin + kLeast ||
            a.Top < kMargin - kLeast || a.Top + a.Height > metrics_.height() - kMargin + kLeast)
            faults += "outside: " + all[i].text + "\n";
        for (std::size_t j = 0; j < i; ++j) {
            const PageBox& b = all[j].box;
            const bool isApart = all[i].page != all[j].page || a.Left + a.Width <= b.Left + kLeast ||
                                 b.Left + b.Width <= a.Left + kLeast || a.Top + a.Height <= b.Top + kLeast ||
                                 b.Top + b.Height <= a.Top + kLeast;
            if (!isApart) faults += all[i].text + " over " + all[j].text + "\n";
        }
    }
    return faults;
}

inline RecordingPage recorded(PagedDocument& document, const PageMetrics& metrics) {
    RecordingPage page(metrics);
    drawPages(document, page, {});
    return page;
}

} // namespace kestrane

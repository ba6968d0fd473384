// A sheet of paper for the toolkit: its size; texts, each shaped once, because a report repeats the same figures; and
// logos, each read once. Positions are in units of kPaperDots to the inch on every device; the painter is scaled to
// them.
#pragma once

#include "printing/Logo.h"
#include "reports/PageDevice.h"

#include <QGlyphRun>
#include <QPageLayout>

#include <map>
#include <string>
#include <unordered_map>

namespace kestrane {

constexpr double kPaperDots = 1200; // per inch
constexpr double kCentimetre = kPaperDots / 2.54;

// A4 without margins: pages keep margins of their own.
QPageLayout a4Paper(bool isLandscape);

struct ShapedText {
    QList<QGlyphRun> Runs; // the top of each is at 0
    double Width = 0;      // dots
};

class Paper : public PageMetrics {
public:
    explicit Paper(const QPageLayout& layout) : layout_(layout) {}

    const QPageLayout& layout() const { return layout_; }

    double width() const override { return layout_.fullRect(QPageLayout::Millimeter).width() / 10; }

    double height() const override { return layout_.fullRect(QPageLayout::Millimeter).height() / 10; }

    double textWidth(std::string_view text, const PageFont& font) const override;
    double lineHeight(const PageFont& font) const override;
    double pictureWidth(const std::string& path, const PageBox& box) const override;
    double plotHeight(const ChartOnPage& chart, double width, double height) const override;
    bool cutsNote(const ChartOnPage& chart, double width, double height) const override;

    const ShapedText& shaped(std::string_view text, const PageFont& font) const; // valid until the next call
    const Logo& picture(const std::string& path) const; // an empty path stands for the picture of the brand

private:
    QPageLayout layout_;
    mutable std::unordered_map<std::string, ShapedText> texts_;
    mutable std::map<std::string, Logo> pictures_;
};

} // namespace kestrane

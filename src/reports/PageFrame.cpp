#include "reports/PageFrame.h"

#include "reports/PageText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr double kMargin = 1.5;
constexpr double kLogoWidth = 6;
constexpr double kLogoHeight = 2;
constexpr double kBelowHead = 1;
constexpr double kBelowHeadInLandscape = 0.5;
constexpr double kBesideLogo = 0.4;
constexpr double kAboveFoot = 0.3;
constexpr double kLeastPoints = 9; // of a title that has to be made smaller

// The largest font, up to that of titles, in which the text is not wider than width.
PageFont titleFontFor(const PageMetrics& metrics, const std::string& text, double width) {
    PageFont font = kTitleFont;
    while (font.Points > kLeastPoints && metrics.textWidth(text, font) > width)
        font.Points -= 1;
    return font;
}

} // namespace

PageFrame::PageFrame(const Session& session, const PageHeading& heading, const PageMetrics& metrics) :
    logo_(session.Options.CompanyLogoFile),
    program_(session.LoadText(7120)),
    file_(printableText(heading.FileName)),
    pageOfPages_(session.LoadText(7121)),
    metrics_(metrics) {
    if (!session.Options.CompanyName.empty()) lines_.push_back(printableText(session.Options.CompanyName));
    lines_.push_back(printableText(heading.Title));
    if (heading.IsModified) lines_.push_back(session.LoadText(5067));
    const double gap = metrics.isLandscape() ? kBelowHeadInLandscape : kBelowHead;
    const double head = std::max(kLogoHeight, static_cast<double>(lines_.size()) * metrics.lineHeight(kTitleFont));
    body_ = wholePage();
    body_.Top = kMargin + head + gap;
}

PageArea PageFrame::wholePage() const {
    const double foot = metrics_.height() - kMargin - metrics_.lineHeight(kBodyFont);
    return {kMargin, kMargin, metrics_.width() - kMargin, foot - kAboveFoot};
}

// Lines are centred on the page unless they would reach into the logo: then as far left as they may.
void PageFrame::drawHead(PageDevice& device) {
    const PageBox box{kMargin, kMargin, kLogoWidth, kLogoHeight};
    double logoWidth = logo_.empty() ? 0 : device.picture(logo_, box);
    if (logoWidth == 0) {
        logo_.clear(); // is not tried again
        logoWidth = device.brandPicture(box);
    }
    const double left = kMargin + logoWidth + kBesideLogo;
    const double room = body_.Right - left;
    double top = kMargin;
    for (const std::string& line : lines_) {
        const PageFont font = titleFontFor(metrics_, line, room);
        const std::string text = fittedText(metrics_, line, room, font);
        const double centred = (metrics_.width() - metrics_.textWidth(text, font)) / 2;
        const double lowered = (metrics_.lineHeight(kTitleFont) - metrics_.lineHeight(font)) / 2;
        device.text(std::max(left, std::min(centred, body_.Right - metrics_.textWidth(text, font))), top + lowered,
                    text, font);
        top += metrics_.lineHeight(kTitleFont);
    }
}

void PageFrame::drawFoot(PageDevice& device, std::size_t page, std::size_t pages) const {
    const double top = metrics_.height() - kMargin - metrics_.lineHeight(kBodyFont);
    device.rule(body_.Left, top - kAboveFoot / 3, body_.width());
    device.text(body_.Left, top, program_, kBodyFont);
    const std::string number =
        ReplaceText(ReplaceText(pageOfPages_, "^", std::to_string(page + 1)), "*", std::to_string(pages));
    device.text(body_.Right, top, number, kBodyFont, PageAlign::Right);
    const double program = metrics_.textWidth(program_, kBodyFont);
    const double side = std::max(program, metrics_.textWidth(number, kBodyFont)) + kBesideLogo;
    const std::string file = fittedText(metrics_, file_, body_.width() - 2 * side, kBodyFont);
    device.text((metrics_.width() - metrics_.textWidth(file, kBodyFont)) / 2, top, file, kBodyFont);
}

} // namespace kestrane

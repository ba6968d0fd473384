#include "reports/PageFrame.h"

#include "platform/Format.h"
#include "reports/PageText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr double kMargin = 1.5;
constexpr PageBox kLogoBox{kMargin, kMargin, 6, 2};
constexpr double kBelowHead = 1;
constexpr double kBelowHeadInLandscape = 0.5;
constexpr double kBesideLogo = 0.4;
constexpr double kAboveFoot = 0.3;
constexpr double kLeastPoints = 10; // the smallest font of a head that must be made smaller to fit
// The most lines into which a line of the head is broken when that is not enough.
constexpr std::size_t kMostHeadLines = 3;

} // namespace

PageFrame::PageFrame(const Session& session, const PageHeading& heading, const PageMetrics& metrics) :
    logo_(session.Options.CompanyLogoFile),
    program_(session.LoadText(Text::ProgramAndVersion) + ", " +
             ReplaceText(session.LoadText(Text::PrintedOn), "^",
                         formatDate(session.clock.now(), session.LoadText(Text::DateOfPrinting), session.dateWords))),
    file_(printableText(heading.FileName)),
    pageOfPages_(session.LoadText(Text::PageOfPages)),
    metrics_(metrics) {
    for (const std::string& line : paragraphsOf(session.Options.ReportFooter, kMostHeadLines))
        letterhead_.push_back(fittedText(metrics, line, metrics.width() - 2 * kMargin, kBodyFont));
    body_ = wholePage();
    double logoWidth = logo_.empty() ? 0 : metrics.pictureWidth(logo_, kLogoBox);
    if (logoWidth == 0) {
        if (!logo_.empty() && !heading.IsPart)
            session.frame->Tell(ReplaceText(session.LoadText(Text::LogoNotUsed), "^", logo_));
        logo_.clear();
        logoWidth = metrics.pictureWidth({}, kLogoBox);
    }
    std::vector<HeadText> texts;
    if (!session.Options.CompanyName.empty()) texts.push_back({printableText(session.Options.CompanyName), {}});
    texts.push_back({printableText(heading.Title), printableText(heading.Kind)});
    if (heading.IsModified) texts.push_back({session.LoadText(Text::ModifiedReport), {}});
    setHead(texts, logoWidth);
    double lines = 0;
    for (const HeadLine& line : head_)
        lines += metrics.lineHeight(line.Font);
    body_.Top += std::max(kLogoBox.Height, lines) + (metrics.isLandscape() ? kBelowHeadInLandscape : kBelowHead);
}

// Places the head beside the logo, in the largest font in which all lines fit.
void PageFrame::setHead(const std::vector<HeadText>& texts, double logoWidth) {
    const double room = body_.width() - logoWidth - kBesideLogo;
    PageFont font = kTitleFont;
    for (const HeadText& text : texts) {
        while (font.Points > kLeastPoints && metrics_.textWidth(text.Text, font) > room)
            font.Points -= 1;
    }
    for (const HeadText& text : texts) {
        for (std::string& line : wrappedText(metrics_, text.Text, room, font, kMostHeadLines, text.Kind))
            head_.push_back({std::move(line), font});
    }
}

PageArea PageFrame::wholePage() const {
    const double foot = metrics_.height() - kMargin - metrics_.lineHeight(kBodyFont);
    const double letterhead = static_cast<double>(letterhead_.size()) * metrics_.lineHeight(kBodyFont);
    return {kMargin, kMargin, metrics_.width() - kMargin, foot - kAboveFoot - letterhead};
}

// All lines are centred on one axis: the middle of the page, or as far from it as needed for the widest line to reach
// neither into the logo nor past the margin.
void PageFrame::drawHead(PageDevice& device) {
    double logoWidth = logo_.empty() ? 0 : device.picture(logo_, kLogoBox);
    if (logoWidth == 0) {
        logo_.clear(); // so that it is not tried again
        logoWidth = device.brandPicture(kLogoBox);
    }
    const double left = kMargin + logoWidth + kBesideLogo;
    double widest = 0;
    for (const HeadLine& line : head_)
        widest = std::max(widest, metrics_.textWidth(line.Text, line.Font));
    const double axis = std::max(left + widest / 2, std::min(metrics_.width() / 2, body_.Right - widest / 2));
    double top = kMargin;
    for (const HeadLine& line : head_) {
        device.text(axis - metrics_.textWidth(line.Text, line.Font) / 2, top, line.Text, line.Font);
        top += metrics_.lineHeight(line.Font);
    }
}

void PageFrame::drawFoot(PageDevice& device, std::size_t page, std::size_t pages) const {
    const double top = metrics_.height() - kMargin - metrics_.lineHeight(kBodyFont);
    double above = body_.Bottom + kAboveFoot / 3;
    for (const std::string& line : letterhead_) {
        device.text((metrics_.width() - metrics_.textWidth(line, kBodyFont)) / 2, above, line, kBodyFont);
        above += metrics_.lineHeight(kBodyFont);
    }
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

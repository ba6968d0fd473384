// What every page of a report has around its content: logo, company and title in the head, and the company's letterhead
// and a line with the program, the file and the page number in the foot. It also says where the content may be.
#pragma once

#include "model/Session.h"
#include "reports/PageDevice.h"

#include <string>
#include <vector>

namespace kestrane {

inline constexpr PageFont kBodyFont{7, false};
inline constexpr PageFont kCaptionFont{7, true};
inline constexpr PageFont kTitleFont{14, true};

// The space for content, in centimetres.
struct PageArea {
    double Left = 0, Top = 0, Right = 0, Bottom = 0;

    double width() const { return Right - Left; }

    double height() const { return Bottom - Top; }
};

struct PageHeading {
    std::string Title;
    std::string FileName; // in the foot line
    bool IsModified = false;
    bool IsPart = false; // of a document that has said already what is wrong with its logo
    std::string Kind{};  // the end of the title, which stays when the title is cut
};

class PageFrame {
public:
    PageFrame(const Session& session, const PageHeading& heading, const PageMetrics& metrics);

    const PageArea& body() const { return body_; }

    PageArea wholePage() const; // without the head

    void drawHead(PageDevice& device);
    void drawFoot(PageDevice& device, std::size_t page, std::size_t pages) const; // page is counted from 0

private:
    struct HeadLine {
        std::string Text;
        PageFont Font;
    };

    struct HeadText {
        std::string Text, Kind;
    };

    void setHead(const std::vector<HeadText>& texts, double logoWidth);

    std::vector<HeadLine> head_;
    std::vector<std::string> letterhead_;      // lines above the foot
    std::string logo_;                         // path; empty when none is set or it could not be read
    std::string program_, file_, pageOfPages_; // program_ with the date of printing
    const PageMetrics& metrics_;
    PageArea body_;
};

} // namespace kestrane

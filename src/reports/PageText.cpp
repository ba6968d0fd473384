#include "reports/PageText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kEllipsis = "\u2026";

bool isTail(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The positions at which the characters of a text end.
std::vector<std::size_t> characterEnds(std::string_view text) {
    std::vector<std::size_t> ends;
    for (std::size_t end = 1; end <= text.size(); ++end) {
        if (end == text.size() || !isTail(text[end])) ends.push_back(end);
    }
    return ends;
}

// The length of the longest beginning of a text, in whole characters, that fits together with the text behind; at least
// the given least number of characters.
std::size_t fittingLength(const PageMetrics& metrics, std::string_view text, std::string_view behind, double width,
                          const PageFont& font, std::size_t least) {
    const std::vector<std::size_t> ends = characterEnds(text);
    const auto tooLong = std::partition_point(ends.begin(), ends.end(), [&](std::size_t end) {
        return metrics.textWidth(std::string(text.substr(0, end)) + std::string(behind), font) <= width;
    });
    const auto characters = std::max(least, static_cast<std::size_t>(tooLong - ends.begin()));
    return characters == 0 ? 0 : ends[std::min(characters, ends.size()) - 1];
}

// The lines of a text; where the most of them do not hold it, the last one has all the rest.
std::vector<std::string> brokenText(const PageMetrics& metrics, std::string_view text, double width,
                                    const PageFont& font, std::size_t most) {
    std::vector<std::string> lines;
    while (lines.size() + 1 < most && metrics.textWidth(text, font) > width) {
        const std::size_t longest = fittingLength(metrics, text, {}, width, font, 1);
        const std::size_t blank = text.rfind(' ', longest);
        const std::size_t end = blank == std::string_view::npos || blank == 0 ? longest : blank;
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    lines.emplace_back(text);
    return lines;
}

} // namespace

std::string fittedText(const PageMetrics& metrics, std::string_view text, double width, const PageFont& font) {
    if (metrics.textWidth(text, font) <= width) return std::string(text);
    std::string_view kept = text.substr(0, fittingLength(metrics, text, kEllipsis, width, font, 0));
    while (kept.ends_with(' '))
        kept.remove_suffix(1);
    return std::string(kept) + std::string(kEllipsis);
}

std::vector<std::string> wrappedText(const PageMetrics& metrics, std::string_view text, double width,
                                     const PageFont& font, std::size_t most, std::string_view kept) {
    const auto linesOf = [&](std::string_view shown) { return brokenText(metrics, shown, width, font, most); };
    const auto isHeld = [&](const std::vector<std::string>& lines) {
        return metrics.textWidth(lines.back(), font) <= width;
    };
    std::vector<std::string> lines = linesOf(text);
    if (!isHeld(lines) && !kept.empty() && text.ends_with(kept)) {
        const std::string_view cut = text.substr(0, text.size() - kept.size());
        const auto shortened = [&](std::size_t end) {
            return linesOf(std::string(cut.substr(0, end)).append(kEllipsis).append(kept));
        };
        const std::vector<std::size_t> ends = characterEnds(cut);
        const auto tooLong =
            std::partition_point(ends.begin(), ends.end(), [&](std::size_t end) { return isHeld(shortened(end)); });
        lines = shortened(tooLong == ends.begin() ? 0 : *std::prev(tooLong));
    }
    lines.back() = fittedText(metrics, lines.back(), width, font);
    return lines;
}

std::string printableText(std::string_view text) {
    constexpr unsigned char kDelete = 0x7F;
    std::string printable(text);
    std::replace_if(
        printable.begin(), printable.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) == kDelete; }, ' ');
    return printable;
}

std::vector<std::string> paragraphsOf(std::string_view text, std::size_t most) {
    std::vector<std::string> paragraphs;
    while (!text.empty() && paragraphs.size() < most) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        paragraphs.push_back(printableText(line));
    }
    if (!text.empty() && !paragraphs.empty()) paragraphs.back() += kEllipsis;
    return paragraphs;
}

} // namespace kestrane

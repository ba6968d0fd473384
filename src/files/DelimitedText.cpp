#include "files/DelimitedText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kBlanks = " \t";

bool isDelimiter(char c) {
    return c == ',' || c == '\r' || c == '\n';
}

std::size_t endOfToken(std::string_view text, std::size_t from) {
    while (from < text.size() && !isDelimiter(text[from]))
        ++from;
    return from;
}

// Removes count characters from the text, and the delimiter or line end behind them.
void takeDelimited(std::string_view& text, std::size_t count) {
    const bool isCrLf = text.substr(count).starts_with("\r\n");
    text.remove_prefix(count == text.size() ? count : count + (isCrLf ? 2 : 1));
}

} // namespace

std::optional<std::string_view> DelimitedText::next() {
    if (rest_.empty()) return std::nullopt;
    const std::size_t quote = rest_.find_first_not_of(kBlanks);
    const bool isQuoted = quote != std::string_view::npos && rest_[quote] == '"';
    const std::size_t begin = isQuoted ? quote + 1 : 0;
    std::size_t end = isQuoted ? rest_.find_first_of("\"\r\n", begin) : endOfToken(rest_, begin);
    if (end == std::string_view::npos) end = rest_.size();
    const std::string_view token = rest_.substr(begin, end - begin);
    isCut_ = end == rest_.size();
    takeDelimited(rest_, endOfToken(rest_, end));
    return last_ = token;
}

std::size_t DelimitedText::leftAtMost() const {
    return 1 + static_cast<std::size_t>(std::count_if(rest_.begin(), rest_.end(), isDelimiter));
}

std::optional<std::string_view> takeLine(std::string_view& text) {
    if (text.empty()) return std::nullopt;
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    takeDelimited(text, end);
    return line;
}

} // namespace kestrane

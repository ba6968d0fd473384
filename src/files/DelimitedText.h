// Delimited text as older programs exported it: tokens that end at a comma or a line end. Between double quotes a comma
// is part of the token.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kestrane {

class DelimitedText {
public:
    // A Ctrl+Z, which older systems put behind a text, ends the text.
    explicit DelimitedText(std::string_view text) : rest_(text.substr(0, text.find('\x1A'))) {}

    // The next token without its quotes; nothing at the end of the text. A comma at the end of a line is followed by
    // one more, empty token; a comma at the end of the text is not.
    std::optional<std::string_view> next();

    // Whether the last token was ended by the end of the text, and not by a delimiter or its closing quote: then part
    // of it may be missing.
    bool isCut() const { return isCut_; }

    std::string_view last() const { return last_; } // the token that next() returned last

    std::size_t leftAtMost() const; // an upper limit of the number of tokens left

private:
    std::string_view rest_, last_;
    bool isCut_ = false;
};

// Takes the next line off the text and returns it without its end, which may be CR LF, CR or LF. Nothing when the text
// is empty.
std::optional<std::string_view> takeLine(std::string_view& text);

} // namespace kestrane
